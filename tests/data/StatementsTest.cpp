// SPDX-License-Identifier: MIT
#include "data/Statements.h"

#include "platform/runtime/Error.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

ItemRow ListItem() {
  ItemRow row;
  row.id = 7;
  row.naam = u"Blok A"_s;
  row.aktief = 1;
  row.itemSpotsOptID = 1;
  row.optMeerdereSpots = -1;
  row.aantalSpots = 2;
  row.maxAantalSpots = 3;
  row.chkRandomizeMeerdereSpots = 1;
  row.opener = 4;
  row.sluiter = 5;
  return row;
}

ItemRow PatternItem() {
  ItemRow row = ListItem();
  row.itemSpotsOptID = 2;
  row.opt2Directory = u"D:\\Spots"_s;
  row.opt2VastNaamGedeelte = u"blok"_s;
  row.opt2VariabelNaamGedeelte = 3;
  row.opt2FormatGedeelte = u"ww"_s;
  row.opt2Eerstedagvanweek = 2;
  row.opt2FileExtensie = u"wav"_s;
  row.opt2MixPunt = 1500;
  row.opener.reset();
  row.sluiter.reset();
  row.midden = 9;
  row.locked = -1;
  return row;
}

ItemSpotRow FullSpot() {
  ItemSpotRow row;
  row.id = 12;
  row.path = u"D:\\a.mp3"_s;
  row.naam = u"Spot"_s;
  row.lengteSec = 30;
  row.startPunt = 0;
  row.mixpunt = 2480;
  row.startDatum = 45658;
  row.startUur = 6;
  row.eindDatum = 45700;
  row.eindUur = 22;
  row.aktief = 1;
  return row;
}

}  // namespace

TEST(Statements, InsertItemOfOptionOneOmitsPatternFieldsAndMissingJingles) {
  EXPECT_EQ(statements::InsertItem(ListItem(), u"tblItems"_s),
            u"INSERT INTO tblItems (ID, Naam, ItemSpotsOptID, OptMeerdereSpots, AantalSpots, MaxAantalSpots, "
            u"ChkRandomizeMeerdereSpots, Opener, Sluiter, Aktief, Locked) VALUES (7, \"Blok A\", 1, -1, 2, 3, 1, 4, 5, "
            u"1, 0)"_s);
}

TEST(Statements, InsertItemOfOptionTwoWritesThePattern) {
  EXPECT_EQ(
      statements::InsertItem(PatternItem(), u"tblItems"_s),
      u"INSERT INTO tblItems (ID, Naam, ItemSpotsOptID, Opt2Directory, Opt2VastNaamGedeelte, "
      u"Opt2VariabelNaamGedeelte, Opt2FormatGedeelte, Opt2Eerstedagvanweek, Opt2FileExtensie, Opt2MixPunt, "
      u"OptMeerdereSpots, AantalSpots, MaxAantalSpots, ChkRandomizeMeerdereSpots, Midden, Aktief, Locked) "
      u"VALUES (7, \"Blok A\", 2, \"D:\\Spots\", \"blok\", 3, \"ww\", 2, \"wav\", 1500, -1, 2, 3, 1, 9, 1, -1)"_s);
}

TEST(Statements, InsertItemWritesAnEmptyNameToo) {
  ItemRow row = ListItem();
  row.naam.clear();
  EXPECT_TRUE(statements::InsertItem(row, u"t"_s).contains(u"VALUES (7, \"\", 1, "_s));
}

TEST(Statements, UpdateItemOfOptionOneSetsThePatternToNull) {
  EXPECT_EQ(statements::UpdateItem(ListItem(), u"tblCopie_Items"_s),
            u"UPDATE tblCopie_Items SET Naam = \"Blok A\", ItemSpotsOptID = 1, Opt2Directory = NULL, "
            u"Opt2VastNaamGedeelte = NULL, Opt2VariabelNaamGedeelte = NULL, Opt2FormatGedeelte = NULL, "
            u"Opt2Eerstedagvanweek = NULL, Opt2FileExtensie = NULL, Opt2MixPunt = NULL, OptMeerdereSpots = -1, "
            u"AantalSpots = 2, MaxAantalSpots = 3, ChkRandomizeMeerdereSpots = 1, Opener = 4, Midden = NULL, "
            u"Sluiter = 5, Aktief = 1, Locked = 0 WHERE ID = 7"_s);
}

TEST(Statements, UpdateItemOfOptionTwo) {
  EXPECT_EQ(statements::UpdateItem(PatternItem(), u"tblItems"_s),
            u"UPDATE tblItems SET Naam = \"Blok A\", ItemSpotsOptID = 2, Opt2Directory = \"D:\\Spots\", "
            u"Opt2VastNaamGedeelte = \"blok\", Opt2VariabelNaamGedeelte = 3, Opt2FormatGedeelte = \"ww\", "
            u"Opt2Eerstedagvanweek = 2, Opt2FileExtensie = \"wav\", Opt2MixPunt = 1500, OptMeerdereSpots = -1, "
            u"AantalSpots = 2, MaxAantalSpots = 3, ChkRandomizeMeerdereSpots = 1, Opener = NULL, Midden = 9, "
            u"Sluiter = NULL, Aktief = 1, Locked = -1 WHERE ID = 7"_s);
}

TEST(Statements, InsertItemSpot) {
  EXPECT_EQ(
      statements::InsertItemSpot(FullSpot(), u"tblItemSpots"_s),
      u"INSERT INTO tblItemSpots (ID, Path, Naam, LengteSec, StartPunt, Mixpunt, StartDatum, StartUur, EindDatum, "
      u"EindUur, AantalGedraaid,Aktief) VALUES (12, \"D:\\a.mp3\", \"Spot\", 30, 0, 2480, 45658, 6, 45700, 22, "
      u"0,1)"_s);
}

TEST(Statements, InsertItemSpotLeavesEmptyValuesOutOfBothLists) {
  ItemSpotRow row;
  row.id = 1;
  row.path = u"  "_s;
  row.naam = u"x"_s;
  EXPECT_EQ(statements::InsertItemSpot(row, u"t"_s),
            u"INSERT INTO t (ID, Naam, AantalGedraaid,Aktief) VALUES (1, \"x\", 0,0)"_s);
}

TEST(Statements, UpdateItemSpot) {
  EXPECT_EQ(statements::UpdateItemSpot(FullSpot(), u"tblItemSpots"_s),
            u"UPDATE tblItemSpots SET Path = \"D:\\a.mp3\", Naam = \"Spot\", LengteSec = 30, StartPunt = 0, "
            u"MixPunt = 2480, StartDatum = 45658, StartUur = 6, EindDatum = 45700, EindUur = 22, Aktief = 1 "
            u"WHERE ID = 12"_s);
}

TEST(Statements, UpdateItemSpotHasItsDeviatingNullClauses) {
  ItemSpotRow row;
  row.id = 3;
  EXPECT_EQ(statements::UpdateItemSpot(row, u"t"_s),
            u"UPDATE t SET Path = NULL, Naam = 'NULL, LengteSec = NULL, StartPunt = NULL, MixPunt = NULL, "
            u"StartDatum= NULL, StartUur= NULL, EindDatum = NULL, EindUur = NULL, Aktief = 0 WHERE ID = 3"_s);
}

TEST(Statements, InsertAndUpdateItemPingle) {
  ItemPingleRow row;
  row.id = 2;
  row.path = u"D:\\j.wav"_s;
  row.naam = u"Opener"_s;
  row.lengteSec = 5;
  row.startPunt = 0;
  row.mixPunt = 100;
  row.aktief = 1;
  EXPECT_EQ(statements::InsertItemPingle(row, u"tblItemPingles"_s),
            u"INSERT INTO tblItemPingles (ID, Path, Naam, LengteSec, StartPunt, MixPunt, Aktief) VALUES (2, "
            u"\"D:\\j.wav\", \"Opener\", 5, 0, 100, 1)"_s);
  EXPECT_EQ(statements::UpdateItemPingle(row, u"tblItemPingles"_s),
            u"UPDATE tblItemPingles SET Path = \"D:\\j.wav\", Naam = \"Opener\", LengteSec = 5, StartPunt = 0, "
            u"MixPunt = 100, Aktief = 1 WHERE ID = 2"_s);
  EXPECT_EQ(statements::UpdateItemPingle(ItemPingleRow{}, u"t"_s),
            u"UPDATE t SET Path = NULL, Naam = 'NULL, LengteSec = NULL, StartPunt = NULL, MixPunt = NULL, Aktief = 0 "
            u"WHERE ID = 0"_s);
}

TEST(Statements, ShortStatements) {
  EXPECT_EQ(statements::InsertLink({1, 2, 3}, u"tblItemsItemSpots"_s),
            u"INSERT INTO tblItemsItemSpots (ItemID, ItemSpotOrder, ItemSpotID) VALUES (1, 2, 3)"_s);
  EXPECT_EQ(statements::SetAktief(4, 0, u"tblItems"_s), u"UPDATE tblItems SET Aktief = 0 WHERE ID = 4"_s);
  EXPECT_EQ(statements::ResetAantalGedraaid(4, u"tblItemSpots"_s),
            u"UPDATE tblItemSpots SET AantalGedraaid = 0 WHERE ID = 4"_s);
  EXPECT_EQ(statements::Delete(4, u"tblItems"_s, u"tblItems.ID"_s), u"DELETE FROM tblItems WHERE tblItems.ID = 4"_s);
  EXPECT_EQ(statements::DeleteAll(u"tblCopie_Items"_s), u"DELETE FROM tblCopie_Items"_s);
}

TEST(Statements, LogTextReplacesApostrophesByStarsAndQuotesByApostrophes) {
  EXPECT_EQ(statements::InsertLog(9, u"UPDATE t SET Naam = \"Jan's\""_s),
            u"INSERT INTO tblOfflineLog (ID, SqlSyntax)VALUES (9, \"UPDATE t SET Naam = 'Jan*s'\")"_s);
}

TEST(Statements, TextWithADoubleQuoteOrNulIsRefusedWithTheFieldsName) {
  ItemSpotRow row = FullSpot();
  row.naam = u"een \"spot\""_s;
  try {
    statements::UpdateItemSpot(row, u"t"_s);
    FAIL() << "a double quote got through";
  } catch (const runtime::Error& error) {
    EXPECT_TRUE(error.Description().contains(u"'Naam'"_s)) << error.what();
  }
  row.naam = QString(u'a') + QChar(0) + u'b';
  EXPECT_THROW(statements::InsertItemSpot(row, u"t"_s), runtime::Error);
}

// SPDX-License-Identifier: MIT
#include "data/Lookups.h"

#include "data/DatabasePaths.h"
#include "data/Globals.h"
#include "data/SpotNames.h"
#include "platform/desktop/MessageBox.h"
#include "platform/runtime/Probe.h"
#include "tests/support/Station.h"

#include <QFile>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using testing_support::Station;

TEST(GetNewID, IsOneForAnEmptyTableAndTheHighestPlusOneOtherwise) {
  const Station station;
  EXPECT_EQ(GetNewID(u"tblItems"_s, u"tblItems.ID"_s, global.serverDatabasePath), 1);
  station.OnServer(u"INSERT INTO tblItems (ID, Naam) VALUES (41, \"a\")"_s);
  station.OnServer(u"INSERT INTO tblItems (ID, Naam) VALUES (7, \"b\")"_s);
  EXPECT_EQ(GetNewID(u"tblItems"_s, u"ID"_s, global.serverDatabasePath), 42);
}

TEST(GetNewID, HighestKeyThatIsNotANumberCountsAsNone) {
  const Station station;
  EXPECT_EQ(GetNewID(u"cdeLicenties"_s, u"RadioNaam"_s, global.localDatabasePath), 1);
}

TEST(GetNewID, ReportsAnErrorUnderItsNameAndReturnsZero) {
  const Station station;
  const desktop::MessageBoxScript boxes;
  EXPECT_EQ(GetNewID(u"tblBestaatNiet"_s, u"ID"_s, global.serverDatabasePath), 0);
  EXPECT_EQ(boxes.Last().title, u"GetNewID"_s);
  EXPECT_TRUE(boxes.Last().text.contains(u"tblBestaatNiet"_s)) << boxes.Last().text.toStdString();
}

TEST(NameLookup, TrimsAndReturnsEmptyForNoRowAndBlanks) {
  const Station station;
  station.OnServer(u"INSERT INTO tblItems (ID, Naam) VALUES (1, \"  Blok A \")"_s);
  station.OnServer(u"INSERT INTO tblItems (ID, Naam) VALUES (2, \"   \")"_s);
  station.OnServer(u"INSERT INTO tblItems (ID) VALUES (3)"_s);
  station.OnServer(u"INSERT INTO tblItemSpots (ID, Naam) VALUES (1, \"Spot \")"_s);
  EXPECT_EQ(GetItemNaam(1, global.serverDatabasePath, u"tblItems"_s), u"Blok A"_s);
  EXPECT_EQ(GetItemNaam(2, global.serverDatabasePath, u"tblItems"_s), u""_s);
  EXPECT_EQ(GetItemNaam(3, global.serverDatabasePath, u"tblItems"_s), u""_s);
  EXPECT_EQ(GetItemNaam(9, global.serverDatabasePath, u"tblItems"_s), u""_s);
  EXPECT_EQ(GetItemSpotID_Naam(1, global.serverDatabasePath, u"tblItemSpots"_s), u"Spot"_s);
}

TEST(NameLookup, UnreadableNameIsNullAndMissingNameIsNot) {
  const Station station;
  station.OnServer(u"INSERT INTO tblItemSpots (ID) VALUES (3)"_s);
  const desktop::MessageBoxScript boxes;
  EXPECT_FALSE(GetItemSpotID_Naam(3, global.serverDatabasePath, u"tblItemSpots"_s).isNull());
  EXPECT_FALSE(GetItemSpotID_Naam(9, global.serverDatabasePath, u"tblItemSpots"_s).isNull());
  EXPECT_TRUE(boxes.Shown().empty());
  EXPECT_TRUE(GetItemSpotID_Naam(3, global.serverDatabasePath, u"tblWeg"_s).isNull());
  EXPECT_EQ(boxes.Last().title, u"GetItemSpotID_Naam"_s);
}

TEST(SpotNames, ALongListHasTheNamesOfSingleLookups) {
  const Station station;
  station.OnServer(u"INSERT INTO tblItemSpots (ID, Naam) VALUES (1, \"  Spot  \")"_s);
  station.OnServer(u"INSERT INTO tblItemSpots (ID, Naam) VALUES (2, \"   \")"_s);
  station.OnServer(u"INSERT INTO tblItemSpots (ID) VALUES (3)"_s);
  const QString table = u"tblItemSpots"_s;
  for (const std::size_t lines : {4U, 1000U}) {
    const SpotNames names(global.serverDatabasePath, table, std::vector<std::int64_t>(lines, 1));
    for (qint32 id = 0; id <= 4; ++id) {
      const QString expected = GetItemSpotID_Naam(id, global.serverDatabasePath, table);
      EXPECT_EQ(names.NameOf(id), expected) << id;
      EXPECT_EQ(names.NameOf(id).isNull(), expected.isNull()) << id;
    }
  }
}

TEST(SpotNames, ALongListIsReadByOneStatement) {
  const Station station;
  int looks = 0;
  const runtime::ProbeLookScope counted([&](const QString&) {
    ++looks;
    return 0;
  });
  const SpotNames names(global.serverDatabasePath, u"tblItemSpots"_s, std::vector<std::int64_t>(1000, 1));
  const int first = looks;
  EXPECT_GT(first, 0);
  for (qint32 id = 0; id < 100; ++id)
    EXPECT_EQ(names.NameOf(id), u""_s);
  EXPECT_EQ(looks, first);
}

TEST(SpotNames, AnUnreadableTableIsReportedForEachLine) {
  const Station station;
  const desktop::MessageBoxScript boxes;
  const SpotNames names(global.serverDatabasePath, u"tblWeg"_s, std::vector<std::int64_t>(1000, 1));
  EXPECT_TRUE(boxes.Shown().empty());
  EXPECT_TRUE(names.NameOf(3).isNull());
  EXPECT_EQ(boxes.Last().title, u"GetItemSpotID_Naam"_s);
}

TEST(GetItemItemSpots, JoinsTheThreeTables) {
  const Station station;
  station.OnServer(u"INSERT INTO tblItems (ID, Naam) VALUES (1, \"a\")"_s);
  station.OnServer(u"INSERT INTO tblItems (ID, Naam) VALUES (2, \"b\")"_s);
  for (int id = 1; id <= 3; ++id) {
    station.OnServer(u"INSERT INTO tblItemSpots (ID, Naam, Path) VALUES (%1, \"s%1\", \"p%1\")"_s.arg(id));
  }
  station.OnServer(u"INSERT INTO tblItemsItemSpots (ItemID, ItemSpotOrder, ItemSpotID) VALUES (1, 1, 3)"_s);
  station.OnServer(u"INSERT INTO tblItemsItemSpots (ItemID, ItemSpotOrder, ItemSpotID) VALUES (1, 2, 1)"_s);
  station.OnServer(u"INSERT INTO tblItemsItemSpots (ItemID, ItemSpotOrder, ItemSpotID) VALUES (2, 1, 2)"_s);
  auto rows = GetItem_ItemSpots(1, global.serverDatabasePath, u"tblItems"_s, u"tblItemsItemSpots"_s, u"tblItemSpots"_s);
  ASSERT_TRUE(rows.has_value());
  QSet<QString> paths;
  for (; !rows->Eof(); rows->MoveNext())
    paths += rows->Field(u"Path"_s).toString();
  EXPECT_EQ(paths, (QSet<QString>{u"p1"_s, u"p3"_s}));
}

TEST(GetItemItemSpots, ReadsTheCopyTablesTooAndReturnsASpotLinkedTwiceTwice) {
  const Station station(Station::Mode::Offline);
  station.OnLocal(u"INSERT INTO tblCopie_Items (ID, Naam) VALUES (1, \"a\")"_s);
  station.OnLocal(u"INSERT INTO tblCopie_ItemSpots (ID, Naam) VALUES (7, \"s\")"_s);
  for (const int order : {1, 2}) {
    station.OnLocal(
        u"INSERT INTO tblCopie_ItemsItemSpots (ItemID, ItemSpotOrder, ItemSpotID) VALUES (1, %1, 7)"_s.arg(order));
  }
  const auto rows = GetItem_ItemSpots(1, global.localDatabasePath, u"tblCopie_Items"_s, u"tblCopie_ItemsItemSpots"_s,
                                      u"tblCopie_ItemSpots"_s);
  ASSERT_TRUE(rows.has_value());
  EXPECT_EQ(rows->RecordCount(), 2);
  EXPECT_EQ(rows->Field(u"Naam"_s).toString(), u"s"_s);
}

TEST(GetItemItemSpots, ErrorReturnsNoRecordset) {
  const Station station;
  const desktop::MessageBoxScript boxes;
  EXPECT_FALSE(GetItem_ItemSpots(1, global.serverDatabasePath, u"tblItems"_s, u"weg"_s, u"tblItemSpots"_s).has_value());
  EXPECT_EQ(boxes.Last().title, u"GetItem_ItemSpots"_s);
}

TEST(SetOnlineYn, ReadsTheRowInAnyLetterCase) {
  const Station station;
  global.online = false;
  station.OnLocal(u"UPDATE cdeInstellingen SET InitCode = \"oNLINEyN\""_s);
  SetOnlineYn();
  EXPECT_TRUE(global.online);
  station.OnLocal(u"UPDATE cdeInstellingen SET InitValue = \"0\""_s);
  SetOnlineYn();
  EXPECT_FALSE(global.online);
}

TEST(SetOnlineYn, NonNumericValueOrNoRowLeavesTheSystemOnline) {
  const Station station(Station::Mode::Offline);
  station.OnLocal(u"UPDATE cdeInstellingen SET InitValue = \"ja\""_s);
  SetOnlineYn();
  EXPECT_TRUE(global.online);
  global.online = false;
  station.OnLocal(u"DELETE FROM cdeInstellingen"_s);
  SetOnlineYn();
  EXPECT_TRUE(global.online);
}

TEST(SetOnlineYn, AnyNumberButZeroIsOnlineAndATooLargeOneIsReportedAndStaysOnline) {
  const Station station(Station::Mode::Offline);
  for (const auto& [value, online] : QList<std::pair<QString, bool>>{
           {u"5"_s, true}, {u" 0 "_s, false}, {u"-1"_s, true}, {u"0,2"_s, false}, {u"1"_s, true}}) {
    station.OnLocal(u"UPDATE cdeInstellingen SET InitValue = \"%1\""_s.arg(value));
    SetOnlineYn();
    EXPECT_EQ(global.online, online) << value.toStdString();
  }
  global.online = false;
  station.OnLocal(u"UPDATE cdeInstellingen SET InitValue = \"99999999999\""_s);
  const desktop::MessageBoxScript boxes;
  SetOnlineYn();
  EXPECT_TRUE(global.online);
  ASSERT_EQ(boxes.Shown().size(), 1U);
  EXPECT_EQ(boxes.Last().title, u"SetOnlineYn"_s);
}

TEST(SetOnlineYn, StationNumberBelowOneReadsTheRow) {
  const Station station;
  station.OnLocal(u"UPDATE cdeInstellingen SET InitValue = \"0\""_s);
  global.stationNumber = -2;
  const desktop::MessageBoxScript boxes;
  SetOnlineYn();
  EXPECT_FALSE(global.online);
  EXPECT_TRUE(boxes.Shown().empty());
}

TEST(SetOnlineYn, IgnoresOtherSettingsAndOneWithoutACode) {
  const Station station(Station::Mode::Offline);
  station.OnLocal(u"DELETE FROM cdeInstellingen"_s);
  const QString path = global.programFolder + u"\\instellingen.mdb"_s;
  dao::CreateDatabase(path);
  dao::TableDef table = dao::OpenDatabase(global.localDatabasePath).Table(u"cdeInstellingen"_s);
  table.indexes.clear();  // a foreign table without a key accepts a row without a code
  dao::OpenDatabase(path).CreateTable(table);
  global.localDatabasePath = path;
  for (const QString& row : {u"\"Andere\", \"0\""_s, u"NULL, \"0\""_s, u"\"OnlineYn\", \"-1\""_s})
    station.OnLocal(u"INSERT INTO cdeInstellingen (InitCode, InitValue) VALUES (%1)"_s.arg(row));
  SetOnlineYn();
  EXPECT_TRUE(global.online);
}

TEST(SetOnlineYn, UnreadableFileLeavesTheFlagUnchanged) {
  Station station(Station::Mode::Offline);
  QFile::remove(station.Folder() + u"/data/OvalistoLocal.mdb");
  const desktop::MessageBoxScript boxes;
  SetOnlineYn();
  EXPECT_FALSE(global.online);
  station.Use(Station::Mode::Online);
  SetOnlineYn();
  EXPECT_TRUE(global.online);
}

TEST(SetOnlineYn, StationsOwnModeIsReadWhenTheSettingIsOn) {
  const Station station(Station::Mode::Offline);
  global.stationNumber = 3;
  global.stationsOwnMode = true;
  const desktop::MessageBoxScript boxes;
  SetOnlineYn();
  EXPECT_TRUE(global.online);
  station.OnLocal(u"UPDATE cdeInstellingen SET InitValue = \"0\""_s);
  SetOnlineYn();
  EXPECT_FALSE(global.online);
  EXPECT_TRUE(boxes.Shown().empty());
}

TEST(SetOnlineYn, ErrorForAStationNumberSaysHowToEnableOnlineMode) {
  const Station station(Station::Mode::Offline);
  global.stationNumber = 3;
  const desktop::MessageBoxScript boxes;
  SetOnlineYn();
  ASSERT_EQ(boxes.Shown().size(), 1U);
  EXPECT_TRUE(boxes.Last().text.contains(u"StationsOwnMode=1"_s));
}

TEST(SetOnlineYn, StationNumberMakesItFailAndLeavesTheFlag) {
  Station station(Station::Mode::Offline);
  global.stationNumber = 3;
  const desktop::MessageBoxScript boxes;
  SetOnlineYn();
  EXPECT_FALSE(global.online);
  ASSERT_EQ(boxes.Shown().size(), 1U);
  EXPECT_EQ(boxes.Last().title, u"SetOnlineYn"_s);
  EXPECT_TRUE(boxes.Last().text.contains(u"'ONLINEYN'3"_s)) << boxes.Last().text.toStdString();
  station.Use(Station::Mode::Online);
  SetOnlineYn();
  EXPECT_TRUE(global.online);
}

TEST(SetRadioNaam, ReadsTheTrimmedNameOfTheStation) {
  const Station station;
  station.OnLocal(u"INSERT INTO cdeLicenties (LicentieNummer, RadioNaam) VALUES (3, \" Radio Drie \")"_s);
  global.stationNumber = 3;
  SetRadioNaam();
  EXPECT_EQ(global.stationName, u"Radio Drie"_s);
}

TEST(SetRadioNaam, StationWithoutARowLeavesTheNameEmpty) {
  const Station station;
  global.stationName = u"oud"_s;
  global.stationNumber = 9;
  SetRadioNaam();
  EXPECT_EQ(global.stationName, u""_s);
}

TEST(SetRadioNaam, BlankOrNullNameLeavesItEmpty) {
  const Station station;
  for (const QString& value : {u"\"   \""_s, u"NULL"_s}) {
    global.stationName = u"oud"_s;
    station.OnLocal(u"UPDATE cdeLicenties SET RadioNaam = "_s + value);
    SetRadioNaam();
    EXPECT_EQ(global.stationName, u""_s) << value.toStdString();
  }
}

TEST(SetRadioNaam, UnreadableFileLeavesTheNameUnchanged) {
  const Station station;
  global.stationName = u"oud"_s;
  QFile::remove(station.Folder() + u"/data/OvalistoLocal.mdb");
  const desktop::MessageBoxScript boxes;
  SetRadioNaam();
  EXPECT_EQ(global.stationName, u"oud"_s);
  EXPECT_EQ(boxes.Last().title, u"SetRadioNaam"_s);
}

TEST(UpdateOnlineYn, IsWrittenToTheLocalDatabaseAndNeverLogged) {
  const Station station(Station::Mode::Offline);
  EXPECT_TRUE(Update_cdeInstellingen_OnlineYn(0));
  EXPECT_EQ(station.LocalRows(u"SELECT InitValue FROM cdeInstellingen"_s).Field(u"InitValue"_s).toString(), u"0"_s);
  EXPECT_TRUE(Update_cdeInstellingen_OnlineYn(-1));
  EXPECT_EQ(station.LocalRows(u"SELECT InitValue FROM cdeInstellingen"_s).Field(u"InitValue"_s).toString(), u"-1"_s);
  EXPECT_TRUE(station.Log().isEmpty());
}

TEST(UpdateOnlineYn, LeavesOtherSettingsAlone) {
  const Station station;
  station.OnLocal(u"INSERT INTO cdeInstellingen (InitCode, InitValue) VALUES (\"Andere\", \"x\")"_s);
  EXPECT_TRUE(Update_cdeInstellingen_OnlineYn(0));
  const dao::Recordset other = station.LocalRows(u"SELECT InitValue FROM cdeInstellingen WHERE InitCode = 'Andere'"_s);
  EXPECT_EQ(other.Field(u"InitValue"_s).toString(), u"x"_s);
}

TEST(Lookups, EachReportsUnderItsOwnNameAndReturnsItsDefault) {
  const Station station;
  const QString weg = global.programFolder + u"\\weg.mdb"_s;
  global.localDatabasePath = weg;
  const desktop::MessageBoxScript boxes;
  EXPECT_EQ(GetItemNaam(1, weg, u"tblItems"_s), u""_s);
  EXPECT_EQ(boxes.Last().title, u"GetItemNaam"_s);
  EXPECT_EQ(GetItemSpotID_Naam(1, weg, u"tblItemSpots"_s), u""_s);
  EXPECT_EQ(boxes.Last().title, u"GetItemSpotID_Naam"_s);
  EXPECT_FALSE(Update_cdeInstellingen_OnlineYn(-1));
  EXPECT_EQ(boxes.Last().title, u"Update_cdeInstellingen_OnlineYn"_s);
  EXPECT_EQ(boxes.Shown().size(), 3U);
}

TEST(DatabasePaths, ContainTheStationNumberUnlessItIsZero) {
  global = Globals();
  global.programFolder = u"C:\\Spotrooster"_s;
  global.databasePath = u"\\\\server\\data"_s;
  FormDatabasePaths();
  EXPECT_EQ(global.localDatabasePath, u"C:\\Spotrooster\\data\\OvalistoLocal.mdb"_s);
  EXPECT_EQ(global.serverDatabasePath, u"\\\\server\\data\\OvalistoServer.mdb"_s);
  EXPECT_EQ(global.workDatabasePath, u"C:\\Spotrooster\\data\\work.mdb"_s);
  global.stationNumber = 3;
  FormDatabasePaths();
  EXPECT_EQ(global.localDatabasePath, u"C:\\Spotrooster\\data\\OvalistoLocal3.mdb"_s);
  EXPECT_EQ(global.serverDatabasePath, u"\\\\server\\data\\OvalistoServer3.mdb"_s);
  global.stationNumber = -2;
  FormDatabasePaths();
  EXPECT_EQ(global.localDatabasePath, u"C:\\Spotrooster\\data\\OvalistoLocal-2.mdb"_s);
  global = Globals();
}

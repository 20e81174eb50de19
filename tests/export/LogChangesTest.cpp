// SPDX-License-Identifier: MIT
// The offline log in plain words, of what the write layer logged.
#include "export/LogChanges.h"

#include "data/Catalogue.h"
#include "data/Globals.h"
#include "data/Writes.h"
#include "tests/support/Station.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using testing_support::Station;

namespace {

class TheLogInWords : public testing::Test {
 protected:
  TheLogInWords() {
    station_.OnLocal(
        u"INSERT INTO tblCopie_ItemSpots (ID, Naam, EindDatum, AantalGedraaid, Aktief) VALUES "
        "(1, \"Bakker\", 46022, 5, 1)"_s);
    station_.OnLocal(u"INSERT INTO tblCopie_ItemSpots (ID, Naam, Aktief) VALUES (2, \"Slager\", 1)"_s);
    station_.OnLocal(u"INSERT INTO tblCopie_ItemPingles (ID, Naam, Aktief) VALUES (7, \"Opener ochtend\", 1)"_s);
    station_.OnLocal(
        u"INSERT INTO tblCopie_Items (ID, Naam, ItemSpotsOptID, OptMeerdereSpots, AantalSpots, "
        "MaxAantalSpots, ChkRandomizeMeerdereSpots, Aktief, Locked) VALUES (3, \"Ochtend\", 1, 0, 0, 0, 0, 1, 0)"_s);
    station_.OnLocal(u"INSERT INTO tblCopie_ItemsItemSpots (ItemID, ItemSpotOrder, ItemSpotID) VALUES (3, 1, 1)"_s);
  }

  // "nieuw|item-spot "Apotheek"|summary", then its details, each after a blank.
  static QStringList Words() {
    QStringList lines;
    for (const LogChange& change : ReadLogChanges(global.localDatabasePath)) {
      const QStringList kinds{u"new"_s, u"changed"_s, u"deleted"_s, u"unknown"_s};
      lines += kinds[static_cast<int>(change.kind)] + u'|' + change.record + u'|' + change.summary;
      for (const QString& detail : change.details)
        lines += u' ' + detail;
    }
    return lines;
  }

  void SaveItem(const QString& naam, const QList<qint32>& spots) {
    ItemRow item;
    item.id = 3;
    item.naam = naam;
    item.aktief = 1;
    item.opener = 7;
    ASSERT_TRUE(Update_tblItems(item, here_.databasePath, here_.items));
    ASSERT_TRUE(Delete_tblBeheer(3, here_.itemsItemSpots, here_.itemsItemSpots + u".ItemID"_s, here_.databasePath));
    qint32 order = 0;
    for (const qint32 spot : spots)
      ASSERT_TRUE(Insert_tblItemsItemSpots({3, ++order, spot}, here_.databasePath, here_.itemsItemSpots));
  }

  Station station_{Station::Mode::Offline};
  Catalogue here_ = CurrentCatalogue();
};

}  // namespace

TEST_F(TheLogInWords, ANewSpotHasItsFields) {
  ItemSpotRow spot;
  spot.id = 4;
  spot.naam = u"Apotheek 't Hof"_s;
  spot.path = u"D:\\audio\\a.wav"_s;
  spot.eindDatum = 46022;
  spot.aktief = 1;
  ASSERT_TRUE(Insert_tblItemSpots(spot, here_.databasePath, here_.itemSpots));
  EXPECT_EQ(Words(), (QStringList{u"new|item-spot \"Apotheek 't Hof\"|"_s, u" Path: D:\\audio\\a.wav"_s,
                                  u" Naam: Apotheek 't Hof"_s, u" Einddatum: 31-12-2025"_s, u" Aantal gedraaid: 0"_s,
                                  u" Aktief: ja"_s}));
}

TEST_F(TheLogInWords, AChangedFieldShowsWhatItWasAndBecomes) {
  ItemSpotRow spot;
  spot.id = 1;
  spot.naam = u"Bakker"_s;
  spot.eindDatum = 46037;
  spot.aktief = 1;
  ASSERT_TRUE(Update_tblItemSpots(spot, here_.databasePath, here_.itemSpots));
  ASSERT_TRUE(Reset_tblItemSpots_AantalGedraaid(1, here_.databasePath, here_.itemSpots));
  ASSERT_TRUE(Update_tblItemSpots_Aktief(1, 0, here_.databasePath, here_.itemSpots));
  ASSERT_TRUE(Update_tblItemSpots_Aktief(1, 0, here_.databasePath, here_.itemSpots));
  EXPECT_EQ(Words(),
            (QStringList{u"changed|item-spot \"Bakker\"|Einddatum"_s, u" Einddatum: was 31-12-2025, wordt 15-01-2026"_s,
                         u"changed|item-spot \"Bakker\"|Aantal gedraaid"_s, u" Aantal gedraaid: was 5, wordt 0"_s,
                         u"changed|item-spot \"Bakker\"|Aktief"_s, u" Aktief: was ja, wordt nee"_s,
                         u"changed|item-spot \"Bakker\"|opnieuw bewaard, zonder verschil"_s}));
}

TEST_F(TheLogInWords, AnItemAndItsListAreOneChange) {
  SaveItem(u"Ochtend"_s, {2, 1});
  SaveItem(u"Middag"_s, {2, 1});
  const QList<LogChange> changes = ReadLogChanges(global.localDatabasePath);
  ASSERT_EQ(changes.size(), 2);
  EXPECT_EQ(changes[0].statements.size(), 4);
  EXPECT_EQ(Words(),
            (QStringList{u"changed|item \"Ochtend\"|Opener, Spots"_s, u" Opener: was leeg, wordt \"Opener ochtend\""_s,
                         u" Spots: was \"Bakker\", wordt \"Slager\", \"Bakker\""_s, u"changed|item \"Middag\"|Naam"_s,
                         u" Naam: was Ochtend, wordt Middag"_s}));
}

TEST_F(TheLogInWords, ACleanedUpItemIsOneChange) {
  const QString links = here_.itemsItemSpots;
  ASSERT_TRUE(Delete_tblBeheer(3, links, links + u".ItemID"_s, here_.databasePath));
  ASSERT_TRUE(Delete_tblBeheer(3, here_.items, here_.items + u".ID"_s, here_.databasePath));
  const QList<LogChange> changes = ReadLogChanges(global.localDatabasePath);
  ASSERT_EQ(changes.size(), 1);
  EXPECT_EQ(changes[0].kind, LogChange::Kind::Deleted);
  EXPECT_EQ(changes[0].record, u"item \"Ochtend\""_s);
  EXPECT_EQ(changes[0].statements.size(), 2);
}

// Logged by an earlier version of the program, or by hand.
TEST_F(TheLogInWords, WithoutItsRowsAStatementIsReadFromItsText) {
  const QStringList statements{u"UPDATE tblItemSpots SET Aktief = 0 WHERE ID = 1"_s,
                               u"INSERT INTO tblItemPingles (ID, Naam, Aktief) VALUES (8, 'Slot', 1)"_s,
                               u"DELETE FROM tblItemSpots WHERE ID = 9"_s, u"VACUUM"_s};
  for (qsizetype i = 0; i < statements.size(); ++i) {
    station_.OnLocal(
        u"INSERT INTO tblOfflineLog (ID, SqlSyntax) VALUES (%1, \"%2\")"_s.arg(QString::number(i + 1), statements[i]));
  }
  EXPECT_EQ(Words(),
            (QStringList{u"changed|item-spot \"Bakker\"|Aktief"_s, u" Aktief: nee"_s, u"new|jingle \"Slot\"|"_s,
                         u" Naam: Slot"_s, u" Aktief: ja"_s, u"deleted|item-spot 9|"_s, u"unknown|VACUUM|"_s}));
}

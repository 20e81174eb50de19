// SPDX-License-Identifier: MIT
#include "data/Globals.h"
#include "data/Writes.h"
#include "platform/desktop/MessageBox.h"
#include "tests/support/Station.h"

#include <gtest/gtest.h>

#include <utility>

using namespace Qt::StringLiterals;
using testing_support::Station;

TEST(Copy, CopiesEveryFieldOfTheServersTables) {
  const Station station;
  station.OnServer(
      u"INSERT INTO tblItemSpots (ID, Path, Naam, LengteSec, StartPunt, Mixpunt, StartDatum, StartUur, EindDatum, "
      u"EindUur, "
      u"AantalGedraaid, Aktief) VALUES (3, \"D:\\a\", \"n\", 30, 0, 5, 45658, 1, 45659, 2, 7, 1)"_s);
  station.OnServer(u"INSERT INTO tblItems (ID, Naam, ItemSpotsOptID, Sluiter) VALUES (8, \"blok\", 1, 4)"_s);
  station.OnServer(u"INSERT INTO tblItemsItemSpots (ItemID, ItemSpotOrder, ItemSpotID) VALUES (8, 1, 3)"_s);
  station.OnServer(
      u"INSERT INTO tblItemPingles (ID, Naam, Path, LengteSec, StartPunt, Mixpunt, Aktief) VALUES (4, \"j\", \"p\", 6, "
      u"2, "
      u"9, 1)"_s);
  const QString server = global.serverDatabasePath;
  const QString local = global.localDatabasePath;
  EXPECT_TRUE(TransItemSpotsToLocal(server, local));
  EXPECT_TRUE(TransItemsToLocal(server, local));
  EXPECT_TRUE(TransItemsItemSpotsToLocal(server, local));
  EXPECT_TRUE(TransItemPinglesToLocal(server, local));

  const dao::Recordset spot = station.LocalRows(u"SELECT * FROM tblCopie_ItemSpots"_s);
  EXPECT_EQ(spot.Field(u"Naam"_s).toString(), u"n"_s);
  EXPECT_EQ(spot.Field(u"AantalGedraaid"_s).toInt(), 7);
  EXPECT_EQ(spot.Field(u"EindDatum"_s).toDateTime().date(), QDate(2025, 1, 2));
  EXPECT_TRUE(spot.Field(u"LaatstGedraaid"_s).isNull());
  EXPECT_EQ(station.LocalRows(u"SELECT * FROM tblCopie_Items"_s).Field(u"Sluiter"_s).toInt(), 4);
  EXPECT_EQ(station.LocalRows(u"SELECT * FROM tblCopie_ItemsItemSpots"_s).Field(u"ItemSpotID"_s).toInt(), 3);
  // The only copy statement that lists its fields.
  const dao::Recordset jingle = station.LocalRows(u"SELECT * FROM tblCopie_ItemPingles"_s);
  EXPECT_EQ(jingle.Field(u"Naam"_s).toString(), u"j"_s);
  EXPECT_EQ(jingle.Field(u"Path"_s).toString(), u"p"_s);
  for (const auto& [field, value] :
       {std::pair(u"ID"_s, 4), {u"LengteSec"_s, 6}, {u"StartPunt"_s, 2}, {u"Mixpunt"_s, 9}, {u"Aktief"_s, 1}}) {
    EXPECT_EQ(jingle.Field(field).toInt(), value) << field.toStdString();
  }
  EXPECT_TRUE(station.Log().isEmpty());
}

TEST(Copy, CopiesEveryRowOfTheServersTables) {
  const Station station;
  for (int id = 1; id <= 3; ++id) {
    const QString number = QString::number(id);
    station.OnServer(u"INSERT INTO tblItemSpots (ID, Aktief) VALUES (%1, 0)"_s.arg(number));
    station.OnServer(u"INSERT INTO tblItems (ID, Aktief) VALUES (%1, 0)"_s.arg(number));
    station.OnServer(
        u"INSERT INTO tblItemsItemSpots (ItemID, ItemSpotOrder, ItemSpotID) VALUES (1, %1, 9)"_s.arg(number));
    station.OnServer(u"INSERT INTO tblItemPingles (ID, Aktief) VALUES (%1, 0)"_s.arg(number));
  }
  const QString server = global.serverDatabasePath;
  const QString local = global.localDatabasePath;
  EXPECT_TRUE(TransItemSpotsToLocal(server, local));
  EXPECT_TRUE(TransItemsToLocal(server, local));
  EXPECT_TRUE(TransItemsItemSpotsToLocal(server, local));
  EXPECT_TRUE(TransItemPinglesToLocal(server, local));
  for (const QString& name : {u"Items"_s, u"ItemSpots"_s, u"ItemPingles"_s, u"ItemsItemSpots"_s}) {
    EXPECT_EQ(station.LocalRows(u"SELECT * FROM tblCopie_"_s + name).RecordCount(), 3) << name.toStdString();
  }
}

TEST(Copy, DuplicateKeyLeavesTheCopyTableUnchanged) {
  const Station station;
  for (int id = 1; id <= 3; ++id) {
    station.OnServer(u"INSERT INTO tblItems (ID, Naam) VALUES (%1, \"server\")"_s.arg(id));
  }
  station.OnLocal(u"INSERT INTO tblCopie_Items (ID, Naam) VALUES (2, \"lokaal\")"_s);
  const desktop::MessageBoxScript boxes;
  EXPECT_FALSE(TransItemsToLocal(global.serverDatabasePath, global.localDatabasePath));
  EXPECT_EQ(boxes.Last().title, u"TransItemsToLocal"_s);
  const dao::Recordset rows = station.LocalRows(u"SELECT * FROM tblCopie_Items"_s);
  EXPECT_EQ(rows.RecordCount(), 1);
  EXPECT_EQ(rows.Field(u"Naam"_s).toString(), u"lokaal"_s);
}

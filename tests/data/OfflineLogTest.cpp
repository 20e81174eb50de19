// SPDX-License-Identifier: MIT
#include "data/Globals.h"
#include "data/Writes.h"
#include "platform/desktop/MessageBox.h"
#include "tests/support/Station.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using testing_support::Station;

namespace {

bool DeleteLocal(qint32 id, const QString& table, const QString& field) {
  return Delete_tblBeheer(id, table, table + u"." + field, global.localDatabasePath);
}

}  // namespace

TEST(OfflineLog, DeleteOfASpotIsLoggedForTheServerTable) {
  const Station station(Station::Mode::Offline);
  EXPECT_TRUE(DeleteLocal(4, u"tblCopie_ItemSpots"_s, u"ID"_s));
  EXPECT_EQ(station.Log(), QStringList{u"DELETE FROM tblItemSpots WHERE tblItemSpots.ID = 4"_s});
}

TEST(OfflineLog, DeletesOfItemsAndLinksAreLoggedWithTheCopyTablesName) {
  const Station station(Station::Mode::Offline);
  EXPECT_TRUE(DeleteLocal(4, u"tblCopie_Items"_s, u"ID"_s));
  EXPECT_TRUE(DeleteLocal(4, u"tblCopie_ItemsItemSpots"_s, u"ItemID"_s));
  EXPECT_EQ(station.Log(),
            (QStringList{u"DELETE FROM tblCopie_Items WHERE tblCopie_Items.ID = 4"_s,
                         u"DELETE FROM tblCopie_ItemsItemSpots WHERE tblCopie_ItemsItemSpots.ItemID = 4"_s}));
}

TEST(OfflineLog, DeleteOfAJingleIsExecutedAndNotLogged) {
  const Station station(Station::Mode::Offline);
  station.OnLocal(u"INSERT INTO tblCopie_ItemPingles (ID, Naam) VALUES (4, \"j\")"_s);
  EXPECT_TRUE(DeleteLocal(4, u"tblCopie_ItemPingles"_s, u"ID"_s));
  EXPECT_EQ(station.LocalRows(u"SELECT ID FROM tblCopie_ItemPingles"_s).RecordCount(), 0);
  EXPECT_TRUE(station.Log().isEmpty());
}

TEST(OfflineLog, DeleteUnderTheMisspeltJingleTableIsLogged) {
  const Station station(Station::Mode::Offline);
  dao::TableDef jingles = dao::OpenDatabase(global.localDatabasePath).Table(u"tblCopie_ItemPingles"_s);
  jingles.name = u"tblCopie_lItemPingles"_s;
  dao::OpenDatabase(global.localDatabasePath).CreateTable(jingles);
  EXPECT_TRUE(DeleteLocal(4, u"tblCopie_lItemPingles"_s, u"ID"_s));
  EXPECT_EQ(station.Log(), QStringList{u"DELETE FROM tblItemPingles WHERE tblItemPingles.ID = 4"_s});
}

TEST(OfflineLog, OnlyExactTableNamesAreLogged) {
  const Station station(Station::Mode::Offline);
  EXPECT_TRUE(DeleteLocal(4, u"TBLCOPIE_ITEMS"_s, u"ID"_s));
  EXPECT_TRUE(DeleteLocal(4, u"tblcopie_itemspots"_s, u"ID"_s));
  EXPECT_TRUE(Delete_tblBeheer(4, u"tblItems"_s, u"ID"_s, global.serverDatabasePath));
  EXPECT_TRUE(station.Log().isEmpty());
}

TEST(OfflineLog, DeleteThatCannotBeLoggedIsExecutedButReturnsFalse) {
  const Station station(Station::Mode::Offline);
  station.OnLocal(u"INSERT INTO tblCopie_ItemSpots (ID, Naam) VALUES (4, \"s\")"_s);
  station.OnLocal(u"INSERT INTO tblOfflineLog (ID, SqlSyntax) VALUES (2147483647, \"vol\")"_s);
  const desktop::MessageBoxScript boxes;
  EXPECT_FALSE(DeleteLocal(4, u"tblCopie_ItemSpots"_s, u"ID"_s));
  ASSERT_EQ(boxes.Shown().size(), 1U);
  EXPECT_EQ(boxes.Last().title, u"GetNewID"_s);
  EXPECT_EQ(station.LocalRows(u"SELECT ID FROM tblCopie_ItemSpots"_s).RecordCount(), 0);
  EXPECT_EQ(station.Log(), QStringList{u"vol"_s});
}

TEST(OfflineLog, EmptyingATableIsNeverLogged) {
  const Station station(Station::Mode::Offline);
  EXPECT_TRUE(DeleteAllInTable(u"tblCopie_Items"_s, global.localDatabasePath));
  EXPECT_TRUE(station.Log().isEmpty());
}

TEST(OfflineLog, IdsFollowTheOrderOfTheStatements) {
  const Station station(Station::Mode::Offline);
  station.OnLocal(u"INSERT INTO tblOfflineLog (ID, SqlSyntax) VALUES (41, \"eerder\")"_s);
  EXPECT_TRUE(DeleteLocal(4, u"tblCopie_ItemSpots"_s, u"ID"_s));
  EXPECT_TRUE(DeleteLocal(5, u"tblCopie_ItemSpots"_s, u"ID"_s));
  const dao::Recordset rows = station.LocalRows(u"SELECT MAX(ID) AS Hoogste FROM tblOfflineLog"_s);
  EXPECT_EQ(rows.Field(u"Hoogste"_s).toInt(), 43);
}

TEST(OfflineLog, StatementLongerThanATextFieldIsStoredCompletely) {
  const Station station(Station::Mode::Offline);
  const QString statement = u"UPDATE t SET a = "_s + QString(3000, u'x');
  EXPECT_TRUE(Insert_tblOfflineLog(1, statement));
  EXPECT_EQ(station.Log(), QStringList{statement});
}

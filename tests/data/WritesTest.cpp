// SPDX-License-Identifier: MIT
#include "data/Writes.h"

#include "data/Globals.h"
#include "platform/dao/FileSystemScope.h"
#include "platform/desktop/MessageBox.h"
#include "platform/files/HookedFileSystem.h"
#include "tests/support/Station.h"

#include <QFile>

#include <gtest/gtest.h>

#include <functional>
#include <new>

using namespace Qt::StringLiterals;
using testing_support::Station;

namespace {

ItemSpotRow Spot(qint32 id, const QString& naam) {
  ItemSpotRow row;
  row.id = id;
  row.path = u"D:\\a.mp3"_s;
  row.naam = naam;
  row.lengteSec = 30;
  row.startDatum = 45658;
  row.aktief = 1;
  return row;
}

// Every file call throws bad_alloc: an error that is not the database's own.
class NoMemory : public files::HookedFileSystem {
 public:
  NoMemory()
      : HookedFileSystem(files::HostFileSystem(),
                         [](files::FileCall&, const Make&) -> std::int64_t { throw std::bad_alloc(); }) {}
};

ItemRow Item(qint32 id) {
  ItemRow row;
  row.id = id;
  row.naam = u"Blok"_s;
  return row;
}

}  // namespace

TEST(Writes, OnlineNothingIsLogged) {
  const Station station;
  EXPECT_TRUE(Insert_tblItemSpots(Spot(1, u"een"_s), global.serverDatabasePath, u"tblItemSpots"_s));
  EXPECT_TRUE(Update_tblItemSpots_Aktief(1, 0, global.serverDatabasePath, u"tblItemSpots"_s));
  EXPECT_TRUE(Delete_tblBeheer(1, u"tblItemSpots"_s, u"tblItemSpots.ID"_s, global.serverDatabasePath));
  EXPECT_TRUE(station.Log().isEmpty());
}

TEST(Writes, OfflineTheStatementIsLoggedForTheServerTable) {
  const Station station(Station::Mode::Offline);
  EXPECT_TRUE(Insert_tblItemSpots(Spot(1, u"Jan's"_s), global.localDatabasePath, u"tblCopie_ItemSpots"_s));
  EXPECT_EQ(station.LocalRows(u"SELECT Naam FROM tblCopie_ItemSpots"_s).Field(u"Naam"_s).toString(), u"Jan's"_s);
  EXPECT_EQ(station.Log(), QStringList{u"INSERT INTO tblItemSpots (ID, Path, Naam, LengteSec, StartDatum, "
                                       u"AantalGedraaid,Aktief) VALUES (1, 'D:\\a.mp3', 'Jan*s', 30, 45658, 0,1)"_s});
}

TEST(Writes, OfflineItemsLinksAndJinglesAreLoggedForTheirServerTables) {
  const Station station(Station::Mode::Offline);
  const QString local = global.localDatabasePath;
  EXPECT_TRUE(Insert_tblItems(Item(1), local, u"tblCopie_Items"_s));
  EXPECT_TRUE(Update_tblItems(Item(1), local, u"tblCopie_Items"_s));
  EXPECT_TRUE(Update_tblItems_Aktief(1, 0, local, u"tblCopie_Items"_s));
  EXPECT_TRUE(Insert_tblItemsItemSpots({1, 1, 5}, local, u"tblCopie_ItemsItemSpots"_s));
  ItemPingleRow jingle;
  jingle.id = 1;
  jingle.naam = u"j"_s;
  EXPECT_TRUE(Insert_tblItemPingles(jingle, local, u"tblCopie_ItemPingles"_s));
  EXPECT_TRUE(Update_tblItemPingles(jingle, local, u"tblCopie_ItemPingles"_s));
  const QStringList log = station.Log();
  ASSERT_EQ(log.size(), 6);
  EXPECT_TRUE(log[0].startsWith(u"INSERT INTO tblItems ("_s));
  EXPECT_TRUE(log[1].startsWith(u"UPDATE tblItems SET Naam = 'Blok', "_s));
  EXPECT_EQ(log[2], u"UPDATE tblItems SET Aktief = 0 WHERE ID = 1"_s);
  EXPECT_EQ(log[3], u"INSERT INTO tblItemsItemSpots (ItemID, ItemSpotOrder, ItemSpotID) VALUES (1, 1, 5)"_s);
  EXPECT_TRUE(log[4].startsWith(u"INSERT INTO tblItemPingles ("_s));
  EXPECT_TRUE(log[5].startsWith(u"UPDATE tblItemPingles SET Path = NULL, "_s));
}

TEST(Writes, OfflineEveryChangeOfASpotIsLoggedForItsServerTable) {
  const Station station(Station::Mode::Offline);
  const QString local = global.localDatabasePath;
  EXPECT_TRUE(Update_tblItemSpots(Spot(1, u"x"_s), local, u"tblCopie_ItemSpots"_s));
  EXPECT_TRUE(Update_tblItemSpots_Aktief(1, 0, local, u"tblCopie_ItemSpots"_s));
  EXPECT_EQ(station.Log(),
            (QStringList{u"UPDATE tblItemSpots SET Path = 'D:\\a.mp3', Naam = 'x', LengteSec = 30, StartPunt = NULL, "
                         u"MixPunt = NULL, StartDatum = 45658, StartUur= NULL, EindDatum = NULL, EindUur = NULL, "
                         u"Aktief = 1 WHERE ID = 1"_s,
                         u"UPDATE tblItemSpots SET Aktief = 0 WHERE ID = 1"_s}));
}

TEST(Writes, OnlyTheOnlineFlagDecidesWhetherAWriteIsLogged) {
  Station station;
  EXPECT_TRUE(Insert_tblItems(Item(1), global.localDatabasePath, u"tblCopie_Items"_s));
  EXPECT_TRUE(Delete_tblBeheer(1, u"tblCopie_Items"_s, u"ID"_s, global.localDatabasePath));
  EXPECT_TRUE(station.Log().isEmpty());
  station.Use(Station::Mode::Offline);
  EXPECT_TRUE(Update_tblItems_Aktief(1, 1, global.serverDatabasePath, u"tblItems"_s));
  EXPECT_EQ(station.Log(), QStringList{u"UPDATE tblItems SET Aktief = 1 WHERE ID = 1"_s});
}

TEST(Writes, CopyTablesNameIsReplacedEverywhereInTheStatement) {
  const Station station(Station::Mode::Offline);
  ItemPingleRow jingle;
  jingle.id = 1;
  jingle.naam = u"in tblCopie_ItemPingles en TBLCOPIE_ITEMPINGLES"_s;
  EXPECT_TRUE(Insert_tblItemPingles(jingle, global.localDatabasePath, u"tblCopie_ItemPingles"_s));
  EXPECT_TRUE(Update_tblItems_Aktief(1, 1, global.localDatabasePath, u"TBLCOPIE_ITEMS"_s));
  EXPECT_EQ(station.Log(), (QStringList{u"INSERT INTO tblItemPingles (ID, Naam, Aktief) VALUES (1, "
                                        u"'in tblItemPingles en TBLCOPIE_ITEMPINGLES', 0)"_s,
                                        u"UPDATE TBLCOPIE_ITEMS SET Aktief = 1 WHERE ID = 1"_s}));
}

TEST(Writes, PlayCountOfANewSpotIsZeroAndItsResetIsLogged) {
  const Station station(Station::Mode::Offline);
  ItemSpotRow row = Spot(1, u"x"_s);
  row.path.clear();
  ASSERT_TRUE(Insert_tblItemSpots(row, global.localDatabasePath, u"tblCopie_ItemSpots"_s));
  const dao::Recordset rows = station.LocalRows(u"SELECT * FROM tblCopie_ItemSpots"_s);
  EXPECT_EQ(rows.Field(u"AantalGedraaid"_s).toInt(), 0);
  EXPECT_TRUE(rows.Field(u"Path"_s).isNull());
  station.OnLocal(u"UPDATE tblCopie_ItemSpots SET AantalGedraaid = 12"_s);
  EXPECT_TRUE(Reset_tblItemSpots_AantalGedraaid(1, global.localDatabasePath, u"tblCopie_ItemSpots"_s));
  EXPECT_EQ(station.LocalRows(u"SELECT * FROM tblCopie_ItemSpots"_s).Field(u"AantalGedraaid"_s).toInt(), 0);
  EXPECT_EQ(station.Log().last(), u"UPDATE tblItemSpots SET AantalGedraaid = 0 WHERE ID = 1"_s);
}

TEST(Writes, UpdateOfASpotWithAnEmptyNameFails) {
  const Station station;
  ASSERT_TRUE(Insert_tblItemSpots(Spot(1, u"een"_s), global.serverDatabasePath, u"tblItemSpots"_s));
  const desktop::MessageBoxScript boxes;
  EXPECT_FALSE(Update_tblItemSpots(Spot(1, u""_s), global.serverDatabasePath, u"tblItemSpots"_s));
  ASSERT_EQ(boxes.Shown().size(), 1U);
  EXPECT_EQ(boxes.Last().title, u"Update_tblItemSpots"_s);
  EXPECT_EQ(boxes.Last().style, 16);
  EXPECT_EQ(station.ServerRows(u"SELECT Naam FROM tblItemSpots"_s).Field(u"Naam"_s).toString(), u"een"_s);
}

TEST(Writes, FailingFileIsReportedUnderTheProceduresNameAndTheResetIsSilent) {
  const Station station;
  QFile::remove(station.ServerFolder() + u"/OvalistoServer.mdb");
  const QString server = global.serverDatabasePath;
  const desktop::MessageBoxScript boxes;
  EXPECT_FALSE(Insert_tblItems(Item(1), server, u"tblItems"_s));
  EXPECT_EQ(boxes.Last().title, u"Insert_tblItems"_s);
  EXPECT_TRUE(boxes.Last().text.contains(u"OvalistoServer.mdb"_s)) << boxes.Last().text.toStdString();
  EXPECT_FALSE(Delete_tblBeheer(1, u"tblItems"_s, u"tblItems.ID"_s, server));
  EXPECT_EQ(boxes.Last().title, u"Delete_tblBeheer"_s);
  EXPECT_FALSE(DeleteAllInTable(u"tblItems"_s, server));
  EXPECT_EQ(boxes.Last().title, u"DeleteAllInTable"_s);
  EXPECT_FALSE(TransItemsToLocal(server, global.localDatabasePath));
  EXPECT_EQ(boxes.Last().title, u"TransItemsToLocal"_s);
  const std::size_t shown = boxes.Shown().size();
  EXPECT_FALSE(Reset_tblItemSpots_AantalGedraaid(1, server, u"tblItemSpots"_s));
  EXPECT_EQ(boxes.Shown().size(), shown);
}

TEST(Writes, EachProcedureReportsUnderItsOwnName) {
  const Station station;
  const QString weg = global.programFolder + u"\\weg.mdb"_s;
  global.localDatabasePath = weg;
  const QList<std::pair<QString, std::function<bool()>>> procedures{
      {u"Insert_tblItems"_s, [&] { return Insert_tblItems({}, weg, u"t"_s); }},
      {u"Update_tblItems"_s, [&] { return Update_tblItems({}, weg, u"t"_s); }},
      {u"Update_tblItems_Aktief"_s, [&] { return Update_tblItems_Aktief(1, 1, weg, u"t"_s); }},
      {u"Insert_tblItemsItemSpots"_s, [&] { return Insert_tblItemsItemSpots({}, weg, u"t"_s); }},
      {u"Insert_tblItemSpots"_s, [&] { return Insert_tblItemSpots({}, weg, u"t"_s); }},
      {u"Update_tblItemSpots"_s, [&] { return Update_tblItemSpots({}, weg, u"t"_s); }},
      {u"Update_tblItemSpots_Aktief"_s, [&] { return Update_tblItemSpots_Aktief(1, 1, weg, u"t"_s); }},
      {u"Insert_tblItemPingles"_s, [&] { return Insert_tblItemPingles({}, weg, u"t"_s); }},
      {u"Update_tblItemPingles"_s, [&] { return Update_tblItemPingles({}, weg, u"t"_s); }},
      {u"Delete_tblBeheer"_s, [&] { return Delete_tblBeheer(1, u"t"_s, u"ID"_s, weg); }},
      {u"DeleteAllInTable"_s, [&] { return DeleteAllInTable(u"t"_s, weg); }},
      {u"Insert_tblOfflineLog"_s, [&] { return Insert_tblOfflineLog(1, u"x"_s); }},
      {u"TransItemSpotsToLocal"_s, [&] { return TransItemSpotsToLocal(weg, weg); }},
      {u"TransItemPinglesToLocal"_s, [&] { return TransItemPinglesToLocal(weg, weg); }},
      {u"TransItemsToLocal"_s, [&] { return TransItemsToLocal(weg, weg); }},
      {u"TransItemsItemSpotsToLocal"_s, [&] { return TransItemsItemSpotsToLocal(weg, weg); }}};
  for (const auto& [name, procedure] : procedures) {
    const desktop::MessageBoxScript boxes;
    EXPECT_FALSE(procedure()) << name.toStdString();
    ASSERT_EQ(boxes.Shown().size(), 1U) << name.toStdString();
    EXPECT_EQ(boxes.Last().title, name);
    EXPECT_EQ(boxes.Last().style, 16);
    EXPECT_TRUE(boxes.Last().text.contains(u"weg.mdb"_s)) << boxes.Last().text.toStdString();
  }
}

TEST(Writes, ResetIsSilentAboutEveryKindOfFailure) {
  const Station station;
  NoMemory files;
  const dao::FileSystemScope scope(files);
  const desktop::MessageBoxScript boxes;
  EXPECT_FALSE(Update_tblItemSpots_Aktief(1, 0, global.serverDatabasePath, u"tblItemSpots"_s));
  EXPECT_EQ(boxes.Shown().size(), 1U);
  EXPECT_FALSE(Reset_tblItemSpots_AantalGedraaid(1, global.serverDatabasePath, u"tblItemSpots"_s));
  EXPECT_EQ(boxes.Shown().size(), 1U);
}

TEST(Writes, LogIdZeroIsValid) {
  const Station station(Station::Mode::Offline);
  station.OnLocal(u"INSERT INTO tblOfflineLog (ID, SqlSyntax) VALUES (-1, \"eerder\")"_s);
  const desktop::MessageBoxScript boxes;
  EXPECT_TRUE(Update_tblItems_Aktief(1, 1, global.localDatabasePath, u"tblCopie_Items"_s));
  EXPECT_TRUE(boxes.Shown().empty());
  EXPECT_EQ(station.Log(), (QStringList{u"eerder"_s, u"UPDATE tblItems SET Aktief = 1 WHERE ID = 1"_s}));
}

TEST(Writes, ExecutedStatementIsNotUndoneWhenItsLogRowFails) {
  Station station;
  station.Use(Station::Mode::Offline);
  station.OnLocal(u"INSERT INTO tblOfflineLog (ID, SqlSyntax) VALUES (2147483647, \"vol\")"_s);
  const desktop::MessageBoxScript boxes;
  EXPECT_FALSE(Insert_tblItems(Item(3), global.serverDatabasePath, u"tblItems"_s));
  ASSERT_EQ(boxes.Shown().size(), 1U);  // only the box of the helper procedure
  EXPECT_EQ(boxes.Last().title, u"GetNewID"_s);
  EXPECT_EQ(station.ServerRows(u"SELECT ID FROM tblItems"_s).RecordCount(), 1);
}

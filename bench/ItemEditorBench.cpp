// SPDX-License-Identifier: MIT
// The item editor with many item-spots in one item: opening it, moving lines, saving it. Opening is compared with
// SQLite looking up as many names by key, one prepared statement each. usage: ItemEditorBench [SPOTS [FOLDER]]
#include "bench/Figures.h"
#include "bench/Plain.h"
#include "bench/SpotStation.h"
#include "data/Globals.h"
#include "items/frmItemsDetail.h"
#include "platform/controls/ListBox.h"
#include "platform/dao/Database.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QPushButton>

#include <cstdio>
#include <cstdlib>

using namespace Qt::StringLiterals;
using bench::Require;

namespace {

constexpr int kMoves = 100;

void Execute(const QString& statement) {
  dao::OpenDatabase(global.serverDatabasePath).Execute(statement);
}

// One item with `spots` different item-spots, made by doubling.
void FillStation(int spots) {
  Execute(u"INSERT INTO tblItems (ID, Naam, ItemSpotsOptID, Aktief, Locked) VALUES (1, \"Groot blok\", 1, 1, 0)"_s);
  Execute(u"INSERT INTO tblItemSpots (ID, Naam, LengteSec, Aktief) VALUES (1, \"Bakkerij Van Damme\", 30, 1)"_s);
  Execute(u"INSERT INTO tblItemsItemSpots (ItemID, ItemSpotOrder, ItemSpotID) VALUES (1, 1, 1)"_s);
  for (int present = 1; present < spots; present *= 2) {
    const QString from = QString::number(present);
    const QString most = QString::number(spots - present);
    Execute(
        u"INSERT INTO tblItemSpots (ID, Naam, LengteSec, Aktief) SELECT ID + %1, Naam, LengteSec, Aktief "
        u"FROM tblItemSpots WHERE ID <= %2"_s.arg(from, most));
    Execute(
        u"INSERT INTO tblItemsItemSpots (ItemID, ItemSpotOrder, ItemSpotID) SELECT ItemID, ItemSpotOrder + %1, "
        u"ItemSpotID + %1 FROM tblItemsItemSpots WHERE ItemSpotOrder <= %2"_s.arg(from, most));
  }
}

template <class Work>
qint64 Ms(Work&& work) {
  QElapsedTimer timer;
  timer.start();
  work();
  return timer.elapsed();
}

qint64 SqliteLookupsMs(const QString& path, int spots) {
  bench::Plain plain(path);
  plain.Run(
      u"CREATE TABLE spots (ID INTEGER PRIMARY KEY, Naam TEXT); WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + "
      u"1 "
      u"FROM n WHERE i < %1) INSERT INTO spots SELECT i, 'Bakkerij Van Damme' FROM n"_s.arg(spots)
          .toUtf8());
  return Ms([&] {
    for (int id = 1; id <= spots; ++id) {
      sqlite3_stmt* statement = nullptr;
      sqlite3_prepare_v2(plain.Connection(), u"SELECT Naam FROM spots WHERE ID = %1"_s.arg(id).toUtf8().constData(), -1,
                         &statement, nullptr);
      Require(sqlite3_step(statement) == SQLITE_ROW, "every name is there");
      sqlite3_finalize(statement);
    }
  });
}

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication application(argc, argv);
  const int spots = argc > 1 ? std::atoi(argv[1]) : 10000;
  const bench::SpotStation station(0, QString::fromLocal8Bit(argc > 2 ? argv[2] : "."));
  FillStation(spots);
  global.gstrSelectedID = u"1"_s;
  frmItemsDetail editor(nullptr);
  const qint64 opening = Ms([&] {
    editor.Form_Load();
    editor.show();
    QApplication::processEvents();
  });
  auto* list = editor.findChild<controls::ListBox*>(u"lstOpt1ItemSpots"_s);
  Require(list->ListCount() == spots, "every item-spot is listed");
  const qint64 moving = Ms([&] {
    for (int i = 0; i < kMoves; ++i) {
      list->MoveLine(i, spots - 1 - i);
      QApplication::processEvents();
    }
  });
  const qint64 saving = Ms([&] { editor.findChild<QPushButton*>(u"cmdOk"_s)->click(); });
  dao::Database database = dao::OpenDatabase(global.serverDatabasePath);
  Require(database.OpenRecordset(u"SELECT ItemID FROM tblItemsItemSpots"_s).RecordCount() == spots, "no link is lost");
  const qint64 beside = SqliteLookupsMs(station.File(u"beside.sqlite"_s), spots);
  std::printf(
      "an item with %d item-spots: opening %lld ms (SQLite, as many look-ups: %lld ms), %d moves %lld ms, saving %lld "
      "ms\n",
      spots, static_cast<long long>(opening), static_cast<long long>(beside), kMoves, static_cast<long long>(moving),
      static_cast<long long>(saving));
  bench::ReportTimes("item-open-10000", double(opening), "SQLite", double(beside));
  bench::Report("item-move", bench::Milliseconds(double(moving) / kMoves));
  bench::Report("item-save-10000", bench::Milliseconds(double(saving)));
  return 0;
}

// SPDX-License-Identifier: MIT
// Saving an item with many spots: each link is a durable statement; compared with as many single durable inserts into
// SQLite on the same disk (rollback journal, synchronous=EXTRA). usage: ItemSaveBench [FOLDER] (default: here)
#include "bench/Figures.h"
#include "bench/Plain.h"
#include "bench/SpotStation.h"
#include "data/Globals.h"
#include "data/Writes.h"
#include "platform/dao/Database.h"

#include <QApplication>
#include <QElapsedTimer>

#include <cstdio>

using namespace Qt::StringLiterals;
using bench::Require;

namespace {

constexpr int kSpots = 1000;

// The writes of one save, in order.
qint64 SaveItemMs() {
  QElapsedTimer timer;
  timer.start();
  ItemRow item;
  item.id = 1;
  item.naam = u"Groot blok"_s;
  bool good = Insert_tblItems(item, global.serverDatabasePath, u"tblItems"_s) &&
              Delete_tblBeheer(1, u"tblItemsItemSpots"_s, u"tblItemsItemSpots.ItemID"_s, global.serverDatabasePath);
  for (int order = 1; good && order <= kSpots; ++order) {
    good = Insert_tblItemsItemSpots({1, order, order % 50}, global.serverDatabasePath, u"tblItemsItemSpots"_s);
  }
  Require(good, "a write");
  return timer.elapsed();
}

qint64 SqliteMs(const QString& path) {
  bench::Plain plain(path);
  plain.Run("CREATE TABLE links (ItemID INT, ItemSpotOrder INT, ItemSpotID INT, PRIMARY KEY (ItemID, ItemSpotOrder))");
  plain.Run("CREATE INDEX item ON links (ItemID)");
  plain.Run("CREATE INDEX spot ON links (ItemSpotID)");
  QElapsedTimer timer;
  timer.start();
  for (int order = 1; order <= kSpots; ++order) {
    plain.Run(u"INSERT INTO links VALUES (1, %1, %2)"_s.arg(order).arg(order % 50).toUtf8());
  }
  return timer.elapsed();
}

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication application(argc, argv);
  const bench::SpotStation station(0, QString::fromLocal8Bit(argc > 1 ? argv[1] : "."));
  const qint64 ours = SaveItemMs();
  dao::Database database = dao::OpenDatabase(global.serverDatabasePath);
  Require(database.OpenRecordset(u"SELECT ItemID FROM tblItemsItemSpots"_s).RecordCount() == kSpots, "row count");
  const qint64 sqlite = SqliteMs(station.File(u"beside.sqlite"_s));
  std::printf("save an item with %d spots: %lld ms; SQLite, as many durable inserts: %lld ms; ratio %.2f\n", kSpots,
              static_cast<long long>(ours), static_cast<long long>(sqlite), double(ours) / double(sqlite));
  bench::ReportTimes("item-save-1000", double(ours), "SQLite", double(sqlite));
  return 0;
}

// Saving an item with many spots: each link is a statement of its own, and durable, beside as many single durable
// inserts into SQLite on the same disk (rollback journal, synchronous=EXTRA). usage: ItemSaveBench [FOLDER] (default:
// here)
#include "bench/EmptyStation.h"
#include "data/Globals.h"
#include "data/Writes.h"
#include "platform/dao/Database.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QTemporaryDir>

#include <sqlite3.h>
#include <cstdio>
#include <cstdlib>
#include <memory>

using namespace Qt::StringLiterals;

namespace {

constexpr int kSpots = 1000;

[[noreturn]] void Fail(const char* what) {
  std::fprintf(stderr, "wrong: %s\n", what);
  std::exit(1);
}

// The writes of one save, in their order.
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
  if (!good) Fail("a write failed");
  return timer.elapsed();
}

void Run(sqlite3* database, const char* statement) {
  if (sqlite3_exec(database, statement, nullptr, nullptr, nullptr) != SQLITE_OK) Fail(sqlite3_errmsg(database));
}

qint64 SqliteMs(const QString& folder) {
  sqlite3* opened = nullptr;
  sqlite3_open((folder + u"/beside.sqlite").toUtf8().constData(), &opened);
  const std::unique_ptr<sqlite3, decltype(&sqlite3_close)> database(opened, sqlite3_close);
  Run(opened, "PRAGMA journal_mode=DELETE");
  Run(opened, "PRAGMA synchronous=EXTRA");
  Run(opened,
      "CREATE TABLE links (ItemID INT, ItemSpotOrder INT, ItemSpotID INT, PRIMARY KEY (ItemID, ItemSpotOrder))");
  Run(opened, "CREATE INDEX item ON links (ItemID)");
  Run(opened, "CREATE INDEX spot ON links (ItemSpotID)");
  QElapsedTimer timer;
  timer.start();
  for (int order = 1; order <= kSpots; ++order) {
    Run(opened, u"INSERT INTO links VALUES (1, %1, %2)"_s.arg(order).arg(order % 50).toUtf8().constData());
  }
  return timer.elapsed();
}

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication application(argc, argv);
  const QTemporaryDir folder(QString::fromLocal8Bit(argc > 1 ? argv[1] : ".") + u"/save-bench-XXXXXX");
  bench::MakeEmptyStation(folder.path());
  const qint64 ours = SaveItemMs();
  dao::Database database = dao::OpenDatabase(global.serverDatabasePath);
  if (database.OpenRecordset(u"SELECT ItemID FROM tblItemsItemSpots"_s).RecordCount() != kSpots) Fail("row count");
  const qint64 sqlite = SqliteMs(folder.path());
  std::printf("save an item with %d spots: %lld ms; SQLite, as many durable inserts: %lld ms; ratio %.2f\n", kSpots,
              static_cast<long long>(ours), static_cast<long long>(sqlite), double(ours) / double(sqlite));
  return 0;
}

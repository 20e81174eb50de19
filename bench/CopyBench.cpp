// SPDX-License-Identifier: MIT
// Refreshing the local copy of the catalogue: 100 000 item-spots deleted and copied again from the server's file to the
// local one, each a durable statement, compared with SQLite doing the same (ATTACH, rollback journal, full sync) on the
// same disk. Rounds alternate; the median counts. usage: CopyBench [ROWS [FOLDER]]
#include "bench/Figures.h"
#include "bench/Plain.h"
#include "data/Schema.h"
#include "platform/dao/Database.h"
#include "platform/dao/Storage.h"
#include "platform/runtime/HostPath.h"

#include <QTemporaryDir>

#include <cstdio>
#include <cstdlib>
#include <vector>

using namespace Qt::StringLiterals;
using bench::Require;

namespace {

constexpr int kRounds = 5;

struct Spot {
  int id;
  QString path;
  QString name;
  int length;
  double day;
};

Spot SpotNumber(int i) {
  return {i, u"D:\\Audio\\Spots\\klant %1\\spot %2.mp3"_s.arg(i % 97).arg(i), u"Bakkerij actie week %1"_s.arg(i % 4000),
          15 + i % 45, 45'000.0 + i % 700};
}

void FillServer(const QString& path, int rows) {
  schema::CreateServerDatabase(path);
  const auto storage = dao::OpenStorage(path);
  const auto turn = storage->Begin(dao::Access::Write);
  const auto table = storage->OpenTable(u"tblItemSpots"_s);
  for (int i = 1; i <= rows; ++i) {
    const Spot spot = SpotNumber(i);
    const std::int64_t none = 0;
    const std::vector<dao::Value> row = {std::int64_t{spot.id},
                                         spot.path.toStdU16String(),
                                         spot.name.toStdU16String(),
                                         std::int64_t{spot.length},
                                         none,
                                         std::int64_t{spot.length} * 900,
                                         spot.day,
                                         none,
                                         spot.day + 30,
                                         std::int64_t{23},
                                         none,
                                         dao::Value(),
                                         std::int64_t{1}};
    table->Insert(row);
  }
  turn->Commit();
}

const char* const kPlainTable =
    "(ID INTEGER NOT NULL, Path TEXT, Naam TEXT, LengteSec INT, StartPunt INT, Mixpunt INT, StartDatum REAL, StartUur "
    "INT, EindDatum REAL, EindUur INT, AantalGedraaid INT, LaatstGedraaid REAL, Aktief INT)";

void MakePlain(bench::Plain& server, bench::Plain& local, const QString& serverPath, int rows) {
  for (bench::Plain* database : {&server, &local}) {
    const QByteArray table = database == &server ? "tblItemSpots" : "tblCopie_ItemSpots";
    database->Run("CREATE TABLE " + table + ' ' + kPlainTable);
    database->Run("CREATE UNIQUE INDEX " + table + "_key ON " + table + " (ID)");
  }
  server.Run("BEGIN");
  for (int i = 1; i <= rows; ++i) {
    const Spot spot = SpotNumber(i);
    server.Run(u"INSERT INTO tblItemSpots VALUES (%1, '%2', '%3', %4, 0, %5, %6, 0, %7, 23, 0, NULL, 1)"_s.arg(spot.id)
                   .arg(spot.path, spot.name)
                   .arg(spot.length)
                   .arg(spot.length * 900)
                   .arg(spot.day)
                   .arg(spot.day + 30)
                   .toUtf8());
  }
  server.Run("COMMIT");
  local.Run("ATTACH '" + serverPath.toUtf8() + "' AS server");
}

void CheckCopy(dao::Database local, bench::Plain& plain, int rows) {
  const dao::Recordset ours = local.OpenRecordset(
      u"SELECT COUNT(*) AS Aantal, SUM(LengteSec) AS Lengte, MAX(ID) AS Laatste FROM tblCopie_ItemSpots"_s);
  Require(ours.Field(u"Aantal"_s).toInt() == rows, "row count");
  Require(plain.Number("SELECT COUNT(*) FROM tblCopie_ItemSpots") == rows, "row count of SQLite");
  Require(plain.Number("SELECT SUM(LengteSec) FROM tblCopie_ItemSpots") == ours.Field(u"Lengte"_s).toLongLong(),
          "sum of lengths");
  Require(plain.Number("SELECT MAX(ID) FROM tblCopie_ItemSpots") == ours.Field(u"Laatste"_s).toInt(), "last number");
}

}  // namespace

int main(int argc, char** argv) {
  const int rows = argc > 1 ? std::atoi(argv[1]) : 100'000;
  const QTemporaryDir folder(QString::fromLocal8Bit(argc > 2 ? argv[2] : ".") + u"/copy-bench-XXXXXX");
  runtime::SetDrives({});
  const QString server = runtime::PathText(folder.filePath(u"server.mdb"_s));
  const QString local = runtime::PathText(folder.filePath(u"local.mdb"_s));
  FillServer(server, rows);
  schema::CreateLocalDatabase(local);
  bench::Plain plainServer(folder.filePath(u"server.sqlite"_s));
  bench::Plain plain(folder.filePath(u"local.sqlite"_s));
  MakePlain(plainServer, plain, folder.filePath(u"server.sqlite"_s), rows);

  bench::Sides remove(kRounds);
  bench::Sides copy(kRounds);
  for (int round = 0; round < kRounds; ++round) {
    dao::Database ours = dao::OpenDatabase(local);
    remove.Ours([&] { ours.Execute(u"DELETE FROM tblCopie_ItemSpots"_s); });
    remove.Beside([&] { plain.Run("DELETE FROM tblCopie_ItemSpots"); });
    copy.Ours([&] {
      dao::OpenDatabase(server).Execute(u"INSERT INTO tblCopie_ItemSpots IN \""_s + local +
                                        u"\" SELECT * FROM tblItemSpots"_s);
    });
    copy.Beside([&] { plain.Run("INSERT INTO tblCopie_ItemSpots SELECT * FROM tblItemSpots"); });
    CheckCopy(ours, plain, rows);
  }
  std::printf("%d rows, beside SQLite with full sync, by the clock\n", rows);
  remove.Print("delete-all", "delete them all");
  copy.Print("copy-all", "copy them from server to local");
  return 0;
}

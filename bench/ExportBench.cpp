// SPDX-License-Identifier: MIT
// The offline log: a million statements written to an export file, read, written and synced, compared with the sqlite3
// shell writing the same rows to a file that is then synced; and two thousand statements logged one by one, compared
// with SQLite, each a query for the highest number and an insert, durable on both sides. The files are compared. usage:
// ExportBench [STATEMENTS [LOGGED [FOLDER]]]
#include "bench/Child.h"
#include "bench/ExampleSpot.h"
#include "bench/Figures.h"
#include "bench/Plain.h"
#include "bench/SpotStation.h"
#include "data/Globals.h"
#include "data/Lookups.h"
#include "data/Statements.h"
#include "data/Writes.h"
#include "export/OfflineLogExport.h"
#include "platform/dao/Database.h"
#include "platform/dao/Storage.h"
#include "platform/runtime/HostPath.h"

#include <QApplication>
#include <QCryptographicHash>
#include <QFile>
#include <QStandardPaths>

#include <sys/resource.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

using namespace Qt::StringLiterals;
using bench::Require;

namespace {

constexpr int kRounds = 3;
constexpr int kLogRounds = 10;
constexpr int kRowsATurn = 50000;  // the changes of a transaction are held in memory

// A statement as an editor logs it when it saves a spot.
QString Statement(int number) {
  return statements::UpdateItemSpot(bench::ExampleSpot(number), u"tblItemSpots"_s);
}

// Below the SQL.
void FillLog(int statements) {
  const auto storage = dao::OpenStorage(global.localDatabasePath);
  for (int done = 0; done < statements; done += kRowsATurn) {
    const auto turn = storage->Begin(dao::Access::Write);
    const auto table = storage->OpenTable(u"tblOfflineLog"_s);
    for (int id = done + 1; id <= std::min(statements, done + kRowsATurn); ++id) {
      const std::vector<dao::Value> row{std::int64_t{id}, statements::LogText(Statement(id)).toStdU16String()};
      table->Insert(row);
    }
    turn->Commit();
  }
}

const char* const kPlainLog = "CREATE TABLE tblOfflineLog (ID INTEGER PRIMARY KEY, SqlSyntax TEXT)";

void FillPlain(bench::Plain& plain, int statements) {
  plain.Run(kPlainLog);
  plain.Run("BEGIN");
  sqlite3_stmt* insert = nullptr;
  sqlite3_prepare_v2(plain.Connection(), "INSERT INTO tblOfflineLog VALUES (?, ?)", -1, &insert, nullptr);
  for (int id = 1; id <= statements; ++id) {
    const QByteArray text = statements::LogText(Statement(id)).toUtf8();
    sqlite3_bind_int(insert, 1, id);
    sqlite3_bind_text(insert, 2, text.constData(), static_cast<int>(text.size()), SQLITE_STATIC);
    Require(sqlite3_step(insert) == SQLITE_DONE, "insert");
    sqlite3_reset(insert);
  }
  sqlite3_finalize(insert);
  plain.Run("COMMIT");
}

QByteArray DigestOf(const QString& path) {
  QFile file(path);
  Require(file.open(QIODevice::ReadOnly), "open what was written");
  QCryptographicHash hash(QCryptographicHash::Sha256);
  hash.addData(&file);
  return hash.result();
}

double PeakMegabytes() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  return static_cast<double>(usage.ru_maxrss) / 1024;
}

void WriteExport(int count, const QString& place) {
  const bench::SpotStation station(0, place);
  FillLog(count);
  const QString plainFile = station.File(u"plain.sqlite"_s);
  {
    bench::Plain plain(plainFile);
    FillPlain(plain, count);
  }
  const QString folder = runtime::PathText(station.Folder());
  const QString dump = station.File(u"dump.tql"_s);
  const std::string select = "sqlite3 '" + plainFile.toStdString() +
                             "' \"SELECT trim(SqlSyntax) || ';' || char(13) FROM tblOfflineLog ORDER BY ID\" > '" +
                             dump.toStdString() + "' && sync '" + dump.toStdString() + '\'';
  const bool beside = !QStandardPaths::findExecutable(u"sqlite3"_s).isEmpty();
  bench::Sides sides(kRounds);
  for (int round = 0; round < kRounds; ++round) {
    QString written;
    sides.Ours([&] { written = OfflineLogExport(global.localDatabasePath).WriteFile(folder); });
    if (beside) sides.Beside([&] { Require(std::system(select.c_str()) == 0, "sqlite3"); });
    written = runtime::HostPath(written);
    Require(!beside || DigestOf(written) == DigestOf(dump), "the same bytes");
    QFile::remove(written);
  }
  const QByteArray what = "export " + QByteArray::number(count) + " statements";
  if (beside) sides.Print("export-million", what.constData());
  std::printf("peak memory of ours, the filling of the log included: %.0f MB\n", PeakMegabytes());
  bench::Report("export-memory", QString::number(PeakMegabytes(), 'f', 0).toStdString() + " MB");
}

// The part of every write procedure that logs the statement.
void LogOurs(int first, int count) {
  for (int i = 0; i < count; ++i) {
    const qint32 id = GetNewID(u"tblOfflineLog"_s, u"ID"_s, global.localDatabasePath);
    Require(id == first + i && Insert_tblOfflineLog(id, Statement(id)), "log a statement");
  }
}

void LogPlain(bench::Plain& plain, int count) {
  for (int i = 0; i < count; ++i) {
    const qint64 id = plain.Number("SELECT MAX(ID) FROM tblOfflineLog") + 1;
    plain.Run("INSERT INTO tblOfflineLog VALUES (" + QByteArray::number(id) + ", '" +
              Statement(static_cast<int>(id)).replace(u'\'', u'*').toUtf8() + "')");
  }
}

void LogStatements(int count, const QString& place) {
  const bench::SpotStation station(0, place);
  bench::Plain plain(station.File(u"plain.sqlite"_s));
  plain.Run(kPlainLog);
  bench::Sides sides(kLogRounds);
  const int part = count / kLogRounds;
  for (int round = 0; round < kLogRounds; ++round) {
    sides.Ours([&] { LogOurs(round * part + 1, part); });
    sides.Beside([&] { LogPlain(plain, part); });
  }
  dao::Database log = dao::OpenDatabase(global.localDatabasePath);
  Require(log.OpenRecordset(u"SELECT ID FROM tblOfflineLog"_s).RecordCount() == part * kLogRounds,
          "every statement is logged");
  Require(plain.Number("SELECT COUNT(*) FROM tblOfflineLog") == part * kLogRounds, "row count of SQLite");
  const QByteArray what = "log " + QByteArray::number(part) + " statements, a tenth of all";
  sides.Print("log-statement", what.constData());
}

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication application(argc, argv);
  const int exported = argc > 1 ? std::atoi(argv[1]) : 1'000'000;
  const int logged = argc > 2 ? std::atoi(argv[2]) : 2'000;
  const QString place = QString::fromLocal8Bit(argc > 3 ? argv[3] : ".");
  if (logged > 0) LogStatements(logged, place);
  if (exported > 0) WriteExport(exported, place);
  return 0;
}

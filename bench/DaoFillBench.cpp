// SPDX-License-Identifier: MIT
// Filling a list of 50 000 item-spots as the screens do (open, select with filter and order, read, close), compared
// with plain SQLite doing the same query on the same rows; then the cost of a small statement without its syncs.
#include "bench/Figures.h"
#include "platform/dao/Database.h"
#include "platform/dao/Storage.h"
#include "platform/runtime/Error.h"

#include <QFile>
#include <QTemporaryDir>

#include <sqlite3.h>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <random>
#include <utility>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

constexpr int kRows = 50'000;
constexpr int kRuns = 7;
const QString kQuery = u"SELECT t.ID, t.Naam As Code From t WHERE t.Aktief = 1 ORDER BY t.Naam"_s;

using Line = std::pair<int, QString>;

QString RandomName(std::mt19937& random) {
  static const QStringList kWords = {u"bakkerij"_s, u"Garage"_s,   u"zomer"_s,  u"Café"_s, u"actie"_s,
                                     u"Kerst"_s,    u"schoenen"_s, u"Optiek"_s, u"tuin"_s, u"Feest"_s};
  QString name;
  for (int i = 0; i < 3; ++i)
    name += kWords[static_cast<qsizetype>(random() % 10)] + u' ';
  return name + QString::number(random() % 10'000);
}

std::vector<QString> RandomNames() {
  std::mt19937 random(7);
  std::vector<QString> names;
  names.reserve(kRows);
  for (int i = 0; i < kRows; ++i)
    names.push_back(RandomName(random));
  return names;
}

void Check(bool fine, const char* what) {
  if (!fine) throw runtime::Error(QString::fromLatin1(what));
}

// The SQLite file: the same fields, names compared without letter case.
void MakePlain(const QString& path, const std::vector<QString>& names) {
  sqlite3* file = nullptr;
  Check(sqlite3_open(QFile::encodeName(path).constData(), &file) == SQLITE_OK, "open");
  sqlite3_exec(file,
               "CREATE TABLE t (ID INTEGER, Naam TEXT COLLATE NOCASE, Aktief INTEGER, Path TEXT); "
               "CREATE UNIQUE INDEX k ON t (ID); BEGIN",
               nullptr, nullptr, nullptr);
  sqlite3_stmt* insert = nullptr;
  sqlite3_prepare_v2(file, "INSERT INTO t VALUES (?, ?, ?, ?)", -1, &insert, nullptr);
  for (int i = 0; i < kRows; ++i) {
    const QByteArray name = names[static_cast<std::size_t>(i)].toUtf8();
    sqlite3_bind_int(insert, 1, i + 1);
    sqlite3_bind_text(insert, 2, name.constData(), static_cast<int>(name.size()), SQLITE_TRANSIENT);
    sqlite3_bind_int(insert, 3, i % 10 == 0 ? 0 : 1);
    sqlite3_bind_text(insert, 4, "D:\\Audio\\een map\\bestand.mp3", -1, SQLITE_STATIC);
    Check(sqlite3_step(insert) == SQLITE_DONE, "insert");
    sqlite3_reset(insert);
  }
  sqlite3_finalize(insert);
  Check(sqlite3_exec(file, "COMMIT", nullptr, nullptr, nullptr) == SQLITE_OK, "commit");
  sqlite3_close(file);
}

std::vector<Line> FillPlain(const QString& path) {
  sqlite3* file = nullptr;
  Check(sqlite3_open(QFile::encodeName(path).constData(), &file) == SQLITE_OK, "open");
  sqlite3_stmt* select = nullptr;
  Check(sqlite3_prepare_v2(file, kQuery.toUtf8().constData(), -1, &select, nullptr) == SQLITE_OK, "prepare");
  std::vector<Line> lines;
  while (sqlite3_step(select) == SQLITE_ROW) {
    lines.emplace_back(sqlite3_column_int(select, 0),
                       QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(select, 1))));
  }
  sqlite3_finalize(select);
  sqlite3_close(file);
  return lines;
}

dao::FieldDef Field(const QString& name, dao::FieldType type, int size = 0) {
  dao::FieldDef field;
  field.name = name;
  field.type = type;
  field.size = size;
  return field;
}

void MakeOurs(const QString& path, const std::vector<QString>& names) {
  dao::CreateDatabase(path);
  dao::IndexDef key;
  key.name = u"PrimaryKey"_s;
  key.fields = {{u"ID"_s, dao::Direction::Ascending}};
  key.primary = key.unique = key.required = true;
  dao::OpenDatabase(path).CreateTable(
      {u"t"_s,
       {Field(u"ID"_s, dao::FieldType::Long), Field(u"Naam"_s, dao::FieldType::Text, 255),
        Field(u"Aktief"_s, dao::FieldType::Integer), Field(u"Path"_s, dao::FieldType::Text, 255)},
       {key}});
  const auto storage = dao::OpenStorage(path);
  const auto turn = storage->Begin(dao::Access::Write);
  const auto table = storage->OpenTable(u"t"_s);
  for (int i = 0; i < kRows; ++i) {
    const std::vector<dao::Value> row = {std::int64_t{i + 1}, names[static_cast<std::size_t>(i)].toStdU16String(),
                                         std::int64_t{i % 10 == 0 ? 0 : 1}, u"D:\\Audio\\een map\\bestand.mp3"};
    table->Insert(row);
  }
  turn->Commit();
}

std::vector<Line> FillOurs(const QString& path) {
  dao::Database database = dao::OpenDatabase(path);
  std::vector<Line> lines;
  for (dao::Recordset rows = database.OpenRecordset(kQuery); !rows.Eof(); rows.MoveNext()) {
    lines.emplace_back(rows.Field(u"ID"_s).toInt(), rows.Field(u"Code"_s).toString());
  }
  return lines;
}

// The smallest processor time of several runs, so that other programs do not count.
double BestMilliseconds(const std::function<void()>& action) {
  double best = 1e9;
  for (int run = 0; run < kRuns; ++run) {
    const std::clock_t start = std::clock();
    action();
    best = std::min(best, 1000.0 * static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC);
  }
  return best;
}

void CompareFilling(const QString& plainPath, const QString& ourPath) {
  Check(FillPlain(plainPath).size() == FillOurs(ourPath).size(), "the two files differ");
  const double plain = BestMilliseconds([&] { FillPlain(plainPath); });
  const double ours = BestMilliseconds([&] { FillOurs(ourPath); });
  std::printf("fill %d rows, filtered and sorted: plain SQLite %.1f ms, dao %.1f ms, ratio %.2f\n", kRows, plain, ours,
              ours / plain);
  bench::ReportTimes("query-50000", ours, "SQLite", plain);
}

void SmallStatements(const QString& path) {
  const auto print = [](const char* what, double milliseconds) { std::printf("%s: %.3f ms\n", what, milliseconds); };
  print("open and release", BestMilliseconds([&] { dao::OpenDatabase(path); }));
  print("open, MAX(ID), release",
        BestMilliseconds([&] { dao::OpenDatabase(path).OpenRecordset(u"SELECT MAX(ID) AS LaatsteID FROM t"_s); }));
  print("open, one row by key, release",
        BestMilliseconds([&] { dao::OpenDatabase(path).OpenRecordset(u"SELECT t.* FROM t WHERE t.ID = 777"_s); }));
  print("open, keyed update that meets no row, release", BestMilliseconds([&] {
          dao::OpenDatabase(path).Execute(u"UPDATE t SET Aktief = 1, Naam = \"x\" WHERE ID = -1"_s);
        }));
  print("open, keyed update, release, its syncs apart", BestMilliseconds([&] {
          dao::OpenDatabase(path).Execute(u"UPDATE t SET Aktief = 1, Naam = \"x\" WHERE ID = 777"_s);
        }));
}

}  // namespace

int main() {
  try {
    const QTemporaryDir folder;
    const std::vector<QString> names = RandomNames();
    // Ours first: its first statement initialises the SQL library for the process, and both are measured initialised.
    MakeOurs(folder.filePath(u"ours.mdb"_s), names);
    FillOurs(folder.filePath(u"ours.mdb"_s));
    MakePlain(folder.filePath(u"plain.db"_s), names);
    CompareFilling(folder.filePath(u"plain.db"_s), folder.filePath(u"ours.mdb"_s));
    SmallStatements(folder.filePath(u"ours.mdb"_s));
    return 0;
  } catch (const runtime::Error& error) {
    std::fprintf(stderr, "%s\n", error.what());
    return 1;
  }
}

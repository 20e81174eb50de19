// SPDX-License-Identifier: MIT
// Changing a table row by row, every change durable: inserts, updates and deletes in a table with two indexes and
// 10 000 rows, by SQL and by the library below it, compared with SQLite (rollback journal, synchronous=EXTRA) with the
// same statements on the same disk. Blocks alternate, so that other load on the disk affects all; the median of the
// blocks counts. Then the same in memory (/dev/shm), where syncs cost nothing and only our own work is measured.
// usage: DurableBench [CHANGES [FOLDER]]       of each kind, default 1000: a disk whose syncs take milliseconds
//        needs minutes; the folder is SPOTROOSTER_BENCH_FOLDER or that of this program
//        DurableBench alone dao|jet|sqlite insert|update|delete CHANGES       one kind in memory, for a profiler
//        DurableBench alone dao|sqlite statement ROUNDS       10 000 inserts in a statement, and their deletes in one
#include "bench/BenchFolder.h"
#include "bench/ChangedTable.h"
#include "bench/Figures.h"
#include "bench/Plain.h"
#include "bench/TimedFiles.h"
#include "platform/dao/Database.h"
#include "platform/dao/FileSystemScope.h"

#include <QDir>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <memory>
#include <numeric>
#include <random>
#include <vector>

using namespace Qt::StringLiterals;
using bench::ChangedTable;
using bench::Require;

namespace {

constexpr int kStanding = 10'000;
constexpr int kChanges = 1'000;
constexpr int kRounds = 5;
const QString kMemory = u"/dev/shm"_s;

struct Kind {
  const char* name;
  std::function<void(ChangedTable&, int)> change;
};

const std::vector<Kind> kKinds = {{"insert", [](ChangedTable& table, int id) { table.Insert(id); }},
                                  {"update", [](ChangedTable& table, int id) { table.Update(id, 5); }},
                                  {"delete", [](ChangedTable& table, int id) { table.Delete(id); }}};

// As many inserts as there are rows, durable as one transaction, and their deletes.
const QString kInsertAll =
    u"INSERT INTO tblItemSpots (ID, Naam, Path, LengteSec, StartDatum, Aktief) "
    "SELECT ID + 100000, Naam, Path, LengteSec, StartDatum, Aktief FROM tblItemSpots"_s;
const QString kDeleteAll = u"DELETE FROM tblItemSpots WHERE ID > 100000"_s;

// New rows come in key order; rows to change or delete are chosen at random.
std::vector<int> Ids(const Kind& kind, int changes) {
  std::vector<int> ids(static_cast<std::size_t>(changes));
  std::iota(ids.begin(), ids.end(), kStanding + 1);
  if (&kind != &kKinds.front()) std::shuffle(ids.begin(), ids.end(), std::mt19937(1));
  return ids;
}

class Contest {
 public:
  Contest(const QString& folder, int changes)
      : folder_(folder + u"/durable-bench-XXXXXX"_s),
        scope_(files_),
        changes_(changes),
        place_(folder == kMemory ? "-memory" : "-disk") {
    Require(folder_.isValid(), "the folder");
    tables_.push_back(bench::TableOfSqlite(folder_.path()));
    tables_.push_back(bench::TableOfDao(folder_.path()));
    tables_.push_back(bench::TableOfJet(folder_.path(), files_));
    for (const auto& table : tables_)
      table->Fill(kStanding);
  }

  void Run() {
    for (const Kind& kind : kKinds) {
      RunKind(kind);
      for (const auto& table : tables_)
        Require(table->Read() == tables_.front()->Read(), "rows or sums");
    }
    Require(tables_.front()->Read().rows == kStanding, "row count at the end");
    RunOneStatement();
  }

 private:
  void RunKind(const Kind& kind) {
    const std::vector<int> ids = Ids(kind, changes_);
    const std::size_t block = std::clamp<std::size_t>(ids.size() / 20, 1, 500);
    std::vector<std::vector<double>> times(tables_.size());
    std::vector<bench::TimedFiles::Spent> spent(tables_.size());
    for (std::size_t first = 0; first < ids.size(); first += block) {
      const std::size_t end = std::min(first + block, ids.size());
      for (std::size_t i = 0; i < tables_.size(); ++i) {
        files_.Forget();
        const double ms = bench::MillisecondsOf([&] {
          for (std::size_t at = first; at < end; ++at)
            kind.change(*tables_[i], ids[at]);
        });
        times[i].push_back(ms / static_cast<double>(end - first));
        spent[i] += files_.TimeSpent();
      }
    }
    Print(kind, times, spent);
  }

  void RunOneStatement() {
    bench::Plain plain(tables_[0]->Path());
    dao::Database ours = dao::OpenDatabase(tables_[1]->Path());
    bench::Sides inserts(kRounds);
    bench::Sides deletes(kRounds);
    for (int round = 0; round < kRounds; ++round) {
      inserts.Beside([&] { plain.Run(kInsertAll.toUtf8()); });
      inserts.Ours([&] { Require(ours.Execute(kInsertAll) == kStanding, "rows inserted"); });
      Require(tables_[0]->Read() == tables_[1]->Read(), "rows or sums");
      deletes.Beside([&] { plain.Run(kDeleteAll.toUtf8()); });
      deletes.Ours([&] { Require(ours.Execute(kDeleteAll) == kStanding, "rows deleted"); });
    }
    inserts.Print("insert-10000" + place_, "10 000 inserts in one statement");
    deletes.Print("delete-10000" + place_, "10 000 deletes in one statement");
  }

  void Print(const Kind& kind, const std::vector<std::vector<double>>& times,
             const std::vector<bench::TimedFiles::Spent>& spent) const {
    const double beside = bench::Median(times.front());
    std::printf("%s, each durable: SQLite %.3f ms\n", kind.name, beside);
    for (std::size_t i = 1; i < tables_.size(); ++i) {
      const double ours = bench::Median(times[i]);
      std::printf(
          "  %-6s %.3f ms: ratio %.2f; a change: %.1f syncs, %.3f ms of waiting for the disk, %.1f writes of %.0f "
          "bytes in all, %.0f calls\n",
          qPrintable(tables_[i]->Name()), ours, ours / beside, spent[i].syncs / double(changes_),
          spent[i].waitedMilliseconds / changes_, spent[i].writes / double(changes_), spent[i].bytesWritten / changes_,
          spent[i].calls / double(changes_));
      const QByteArray id = QByteArray(kind.name) + '-' + tables_[i]->Name().toUtf8() + place_;
      bench::ReportTimes(id.toStdString(), ours, "SQLite", beside);
    }
  }

  QTemporaryDir folder_;
  bench::TimedFiles files_;
  dao::FileSystemScope scope_;
  int changes_;
  QByteArray place_;  // appended to the names of the reported rows
  std::vector<std::unique_ptr<ChangedTable>> tables_;
};

void Compare(const QString& folder, int changes) {
  std::printf("in %s, %d changes of each kind\n", qPrintable(folder), changes);
  Contest(folder, changes).Run();
}

// Only `changes` of one kind: the cost of a change is the difference between two counts of changes.
int RunAlone(const QString& who, const QString& what, int changes) {
  const QTemporaryDir folder(kMemory + u"/durable-bench-XXXXXX"_s);
  const auto table = who == u"sqlite"_s ? bench::TableOfSqlite(folder.path())
                     : who == u"jet"_s  ? bench::TableOfJet(folder.path(), jet::HostFileSystem())
                                        : bench::TableOfDao(folder.path());
  const auto kind =
      std::find_if(kKinds.begin(), kKinds.end(), [&](const Kind& one) { return what == QLatin1StringView(one.name); });
  Require(kind != kKinds.end(), "usage");
  const bool isInsert = kind == kKinds.begin();
  table->Fill(isInsert ? kStanding : kStanding + 2'000);
  std::vector<int> ids = Ids(*kind, isInsert ? changes : 2'000);
  Require(changes <= static_cast<int>(ids.size()), "that many changes");
  ids.resize(static_cast<std::size_t>(changes));
  for (const int id : ids)
    kind->change(*table, id);
  return 0;
}

// The two statements of 10 000 rows, `rounds` times.
int RunStatementsAlone(const QString& who, int rounds) {
  const QTemporaryDir folder(kMemory + u"/durable-bench-XXXXXX"_s);
  const bool isSqlite = who == u"sqlite"_s;
  const auto table = isSqlite ? bench::TableOfSqlite(folder.path()) : bench::TableOfDao(folder.path());
  table->Fill(kStanding);
  for (int round = 0; round < rounds; ++round) {
    for (const QString& sql : {kInsertAll, kDeleteAll}) {
      if (isSqlite) {
        bench::Plain(table->Path()).Run(sql.toUtf8());
      } else {
        dao::OpenDatabase(table->Path()).Execute(sql);
      }
    }
  }
  return 0;
}

}  // namespace

int main(int count, char** arguments) {
  std::setvbuf(stdout, nullptr, _IOLBF, 0);
  if (count == 5 && qstrcmp(arguments[1], "alone") == 0 && qstrcmp(arguments[3], "statement") == 0)
    return RunStatementsAlone(QString::fromLocal8Bit(arguments[2]), std::atoi(arguments[4]));
  if (count == 5 && qstrcmp(arguments[1], "alone") == 0)
    return RunAlone(QString::fromLocal8Bit(arguments[2]), QString::fromLocal8Bit(arguments[3]),
                    std::atoi(arguments[4]));
  const int changes = count > 1 ? std::atoi(arguments[1]) : kChanges;
  Require(changes > 0, "usage");
  Compare(bench::BenchFolder(count > 2 ? arguments[2] : nullptr), changes);
  if (QDir(kMemory).exists()) Compare(kMemory, changes);
  return 0;
}

// SPDX-License-Identifier: MIT
// How costs grow with the catalogue: a table of 10^3 to 10^6 item-spots, read completely and changed one row at a time.
// Reading may grow linearly; an insert and a save (a keyed update) must not grow, whether the file is already open or
// opened for that one statement. The times of changes exclude waiting for the disk, which is printed separately.
// usage: GrowthBench [FOLDER]      the folder is SPOTROOSTER_BENCH_FOLDER or that of this program
//        GrowthBench read FILE     reads all fields of all rows once, to measure the memory needed
#include "bench/BenchFolder.h"
#include "bench/ChangedTable.h"
#include "bench/Child.h"
#include "bench/Figures.h"
#include "bench/Plain.h"
#include "bench/TimedFiles.h"
#include "platform/dao/Database.h"
#include "platform/dao/FileSystemScope.h"
#include "platform/runtime/Clock.h"

#include <QFileInfo>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

using namespace Qt::StringLiterals;
using bench::Require;

namespace {

constexpr int kChanges = 60;  // of each kind; one of the inserts needs a new page
constexpr int kReadings = 3;

// The time of one change without waiting for the disk, in milliseconds.
struct Cost {
  double median = 0;
  double worst = 0;
  double waited = 0;  // for the disk, the median
};

class Costs {
 public:
  void Add(double all, double waited) {
    own_.push_back(all - waited);
    waited_.push_back(waited);
  }
  Cost Medians() {
    std::sort(own_.begin(), own_.end());
    std::sort(waited_.begin(), waited_.end());
    return {own_[own_.size() / 2], own_.back(), waited_[waited_.size() / 2]};
  }

 private:
  std::vector<double> own_;
  std::vector<double> waited_;
};

struct Size {
  int rows = 0;
  double megabytes = 0;  // of the file
  double readMs = 0;
  double readMegabytes = 0;
  Cost insert, save, insertOpened, saveOpened;
};

int ReadAll(const QString& path) {
  const dao::Recordset rows = dao::OpenDatabase(path).OpenRecordset(u"SELECT * FROM tblItemSpots"_s);
  std::printf("%lld\n", static_cast<long long>(rows.RecordCount()));
  return 0;
}

class Grown {
 public:
  Grown(const QString& folder, int rows) : folder_(folder + u"/growth-bench-XXXXXX"_s), scope_(files_) {
    table_ = bench::TableOfDao(folder_.path());
    table_->Fill(rows);
    size_.rows = next_ = rows;
  }

  Size Measure() {
    size_.megabytes = static_cast<double>(QFileInfo(table_->Path()).size()) / 1e6;
    Read();
    const auto insert = [this] { table_->Insert(++next_); };
    const auto save = [this] {
      ++version_;
      table_->Update(1 + (version_ * 7919) % size_.rows, version_);
    };
    size_.insert = CostOf(insert, false);
    size_.save = CostOf(save, false);
    size_.insertOpened = CostOf(insert, true);
    size_.saveOpened = CostOf(save, true);
    Require(table_->Read().rows == size_.rows + 2 * kChanges, "row count");
    return size_;
  }

 private:
  // In its own process, whose peak memory is reported.
  void Read() {
    const std::string self = std::filesystem::read_symlink("/proc/self/exe");
    for (int i = 0; i < kReadings; ++i) {
      const bench::ChildRun run = bench::RunChild({self, "read", table_->Path().toStdString()});
      Require(run.lines == 1 && run.keySum == size_.rows, "rows read");
      if (i == 0 || run.cpuMs < size_.readMs) size_.readMs = run.cpuMs;
      size_.readMegabytes = run.peakMegabytes;
    }
  }

  template <typename Work>
  Cost CostOf(Work work, bool opening) {
    Costs costs;
    for (int i = 0; i < kChanges; ++i) {
      files_.Forget();
      const double ms = bench::MillisecondsOf([&] {
        std::optional<dao::FileSystemScope> released;
        if (opening) released.emplace(files_);
        work();
      });
      costs.Add(ms, files_.TimeSpent().waitedMilliseconds);
    }
    return costs.Medians();
  }

  QTemporaryDir folder_;
  bench::TimedFiles files_;
  dao::FileSystemScope scope_;
  std::unique_ptr<bench::ChangedTable> table_;
  int next_ = 0;
  int version_ = 0;
  Size size_;
};

void Print(const Size& size) {
  std::printf("%8d rows, %6.1f MB; read %8.1f ms, %6.1f MB\n", size.rows, size.megabytes, size.readMs,
              size.readMegabytes);
  const auto print = [](const char* what, const Cost& cost) {
    std::printf("    %-34s %7.3f ms, worst %7.3f; and %.1f ms of waiting for the disk\n", what, cost.median, cost.worst,
                cost.waited);
  };
  print("insert", size.insert);
  print("save", size.save);
  print("open, insert, release", size.insertOpened);
  print("open, save, release", size.saveOpened);
}

void PrintRatios(const Size& less, const Size& more) {
  std::printf("%d times the rows: read %.1f times the time, %.1f times the memory; insert %.2f, save %.2f\n",
              more.rows / less.rows, more.readMs / less.readMs, more.readMegabytes / less.readMegabytes,
              more.insert.median / less.insert.median, more.save.median / less.save.median);
  if (more.rows != 1'000'000) return;
  bench::Report("growth-read", bench::Milliseconds(more.readMs), std::to_string(less.rows) + " rows",
                more.readMs / less.readMs);
  bench::Report("growth-insert", bench::Milliseconds(more.insert.median), std::to_string(less.rows) + " rows",
                more.insert.median / less.insert.median);
  bench::Report("growth-save", bench::Milliseconds(more.save.median), std::to_string(less.rows) + " rows",
                more.save.median / less.save.median);
}

}  // namespace

int main(int count, char** arguments) {
  runtime::KeepTimeZone();
  std::setvbuf(stdout, nullptr, _IOLBF, 0);
  if (count == 3 && qstrcmp(arguments[1], "read") == 0) return ReadAll(QString::fromLocal8Bit(arguments[2]));
  const QString folder = bench::BenchFolder(count > 1 ? arguments[1] : nullptr);
  std::optional<Size> before;
  for (const int rows : {1'000, 10'000, 100'000, 1'000'000}) {
    const Size size = Grown(folder, rows).Measure();
    Print(size);
    if (before) PrintRatios(*before, size);
    before = size;
  }
  return 0;
}

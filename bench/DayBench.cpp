// SPDX-License-Identifier: MIT
// The steps of a planner's day on a station with many item-spots, in the real windows and on disks of different speed:
// every sync takes as long as is given. Prints for each step the 95th percentile of the time without the syncs, beside
// its budget, and the syncs for each statement that it writes (at most 4).
// usage: DayBench [SPOTS [FOLDER]]     default 50 000, here
#include "bench/Figures.h"
#include "bench/Plain.h"
#include "bench/SpotStation.h"
#include "catalogue/frmItemSpots.h"
#include "data/Globals.h"
#include "data/Writes.h"
#include "items/frmItemsDetail.h"
#include "platform/dao/Database.h"
#include "platform/dao/FileSystemScope.h"
#include "platform/files/HookedFileSystem.h"

#include <QApplication>
#include <QLineEdit>
#include <QPushButton>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <thread>
#include <vector>

using namespace Qt::StringLiterals;
using bench::Require;

namespace {

using Clock = std::chrono::steady_clock;
using Span = std::chrono::duration<double, std::milli>;

constexpr int kRepeats = 20;
constexpr int kSpotsInItem = 20;
constexpr double kBudget = 100;  // ms, for a step without its syncs
constexpr double kMaxSyncs = 4;  // for a statement
constexpr double kPercentile = 0.95;

// The files of this computer, whose syncs take a fixed time. The time of the syncs is counted apart.
class SlowDisk final : public files::HookedFileSystem {
 public:
  explicit SlowDisk(Span sync)
      : HookedFileSystem(files::HostFileSystem(),
                         [this](const files::FileCall& call, const Make& make) { return Call(call, make); }),
        sync_(sync) {}

  int Syncs() const { return syncs_; }
  Span Waited() const { return waited_; }

 private:
  std::int64_t Call(const files::FileCall& call, const Make& make) {
    if (call.kind != files::FileCall::Sync && call.kind != files::FileCall::SyncFolder) return make();
    const auto start = Clock::now();
    ++syncs_;
    std::this_thread::sleep_for(sync_);
    waited_ += Clock::now() - start;
    return 0;
  }

  const Span sync_;
  int syncs_ = 0;
  Span waited_{};
};

void Paint(QWidget& form) {
  form.grab();
  QCoreApplication::processEvents();
}

class Day {
 public:
  explicit Day(double syncMs) : disk_(Span(syncMs)), scope_(disk_) { std::printf("a sync takes %.1f ms\n", syncMs); }

  void Run() {
    Step("opening the list of item-spots", 0, [&](int) {
      frmItemSpots list(nullptr);
      list.Form_Load();
      Paint(list);
    });
    Search();
    Step("saving an item-spot", 1, [&](int i) {
      Require(Update_tblItemSpots_Aktief(i + 1, 1, global.serverDatabasePath, u"tblItemSpots"_s), "a save");
    });
    Step("opening an item of 20 spots", 0, [&](int) {
      global.gstrSelectedID = u"1"_s;
      frmItemsDetail editor(nullptr);
      editor.Form_Load();
      Paint(editor);
    });
    Item();
  }

 private:
  // `statements`: how many the step writes.
  void Step(const char* name, int statements, const std::function<void(int)>& work) {
    std::vector<double> times;
    const int before = disk_.Syncs();
    for (int i = 0; i < kRepeats; ++i) {
      const auto start = Clock::now();
      const Span waited = disk_.Waited();
      work(i);
      times.push_back((Span(Clock::now() - start) - (disk_.Waited() - waited)).count());
    }
    Print(name, statements * kRepeats, disk_.Syncs() - before, std::move(times));
  }

  void Print(const char* name, int statements, int syncs, std::vector<double> times) {
    std::sort(times.begin(), times.end());
    const double time = times[static_cast<std::size_t>(kPercentile * static_cast<double>(times.size() - 1))];
    const double each = statements == 0 ? 0 : double(syncs) / statements;
    std::printf("  %-34s %8.1f ms of %.0f   %4.1f syncs a statement%s\n", name, time, kBudget, each,
                time > kBudget || each > kMaxSyncs ? "   OVER" : "");
    Require(statements > 0 || syncs == 0, "a step that writes nothing syncs nothing");
  }

  void Search() {
    frmItemSpots list(nullptr);
    list.Form_Load();
    auto& field = *list.findChild<QLineEdit*>(u"txtZoek"_s);
    const QString word = u"tuincentrum van damme 77"_s;
    Step("a letter of a search", 0, [&](int i) {
      field.setText(word.left(1 + i % word.size()));
      Paint(list);
    });
  }

  // The item, its list emptied, and each line: one statement each.
  void Item() {
    Step("saving an item of 20 spots", 2 + kSpotsInItem, [&](int) {
      global.gstrSelectedID = u"1"_s;
      frmItemsDetail editor(nullptr);
      editor.Form_Load();
      editor.findChild<QPushButton*>(u"cmdOk"_s)->click();
    });
    dao::Database database = dao::OpenDatabase(global.serverDatabasePath);
    Require(database.OpenRecordset(u"SELECT ItemID FROM tblItemsItemSpots"_s).RecordCount() == kSpotsInItem,
            "the item");
  }

  SlowDisk disk_;
  dao::FileSystemScope scope_;
};

void AddItem() {
  dao::Database database = dao::OpenDatabase(global.serverDatabasePath);
  database.Execute(u"INSERT INTO tblItems (ID, Naam, ItemSpotsOptID, Aktief, Locked) VALUES (1, \"Blok\", 1, 1, 0)"_s);
  for (int i = 1; i <= kSpotsInItem; ++i) {
    database.Execute(u"INSERT INTO tblItemsItemSpots (ItemID, ItemSpotOrder, ItemSpotID) VALUES (1, %1, %2)"_s.arg(
        QString::number(i), QString::number(100 * i)));
  }
}

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication application(argc, argv);
  const int spots = argc > 1 ? std::atoi(argv[1]) : 50'000;
  Require(spots >= 100 * kSpotsInItem, "usage");
  const bench::SpotStation station(spots, QString::fromLocal8Bit(argc > 2 ? argv[2] : "."));
  AddItem();
  for (const double syncMs : {0.1, 10.0})
    Day(syncMs).Run();
  return 0;
}

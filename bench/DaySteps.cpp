// SPDX-License-Identifier: MIT
#include "bench/DaySteps.h"

#include "bench/Figures.h"
#include "bench/Plain.h"

#include <QElapsedTimer>

#include <algorithm>
#include <cstdio>
#include <thread>
#include <vector>

namespace bench {
namespace {

using Clock = std::chrono::steady_clock;

constexpr double kMaxSyncs = 4;  // for a statement
constexpr double kMaxTurn = 16;  // ms
constexpr double kPercentile = 0.95;
constexpr int kWatched = 5;            // repeats of a step whose background work is awaited
constexpr qint64 kSettling = 700;      // ms
constexpr qint64 kPatience = 120'000;  // ms

}  // namespace

SlowDisk::SlowDisk(Span sync)
    : HookedFileSystem(files::HostFileSystem(),
                       [this](const files::FileCall& call, const Make& make) { return Call(call, make); }),
      sync_(sync) {}

std::int64_t SlowDisk::Call(const files::FileCall& call, const Make& make) {
  if (call.kind != files::FileCall::Sync && call.kind != files::FileCall::SyncFolder) return make();
  const auto start = Clock::now();
  ++syncs_;
  std::this_thread::sleep_for(sync_);
  waited_ += Clock::now() - start;
  return 0;
}

bool TimedApplication::notify(QObject* receiver, QEvent* event) {
  if (depth_ > 0) return QApplication::notify(receiver, event);
  ++depth_;
  const auto start = Clock::now();
  const bool handled = QApplication::notify(receiver, event);
  longest_ = std::max(longest_, Span(Clock::now() - start).count());
  --depth_;
  return handled;
}

void Paint(QWidget& form) {
  form.grab();
  QCoreApplication::processEvents();
}

void DaySteps::Run(const SlowDisk& disk, const Step& step, const Work& work, const std::function<void(int)>& prepare) {
  std::vector<double> times;
  Figures figures;
  int syncs = 0;
  for (int i = 0; i < step.repeats; ++i) {
    if (prepare) prepare(i);
    const int before = disk.Syncs();
    const Span waited = disk.Waited();
    const auto start = Clock::now();
    const Window window = work(i);
    times.push_back((Span(Clock::now() - start) - (disk.Waited() - waited)).count());
    syncs += disk.Syncs() - before;
    if (i >= kWatched) continue;
    application_.TakeLongest();
    figures.settled = std::max(figures.settled, Settle(step, window));
    figures.longest = std::max(figures.longest, application_.TakeLongest());
  }
  std::sort(times.begin(), times.end());
  figures.time = times[static_cast<std::size_t>(kPercentile * static_cast<double>(times.size() - 1))];
  const int statements = step.statements * step.repeats;
  figures.syncs = statements == 0 ? 0 : double(syncs) / statements;
  Note(step, figures, syncs);
}

double DaySteps::Settle(const Step& step, const Window& window) {
  QElapsedTimer timer;
  timer.start();
  double settled = 0;
  while (step.done && !step.done(*window)) {
    Require(timer.elapsed() < kPatience, "the window is filled");
    QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
  }
  if (step.done) settled = static_cast<double>(timer.restart());
  while (timer.elapsed() < kSettling)
    QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
  return settled;
}

void DaySteps::Note(const Step& step, const Figures& figures, int syncs) {
  const bool over = figures.time > step.budget || figures.syncs > kMaxSyncs || figures.longest > kMaxTurn;
  std::printf("  %-34s %8.1f ms of %3.0f   %4.1f syncs a statement   then at most %5.1f ms%s\n", step.name,
              figures.time, step.budget, figures.syncs, figures.longest, over ? "   OVER" : "");
  if (figures.settled > 0) std::printf("    filled after %.0f ms\n", figures.settled);
  std::fflush(stdout);
  Require(step.statements > 0 || syncs == 0, "a step that writes nothing syncs nothing");
  Figures& worst = worst_[step.id];
  worst.time = std::max(worst.time, figures.time);
  worst.syncs = std::max(worst.syncs, figures.syncs);
  worst.longest = std::max(worst.longest, figures.longest);
}

void DaySteps::Report(const std::string& suffix) const {
  double longest = 0;
  double syncs = 0;
  for (const auto& [id, figures] : worst_) {
    bench::Report(id + suffix, Milliseconds(figures.time));
    longest = std::max(longest, figures.longest);
    syncs = std::max(syncs, figures.syncs);
  }
  char text[32];
  std::snprintf(text, sizeof text, "%.1f", syncs);
  bench::Report("day-syncs" + suffix, text);
  bench::Report("day-longest" + suffix, Milliseconds(longest));
}

}  // namespace bench

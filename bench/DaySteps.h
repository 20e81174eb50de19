// SPDX-License-Identifier: MIT
#pragma once

#include "platform/files/HookedFileSystem.h"

#include <QApplication>
#include <QWidget>

#include <chrono>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <utility>

namespace bench {

using Span = std::chrono::duration<double, std::milli>;

// The files of this computer, whose syncs take a fixed time. The time of the syncs is counted apart.
class SlowDisk final : public files::HookedFileSystem {
 public:
  explicit SlowDisk(Span sync);

  int Syncs() const { return syncs_; }
  Span Waited() const { return waited_; }

 private:
  std::int64_t Call(const files::FileCall& call, const Make& make);

  const Span sync_;
  int syncs_ = 0;
  Span waited_{};
};

// An application that measures how long it needs for each event: as long a user waits for an answer of the window.
class TimedApplication final : public QApplication {
 public:
  using QApplication::QApplication;
  bool notify(QObject* receiver, QEvent* event) override;
  // The longest event since the previous call, in ms.
  double TakeLongest() { return std::exchange(longest_, 0); }

 private:
  int depth_ = 0;
  double longest_ = 0;
};

// The measured steps of a day: times without syncs, syncs for each statement, and the longest event afterwards.
class DaySteps {
 public:
  struct Step {
    const char* id;  // of its row in figures.tsv
    const char* name;
    int statements = 0;   // that it writes: each may take 4 syncs
    double budget = 100;  // ms, at the 95th percentile, without the syncs
    int repeats = 20;
    // Whether the background work of the window has ended; without it a fixed time is waited.
    std::function<bool(const QWidget& window)> done = {};
  };
  // What a step opened, to be used until its background work has ended.
  using Window = std::shared_ptr<QWidget>;
  using Work = std::function<Window(int repeat)>;

  explicit DaySteps(TimedApplication& application) : application_(application) {}

  // Runs and prints the step on a disk. `prepare` is called before each repeat and not measured.
  void Run(const SlowDisk& disk, const Step& step, const Work& work,
           const std::function<void(int repeat)>& prepare = {});
  // Reports each step's highest figure of all its runs; `suffix` follows the id of its row.
  void Report(const std::string& suffix) const;

 private:
  struct Figures {
    double time = 0;     // ms
    double syncs = 0;    // a statement
    double longest = 0;  // ms
    double settled = 0;  // ms, until the background work of the slowest repeat had ended; only with Step::done
  };
  // Returns that time.
  static double Settle(const Step& step, const Window& window);
  void Note(const Step& step, const Figures& figures, int syncs);

  TimedApplication& application_;
  std::map<std::string, Figures> worst_;
};

// Shows a window as a user sees it.
void Paint(QWidget& form);

}  // namespace bench

// SPDX-License-Identifier: MIT
#include "data/forms/FilePresenceChecker.h"

#include <QElapsedTimer>

#include <utility>

namespace {

// Results are reported at this interval, so that marks appear while a long list is still being checked.
constexpr qint64 kReportIntervalMs = 25;

}  // namespace

FilePresenceChecker::FilePresenceChecker(QObject* receiver, Tell tell) : tell_(std::move(tell)), task_(receiver) {}

void FilePresenceChecker::Cancel() {
  task_.Cancel();
}

void FilePresenceChecker::Look(std::vector<Wanted> wanted) {
  task_.Send([this, wanted = std::move(wanted)](const LatestTask::Token& errand) {
    std::vector<Found> found;
    const auto tell = [&](bool last) {
      errand.Tell([this, batch = std::exchange(found, {}), last] { tell_(batch, last); });
    };
    QElapsedTimer since;
    since.start();
    for (const Wanted& file : wanted) {
      if (!errand.IsWanted()) return;
      found.push_back({file.id, runtime::Probe(file.path)});
      if (!since.hasExpired(kReportIntervalMs)) continue;
      tell(false);
      since.restart();
    }
    tell(true);
  });
}

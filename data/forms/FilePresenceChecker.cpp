// SPDX-License-Identifier: MIT
#include "data/forms/FilePresenceChecker.h"

#include <QElapsedTimer>

#include <utility>

namespace {

// Results are reported at this interval, so that marks appear while a long list is still being checked.
constexpr qint64 kReportIntervalMs = 25;

}  // namespace

FilePresenceChecker::FilePresenceChecker(QObject* receiver, Report report)
    : report_(std::move(report)), task_(receiver) {}

void FilePresenceChecker::Cancel() {
  task_.Cancel();
}

void FilePresenceChecker::Start(std::vector<Request> files) {
  task_.Send([this, files = std::move(files)](const LatestTask::Token& token) {
    std::vector<Result> results;
    const auto report = [&](bool last) {
      token.Post([this, batch = std::exchange(results, {}), last] { report_(batch, last); });
    };
    QElapsedTimer since;
    since.start();
    for (const Request& file : files) {
      if (!token.IsCurrent()) return;
      results.push_back({file.id, runtime::Probe(file.path)});
      if (!since.hasExpired(kReportIntervalMs)) continue;
      report(false);
      since.restart();
    }
    report(true);
  });
}

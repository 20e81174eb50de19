// SPDX-License-Identifier: MIT
#pragma once

#include "data/forms/LatestTask.h"
#include "platform/runtime/Probe.h"

#include <QString>

#include <chrono>
#include <functional>
#include <vector>

class QObject;

// Looks in a thread of its own whether files are there, so that a slow or dead network folder holds nobody up. Nothing
// is told any more once the finder is gone; going never waits for a file that does not answer.
class FilePresenceChecker {
 public:
  struct Wanted {
    qint64 id = 0;
    QString path;  // path text
  };
  struct Found {
    qint64 id = 0;
    runtime::Presence presence = runtime::Presence::There;
  };
  // Some of the answers, in order; `last` with the last of them. Called in the receiver's thread.
  using Tell = std::function<void(const std::vector<Found>& found, bool last)>;

  // The receiver must outlive the finder.
  FilePresenceChecker(QObject* receiver, Tell tell);

  // Instead of those looked for before, whose remaining answers are not told.
  void Look(std::vector<Wanted> wanted);
  void Cancel();
  // Waits at most that long for all answers, and then tells what came.
  void WaitFor(std::chrono::milliseconds patience) { task_.WaitFor(patience); }

 private:
  Tell tell_;
  LatestTask task_;
};

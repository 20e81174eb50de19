// SPDX-License-Identifier: MIT
#pragma once

#include "data/forms/LatestTask.h"
#include "platform/runtime/Probe.h"

#include <QString>

#include <chrono>
#include <functional>
#include <vector>

class QObject;

// Checks in a background thread whether files exist, so that a slow network folder does not block the windows. After
// destruction no results are reported; destruction does not wait for a file server that does not respond.
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
  // Reports a batch of results, in order; `last` is true for the final one. Called in the receiver's thread.
  using Tell = std::function<void(const std::vector<Found>& found, bool last)>;

  // The receiver must outlive this object.
  FilePresenceChecker(QObject* receiver, Tell tell);

  // Starts checking these files. Remaining results of an earlier call are discarded.
  void Look(std::vector<Wanted> wanted);
  void Cancel();
  // Waits up to `timeout` for all results; if they are complete, reports them before it returns.
  void WaitFor(std::chrono::milliseconds timeout) { task_.WaitFor(timeout); }

 private:
  Tell tell_;
  LatestTask task_;
};

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
  struct Request {
    qint64 id = 0;
    QString path;  // path text
  };
  struct Result {
    qint64 id = 0;
    runtime::Presence presence = runtime::Presence::There;
  };
  // Reports a batch of results, in order; `last` is true for the final one. Called in the receiver's thread.
  using Report = std::function<void(const std::vector<Result>& results, bool last)>;

  // The receiver must outlive this object.
  FilePresenceChecker(QObject* receiver, Report report);

  // Starts checking these files. Remaining results of an earlier call are discarded.
  void Start(std::vector<Request> files);
  void Cancel();
  // Waits up to `timeout` for all results; if they are complete, reports them before it returns.
  void WaitFor(std::chrono::milliseconds timeout) { task_.WaitFor(timeout); }

 private:
  Report report_;
  LatestTask task_;
};

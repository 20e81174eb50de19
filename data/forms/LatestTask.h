// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <functional>
#include <memory>

class QObject;

// Runs work in background threads, so that slow work does not block the receiver's windows. Only the latest task
// counts: results of earlier ones are discarded. All calls on the user-interface thread, except those of Token.
class LatestTask {
  struct Shared;

 public:
  // Passed to the work; its functions may be called in the background thread.
  class Token {
   public:
    // False once the task was replaced or cancelled.
    bool IsCurrent() const;
    // Queues a call in the receiver's thread; it is skipped if the task has been replaced or cancelled by then.
    void Post(std::function<void()> call) const;

   private:
    friend class LatestTask;
    Token(std::shared_ptr<Shared> shared, int number) : shared_(std::move(shared)), number_(number) {}

    std::shared_ptr<Shared> shared_;
    int number_;
  };
  // Must not use windows, must own its data and must not throw.
  using Work = std::function<void(const Token&)>;

  // The receiver must outlive this object.
  explicit LatestTask(QObject* receiver);
  // Cancels, and waits up to a quarter of a second for running tasks to end.
  ~LatestTask();
  LatestTask(const LatestTask&) = delete;
  LatestTask& operator=(const LatestTask&) = delete;

  // Starts the work in a new thread; the previous task is no longer current.
  void Send(Work work);
  void Cancel();
  // Waits up to `timeout` for all tasks to end; if they do, runs their queued calls before it returns.
  void WaitFor(std::chrono::milliseconds timeout);

 private:
  bool WaitForAll(std::chrono::milliseconds timeout);

  std::shared_ptr<Shared> shared_;
};

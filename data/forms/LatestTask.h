// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <functional>
#include <memory>

class QObject;

// Work done for a receiver in threads of their own, so that nothing slow holds its windows up. Only the errand sent
// last is wanted: what an earlier one still has to tell is not heard. User-interface thread, but for what an Token
// offers.
class LatestTask {
  struct Shared;

 public:
  // What a piece of work sees of it, in its own thread.
  class Token {
   public:
    // Whether anybody still waits for what it has to tell.
    bool IsWanted() const;
    // To be done in the receiver's thread, if the errand is still wanted by then.
    void Tell(std::function<void()> news) const;

   private:
    friend class LatestTask;
    Token(std::shared_ptr<Shared> shared, int number) : shared_(std::move(shared)), number_(number) {}

    std::shared_ptr<Shared> shared_;
    int number_;
  };
  // Touches no window, owns what it uses and throws nothing.
  using Work = std::function<void(const Token&)>;

  // The receiver must outlive it.
  explicit LatestTask(QObject* receiver);
  // Waits a moment for what still runs, but not for what hangs.
  ~LatestTask();
  LatestTask(const LatestTask&) = delete;
  LatestTask& operator=(const LatestTask&) = delete;

  void Send(Work work);
  void Cancel();
  // Waits at most that long for errands to end, and then has done what they told.
  void WaitFor(std::chrono::milliseconds patience);

 private:
  bool WaitForAll(std::chrono::milliseconds patience);

  std::shared_ptr<Shared> shared_;
};

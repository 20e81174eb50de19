// SPDX-License-Identifier: MIT
#pragma once

#include <condition_variable>
#include <mutex>

namespace testing_support {

// Blocks threads until it is opened.
class Gate {
 public:
  void Pass() {
    std::unique_lock lock(mutex_);
    waitedAt_ = waitedAt_ || !open_;
    opened_.wait(lock, [this] { return open_; });
  }
  void Open() {
    const std::lock_guard lock(mutex_);
    open_ = true;
    opened_.notify_all();
  }
  bool IsOpen() const {
    const std::lock_guard lock(mutex_);
    return open_;
  }
  // Whether any thread has waited.
  bool IsWaitedAt() const {
    const std::lock_guard lock(mutex_);
    return waitedAt_;
  }

 private:
  mutable std::mutex mutex_;
  std::condition_variable opened_;
  bool open_ = false;
  bool waitedAt_ = false;
};

}  // namespace testing_support

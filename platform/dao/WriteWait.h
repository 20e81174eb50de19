// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>

namespace dao {

// How long a statement waits for another writer before it throws an error: five seconds.
std::chrono::milliseconds WriteWait() noexcept;

// Replaces the wait for its lifetime (tests).
class WriteWaitScope {
 public:
  explicit WriteWaitScope(std::chrono::milliseconds wait);
  ~WriteWaitScope();
  WriteWaitScope(const WriteWaitScope&) = delete;
  WriteWaitScope& operator=(const WriteWaitScope&) = delete;

 private:
  std::chrono::milliseconds previous_;
};

}  // namespace dao

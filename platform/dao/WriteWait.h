// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>

namespace dao {

// How long a statement waits for another program that is writing before it gives up with an error: five seconds.
std::chrono::milliseconds WriteWait() noexcept;

// Another wait while it lives (tests).
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

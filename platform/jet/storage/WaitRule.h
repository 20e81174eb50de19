// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <functional>

namespace jet {

// Maximum waiting time for other programs, and how to sleep. Tests replace `sleep`.
struct WaitRule {
  std::chrono::milliseconds limit{5000};
  std::function<void(std::chrono::milliseconds)> sleep;

  // 5 seconds, with real sleeps.
  static WaitRule Real();
};

// Calls `attempt` with growing pauses until it returns true. False when the limit is reached. `waited`: time waited so
// far, updated; several waits of one statement share one limit.
bool WaitFor(const WaitRule& rule, std::chrono::milliseconds& waited, const std::function<bool()>& attempt);

}  // namespace jet

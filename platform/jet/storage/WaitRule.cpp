// SPDX-License-Identifier: MIT
#include "platform/jet/storage/WaitRule.h"

#include <algorithm>
#include <thread>

namespace jet {

namespace {

using std::chrono::milliseconds;

constexpr milliseconds kLongestPause{5};  // attempts are cheap

}  // namespace

WaitRule WaitRule::Real() {
  return {milliseconds{5000}, [](milliseconds pause) { std::this_thread::sleep_for(pause); }};
}

bool WaitFor(const WaitRule& rule, milliseconds& waited, const std::function<bool()>& attempt) {
  using std::chrono::steady_clock;
  milliseconds pause{1};
  auto begun = steady_clock::now();
  while (!attempt()) {
    if (waited >= rule.limit) return false;
    rule.sleep(pause);
    // Measured: on a busy machine a pause takes longer than requested, and an attempt takes time too.
    const auto now = steady_clock::now();
    waited += std::max(pause, std::chrono::duration_cast<milliseconds>(now - begun));
    begun = now;
    pause = std::min(2 * pause, kLongestPause);
  }
  return true;
}

}  // namespace jet

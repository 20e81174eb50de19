// SPDX-License-Identifier: MIT
#pragma once

namespace fuzz {

// During its lifetime the program aborts after two seconds of processor time. (libFuzzer's own limit uses the wall
// clock, which is unreliable on a busy machine.) One at a time. No effect without libFuzzer.
class CpuLimit {
 public:
  CpuLimit();
  ~CpuLimit();  // NOLINT(performance-trivially-destructible): only without libFuzzer it does nothing
  CpuLimit(const CpuLimit&) = delete;
  CpuLimit& operator=(const CpuLimit&) = delete;
};

}  // namespace fuzz

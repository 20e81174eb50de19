// SPDX-License-Identifier: MIT
#pragma once

namespace fuzz {

// While it lives, the program aborts once it has spent two seconds of processor time since the start of this object.
// The clock on the wall, which libFuzzer's own limit goes by, says little on a busy machine. One at a time.
// Only under libFuzzer: a test asserts no time.
class CpuLimit {
 public:
  CpuLimit();
  ~CpuLimit();  // NOLINT(performance-trivially-destructible): only without libFuzzer it does nothing
  CpuLimit(const CpuLimit&) = delete;
  CpuLimit& operator=(const CpuLimit&) = delete;
};

}  // namespace fuzz

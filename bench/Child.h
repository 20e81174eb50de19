// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace bench {

// What a program did that was run for its output and its use of the machine.
struct ChildRun {
  std::size_t lines = 0;    // on standard output, with the header
  std::int64_t keySum = 0;  // of the first whole number of each line
  double cpuMs = 0;         // user and system time
  double wallMs = 0;
  double peakMegabytes = 0;
};

// Runs `words` (a program that is looked for in PATH, and its arguments) with a pipe as standard output, and reads
// that to its end. A program that is not there or fails gives no lines.
ChildRun RunChild(const std::vector<std::string>& words);

}  // namespace bench

// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace bench {

// Output and resource use of a finished program.
struct ChildRun {
  std::size_t lines = 0;    // on standard output, with the header
  std::int64_t keySum = 0;  // of the first whole number of each line
  double cpuMs = 0;         // user and system time
  double wallMs = 0;
  double peakMegabytes = 0;
};

// Runs `words` (a program from PATH, and its arguments) with a pipe as standard output, and reads that to its end. A
// program that does not exist or fails gives no lines.
ChildRun RunChild(const std::vector<std::string>& words);

}  // namespace bench

// SPDX-License-Identifier: MIT
#pragma once

#include <fstream>
#include <stdexcept>
#include <string>

namespace testing_support {

// Number of threads of this process. Not counted in /proc/self/task: a listing ends early at a thread that exits.
inline int ThreadCount() {
  std::ifstream status("/proc/self/status");
  const std::string key = "Threads:";
  for (std::string line; std::getline(status, line);) {
    if (line.starts_with(key)) return std::stoi(line.substr(key.size()));
  }
  throw std::runtime_error("/proc/self/status has no number of threads");
}

}  // namespace testing_support

// SPDX-License-Identifier: MIT
#pragma once

#include "bench/LengthFiles.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace bench {

// A program that tells the length of a sound file, run once a file as a process of its own.
struct LengthTool {
  std::string name;
  std::string program;                                          // looked for in PATH
  std::function<std::string(const std::string& path)> command;  // of the shell
  // From what the program wrote (its first bytes, and how many there were) to milliseconds.
  std::function<double(const LengthFile& file, const std::string& written, double bytes)> ms;

  // Nothing when it tells nothing.
  std::optional<double> MsOf(const LengthFile& file) const;
};

// Ours (this very program, which answers to --measure) and those of mpg123, ffprobe, soxi and mediainfo that are
// installed.
std::vector<LengthTool> InstalledTools();

}  // namespace bench

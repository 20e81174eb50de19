// SPDX-License-Identifier: MIT
#pragma once

#include "bench/LengthFiles.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace bench {

// A program that reports the length of a sound file, started once for each file.
struct LengthTool {
  std::string name;
  std::string program;                                          // from PATH
  std::function<std::string(const std::string& path)> command;  // of the shell
  // Converts the program's output (its first bytes, and how many there were) to milliseconds.
  std::function<double(const LengthFile& file, const std::string& written, double bytes)> ms;

  // Nothing when it reports none.
  std::optional<double> MsOf(const LengthFile& file) const;
};

// Ours (this program with --measure) and those of mpg123, ffprobe, soxi and mediainfo that are installed.
std::vector<LengthTool> InstalledTools();

}  // namespace bench

// SPDX-License-Identifier: MIT
#include "bench/LengthTools.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <filesystem>

namespace bench {
namespace {

// The tool prints a number of `unit` milliseconds.
auto Printed(double unit) {
  return [unit](const LengthFile&, const std::string& written, double) {
    return unit * std::strtod(written.c_str(), nullptr);
  };
}

// The tool writes the sound itself, 16 bits a sample.
double Decoded(const LengthFile& file, const std::string&, double bytes) {
  return bytes * 1000 / (2.0 * file.channels * file.sampleRate);
}

auto Command(const std::string& before) {
  return [before](const std::string& path) { return "exec " + before + " '" + path + "' 2>/dev/null"; };
}

bool IsInstalled(const std::string& program) {
  return std::system(("command -v '" + program + "' >/dev/null 2>&1").c_str()) == 0;
}

}  // namespace

std::optional<double> LengthTool::MsOf(const LengthFile& file) const {
  FILE* pipe = popen(command(file.path.string()).c_str(), "r");
  if (pipe == nullptr) return std::nullopt;
  std::array<char, 1 << 16> block{};
  std::string first;
  double bytes = 0;
  while (const std::size_t got = fread(block.data(), 1, block.size(), pipe)) {
    if (first.empty()) first.assign(block.data(), std::min<std::size_t>(got, 64));
    bytes += static_cast<double>(got);
  }
  pclose(pipe);
  const double length = ms(file, first, bytes);
  return length > 0 ? std::optional(length) : std::nullopt;
}

std::vector<LengthTool> InstalledTools() {
  const std::string self = std::filesystem::read_symlink("/proc/self/exe").string();
  std::vector<LengthTool> installed;
  for (LengthTool& tool : std::vector<LengthTool>{
           {"ours", self, Command("'" + self + "' --measure"), Printed(1)},
           {"mpg123", "mpg123", Command("mpg123 -q -e s16 -s"), Decoded},
           {"ffprobe", "ffprobe", Command("ffprobe -v error -show_entries format=duration -of csv=p=0"), Printed(1000)},
           {"soxi", "soxi", Command("soxi -D"), Printed(1000)},
           {"mediainfo", "mediainfo", Command("mediainfo '--Inform=General;%Duration%'"), Printed(1)}}) {
    if (IsInstalled(tool.program)) installed.push_back(std::move(tool));
  }
  return installed;
}

}  // namespace bench

// SPDX-License-Identifier: MIT
// A main function for a fuzz target without libFuzzer: runs each file of the given folders unchanged, truncated at many
// places, and with single bytes changed. Deterministic.
#include "tests/fuzz/FuzzTarget.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

namespace {

constexpr std::size_t kVariants = 60;  // of each kind, per file

void RunVariants(const std::vector<std::uint8_t>& bytes) {
  LLVMFuzzerTestOneInput(bytes.data(), bytes.size());
  const std::size_t step = std::max<std::size_t>(1, bytes.size() / kVariants);
  for (std::size_t length = 0; length < bytes.size(); length += step)
    LLVMFuzzerTestOneInput(bytes.data(), length);
  // Half of the changes are in the first hundred bytes, since headers matter most.
  for (std::size_t i = 0; i < 2 * kVariants; ++i) {
    std::vector<std::uint8_t> changed = bytes;
    const std::size_t range = i % 2 == 0 ? std::min<std::size_t>(100, bytes.size()) : bytes.size();
    changed[i * 7919 % range] ^= static_cast<std::uint8_t>(1U << (i / 2 % 8));
    changed[i * 104729 % range] = i % 3 == 0 ? 0xFF : 0;
    LLVMFuzzerTestOneInput(changed.data(), changed.size());
  }
}

}  // namespace

int main(int count, char** arguments) {
  int files = 0;
  for (int i = 1; i < count; ++i) {
    for (const auto& entry : std::filesystem::recursive_directory_iterator(arguments[i])) {
      if (!entry.is_regular_file() || entry.file_size() == 0) continue;
      std::ifstream in(entry.path(), std::ios::binary);
      RunVariants(std::vector<std::uint8_t>(std::istreambuf_iterator<char>(in), {}));
      ++files;
    }
  }
  std::printf("%d files\n", files);
  return files > 0 ? 0 : 1;
}

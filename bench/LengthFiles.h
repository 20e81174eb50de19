// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace bench {

// A sound file of which it is known what went into it.
struct LengthFile {
  std::filesystem::path path;
  std::string kind;
  int sampleRate = 0;
  int channels = 0;
  // Samples of each channel that are its sound. Two where a header tells of padding at the beginning, or that there is
  // none, but little else that is true: whoever believes that part of it is as right as who does not.
  std::vector<std::int64_t> samples;
};

// One file a call, by its path; the caller may remove it then.
using TakeFile = std::function<void(const LengthFile&)>;

// MP3 of all rates, one and two channels, constant, average, variable and free bit rate, made by the encoder lame, each
// with headers of several kinds and none, tags, pictures, junk, and cut: more than a thousand. Returns how many.
int MakeMp3Files(const std::filesystem::path& folder, const TakeFile& take);
// WAV of several rates, widths and channels, some with headers that lie.
int MakeWavFiles(const std::filesystem::path& folder, const TakeFile& take);

}  // namespace bench

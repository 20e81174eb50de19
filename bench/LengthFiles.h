// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace bench {

// A sound file whose content is known.
struct LengthFile {
  std::filesystem::path path;
  std::string kind;
  int sampleRate = 0;
  int channels = 0;
  // Samples of each channel that belong to the sound. Two values where a header gives padding at the beginning, or
  // none, but is wrong otherwise: believing that part of it is as correct as ignoring it.
  std::vector<std::int64_t> samples;
};

// Called once for each file with its path; the file may be removed afterwards.
using TakeFile = std::function<void(const LengthFile&)>;

// MP3 of all rates, one and two channels, constant, average, variable and free bit rate, made by the encoder lame, each
// with several kinds of headers and none, tags, pictures, junk, and truncated: more than a thousand. Returns how many.
int MakeMp3Files(const std::filesystem::path& folder, const TakeFile& take);
// WAV of several rates, widths and channels, some with wrong headers.
int MakeWavFiles(const std::filesystem::path& folder, const TakeFile& take);

}  // namespace bench

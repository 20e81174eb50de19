// SPDX-License-Identifier: MIT
// The waveform of a whole file: what a strip on screen draws.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace audio {

// One hundredth of a second of sound, all channels together, 16-bit scale.
struct PeakBin {
  std::int16_t low = 0;   // lowest sample
  std::int16_t high = 0;  // highest sample
  std::int16_t rms = 0;   // root of the mean square
  bool operator==(const PeakBin&) const = default;
};

struct Peaks {
  static constexpr int kBinMs = 10;
  std::int32_t lengthMs = 0;  // of the file, exact
  std::vector<PeakBin> bins;  // bin n covers n x 10 ms up to the next; the last one may be shorter

  static std::int64_t BinCount(std::int32_t lengthMs) { return (std::int64_t{lengthMs} + kBinMs - 1) / kBinMs; }
};

// The first `done` bins are final. Return false to give up.
using PeakProgress = std::function<bool(const Peaks& peaks, std::size_t done)>;

// How the reading of a file is shared out.
struct PeakSplit {
  static std::size_t ThreadsHere();  // as many as the machine runs at a time, at most four

  std::size_t threads = ThreadsHere();
  std::size_t binsPerStretch = 3000;  // read by one thread in one go; a jump costs as much as half a second of sound
  std::size_t binsPerStep = 1000;     // by which `done` grows, at least
};

// Reads the file from begin to end, on this thread and, where its decoder jumps exactly, on others beside it; however
// many they are, the peaks are the same. `progress` is called for every quarter of a second of sound, by one of these
// threads at a time; at the end `done` is the number of bins. Gives up with empty bins. Any thread; returns when all
// others have ended. Throws audio::Error.
Peaks ReadPeaks(const std::string& hostPath, const PeakProgress& progress, const PeakSplit& split = {});

}  // namespace audio

// SPDX-License-Identifier: MIT
// The waveform of a file.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace audio {

// 10 ms of sound, all channels together, as 16-bit samples.
struct PeakBin {
  std::int16_t low = 0;   // lowest sample
  std::int16_t high = 0;  // highest sample
  std::int16_t rms = 0;   // root of the mean square
  bool operator==(const PeakBin&) const = default;
};

struct Peaks {
  static constexpr int kBinMs = 10;
  std::int32_t lengthMs = 0;  // of the file, exact
  std::vector<PeakBin> bins;  // bin n starts at n x 10 ms; the last one may be shorter

  static std::int64_t BinCount(std::int32_t lengthMs) { return (std::int64_t{lengthMs} + kBinMs - 1) / kBinMs; }
};

// Progress callback: the first `done` bins are final. Return false to cancel.
using PeakProgress = std::function<bool(const Peaks& peaks, std::size_t done)>;

// How the reading of a file is divided over threads.
struct PeakSplit {
  static std::size_t ThreadsHere();  // number of processors, at most 4

  std::size_t threads = ThreadsHere();
  std::size_t binsPerStretch = 3000;  // read by one thread at a time; each costs a seek, as much as 0.5 s of sound
  std::size_t binsPerStep = 1000;     // minimum increase of `done`, except at the end
};

// Reads the complete file in the calling thread and, if its decoder seeks exactly, in others as well; the result does
// not depend on their number. `progress` is called for every quarter of a second of sound, by one thread at a time; in
// the last call `done` is the number of bins. Returns no bins when cancelled. Any thread; all others have ended when it
// returns. Throws audio::Error.
Peaks ReadPeaks(const std::string& hostPath, const PeakProgress& progress, const PeakSplit& split = {});

}  // namespace audio

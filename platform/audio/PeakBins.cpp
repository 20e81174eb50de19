// SPDX-License-Identifier: MIT
#include "platform/audio/PeakBins.h"

#include "platform/audio/Decoder.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numeric>

namespace audio {

// Several samples at a time that do not wait for each other: the compiler makes one instruction of them. One by one
// they would take a seventh of the time that the decoder needs.
PeakBin BinOf(const float* samples, std::size_t count) {
  constexpr std::size_t kLanes = 32;
  std::array<float, kLanes> low;
  std::array<float, kLanes> high;
  std::array<float, kLanes> squares{};
  low.fill(1);
  high.fill(-1);
  const std::size_t whole = count / kLanes * kLanes;
  for (std::size_t i = 0; i < whole; i += kLanes) {
    for (std::size_t lane = 0; lane < kLanes; ++lane) {
      const float sample = samples[i + lane];
      low[lane] = sample < low[lane] ? sample : low[lane];
      high[lane] = sample > high[lane] ? sample : high[lane];
      squares[lane] += sample * sample;
    }
  }
  for (std::size_t i = whole; i < count; ++i) {
    low[0] = std::min(low[0], samples[i]);
    high[0] = std::max(high[0], samples[i]);
    squares[0] += samples[i] * samples[i];
  }
  const double mean = std::accumulate(squares.begin(), squares.end(), 0.0) / static_cast<double>(count);
  return {Int16Sample(*std::min_element(low.begin(), low.end())),
          Int16Sample(*std::max_element(high.begin(), high.end())), Int16Sample(static_cast<float>(std::sqrt(mean)))};
}

}  // namespace audio

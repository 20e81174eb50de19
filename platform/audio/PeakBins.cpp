// SPDX-License-Identifier: MIT
#include "platform/audio/PeakBins.h"

#include "platform/audio/Decoder.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numeric>

namespace audio {

// Independent lanes let the compiler use vector instructions. Sample by sample this would take a seventh of the
// decoder's time.
PeakBin BinOf(const float* samples, std::size_t count) {
  constexpr std::size_t kLanes = 32;
  std::array<float, kLanes> low;
  std::array<float, kLanes> high;
  std::array<float, kLanes> squares{};
  low.fill(1);
  high.fill(-1);
  const std::size_t vectorized = count / kLanes * kLanes;
  for (std::size_t i = 0; i < vectorized; i += kLanes) {
    for (std::size_t lane = 0; lane < kLanes; ++lane) {
      const float sample = samples[i + lane];
      low[lane] = sample < low[lane] ? sample : low[lane];
      high[lane] = sample > high[lane] ? sample : high[lane];
      squares[lane] += sample * sample;
    }
  }
  for (std::size_t i = vectorized; i < count; ++i) {
    low[0] = std::min(low[0], samples[i]);
    high[0] = std::max(high[0], samples[i]);
    squares[0] += samples[i] * samples[i];
  }
  const double mean = std::accumulate(squares.begin(), squares.end(), 0.0) / static_cast<double>(count);
  return {Int16Sample(*std::min_element(low.begin(), low.end())),
          Int16Sample(*std::max_element(high.begin(), high.end())), Int16Sample(static_cast<float>(std::sqrt(mean)))};
}

}  // namespace audio

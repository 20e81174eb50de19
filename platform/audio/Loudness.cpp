// SPDX-License-Identifier: MIT
#include "platform/audio/Loudness.h"

#include "platform/audio/Error.h"

#include <ebur128.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>
#include <vector>

namespace audio {
namespace {

struct Free {
  void operator()(ebur128_state* state) const { ebur128_destroy(&state); }
};
using State = std::unique_ptr<ebur128_state, Free>;

double Decibels(double amplitude) {
  return amplitude > 0 ? 20 * std::log10(amplitude) : -std::numeric_limits<double>::infinity();
}

}  // namespace

Loudness MeasureLoudness(Decoder& decoder) {
  const auto channels = static_cast<unsigned>(decoder.Channels());
  const State state(ebur128_init(channels, static_cast<unsigned long>(decoder.SampleRate()),
                                 EBUR128_MODE_I | EBUR128_MODE_TRUE_PEAK));
  if (!state) throw Error("Kan de luidheid niet meten: er is te weinig geheugen.");
  decoder.Seek(0);
  constexpr std::size_t kFrames = 8192;
  std::vector<float> block(kFrames * channels);
  while (const std::size_t got = decoder.Read(block.data(), kFrames)) {
    ebur128_add_frames_float(state.get(), block.data(), got);
  }
  Loudness loudness;
  ebur128_loudness_global(state.get(), &loudness.integratedLufs);
  double highest = 0;
  for (unsigned channel = 0; channel < channels; ++channel) {
    double peak = 0;
    ebur128_true_peak(state.get(), channel, &peak);
    highest = std::max(highest, peak);
  }
  loudness.truePeakDb = Decibels(highest);
  return loudness;
}

}  // namespace audio

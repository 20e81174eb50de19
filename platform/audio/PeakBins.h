// SPDX-License-Identifier: MIT
// Computes waveform bins from samples.
#pragma once

#include "platform/audio/Peaks.h"

#include <cstddef>

namespace audio {

// One bin from `count` samples (at least 1) of all channels, full scale = 1.0.
PeakBin BinOf(const float* samples, std::size_t count);

}  // namespace audio

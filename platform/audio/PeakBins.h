// SPDX-License-Identifier: MIT
// From samples to the bins of a waveform.
#pragma once

#include "platform/audio/Peaks.h"

#include <cstddef>

namespace audio {

// What a bin's samples come to: all channels together, full scale = 1.0, at least one.
PeakBin BinOf(const float* samples, std::size_t count);

}  // namespace audio

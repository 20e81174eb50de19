// SPDX-License-Identifier: MIT
// Loudness of a file.
#pragma once

#include "platform/audio/Decoder.h"

namespace audio {

// Measured according to EBU R 128 / ITU-R BS.1770.
struct Loudness {
  double integratedLufs = 0;  // minus infinity for silence and for less than 0.4 s of sound
  double truePeakDb = 0;      // dBTP of the loudest channel; minus infinity for silence
};

// Reads `decoder` from beginning to end. Throws Error.
Loudness MeasureLoudness(Decoder& decoder);

}  // namespace audio

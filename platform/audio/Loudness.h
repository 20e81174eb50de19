// SPDX-License-Identifier: MIT
// How loud a whole file is, as broadcasters measure it.
#pragma once

#include "platform/audio/Decoder.h"

namespace audio {

// By EBU R 128 / ITU-R BS.1770.
struct Loudness {
  double integratedLufs = 0;  // minus infinity for silence and for less than 0.4 s of sound
  double truePeakDb = 0;      // dBTP of the loudest channel; minus infinity for silence
};

// Reads `decoder` from its beginning to its end. Throws Error.
Loudness MeasureLoudness(Decoder& decoder);

}  // namespace audio

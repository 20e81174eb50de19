// SPDX-License-Identifier: MIT
// How long a sound file really is.
#pragma once

#include <cstdint>
#include <string>

namespace audio {

// The exact length of a sound file (path of the host, UTF-8), rounded to the nearest millisecond: what a full decode
// delivers, not what a header claims. Costs under a millisecond for a spot and about 0.1 s for an hour of MP3. Any
// thread. Throws audio::Error (Dutch, naming the file) when the file cannot be opened or holds no sound.
std::int32_t MeasureMs(const std::string& hostPath);

}  // namespace audio

// SPDX-License-Identifier: MIT
// Exact length of a sound file.
#pragma once

#include <cstdint>
#include <string>

namespace audio {

// The length of a sound file (UTF-8 host path) in milliseconds, rounded to nearest: that of a complete decode, not of a
// header field. Takes less than a millisecond for a spot and about 0.1 s for an hour of MP3. Any thread. Throws
// audio::Error with the path when the file cannot be opened or has no sound.
std::int32_t MeasureMs(const std::string& hostPath);

}  // namespace audio

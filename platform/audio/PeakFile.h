// SPDX-License-Identifier: MIT
// File format of a cached waveform.
#pragma once

#include "platform/audio/FileStamp.h"
#include "platform/audio/Peaks.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace audio {

// A mark, the sound file's stamp, the peaks, and a checksum of all that. Numbers are in the machine's byte order: the
// cache is local.
std::string PackPeaks(const FileStamp& stamp, const Peaks& peaks);
// nullopt unless the bytes are complete, undamaged, and of exactly this stamp.
std::optional<Peaks> UnpackPeaks(const FileStamp& stamp, std::string_view bytes);

// A 64-bit checksum, the same on every run. Not cryptographic.
std::uint64_t ChecksumOf(std::string_view bytes);

}  // namespace audio

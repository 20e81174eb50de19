// SPDX-License-Identifier: MIT
// How the waveform of one file is kept on disk.
#pragma once

#include "platform/audio/FileStamp.h"
#include "platform/audio/Peaks.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace audio {

// A mark, the file's stamp, the peaks, and a checksum of all that. Numbers stand as this machine writes them: what is
// kept belongs to it.
std::string PackPeaks(const FileStamp& stamp, const Peaks& peaks);
// Nothing unless the bytes are whole, undamaged, and of this very stamp.
std::optional<Peaks> UnpackPeaks(const FileStamp& stamp, std::string_view bytes);

// The same text gives the same number on every run.
std::uint64_t ChecksumOf(std::string_view bytes);

}  // namespace audio

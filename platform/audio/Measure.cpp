// SPDX-License-Identifier: MIT
#include "platform/audio/Measure.h"

#include "platform/audio/Decoder.h"

namespace audio {

std::int32_t MeasureMs(const std::string& hostPath) {
  const auto decoder = OpenDecoder(hostPath);
  return static_cast<std::int32_t>(MsOfFrames(decoder->TotalFrames(), decoder->SampleRate()));
}

}  // namespace audio

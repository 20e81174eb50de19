// SPDX-License-Identifier: MIT
#include "platform/audio/PlayerCore.h"

#include <algorithm>
#include <utility>

namespace audio {

PlayerCore::PlayerCore(OutputFactory outputs, Transport::Listener listener)
    : transport_(playout_, std::move(listener)), feeder_(transport_, playout_, std::move(outputs)) {}

PlayerCore::~PlayerCore() {
  transport_.Quit();
}

void PlayerCore::Open(const std::string& hostPath) {
  Close();
  Open(OpenDecoder(hostPath), hostPath);
}

void PlayerCore::Open(std::unique_ptr<Decoder> decoder, const std::string& name) {
  transport_.Load(std::move(decoder));
  fileName_ = name;
}

void PlayerCore::Close() {
  fileName_.clear();
  transport_.Load(nullptr);
}

std::int32_t PlayerCore::Position() const {
  const int rate = transport_.SampleRate();
  return rate == 0 ? 0 : static_cast<std::int32_t>(MsOfFrames(transport_.Position(), rate));
}

// Both conversions round to nearest, so that Position() returns the value that was set. The length in ms means the last
// frame.
void PlayerCore::SetPosition(std::int32_t position) {
  const int rate = transport_.SampleRate();
  if (rate == 0) return;
  transport_.SetPosition(position >= Length() ? transport_.TotalFrames()
                                              : FramesOfMs(std::max<std::int32_t>(position, 0), rate));
}

std::int32_t PlayerCore::Length() const {
  const int rate = transport_.SampleRate();
  return rate == 0 ? 0 : static_cast<std::int32_t>(MsOfFrames(transport_.TotalFrames(), rate));
}

}  // namespace audio

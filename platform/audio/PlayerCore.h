// The player without Qt: decoding thread, buffers and position.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "platform/audio/Output.h"

namespace audio {

enum PlayerState { kNoFile = 0, kStopped = 1, kPaused = 2, kPlaying = 6 };

struct PlayerEvent {
  enum class Kind { Started, Stopped, Failed, Status };
  Kind kind;
  std::string text;  // Failed, Status: a Dutch sentence
};

// dBFS, 0 = full scale, kSilence and below = nothing.
struct PeakLevels {
  static constexpr float kSilence = -96.0F;
  float left = kSilence;
  float right = kSilence;
};

}  // namespace audio

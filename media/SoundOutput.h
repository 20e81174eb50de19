// SPDX-License-Identifier: MIT
#pragma once

#include "platform/audio/Output.h"

class QObject;

namespace audio {
class AudioPlayer;
}

// Creates a player owned by `parent`, for the sound device or the output of a SoundOutputScope.
audio::AudioPlayer* NewPlayer(QObject* parent);

// During its lifetime new players use these outputs (tests, the tour). Scopes nest.
class SoundOutputScope {
 public:
  explicit SoundOutputScope(audio::OutputFactory outputs);
  ~SoundOutputScope();
  SoundOutputScope(const SoundOutputScope&) = delete;
  SoundOutputScope& operator=(const SoundOutputScope&) = delete;

 private:
  audio::OutputFactory previous_;
};

// SPDX-License-Identifier: MIT
#pragma once

#include "platform/audio/Output.h"

class QObject;

namespace audio {
class AudioPlayer;
}

// A player for an editor, owned by `parent`: on the sound device, unless a scope below says otherwise.
audio::AudioPlayer* NewPlayer(QObject* parent);

// While one lives, new players play on these outputs instead (tests, the tour). Scopes nest.
class SoundOutputScope {
 public:
  explicit SoundOutputScope(audio::OutputFactory outputs);
  ~SoundOutputScope();
  SoundOutputScope(const SoundOutputScope&) = delete;
  SoundOutputScope& operator=(const SoundOutputScope&) = delete;

 private:
  audio::OutputFactory previous_;
};

// SPDX-License-Identifier: MIT
#include "media/SoundOutput.h"

#include "platform/audio/AudioPlayer.h"

#include <utility>

namespace {

audio::OutputFactory& Outputs() {
  static audio::OutputFactory outputs;
  return outputs;
}

}  // namespace

audio::AudioPlayer* NewPlayer(QObject* parent) {
  return Outputs() ? new audio::AudioPlayer(Outputs(), parent) : new audio::AudioPlayer(parent);
}

SoundOutputScope::SoundOutputScope(audio::OutputFactory outputs)
    : previous_(std::exchange(Outputs(), std::move(outputs))) {}

SoundOutputScope::~SoundOutputScope() {
  Outputs() = std::move(previous_);
}

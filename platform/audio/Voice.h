// SPDX-License-Identifier: MIT
// The sound source of Synth: similar to speech, or to a short tune.
#pragma once

#include "platform/audio/Synth.h"

#include <cstddef>
#include <cstdint>

namespace audio {

// Renders the sound of one file from beginning to end.
class Voice {
 public:
  Voice(const ToneOptions& options, std::int64_t totalFrames);
  // Interleaved frames in the options' number of channels, within -0.9 and 0.9.
  void Render(float* out, std::size_t frames);

 private:
  double Speech();
  double Jingle();
  double Envelope() const;
  void NextSyllable();
  void NextNote();
  double Random();  // 0 to 1

  ToneOptions options_;
  std::int64_t total_;
  std::int64_t frame_ = 0;
  std::uint32_t state_;
  double basePitch_;  // Hz
  double pitch_ = 0;  // Hz
  double phase_ = 0;  // cycles
  double loudness_ = 0;
  double formant_ = 0;          // Hz
  std::int64_t unitStart_ = 0;  // frames; of the current syllable or note
  std::int64_t unitLength_ = 0;
  int step_ = 0;
};

}  // namespace audio

// SPDX-License-Identifier: MIT
// Converts a decoder's sound to 16-bit stereo at the output's sample rate.
#pragma once

#include "platform/audio/Decoder.h"

#include <cstdint>
#include <memory>
#include <vector>

struct SRC_STATE_tag;

namespace audio {

// Mono is copied to both channels; of more than two channels the first two are used. If the rates are equal, the
// decoder's 16-bit samples are unchanged. One thread at a time.
class StereoStream {
 public:
  StereoStream(Decoder& decoder, int outputRate);

  void Seek(std::int64_t frame);  // of the file. Throws Error
  // Up to `frames` frames at the output's rate; fewer only at the end.
  std::size_t Read(std::int16_t* out, std::size_t frames);

 private:
  std::size_t ReadStereo(float* out, std::size_t frames);
  std::size_t Resample(std::int16_t* out, std::size_t frames);
  void Refill();

  struct Free {
    void operator()(SRC_STATE_tag* state) const;
  };

  Decoder& decoder_;
  std::unique_ptr<SRC_STATE_tag, Free> converter_;  // null when the rates are equal
  double ratio_;
  std::vector<float> decoded_;  // in the file's channels
  std::vector<float> input_;    // stereo at the file's rate, not yet converted
  std::size_t inputStart_ = 0;  // frames
  std::size_t inputEnd_ = 0;
  bool atEnd_ = false;
  std::vector<float> converted_;
};

}  // namespace audio

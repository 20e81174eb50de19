// SPDX-License-Identifier: MIT
// A file's sound as the output wants it: 16-bit stereo at the output's rate.
#pragma once

#include "platform/audio/Decoder.h"

#include <cstdint>
#include <memory>
#include <vector>

struct SRC_STATE_tag;

namespace audio {

// One channel goes to both sides; of more than two the first two are heard. Where the rates are equal, what is
// delivered is the decoder's own 16-bit sound, untouched. One thread.
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

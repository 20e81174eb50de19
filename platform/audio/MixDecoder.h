// SPDX-License-Identifier: MIT
// Several sound files laid over each other: what a block sounds like.
#pragma once

#include "platform/audio/ClipStream.h"
#include "platform/audio/Decoder.h"

#include <cstdint>
#include <string>
#include <vector>

namespace audio {

struct MixClip {
  std::string path;        // of the host
  std::int32_t mixMs = 0;  // the next clip starts so long before the end of this one; held within 0 and its length
};

// The clips one after the other, each starting at the mix point of the one before, exact to the frame; as many as that
// takes sound at the same time. What is louder than full scale together is clipped when it is played. Stereo. Played by
// a PlayerCore like any file: files are read by its decoding thread, so the device's callback does not wait for them.
class MixDecoder : public Decoder {
 public:
  struct Place {
    std::int64_t start = 0;   // frames from the beginning
    std::int64_t frames = 0;  // of this clip
  };

  // At least one clip. The rate is that of the files or, where they differ, the highest of them, at most 48000 Hz.
  // Throws Error naming the file that cannot be opened.
  explicit MixDecoder(const std::vector<MixClip>& clips);

  const std::vector<Place>& Places() const { return places_; }  // in the order of the clips

  int SampleRate() const override { return rate_; }
  int Channels() const override { return 2; }
  std::int64_t TotalFrames() const override { return total_; }
  void Seek(std::int64_t frame) override;
  bool SeeksExactly() const override { return false; }
  using Decoder::Read;
  std::size_t Read(float* out, std::size_t frames) override;

 private:
  void MixClipInto(std::size_t clip, float* out, std::int64_t frames);

  std::vector<ClipStream> clips_;
  std::vector<Place> places_;
  int rate_ = 0;
  std::int64_t total_ = 0;
  std::int64_t position_ = 0;
};

}  // namespace audio

// SPDX-License-Identifier: MIT
// Several sound files mixed into one, as a block is heard.
#pragma once

#include "platform/audio/ClipStream.h"
#include "platform/audio/Decoder.h"

#include <cstdint>
#include <string>
#include <vector>

namespace audio {

struct MixClip {
  std::string path;        // of the host
  std::int32_t mixMs = 0;  // the next clip starts this long before the end; clamped to 0..length of this clip
};

// Each clip starts at the mix point of the previous one, exact to the frame; any number of clips may overlap. Stereo.
// Sums above full scale are clipped when played. PlayerCore reads it in its decoding thread like any file.
class MixDecoder : public Decoder {
 public:
  struct Place {
    std::int64_t start = 0;   // frames from the beginning
    std::int64_t frames = 0;  // of this clip
  };

  // The sample rate is that of the files or, if they differ, the highest of them, at most 48000 Hz. Throws Error when
  // there are no clips, or with the path of a file that cannot be opened.
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

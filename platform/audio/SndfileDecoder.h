// SPDX-License-Identifier: MIT
// WAV, AIFF, FLAC, Ogg and other formats of libsndfile.
#pragma once

#include "platform/audio/Decoder.h"
#include "platform/audio/SourceFile.h"

#include <sndfile.h>

#include <memory>

namespace audio {

class SndfileDecoder : public Decoder {
 public:
  // Null when libsndfile does not recognise the content or detects MPEG; `file` is moved from only on success. Throws
  // Error.
  static std::unique_ptr<SndfileDecoder> TryOpen(std::unique_ptr<SourceFile>& file);

  int SampleRate() const override { return sampleRate_; }
  int Channels() const override { return channels_; }
  std::int64_t TotalFrames() const override { return totalFrames_; }
  void Seek(std::int64_t frame) override;
  bool SeeksExactly() const override { return false; }  // true for many formats only
  using Decoder::Read;
  std::size_t Read(float* out, std::size_t frames) override;

 private:
  struct Close {
    void operator()(SNDFILE* handle) const;
  };
  using Handle = std::unique_ptr<SNDFILE, Close>;

  static Handle OpenHandle(SourceFile& file, SF_INFO& info);
  SndfileDecoder(std::unique_ptr<SourceFile> file, Handle handle)
      : file_(std::move(file)), handle_(std::move(handle)) {}
  bool LastFrameReadable();
  void CountFrames();

  std::unique_ptr<SourceFile> file_;
  Handle handle_;
  int sampleRate_ = 0;
  int channels_ = 0;
  std::int64_t totalFrames_ = 0;
  std::int64_t position_ = 0;
};

}  // namespace audio

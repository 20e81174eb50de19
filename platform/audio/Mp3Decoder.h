// SPDX-License-Identifier: MIT
// MPEG audio (layers I to III) through libmpg123.
#pragma once

#include "platform/audio/Decoder.h"
#include "platform/audio/SourceFile.h"

#include <memory>

struct mpg123_handle_struct;

namespace audio {

// Opening scans every frame header, so the length is exact for constant and variable bit rate, and with a missing or
// outdated length header. The length header's own frame and the encoder's padding are not part of the sound (gapless).
class Mp3Decoder : public Decoder {
 public:
  // Throws Error when the content is not MPEG audio.
  explicit Mp3Decoder(std::unique_ptr<SourceFile> file);

  int SampleRate() const override { return sampleRate_; }
  int Channels() const override { return channels_; }
  std::int64_t TotalFrames() const override { return totalFrames_; }
  std::int64_t MpegFrames() const { return mpegFrames_; }  // found in the file
  void Seek(std::int64_t frame) override;
  bool SeeksExactly() const override { return !lowRate_; }
  using Decoder::Read;
  std::size_t Read(float* out, std::size_t frames) override;

 private:
  struct Free {
    void operator()(mpg123_handle_struct* handle) const;
  };

  void Configure();
  void OpenHandle();
  void SkipVbriHeader();
  void FixFormat();
  void ReadMpegVersion();
  void JumpToFrame(std::int64_t mpegFrame);
  void SkipTo(std::int64_t target);
  void Consume(std::size_t frames);
  bool DecodeFrame();

  std::unique_ptr<SourceFile> file_;
  std::unique_ptr<mpg123_handle_struct, Free> handle_;
  int sampleRate_ = 0;
  int channels_ = 0;
  bool lowRate_ = false;  // MPEG 2 or 2.5: below 32 kHz
  std::int64_t totalFrames_ = 0;
  std::int64_t mpegFrames_ = 0;
  std::int64_t position_ = 0;
  std::int64_t decoded_ = 0;      // MPEG frames decoded since opening
  bool jumped_ = true;            // no frame decoded since opening or the last jump
  const float* ready_ = nullptr;  // decoded, not yet read; owned by libmpg123, valid until its next call
  std::size_t readyFrames_ = 0;
};

}  // namespace audio

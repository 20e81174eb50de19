// SPDX-License-Identifier: MIT
// MPEG audio (layers I to III) through libmpg123.
#pragma once

#include "platform/audio/Decoder.h"
#include "platform/audio/SourceFile.h"

#include <memory>

struct mpg123_handle_struct;

namespace audio {

// Opening scans every frame header, so the length holds for constant and variable bit rate, with or without (or with an
// outdated) length header. A length header is no sound. The encoder's padding told in the file is left out (gapless).
class Mp3Decoder : public Decoder {
 public:
  // Throws Error when the content is no MPEG audio.
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
  void LearnVersion();
  void JumpToFrame(std::int64_t mpegFrame);
  void SkipTo(std::int64_t target);
  void Take(std::size_t frames);
  bool DecodeFrame();

  std::unique_ptr<SourceFile> file_;
  std::unique_ptr<mpg123_handle_struct, Free> handle_;
  int sampleRate_ = 0;
  int channels_ = 0;
  bool lowRate_ = false;  // MPEG 2 or 2.5: below 32 kHz
  std::int64_t totalFrames_ = 0;
  std::int64_t mpegFrames_ = 0;
  std::int64_t position_ = 0;
  std::int64_t decoded_ = 0;      // MPEG frames that went through the decoder since it was opened
  bool jumped_ = true;            // nothing went through it since it was opened or sent to another place
  const float* ready_ = nullptr;  // decoded, not yet read; the library's until its next call
  std::size_t readyFrames_ = 0;
};

}  // namespace audio

// SPDX-License-Identifier: MIT
// Interface for decoding sound files; one implementation per library.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace audio {

// The sound of one file. A frame is one sample per channel. One thread at a time.
class Decoder {
 public:
  Decoder() = default;
  virtual ~Decoder() = default;
  Decoder(const Decoder&) = delete;
  Decoder& operator=(const Decoder&) = delete;

  virtual int SampleRate() const = 0;            // Hz, kMinRate to kMaxRate
  virtual int Channels() const = 0;              // 1 to kMaxChannels
  virtual std::int64_t TotalFrames() const = 0;  // as many as a complete decode delivers; at least 1
  // The next Read starts at this frame (clamped to 0..TotalFrames) and delivers the same frames as a decode from the
  // beginning. Throws Error.
  virtual void Seek(std::int64_t frame) = 0;
  // Whether the samples after a seek are bit-identical. Otherwise a few are rounded differently.
  virtual bool SeeksExactly() const = 0;
  // Reads up to `frames` interleaved frames, full scale = 1.0. Returns fewer only at the end, and 0 after it. A file
  // that was truncated or became unreadable ends early.
  virtual std::size_t Read(float* out, std::size_t frames) = 0;

  // The same as 16-bit samples, rounded to nearest and clipped.
  std::size_t Read(std::int16_t* out, std::size_t frames);

  static constexpr int kMinRate = 1000;
  static constexpr int kMaxRate = 768000;
  static constexpr int kMaxChannels = 32;

 private:
  std::vector<float> scratch_;
};

// Opens a sound file (UTF-8 host path). The content decides, not the extension: MPEG audio is decoded by libmpg123,
// everything else by libsndfile. Opening determines the exact length (MP3: a scan of all frames, 0.1 s per hour of
// sound). Throws Error with the path when the file cannot be opened, is not a sound file, has no frames, or has an
// invalid rate or number of channels.
std::unique_ptr<Decoder> OpenDecoder(const std::string& hostPath);

// Conversion between frames and milliseconds, rounded to nearest.
std::int64_t MsOfFrames(std::int64_t frames, int sampleRate);
std::int64_t FramesOfMs(std::int64_t ms, int sampleRate);

// Converts a sample to 16 bits: rounded to nearest, clipped; NaN gives 0.
std::int16_t Int16Sample(float sample);

}  // namespace audio

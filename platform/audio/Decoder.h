// SPDX-License-Identifier: MIT
// Reading sound out of a file: one interface, one class per library behind it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace audio {

// The sound of one file. A frame is one sample of each channel. One thread at a time.
class Decoder {
 public:
  Decoder() = default;
  virtual ~Decoder() = default;
  Decoder(const Decoder&) = delete;
  Decoder& operator=(const Decoder&) = delete;

  virtual int SampleRate() const = 0;            // Hz, kMinRate to kMaxRate
  virtual int Channels() const = 0;              // 1 to kMaxChannels
  virtual std::int64_t TotalFrames() const = 0;  // exactly what a decode from begin to end delivers; at least 1
  // The next Read starts at this frame (held within 0 and TotalFrames), and delivers the sound that a decode from the
  // beginning holds there. Throws Error.
  virtual void Seek(std::int64_t frame) = 0;
  // Whether that sound is the same to the last bit. Otherwise a few of the samples are rounded another way.
  virtual bool SeeksExactly() const = 0;
  // Up to `frames` interleaved frames, full scale = 1.0. Fewer than asked for only at the end; 0 at or after it. A
  // file that became shorter or unreadable meanwhile ends early.
  virtual std::size_t Read(float* out, std::size_t frames) = 0;

  // The same as 16-bit samples, rounded to nearest and clipped.
  std::size_t Read(std::int16_t* out, std::size_t frames);

  static constexpr int kMinRate = 1000;
  static constexpr int kMaxRate = 768000;
  static constexpr int kMaxChannels = 32;

 private:
  std::vector<float> scratch_;
};

// Content decides, not the extension: MPEG audio goes to libmpg123, everything else to libsndfile. The file is measured
// exactly on opening (MP3: a scan over all frames; 0.1 s for an hour). Throws Error naming the file when it cannot be
// opened, is no sound, holds no frame, or tells an impossible rate or number of channels.
std::unique_ptr<Decoder> OpenDecoder(const std::string& hostPath);

// Nearest millisecond of a number of frames, and the frame nearest to a number of milliseconds.
std::int64_t MsOfFrames(std::int64_t frames, int sampleRate);
std::int64_t FramesOfMs(std::int64_t ms, int sampleRate);

// Nearest 16-bit sample, clipped.
std::int16_t Int16Sample(float sample);

}  // namespace audio

// SPDX-License-Identifier: MIT
// One sound file of a mix, as stereo at the mix's sample rate.
#pragma once

#include "platform/audio/Decoder.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

struct SRC_STATE_tag;

namespace audio {

// Mono is copied to both channels; of more than two channels the first two are used. Delivers exactly Frames() frames.
// If the rates are equal, the samples are unchanged. One thread at a time.
class ClipStream {
 public:
  // Measures the file and closes it again until it is read. `rate` is the output rate in Hz; 0 means the file's rate.
  // Throws Error with the path.
  ClipStream(std::string path, int rate);

  const std::string& Path() const { return path_; }
  int FileRate() const { return fileRate_; }
  int Rate() const { return rate_; }
  std::int64_t Frames() const { return frames_; }  // at Rate(), rounded to nearest
  void SetRate(int rate);

  // The next Mix starts at this frame, 0 to Frames().
  void Seek(std::int64_t frame);
  // Adds up to `frames` stereo frames to `out`, fewer at the end. A file that became unreadable is silent.
  void Mix(float* out, std::int64_t frames);
  // Closes the file until it is read again.
  void Release();

 private:
  struct Free {
    void operator()(SRC_STATE_tag* state) const;
  };
  void Open();
  void OpenAt(std::int64_t frame);
  std::int64_t Read(std::int64_t frames);
  std::int64_t ReadStereo(float* out, std::int64_t frames);
  std::int64_t Resample(std::int64_t frames);
  void Refill();

  std::string path_;
  int fileRate_ = 0;
  int channels_ = 0;
  std::int64_t fileFrames_ = 0;
  int rate_ = 0;
  std::int64_t frames_ = 0;

  std::int64_t position_ = 0;
  bool atPosition_ = false;  // the file is open, and the next frame read is position_
  std::unique_ptr<Decoder> decoder_;
  std::unique_ptr<SRC_STATE_tag, Free> converter_;  // null when the rates are equal
  std::vector<float> decoded_;                      // in the file's channels
  std::vector<float> input_;                        // stereo at the file's rate, not yet converted
  std::size_t inputStart_ = 0;                      // frames
  std::size_t inputEnd_ = 0;
  bool atEnd_ = false;
  std::vector<float> block_;  // stereo at the output rate
};

}  // namespace audio

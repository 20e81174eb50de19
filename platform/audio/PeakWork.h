// SPDX-License-Identifier: MIT
// Reading one file's peaks with several threads.
#pragma once

#include "platform/audio/Decoder.h"
#include "platform/audio/Peaks.h"

#include <cstddef>
#include <mutex>
#include <vector>

namespace audio {

// Each participating thread takes the next stretch of the file until none is left. So the waveform grows from the
// beginning, and at the end no thread waits for more than one stretch of another.
class PeakWork {
 public:
  // Uses only the length and format of `decoder`. `progress` must outlive this object.
  PeakWork(const Decoder& decoder, const PeakProgress& progress, const PeakSplit& split);

  std::size_t Stretches() const { return stretches_.size(); }
  // Whether a decoder has the same length and format; false if the file was replaced in between.
  bool Fits(const Decoder& decoder) const;

  // Reads stretches until none is left. Any thread, each with its own decoder at frame 0 for which Fits is true. Throws
  // Error; then the other threads stop too.
  void TakePart(Decoder& decoder);

  // The peaks, once all threads have returned; without bins when the work was cancelled.
  Peaks Result() &&;

 private:
  // Bins `begin` to `end`; those before `done` are read.
  struct Stretch {
    std::size_t begin = 0;
    std::size_t end = 0;
    std::size_t done = 0;
  };

  std::int64_t FirstFrame(std::size_t bin) const;
  Stretch* Next();
  void Read(Decoder& decoder, Stretch& stretch, std::vector<float>& block);
  void Fill(std::size_t begin, std::size_t end, const float* samples, std::int64_t frames);
  bool Report(Stretch& stretch, std::size_t done);

  const PeakProgress& progress_;
  const std::int64_t frames_;  // of the file
  const int sampleRate_;
  const int channels_;
  const std::size_t binsPerStep_;
  Peaks peaks_;  // each bin is written by one thread, and read by others only after it was reported

  std::mutex mutex_;  // guards the members below
  std::vector<Stretch> stretches_;
  std::size_t taken_ = 0;     // stretches taken by a thread
  std::size_t complete_ = 0;  // stretches read, counted from the first without a gap
  std::size_t reported_ = 0;  // bins
  bool cancelled_ = false;
};

}  // namespace audio

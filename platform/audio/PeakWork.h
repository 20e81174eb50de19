// SPDX-License-Identifier: MIT
// The reading of one file's peaks, done by several threads together.
#pragma once

#include "platform/audio/Decoder.h"
#include "platform/audio/Peaks.h"

#include <cstddef>
#include <mutex>
#include <vector>

namespace audio {

// Whoever takes part takes stretches of the file, front to back, until there is none left: so the picture grows from
// the beginning, and nobody waits at the end for more than one stretch of another.
class PeakWork {
 public:
  // For the sound that `decoder` delivers; it is only asked what it holds. `progress` must outlive the work.
  PeakWork(const Decoder& decoder, const PeakProgress& progress, const PeakSplit& split);

  std::size_t Stretches() const { return stretches_.size(); }
  // Whether a decoder holds the same sound, and not that of a file put in its place meanwhile.
  bool Fits(const Decoder& decoder) const;

  // Any thread, with a decoder of its own that stands at its beginning and fits. Throws Error, and then the others
  // give up too.
  void TakePart(Decoder& decoder);

  // Once nobody takes part any more: the peaks, without bins when the work was given up.
  Peaks Result() &&;

 private:
  // Bins `begin` to `end`, of which those before `done` are read.
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
  const std::int64_t frames_;  // of the whole file
  const int sampleRate_;
  const int channels_;
  const std::size_t binsPerStep_;
  Peaks peaks_;  // each bin is written by one thread, and read by others only once it was reported

  std::mutex mutex_;  // of all below
  std::vector<Stretch> stretches_;
  std::size_t taken_ = 0;     // stretches that somebody took
  std::size_t complete_ = 0;  // stretches from the first on that are read
  std::size_t told_ = 0;      // bins
  bool givenUp_ = false;
};

}  // namespace audio

// SPDX-License-Identifier: MIT
#include "platform/audio/PeakWork.h"

#include "platform/audio/PeakBins.h"

#include <algorithm>
#include <utility>

namespace audio {
namespace {

constexpr std::size_t kBlockBins = 25;  // between two reports

}  // namespace

PeakWork::PeakWork(const Decoder& decoder, const PeakProgress& progress, const PeakSplit& split)
    : progress_(progress),
      frames_(decoder.TotalFrames()),
      sampleRate_(decoder.SampleRate()),
      channels_(decoder.Channels()),
      binsPerStep_(split.binsPerStep) {
  peaks_.lengthMs = static_cast<std::int32_t>(MsOfFrames(frames_, sampleRate_));
  peaks_.bins.resize(static_cast<std::size_t>(std::max<std::int64_t>(1, Peaks::BinCount(peaks_.lengthMs))));
  for (std::size_t begin = 0; begin < peaks_.bins.size(); begin += split.binsPerStretch) {
    stretches_.push_back({begin, std::min(begin + split.binsPerStretch, peaks_.bins.size()), begin});
  }
}

bool PeakWork::Fits(const Decoder& decoder) const {
  return decoder.TotalFrames() == frames_ && decoder.SampleRate() == sampleRate_ && decoder.Channels() == channels_;
}

void PeakWork::TakePart(Decoder& decoder) {
  try {
    std::vector<float> block;
    std::size_t place = 0;  // the decoder's position, as a bin
    while (Stretch* stretch = Next()) {
      if (place != stretch->begin) decoder.Seek(FirstFrame(stretch->begin));
      Read(decoder, *stretch, block);
      place = stretch->end;
    }
  } catch (...) {
    const std::lock_guard lock(mutex_);
    cancelled_ = true;
    throw;
  }
}

Peaks PeakWork::Result() && {
  if (cancelled_) return {};
  return std::move(peaks_);
}

// The last bin extends to the last frame, because the length in ms is rounded.
std::int64_t PeakWork::FirstFrame(std::size_t bin) const {
  if (bin == peaks_.bins.size()) return frames_;
  return std::min(frames_, FramesOfMs(static_cast<std::int64_t>(bin) * Peaks::kBinMs, sampleRate_));
}

PeakWork::Stretch* PeakWork::Next() {
  const std::lock_guard lock(mutex_);
  return cancelled_ || taken_ == stretches_.size() ? nullptr : &stretches_[taken_++];
}

// If the file was truncated in between, the missing bins are silent.
void PeakWork::Read(Decoder& decoder, Stretch& stretch, std::vector<float>& block) {
  for (std::size_t begin = stretch.begin; begin < stretch.end;) {
    const std::size_t end = std::min(begin + kBlockBins, stretch.end);
    const auto frames = static_cast<std::size_t>(FirstFrame(end) - FirstFrame(begin));
    block.resize(frames * static_cast<std::size_t>(channels_));
    Fill(begin, end, block.data(), static_cast<std::int64_t>(decoder.Read(block.data(), frames)));
    if (!Report(stretch, end)) return;
    begin = end;
  }
}

void PeakWork::Fill(std::size_t begin, std::size_t end, const float* samples, std::int64_t frames) {
  const std::int64_t start = FirstFrame(begin);
  for (std::size_t bin = begin; bin < end; ++bin) {
    const std::int64_t first = FirstFrame(bin) - start;
    const std::int64_t count = std::min(FirstFrame(bin + 1) - start, frames) - first;
    if (count <= 0) continue;
    peaks_.bins[bin] = BinOf(samples + first * channels_, static_cast<std::size_t>(count * channels_));
  }
}

// Returns false when the work is cancelled.
bool PeakWork::Report(Stretch& stretch, std::size_t done) {
  const std::lock_guard lock(mutex_);
  stretch.done = done;
  while (complete_ < stretches_.size() && stretches_[complete_].done == stretches_[complete_].end)
    ++complete_;
  const bool allRead = complete_ == stretches_.size();
  const std::size_t known = allRead ? peaks_.bins.size() : stretches_[complete_].done;
  if (allRead || known - reported_ >= binsPerStep_) reported_ = known;
  if (!cancelled_) cancelled_ = !progress_(peaks_, reported_);
  return !cancelled_;
}

}  // namespace audio

// SPDX-License-Identifier: MIT
#include "platform/audio/MixDecoder.h"

#include "platform/audio/Error.h"

#include <algorithm>

namespace audio {
namespace {

constexpr int kHighestRate = 48000;

int CommonRate(const std::vector<ClipStream>& clips) {
  const auto slower = [](const ClipStream& left, const ClipStream& right) {
    return left.FileRate() < right.FileRate();
  };
  const auto [lowest, highest] = std::minmax_element(clips.begin(), clips.end(), slower);
  if (lowest->FileRate() == highest->FileRate()) return lowest->FileRate();
  return std::min(highest->FileRate(), kHighestRate);
}

}  // namespace

MixDecoder::MixDecoder(const std::vector<MixClip>& clips) {
  if (clips.empty()) throw Error("Er is geen geluid om te spelen.");
  clips_.reserve(clips.size());
  for (const MixClip& clip : clips)
    clips_.emplace_back(clip.path, 0);
  rate_ = CommonRate(clips_);
  std::int64_t start = 0;
  for (std::size_t at = 0; at < clips.size(); ++at) {
    clips_[at].SetRate(rate_);
    const std::int64_t frames = clips_[at].Frames();
    places_.push_back({start, frames});
    total_ = std::max(total_, start + frames);
    start += frames - std::clamp<std::int64_t>(FramesOfMs(clips[at].mixMs, rate_), 0, frames);
  }
}

void MixDecoder::Seek(std::int64_t frame) {
  position_ = std::clamp<std::int64_t>(frame, 0, total_);
}

std::size_t MixDecoder::Read(float* out, std::size_t frames) {
  const std::int64_t count = std::min(static_cast<std::int64_t>(frames), total_ - position_);
  std::fill_n(out, 2 * count, 0.0F);
  for (std::size_t clip = 0; clip < clips_.size(); ++clip)
    MixClipInto(clip, out, count);
  position_ += count;
  return static_cast<std::size_t>(count);
}

// Adds the part of a clip within the next `frames` frames. Files outside it are closed, so that a long block does not
// keep all of them open.
void MixDecoder::MixClipInto(std::size_t clip, float* out, std::int64_t frames) {
  const Place& place = places_[clip];
  const std::int64_t from = std::max(position_, place.start);
  const std::int64_t to = std::min(position_ + frames, place.start + place.frames);
  if (from >= to) return clips_[clip].Release();
  clips_[clip].Seek(from - place.start);
  clips_[clip].Mix(out + 2 * (from - position_), to - from);
}

}  // namespace audio

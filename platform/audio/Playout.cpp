// SPDX-License-Identifier: MIT
#include "platform/audio/Playout.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>

namespace audio {
namespace {

constexpr int kFrameBits = 48;
constexpr std::uint64_t kFrameMask = (std::uint64_t{1} << kFrameBits) - 1;

void Raise(std::atomic<int>& peak, int value) noexcept {
  int known = peak.load(std::memory_order_relaxed);
  while (value > known && !peak.compare_exchange_weak(known, value, std::memory_order_relaxed)) {
  }
}

float Decibels(int peak) {
  return peak == 0 ? PeakLevels::kSilence
                   : std::max(PeakLevels::kSilence, 20 * std::log10(static_cast<float>(peak) / 32768.0F));
}

}  // namespace

Playout::Mark Playout::Delivered() const noexcept {
  const std::uint64_t packed = delivered_.load(std::memory_order_acquire);
  return {static_cast<std::uint16_t>(packed >> kFrameBits), static_cast<std::int64_t>(packed & kFrameMask)};
}

bool Playout::HasEnded(std::uint16_t generation) const noexcept {
  return ended_.load(std::memory_order_acquire) == generation;
}

PeakLevels Playout::TakeLevels() noexcept {
  return {Decibels(peaks_[0].exchange(0, std::memory_order_relaxed)),
          Decibels(peaks_[1].exchange(0, std::memory_order_relaxed))};
}

void Playout::ReplaceRing(std::size_t blocks, std::size_t framesPerBlock) {
  ring_ = std::make_unique<BlockRing>(blocks, framesPerBlock);
  blockOffset_ = 0;
}

FrameSource::Supply Playout::Fill(std::int16_t* out, std::size_t frames, std::size_t& delivered) noexcept {
  const std::uint16_t generation = generation_.load(std::memory_order_acquire);
  if (generation != current_) BeginGeneration(generation);
  const bool held = held_.load(std::memory_order_acquire);
  std::size_t done = 0;
  while (const Block* block = CurrentBlock()) {
    if (held || done == frames) break;
    const std::size_t count = std::min(frames - done, block->frames - blockOffset_);
    Copy(*block, out + done * 2, count);
    done += count;
    if (blockOffset_ < block->frames) break;
    finished_ = block->last;
    blockOffset_ = 0;
    ring_->Release();
  }
  std::memset(out + done * 2, 0, (frames - done) * 2 * sizeof *out);
  delivered = done;
  deliveredFrames_ += done;
  delivered_.store(std::uint64_t{generation} << kFrameBits | (deliveredFrames_ & kFrameMask),
                   std::memory_order_release);
  if (finished_) ended_.store(generation, std::memory_order_release);
  if (done > 0) return Supply::Frames;
  return held ? Supply::Held : finished_ ? Supply::Ended : Supply::Starved;
}

void Playout::BeginGeneration(std::uint16_t generation) noexcept {
  current_ = generation;
  deliveredFrames_ = 0;
  finished_ = false;
  ended_.store(kNever, std::memory_order_release);
}

// Discards blocks of earlier generations.
const Block* Playout::CurrentBlock() noexcept {
  const Block* block = ring_->Readable();
  while (block != nullptr && block->generation != current_) {
    ring_->Release();
    blockOffset_ = 0;
    block = ring_->Readable();
  }
  return block;
}

void Playout::Copy(const Block& block, std::int16_t* out, std::size_t frames) noexcept {
  const std::int16_t* in = block.samples + blockOffset_ * 2;
  int left = 0;
  int right = 0;
  for (std::size_t i = 0; i < frames; ++i) {
    left = std::max(left, std::abs(int{in[2 * i]}));
    right = std::max(right, std::abs(int{in[2 * i + 1]}));
  }
  std::memcpy(out, in, frames * 2 * sizeof *out);
  blockOffset_ += frames;
  Raise(peaks_[0], left);
  Raise(peaks_[1], right);
}

}  // namespace audio

// SPDX-License-Identifier: MIT
// The device's side of the player: copies frames and measures levels.
#pragma once

#include "platform/audio/BlockRing.h"
#include "platform/audio/Output.h"

#include <array>
#include <atomic>
#include <cstdint>
#include <memory>

namespace audio {

// Levels in dBFS: 0 = full scale, kSilence = silence.
struct PeakLevels {
  static constexpr float kSilence = -96.0F;
  float left = kSilence;
  float right = kSilence;
};

// Passes the blocks of the current generation to the output and discards those of older ones. A seek increments the
// generation, so that frames decoded before it are never played and the output need not be stopped.
class Playout : public FrameSource {
 public:
  // Number of frames delivered in a generation.
  struct Mark {
    std::uint16_t generation = 0;
    std::int64_t frames = 0;
  };

  // Any thread.
  void SetGeneration(std::uint16_t generation) noexcept { generation_.store(generation, std::memory_order_release); }
  std::uint16_t Generation() const noexcept { return generation_.load(std::memory_order_acquire); }
  void SetHeld(bool held) noexcept { held_.store(held, std::memory_order_release); }
  Mark Delivered() const noexcept;
  bool HasEnded(std::uint16_t generation) const noexcept;
  PeakLevels TakeLevels() noexcept;

  // Decoding thread. The ring may be replaced only while no output runs.
  void ReplaceRing(std::size_t blocks, std::size_t framesPerBlock);
  BlockRing& Ring() noexcept { return *ring_; }

  // Output's thread.
  Supply Fill(std::int16_t* out, std::size_t frames, std::size_t& delivered) noexcept override;

 private:
  void BeginGeneration(std::uint16_t generation) noexcept;
  const Block* CurrentBlock() noexcept;
  void Copy(const Block& block, std::int16_t* out, std::size_t frames) noexcept;

  std::unique_ptr<BlockRing> ring_ = std::make_unique<BlockRing>(2, 64);
  std::atomic<std::uint16_t> generation_{0};
  std::atomic<bool> held_{false};
  std::atomic<std::uint64_t> delivered_{0};  // generation in the upper 16 bits, frames below
  std::atomic<std::uint32_t> ended_{kNever};
  std::array<std::atomic<int>, 2> peaks_{};  // highest absolute sample since the last TakeLevels

  // Output's thread only.
  std::uint16_t current_ = 0;
  std::uint64_t deliveredFrames_ = 0;  // of this generation
  std::size_t blockOffset_ = 0;
  bool finished_ = false;

  static constexpr std::uint32_t kNever = UINT32_MAX;
};

}  // namespace audio

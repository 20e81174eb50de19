// SPDX-License-Identifier: MIT
#include "platform/audio/BlockRing.h"

namespace audio {

BlockRing::BlockRing(std::size_t blocks, std::size_t framesPerBlock)
    : framesPerBlock_(framesPerBlock), samples_(blocks * framesPerBlock * 2), blocks_(blocks) {
  for (std::size_t i = 0; i < blocks; ++i)
    blocks_[i].samples = samples_.data() + i * framesPerBlock * 2;
}

Block* BlockRing::Writable() noexcept {
  const std::size_t written = written_.load(std::memory_order_relaxed);
  const bool full = written - read_.load(std::memory_order_acquire) == blocks_.size();
  return full ? nullptr : &blocks_[written % blocks_.size()];
}

void BlockRing::Publish() noexcept {
  written_.fetch_add(1, std::memory_order_release);
}

const Block* BlockRing::Readable() const noexcept {
  const std::size_t read = read_.load(std::memory_order_relaxed);
  const bool empty = written_.load(std::memory_order_acquire) == read;
  return empty ? nullptr : &blocks_[read % blocks_.size()];
}

void BlockRing::Release() noexcept {
  read_.fetch_add(1, std::memory_order_release);
}

}  // namespace audio

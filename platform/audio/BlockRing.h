// SPDX-License-Identifier: MIT
// Lock-free ring buffer between the decoding thread and the sound device.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace audio {

// One buffer of 16-bit interleaved stereo sound. `generation` is the number of the start or seek it was decoded for.
struct Block {
  std::int16_t* samples = nullptr;
  std::size_t frames = 0;
  std::uint16_t generation = 0;
  bool last = false;  // the file ends with this block
};

// One writing and one reading thread.
class BlockRing {
 public:
  BlockRing(std::size_t blocks, std::size_t framesPerBlock);

  std::size_t FramesPerBlock() const { return framesPerBlock_; }
  std::size_t Capacity() const { return blocks_.size() * framesPerBlock_; }  // frames

  Block* Writable() noexcept;              // writer: the next free block; null when all are filled
  void Publish() noexcept;                 // writer: makes that block readable
  const Block* Readable() const noexcept;  // reader: the oldest filled block; null when there is none
  void Release() noexcept;                 // reader: frees that block

 private:
  std::size_t framesPerBlock_;
  std::vector<std::int16_t> samples_;
  std::vector<Block> blocks_;
  std::atomic<std::size_t> written_{0};  // blocks published since the beginning
  std::atomic<std::size_t> read_{0};     // blocks released since the beginning
};

}  // namespace audio

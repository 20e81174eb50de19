// SPDX-License-Identifier: MIT
// The blocks between the decoding thread and the sound device.
#include "platform/audio/Playout.h"

#include "platform/audio/BlockRing.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <numeric>
#include <thread>
#include <vector>

namespace {

using audio::Block;
using audio::BlockRing;
using audio::Playout;
using Supply = audio::FrameSource::Supply;

TEST(BlockRing, GivesBlocksInTheirOrderAndNoneWhenFullOrEmpty) {
  BlockRing ring(3, 4);
  EXPECT_EQ(ring.Capacity(), 12U);
  EXPECT_EQ(ring.Readable(), nullptr);
  for (std::int16_t round = 0; round < 10; ++round) {
    for (std::int16_t i = 0; i < 3; ++i) {
      Block* block = ring.Writable();
      ASSERT_NE(block, nullptr);
      block->samples[0] = static_cast<std::int16_t>(round * 3 + i);
      EXPECT_EQ(ring.Readable() == nullptr, i == 0);  // not readable before it is published
      ring.Publish();
    }
    EXPECT_EQ(ring.Writable(), nullptr);
    for (std::int16_t i = 0; i < 3; ++i) {
      ASSERT_NE(ring.Readable(), nullptr);
      EXPECT_EQ(ring.Readable()->samples[0], round * 3 + i);
      ring.Release();
    }
    EXPECT_EQ(ring.Readable(), nullptr);
  }
}

TEST(BlockRing, BlocksDoNotShareSamples) {
  BlockRing ring(2, 8);
  for (const std::int16_t value : {std::int16_t{1}, std::int16_t{2}}) {
    std::fill_n(ring.Writable()->samples, 16, value);
    ring.Publish();
  }
  EXPECT_EQ(std::count(ring.Readable()->samples, ring.Readable()->samples + 16, 1), 16);
}

TEST(BlockRing, TwoThreadsPassEveryBlock) {
  BlockRing ring(3, 1);
  constexpr int kBlocks = 20000;
  std::thread writer([&ring] {
    for (int i = 0; i < kBlocks;) {
      Block* block = ring.Writable();
      if (block == nullptr) {
        std::this_thread::yield();
        continue;
      }
      block->frames = static_cast<std::size_t>(i++);
      ring.Publish();
    }
  });
  int wrong = 0;
  for (int i = 0; i < kBlocks;) {
    const Block* block = ring.Readable();
    if (block == nullptr) {
      std::this_thread::yield();
      continue;
    }
    wrong += block->frames == static_cast<std::size_t>(i++) ? 0 : 1;
    ring.Release();
  }
  writer.join();
  EXPECT_EQ(wrong, 0);
}

// A playout whose ring is filled by hand: frame n has n at the left and -n at the right.
class Blocks : public testing::Test {
 protected:
  Blocks() { playout.ReplaceRing(4, 10); }

  void Add(std::uint16_t generation, std::int16_t first, std::size_t frames, bool last = false) {
    Block* block = playout.Ring().Writable();
    ASSERT_NE(block, nullptr);
    for (std::size_t i = 0; i < frames; ++i) {
      block->samples[2 * i] = static_cast<std::int16_t>(first + static_cast<int>(i));
      block->samples[2 * i + 1] = static_cast<std::int16_t>(-block->samples[2 * i]);
    }
    block->frames = frames;
    block->generation = generation;
    block->last = last;
    playout.Ring().Publish();
  }
  Supply Fill(std::size_t frames) {
    out.assign(frames * 2, 999);
    return playout.Fill(out.data(), frames, delivered);
  }
  std::vector<int> Left() const {
    std::vector<int> left;
    for (std::size_t i = 0; i < out.size(); i += 2)
      left.push_back(out[i]);
    return left;
  }

  Playout playout;
  std::vector<std::int16_t> out;
  std::size_t delivered = 0;
};

TEST_F(Blocks, ArePlayedInOneRowWhateverTheSizeOfARequest) {
  Add(0, 1, 10);
  Add(0, 11, 3);
  Add(0, 14, 6);
  std::vector<int> heard;
  for (const std::size_t frames : {4U, 1U, 9U, 5U}) {
    EXPECT_EQ(Fill(frames), Supply::Frames);
    EXPECT_EQ(delivered, frames);
    for (const int frame : Left())
      heard.push_back(frame);
  }
  std::vector<int> expected(19);
  std::iota(expected.begin(), expected.end(), 1);
  EXPECT_EQ(heard, expected);
  EXPECT_EQ(playout.Delivered().frames, 19);
  EXPECT_EQ(out[1], -out[0]);
}

TEST_F(Blocks, MissingFramesAreSilence) {
  Add(0, 1, 2);
  EXPECT_EQ(Fill(5), Supply::Frames);
  EXPECT_EQ(delivered, 2U);
  EXPECT_EQ(Left(), (std::vector<int>{1, 2, 0, 0, 0}));
  EXPECT_EQ(Fill(3), Supply::Starved);
  EXPECT_EQ(delivered, 0U);
  EXPECT_EQ(Left(), (std::vector<int>{0, 0, 0}));
  EXPECT_FALSE(playout.HasEnded(0));
}

TEST_F(Blocks, TheLastOneEndsItsGeneration) {
  Add(0, 1, 4, true);
  EXPECT_EQ(Fill(3), Supply::Frames);
  EXPECT_FALSE(playout.HasEnded(0));
  EXPECT_EQ(Fill(3), Supply::Frames);
  EXPECT_EQ(delivered, 1U);
  EXPECT_TRUE(playout.HasEnded(0));
  EXPECT_FALSE(playout.HasEnded(1));
  EXPECT_EQ(Fill(3), Supply::Ended);
}

TEST_F(Blocks, OfAnEarlierGenerationAreDiscarded) {
  Add(0, 1, 10);
  EXPECT_EQ(Fill(4), Supply::Frames);
  Add(0, 11, 10);
  playout.SetGeneration(1);
  Add(1, 500, 10);
  EXPECT_EQ(Fill(3), Supply::Frames);
  EXPECT_EQ(Left(), (std::vector<int>{500, 501, 502}));
  EXPECT_EQ(playout.Delivered().generation, 1);
  EXPECT_EQ(playout.Delivered().frames, 3);
}

TEST_F(Blocks, ASeekAfterTheEndPlaysAgain) {
  Add(0, 1, 1, true);
  Fill(2);
  ASSERT_TRUE(playout.HasEnded(0));
  playout.SetGeneration(1);
  EXPECT_EQ(Fill(2), Supply::Starved);
  EXPECT_FALSE(playout.HasEnded(1));
  Add(1, 7, 1);
  EXPECT_EQ(Fill(1), Supply::Frames);
  EXPECT_EQ(Left(), std::vector<int>{7});
}

TEST_F(Blocks, NothingIsLostWhileHeld) {
  Add(0, 1, 5);
  Fill(2);
  playout.SetHeld(true);
  EXPECT_EQ(Fill(2), Supply::Held);
  EXPECT_EQ(Left(), (std::vector<int>{0, 0}));
  EXPECT_EQ(playout.Delivered().frames, 2);
  playout.SetHeld(false);
  EXPECT_EQ(Fill(3), Supply::Frames);
  EXPECT_EQ(Left(), (std::vector<int>{3, 4, 5}));
}

TEST_F(Blocks, LevelsAreThePeaksOfTheFramesThatWerePlayed) {
  Block* block = playout.Ring().Writable();
  const std::int16_t samples[] = {100, -32768, -16384, 5, 32767, 0};
  std::copy(std::begin(samples), std::end(samples), block->samples);
  block->frames = 3;
  playout.Ring().Publish();
  Fill(2);  // the third frame is not heard yet
  const audio::PeakLevels levels = playout.TakeLevels();
  EXPECT_NEAR(static_cast<double>(levels.left), -6.02, 0.01);
  EXPECT_FLOAT_EQ(levels.right, 0);
  EXPECT_FLOAT_EQ(playout.TakeLevels().left, audio::PeakLevels::kSilence);
  Fill(1);
  EXPECT_NEAR(static_cast<double>(playout.TakeLevels().left), 0, 0.001);
}

}  // namespace

// SPDX-License-Identifier: MIT
// The device gets exactly the file's frames from the player's position.
#include "platform/audio/PlayerCore.h"
#include "tests/platform/audio/support/EventLog.h"
#include "tests/platform/audio/support/PulledOutput.h"
#include "tests/platform/audio/support/SoundFiles.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

namespace {

using namespace audiotest;
using Kind = EventLog::Kind;

// Run for WAV and MP3.
class Playback : public ::testing::TestWithParam<const char*> {
 protected:
  void SetUp() override {
    path_ = MakeTone(folder_.File(GetParam()), kSeconds);
    whole_ = StraightDecode(path_);
    player_.Open(path_);
  }

  std::int64_t FrameAt(std::int32_t ms) const { return audio::FramesOfMs(ms, 44100); }
  std::vector<std::int16_t> Sound(std::int64_t frame, std::size_t count) const { return Part(whole_, frame, count); }
  // Expects the next delivered frames to be those of the file at `frame`.
  void ExpectPlaysFrom(std::int64_t frame, std::size_t count = 5000) {
    ASSERT_EQ(output_.Pull(count), Sound(frame, count)) << "from frame " << frame;
  }
  void Jump(std::int32_t to) {
    player_.Pause();
    player_.SetPosition(to);
    player_.Resume();
  }

  static constexpr int kSeconds = 12;
  TemporaryFolder folder_;
  std::string path_;
  std::vector<std::int16_t> whole_;
  EventLog log_;
  PulledOutput output_;
  audio::PlayerCore player_{output_.Factory(), log_.Listener()};
};

TEST_P(Playback, DeliversTheWholeFileAndThenStops) {
  player_.Start();
  EXPECT_EQ(player_.State(), audio::kPlaying);
  EXPECT_EQ(output_.PullToEnd(), whole_);
  ASSERT_TRUE(log_.Await(Kind::Stopped));
  EXPECT_EQ(player_.State(), audio::kStopped);
  EXPECT_EQ(player_.Position(), player_.Length());
  EXPECT_EQ(player_.Length(), kSeconds * 1000);
}

TEST_P(Playback, ContinuesWhereItWasPaused) {
  player_.Start();
  ExpectPlaysFrom(0, 7001);
  player_.Pause();
  EXPECT_TRUE(output_.Pull(100).empty());
  player_.Resume();
  ExpectPlaysFrom(7001);
}

TEST_P(Playback, ContinuesWhereItWasStopped) {
  player_.Start();
  ExpectPlaysFrom(0, 44100);
  player_.Stop();
  EXPECT_EQ(player_.Position(), 1000);
  player_.Start();
  ExpectPlaysFrom(44100);
}

TEST_P(Playback, SeeksToTheExactFrame) {
  player_.Start();
  ExpectPlaysFrom(0);
  for (const std::int32_t to : {10000, 1, 0, 3333, 11999, 7, 5000}) {
    Jump(to);
    EXPECT_EQ(player_.Position(), to);
    ExpectPlaysFrom(FrameAt(to), 40);
    EXPECT_EQ(player_.Position(), to + 1);
  }
}

TEST_P(Playback, SeekingWhilePlayingIsExact) {
  player_.Start();
  ExpectPlaysFrom(0);
  player_.SetPosition(8000);
  ExpectPlaysFrom(FrameAt(8000));
}

TEST_P(Playback, LastOfManySeeksCounts) {
  player_.Start();
  for (int i = 0; i < 500; ++i)
    Jump(i * 17 % 11000);
  Jump(4321);
  ExpectPlaysFrom(FrameAt(4321));
}

TEST_P(Playback, PositionSetWhileStoppedIsUsedByTheNextStart) {
  player_.SetPosition(9500);
  EXPECT_EQ(player_.Position(), 9500);
  EXPECT_EQ(log_.Count(Kind::Started), 0);
  player_.Start();
  EXPECT_EQ(output_.PullToEnd(), Sound(FrameAt(9500), whole_.size()));
}

TEST_P(Playback, StartAtOrPastTheEndPlaysFromTheBeginning) {
  player_.SetPosition(player_.Length() + 20000);
  EXPECT_EQ(player_.Position(), player_.Length());
  player_.Start();
  ExpectPlaysFrom(0);
}

TEST_P(Playback, PositionPastTheEndEndsPlayback) {
  player_.Start();
  ExpectPlaysFrom(0);
  Jump(kSeconds * 1000 + 25000);
  EXPECT_EQ(player_.State(), audio::kStopped);
  EXPECT_EQ(player_.Position(), player_.Length());
  EXPECT_EQ(log_.Count(Kind::Stopped), 1);
}

TEST_P(Playback, NegativePositionIsTheBeginning) {
  player_.SetPosition(-500);
  EXPECT_EQ(player_.Position(), 0);
}

TEST_P(Playback, PositionReturnsTheMillisecondThatWasSet) {
  for (std::int32_t ms = 0; ms <= player_.Length(); ++ms) {
    player_.SetPosition(ms);
    ASSERT_EQ(player_.Position(), ms);
  }
}

TEST_P(Playback, OpenReplacesTheFileThatIsPlaying) {
  const std::string other = MakeTone(folder_.File("other.wav"), 3, 22050, 1);
  player_.Start();
  ExpectPlaysFrom(0);
  player_.Open(other);
  EXPECT_EQ(player_.State(), audio::kStopped);
  EXPECT_EQ(player_.Position(), 0);
  EXPECT_EQ(player_.Length(), 3000);
  EXPECT_EQ(log_.Count(Kind::Stopped), 1);
  player_.Start();
  EXPECT_EQ(output_.PullToEnd(), StraightDecode(other));
  EXPECT_EQ(output_.LastRequest().sampleRate, 22050);
}

TEST_P(Playback, SurvivesTruncationOfItsFile) {
  player_.Start();
  ExpectPlaysFrom(0);
  std::filesystem::resize_file(path_, 100000);
  output_.PullToEnd();
  ASSERT_TRUE(log_.Await(Kind::Stopped));
  EXPECT_EQ(player_.Position(), player_.Length());
}

TEST_P(Playback, ContinuesWhenItsFileIsDeleted) {
  player_.Start();
  ExpectPlaysFrom(0);
  std::filesystem::remove(path_);
  Jump(6000);
  ExpectPlaysFrom(FrameAt(6000));
}

TEST_P(Playback, SmallAndLargeBuffersDeliverTheSame) {
  for (const auto& settings : {audio::OutputSettings{0, 1, 1}, audio::OutputSettings{0, 64, 65536},
                               audio::OutputSettings{0, -5, 0}, audio::OutputSettings{0, 3, 1001}}) {
    player_.SetSettings(settings);
    player_.SetPosition(11000);
    player_.Start();
    ASSERT_EQ(output_.PullToEnd(), Sound(FrameAt(11000), whole_.size()))
        << settings.numBuffers << " x " << settings.bufferBytes;
    player_.Stop();
  }
}

INSTANTIATE_TEST_SUITE_P(Of, Playback, ::testing::Values("sound.wav", "sound.mp3"),
                         [](const auto& kind) { return std::string(kind.param).substr(6); });

}  // namespace

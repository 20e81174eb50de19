// SPDX-License-Identifier: MIT
// The player's states, events and device.
#include "platform/audio/PlayerCore.h"

#include "platform/audio/Error.h"
#include "platform/audio/PortAudioOutput.h"
#include "platform/audio/SilentOutput.h"
#include "tests/platform/audio/support/EventLog.h"
#include "tests/platform/audio/support/PulledOutput.h"
#include "tests/platform/audio/support/SoundFiles.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

namespace {

using namespace audiotest;
using Kind = EventLog::Kind;

class Player : public ::testing::Test {
 protected:
  std::string Tone(double seconds = 5) { return MakeTone(folder_.File("toon.wav"), seconds); }

  TemporaryFolder folder_;
  EventLog log_;
  PulledOutput output_;
  audio::PlayerCore player_{output_.Factory(), log_.Listener()};
};

TEST_F(Player, WithoutAFileHasNoLengthAndCannotPlay) {
  EXPECT_EQ(player_.State(), audio::kNoFile);
  EXPECT_EQ(player_.FileName(), "");
  EXPECT_EQ(player_.Length(), 0);
  player_.SetPosition(100);
  EXPECT_EQ(player_.Position(), 0);
  EXPECT_THROW(player_.Start(), audio::Error);
  player_.Stop();
  player_.Pause();
  player_.Resume();
  EXPECT_TRUE(log_.All().empty());
}

TEST_F(Player, PlayingIsStateSix) {
  player_.Open(Tone());
  EXPECT_NE(static_cast<int>(player_.State()), 6);
  player_.Start();
  EXPECT_EQ(static_cast<int>(player_.State()), 6);
  player_.Pause();
  EXPECT_NE(static_cast<int>(player_.State()), 6);
}

TEST_F(Player, ClosesItsFileWhenTheNextOneCannotBeRead) {
  player_.Open(Tone());
  player_.Start();
  EXPECT_THROW(player_.Open(folder_.File("weg.mp3")), audio::Error);
  EXPECT_EQ(player_.FileName(), "");
  EXPECT_EQ(player_.Length(), 0);
  EXPECT_EQ(player_.State(), audio::kNoFile);
  EXPECT_EQ(log_.Count(Kind::Stopped), 1);
}

TEST_F(Player, ReportsEachStartAndStopOnceAndInOrder) {
  player_.Open(Tone());
  player_.Stop();
  player_.Start();
  player_.Start();
  player_.Pause();
  player_.Resume();
  player_.Stop();
  player_.Stop();
  player_.Start();
  player_.Close();
  std::vector<Kind> kinds;
  for (const auto& event : log_.All())
    kinds.push_back(event.kind);
  EXPECT_EQ(kinds, (std::vector{Kind::Started, Kind::Stopped, Kind::Started, Kind::Stopped}));
}

TEST_F(Player, PositionIsThatOfTheHeardFrameNotTheDeliveredOne) {
  player_.Open(Tone());
  output_.SetPending(4410);
  player_.Start();
  output_.Pull(2205);
  EXPECT_EQ(player_.Position(), 0);
  output_.Pull(2205 + 4410);
  EXPECT_EQ(player_.Position(), 100);
  player_.Stop();
  EXPECT_EQ(player_.Position(), 100);
}

TEST_F(Player, PositionNeverDecreasesWhilePlaying) {
  player_.Open(Tone());
  player_.Start();
  output_.Pull(44100);
  EXPECT_EQ(player_.Position(), 1000);
  output_.SetPending(22050);
  EXPECT_EQ(player_.Position(), 1000);
  player_.Pause();
  player_.Resume();
  output_.Pull(1000);
  EXPECT_EQ(player_.Position(), 1000);
}

TEST_F(Player, StopsOnlyWhenTheEndHasBeenHeard) {
  player_.Open(Tone(1));
  output_.SetPending(4410);
  player_.Start();
  output_.PullToEnd();
  ASSERT_TRUE(output_.AwaitPendingAsked(3)) << "the player watches what is still to be heard";
  EXPECT_EQ(player_.State(), audio::kPlaying);
  EXPECT_EQ(player_.Position(), 900);
  output_.SetPending(0);
  ASSERT_TRUE(log_.Await(Kind::Stopped));
  EXPECT_EQ(player_.Position(), 1000);
}

TEST_F(Player, ResamplesForADeviceThatRejectsTheRate) {
  output_.SetSampleRate(48000);
  player_.Open(Tone(2));
  player_.SetPosition(500);
  player_.Start();
  const auto first = output_.Pull(24000);
  EXPECT_EQ(first.size(), 48000U);
  EXPECT_EQ(player_.Position(), 1000);
  const auto rest = output_.PullToEnd();
  EXPECT_NEAR(static_cast<double>(rest.size()), 2 * 48000, 128);
  ASSERT_TRUE(log_.Await(Kind::Stopped));
  EXPECT_EQ(player_.Position(), 2000);
}

TEST_F(Player, ReportsThePeakOfEachChannelSinceTheLastCall) {
  Bytes bytes = ReadBytes(Tone(1));
  std::fill(bytes.begin() + 44, bytes.begin() + 44 + std::ptrdiff_t{44100} * 4, 0);
  bytes[44 + 4000 * 4 + 1] = 0x40;      // left: 16384
  bytes[44 + 4000 * 4 + 2 + 1] = 0x80;  // right: -32768
  player_.Open(WriteBytes(folder_.File("piek.wav"), bytes));
  player_.Start();
  output_.Pull(4000);
  EXPECT_EQ(player_.TakeLevels().left, audio::PeakLevels::kSilence);
  output_.Pull(1);
  const audio::PeakLevels peak = player_.TakeLevels();
  EXPECT_NEAR(peak.left, -6.02, 0.01);
  EXPECT_NEAR(peak.right, 0, 0.01);
  EXPECT_EQ(player_.TakeLevels().right, audio::PeakLevels::kSilence);
}

TEST_F(Player, LostDeviceIsReportedOnceAndStopsThePlayer) {
  player_.Open(Tone());
  player_.Start();
  output_.Pull(44100);
  output_.Unplug();
  ASSERT_TRUE(log_.Await(Kind::Stopped));
  EXPECT_EQ(log_.Count(Kind::Failed), 1);
  EXPECT_EQ(player_.State(), audio::kStopped);
  EXPECT_EQ(player_.Position(), 1000);
  const auto events = log_.All();
  EXPECT_EQ(events[events.size() - 2].kind, Kind::Failed);
  EXPECT_NE(events[events.size() - 2].text.find("geluidsapparaat"), std::string::npos);
  player_.Start();
  EXPECT_EQ(output_.Pull(10).size(), 20U);
}

TEST_F(Player, OpensTheDeviceOnlyToPlayAndKeepsItForTheNextStart) {
  player_.SetSettings({3, 20, 2048});
  player_.Open(Tone());
  EXPECT_EQ(output_.TimesOpened(), 0);
  for (int i = 0; i < 3; ++i) {
    player_.Start();
    output_.Pull(10);
    player_.Stop();
  }
  EXPECT_EQ(output_.TimesOpened(), 1);
  EXPECT_EQ(output_.LastRequest().device, 3);
}

TEST_F(Player, ReportsOnceWhyItIsSilent) {
  output_.SetStatus("Er is geen geluidsapparaat: er wordt afgespeeld zonder geluid.");
  player_.Open(Tone());
  player_.Start();
  output_.Pull(10);
  player_.Open(MakeTone(folder_.File("anders.wav"), 1, 22050));
  player_.Start();
  output_.Pull(10);
  EXPECT_EQ(output_.TimesOpened(), 2);
  EXPECT_EQ(log_.Count(Kind::Status), 1);
  EXPECT_EQ(player_.Status(), "Er is geen geluidsapparaat: er wordt afgespeeld zonder geluid.");
}

TEST_F(Player, CanBeDestroyedWhilePlaying) {
  for (int i = 0; i < 20; ++i) {
    audio::PlayerCore brief(output_.Factory(), log_.Listener());
    brief.Open(Tone(1));
    brief.Start();
    if (i % 2 == 0) output_.Pull(100);
  }
  EXPECT_FALSE(output_.IsRunning());
}

// A card number that no machine has.
TEST(DeviceOutput, MissingCardIsSilentAndReported) {
  const auto output = audio::OpenDeviceOutput({30000, 44100});
  ASSERT_NE(output, nullptr);
  EXPECT_EQ(output->SampleRate(), 44100);
  EXPECT_NE(output->Status().find("zonder geluid"), std::string::npos);
}

TEST(SilentOutput, PlaysAFileToItsEndByTheClock) {
  const TemporaryFolder folder;
  EventLog log;
  audio::PlayerCore player(
      [](const audio::OutputRequest& request) {
        return std::make_unique<audio::SilentOutput>(request.sampleRate, "Stil.");
      },
      log.Listener());
  player.Open(MakeTone(folder.File("kort.wav"), 0.2));
  player.Start();
  ASSERT_TRUE(log.Await(Kind::Stopped));
  EXPECT_EQ(player.Position(), 200);
  EXPECT_EQ(player.Status(), "Stil.");
}

}  // namespace

// SPDX-License-Identifier: MIT
// Every file of a mix starts at its exact frame.
#include "platform/audio/MixDecoder.h"

#include "platform/audio/Error.h"
#include "platform/audio/PlayerCore.h"
#include "platform/audio/StereoStream.h"
#include "tests/platform/audio/support/EventLog.h"
#include "tests/platform/audio/support/PulledOutput.h"
#include "tests/platform/audio/support/SoundFiles.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <numeric>

namespace {

using namespace audiotest;
using audio::MixClip;
using audio::MixDecoder;
using Sound = std::vector<std::int16_t>;

Sound ReadAll(audio::Decoder& decoder) {
  Sound sound(static_cast<std::size_t>(decoder.TotalFrames()) * 2 + 2000);
  std::size_t frames = 0;
  while (const std::size_t got = decoder.Read(sound.data() + frames * 2, 777))
    frames += got;
  sound.resize(frames * 2);
  return sound;
}

// The expected mix: the files' samples added at their start frames; all of the same rate.
Sound Laid(const std::vector<MixClip>& clips, int rate) {
  Sound laid;
  std::int64_t start = 0;
  for (const MixClip& clip : clips) {
    const Sound sound = StraightDecode(clip.path);
    const auto first = static_cast<std::size_t>(start) * 2;
    if (laid.size() < first + sound.size()) laid.resize(first + sound.size());
    for (std::size_t at = 0; at < sound.size(); ++at)
      laid[first + at] = static_cast<std::int16_t>(std::clamp(laid[first + at] + sound[at], -32768, 32767));
    const auto frames = static_cast<std::int64_t>(sound.size() / 2);
    start += frames - std::clamp<std::int64_t>(audio::FramesOfMs(clip.mixMs, rate), 0, frames);
  }
  return laid;
}

int LargestDifference(const Sound& left, const Sound& right) {
  EXPECT_EQ(left.size(), right.size());
  int largest = 0;
  for (std::size_t at = 0; at < std::min(left.size(), right.size()); ++at)
    largest = std::max(largest, std::abs(left[at] - right[at]));
  return largest;
}

// A file converted as the player does it.
Sound Converted(const std::string& path, int rate) {
  const auto decoder = audio::OpenDecoder(path);
  audio::StereoStream stream(*decoder, rate);
  Sound sound(static_cast<std::size_t>(decoder->TotalFrames() * rate / decoder->SampleRate() + 4000) * 2);
  sound.resize(stream.Read(sound.data(), sound.size() / 2) * 2);
  return sound;
}

class MixDecoderTest : public testing::Test {
 protected:
  std::string Tone(const std::string& name, double seconds, int rate = 44100, int channels = 2) const {
    return MakeTone(folder_.File(name), seconds, rate, channels);
  }

  TemporaryFolder folder_;
};

}  // namespace

TEST_F(MixDecoderTest, FilesWithTheSameRateStartAtTheExactFrame) {
  const std::vector<MixClip> clips{{Tone("a.wav", 1.2345, 44100, 2), 313},
                                   {Tone("b.flac", 0.9, 44100, 1), 250},
                                   {Tone("c.wav", 0.71, 44100, 1), 0},
                                   {Tone("d.flac", 0.5, 44100, 2), 499}};
  MixDecoder mix(clips);
  EXPECT_EQ(mix.SampleRate(), 44100);
  const Sound expected = Laid(clips, 44100);
  EXPECT_EQ(mix.TotalFrames() * 2, static_cast<std::int64_t>(expected.size()));
  EXPECT_EQ(LargestDifference(ReadAll(mix), expected), 0);
}

TEST_F(MixDecoderTest, MixPointLongerThanTheNextClipOverlapsThree) {
  const std::vector<MixClip> clips{{Tone("a.wav", 1.0), 700}, {Tone("b.wav", 0.3), 200}, {Tone("c.wav", 0.9), 0}};
  MixDecoder mix(clips);
  EXPECT_EQ(mix.Places()[1].start, 13230);
  EXPECT_EQ(mix.Places()[2].start, 13230 + 4410);
  EXPECT_EQ(LargestDifference(ReadAll(mix), Laid(clips, 44100)), 0);
}

TEST_F(MixDecoderTest, MixPointLongerThanItsClipStartsBothTogether) {
  const std::vector<MixClip> clips{{Tone("a.wav", 0.2), 5000}, {Tone("b.wav", 0.3), 0}, {Tone("c.wav", 0.1), -7}};
  MixDecoder mix(clips);
  EXPECT_EQ(mix.Places()[1].start, 0);
  EXPECT_EQ(mix.TotalFrames(), 13230 + 4410);
  EXPECT_EQ(LargestDifference(ReadAll(mix), Laid(clips, 44100)), 0);
}

TEST_F(MixDecoderTest, DifferentRatesAreConvertedAndStartAtTheirFrame) {
  const std::string slow = Tone("slow.wav", 0.8, 22050, 1);
  const std::string fast = Tone("fast.wav", 0.6, 48000, 2);
  const std::string middle = Tone("middle.mp3", 0.7, 44100, 2);
  MixDecoder mix({{slow, 100}, {fast, 150}, {middle, 0}});
  EXPECT_EQ(mix.SampleRate(), 48000);
  ASSERT_EQ(mix.Places().size(), 3U);
  EXPECT_EQ(mix.Places()[1].start, 38400 - 4800);
  EXPECT_EQ(mix.Places()[2].start, 38400 - 4800 + 28800 - 7200);
  const Sound heard = ReadAll(mix);
  EXPECT_EQ(heard.size(), static_cast<std::size_t>(mix.TotalFrames()) * 2);
  const auto alone = [&](std::size_t clip, std::int64_t from, std::int64_t frames, const Sound& expected) {
    const std::int64_t start = mix.Places()[clip].start + from;
    const auto count = static_cast<std::size_t>(frames);
    return LargestDifference(Part(heard, start, count), Part(expected, from, count));
  };
  EXPECT_LE(alone(0, 0, 38400 - 4800, Converted(slow, 48000)), 1);
  EXPECT_EQ(alone(1, 4800, 28800 - 4800 - 7200, StraightDecode(fast)), 0);
  const Sound last = Converted(middle, 48000);
  EXPECT_LE(alone(2, 7200, static_cast<std::int64_t>(last.size() / 2) - 7200 - 10, last), 1);
}

TEST_F(MixDecoderTest, DifferentRatesAboveTheMaximumAreConverted) {
  const MixDecoder mix({{Tone("a.wav", 0.1, 96000), 0}, {Tone("b.wav", 0.1, 44100), 0}});
  EXPECT_EQ(mix.SampleRate(), 48000);
  EXPECT_EQ(MixDecoder({{Tone("a.wav", 0.1, 96000), 0}}).SampleRate(), 96000);
}

TEST_F(MixDecoderTest, SeekingGivesTheSameFramesAsReadingFromTheBeginning) {
  MixDecoder mix({{Tone("a.wav", 0.6, 22050, 1), 200},
                  {Tone("b.mp3", 0.8, 44100, 2), 300},
                  {Tone("c.wav", 0.5, 11025, 1), 0},
                  {Tone("d.wav", 0.4, 48000, 2), 0}});
  const Sound straight = ReadAll(mix);
  constexpr std::size_t kFrames = 3000;
  std::vector<std::int16_t> part(kFrames * 2);
  for (std::int64_t target = 1; target < mix.TotalFrames(); target = target * 7 % 104729 + target / 3 + 1) {
    mix.Seek(target);
    part.resize(kFrames * 2);
    part.resize(mix.Read(part.data(), kFrames) * 2);
    ASSERT_LE(LargestDifference(part, Part(straight, target, kFrames)), 1) << "from frame " << target;
  }
}

TEST_F(MixDecoderTest, SumsAboveFullScaleAreClippedAndDoNotWrap) {
  const std::vector<MixClip> clips(8, {Tone("a.wav", 0.5), 500});
  MixDecoder mix(clips);
  const Sound heard = ReadAll(mix);
  const Sound alone = StraightDecode(clips[0].path);
  for (std::size_t at = 0; at < alone.size(); ++at)
    ASSERT_EQ(heard[at], std::clamp(alone[at] * 8, -32768, 32767)) << at;
  EXPECT_EQ(*std::max_element(heard.begin(), heard.end()), 32767);
}

TEST_F(MixDecoderTest, DeletedFileIsSilentAndTheOthersPlay) {
  const std::vector<MixClip> clips{{Tone("a.wav", 0.5), 100}, {Tone("b.wav", 0.5), 100}, {Tone("c.wav", 0.5), 0}};
  MixDecoder mix(clips);
  std::filesystem::remove(clips[1].path);
  const Sound heard = ReadAll(mix);
  EXPECT_EQ(heard.size(), static_cast<std::size_t>(mix.TotalFrames()) * 2);
  const Sound first = StraightDecode(clips[0].path);
  EXPECT_EQ(LargestDifference(Part(heard, 0, 22050), first), 0);
  EXPECT_EQ(LargestDifference(Part(heard, mix.Places()[2].start, 22050), StraightDecode(clips[2].path)), 0);
}

TEST_F(MixDecoderTest, UnreadableFileIsReportedWithItsPath) {
  try {
    const MixDecoder mix({{Tone("a.wav", 0.1), 0}, {folder_.File("weg.wav"), 0}});
    FAIL();
  } catch (const audio::Error& error) {
    EXPECT_NE(std::string(error.what()).find("weg.wav"), std::string::npos) << error.what();
  }
  EXPECT_THROW(MixDecoder({}), audio::Error);
}

// Through player, buffers and output: no frame is lost or repeated between clips.
TEST_F(MixDecoderTest, PlayerDeliversEveryFrameOfTheMix) {
  const std::vector<MixClip> clips{
      {Tone("a.wav", 0.8, 44100, 1), 250}, {Tone("b.mp3", 0.7), 120}, {Tone("c.wav", 0.5), 0}};
  PulledOutput output;
  EventLog log;
  audio::PlayerCore player(output.Factory(), log.Listener());
  player.Open(std::make_unique<MixDecoder>(clips), "blok");
  EXPECT_EQ(player.FileName(), "blok");
  player.Start();
  const Sound heard = output.PullToEnd();
  MixDecoder mix(clips);
  EXPECT_EQ(LargestDifference(heard, ReadAll(mix)), 0);
  EXPECT_LE(LargestDifference(heard, Laid(clips, 44100)), 1) << "an MP3 has more than 16 bits";
}

TEST_F(MixDecoderTest, PlayerSeeksInTheMixToTheExactFrame) {
  const std::vector<MixClip> clips{{Tone("a.wav", 0.8), 250}, {Tone("b.wav", 0.7), 0}};
  PulledOutput output;
  EventLog log;
  audio::PlayerCore player(output.Factory(), log.Listener());
  player.Open(std::make_unique<MixDecoder>(clips), "blok");
  player.SetPosition(500);
  player.Start();
  EXPECT_EQ(LargestDifference(output.PullToEnd(), Part(Laid(clips, 44100), 22050, SIZE_MAX / 4)), 0);
}

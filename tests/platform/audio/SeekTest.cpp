// SPDX-License-Identifier: MIT
// Seeking is exact to the sample.
#include "platform/audio/Decoder.h"
#include "tests/platform/audio/support/SoundFiles.h"

#include <gtest/gtest.h>
#include <mpg123.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

namespace {

using namespace audiotest;

std::vector<std::int16_t> ReadFrom(audio::Decoder& decoder, std::int64_t frame, std::size_t count) {
  decoder.Seek(frame);
  std::vector<std::int16_t> own(count * static_cast<std::size_t>(decoder.Channels()));
  own.resize(decoder.Read(own.data(), count) * static_cast<std::size_t>(decoder.Channels()));
  return own;
}

std::vector<std::int64_t> PlacesIn(std::int64_t frames) {
  std::vector<std::int64_t> places = {0, 1, 1151, 1152, 1153, frames - 1, frames, 0};
  std::mt19937 random(4);
  for (int i = 0; i < 60; ++i)
    places.push_back(static_cast<std::int64_t>(random()) % frames);
  return places;
}

void ExpectEverySeekExact(const std::string& path) {
  const auto whole = StraightDecode(path);
  const auto decoder = audio::OpenDecoder(path);
  ASSERT_EQ(decoder->Channels(), 2);
  ASSERT_EQ(static_cast<std::int64_t>(whole.size() / 2), decoder->TotalFrames());
  for (const std::int64_t target : PlacesIn(decoder->TotalFrames())) {
    ASSERT_EQ(ReadFrom(*decoder, target, 3000), Part(whole, target, 3000)) << path << " at " << target;
  }
}

// Compares unrounded samples in the file's channels: none may differ by more than `most` of full scale.
void ExpectEverySeekWithin(float most, const std::string& path) {
  const auto decoder = audio::OpenDecoder(path);
  const auto channels = static_cast<std::size_t>(decoder->Channels());
  std::vector<float> whole(static_cast<std::size_t>(decoder->TotalFrames()) * channels);
  ASSERT_EQ(decoder->Read(whole.data(), whole.size() / channels) * channels, whole.size());
  for (const std::int64_t target : PlacesIn(decoder->TotalFrames())) {
    decoder->Seek(target);
    std::vector<float> part(3000 * channels);
    part.resize(decoder->Read(part.data(), 3000) * channels);
    const auto expected = whole.begin() + target * decoder->Channels();
    ASSERT_EQ(part.size(), std::min<std::size_t>(3000 * channels, static_cast<std::size_t>(whole.end() - expected)));
    for (std::size_t i = 0; i < part.size(); ++i)
      ASSERT_NEAR(part[i], expected[static_cast<std::ptrdiff_t>(i)], most) << path << " at " << target << " + " << i;
  }
}

TEST(Seeking, IsSampleExactForEveryFormat) {
  const TemporaryFolder folder;
  ExpectEverySeekExact(MakeTone(folder.File("a.wav"), 8));
  ExpectEverySeekExact(MakeTone(folder.File("a.flac"), 8));
  ExpectEverySeekExact(MakeTone(folder.File("cbr.mp3"), 8));
  ExpectEverySeekExact(MakeVariableMp3(folder.File("vbr.mp3"), 8));
  ExpectEverySeekExact(WithoutLengthHeader(folder.File("cbr.mp3"), folder.File("cbr-none.mp3")));
  ExpectEverySeekExact(WithoutLengthHeader(folder.File("vbr.mp3"), folder.File("vbr-none.mp3")));
  ExpectEverySeekExact(WithVbriHeader(folder.File("vbr.mp3"), folder.File("vbr-vbri.mp3")));
  ExpectEverySeekExact(MakeTone(folder.File("48.mp3"), 8, 48000));
}

// The fewer bytes a frame has, the more previous frames the decoder needs.
TEST(Seeking, IsBitExactDownToTheLowestBitRate) {
  const TemporaryFolder folder;
  for (const int sampleRate : {32000, 44100, 48000}) {
    for (const int channels : {1, 2}) {
      ExpectEverySeekWithin(0, MakePoorestMp3(folder.File("arm.mp3"), 8, sampleRate, channels));
      ExpectEverySeekWithin(0, MakeTone(folder.File("gewoon.mp3"), 8, sampleRate, channels));
    }
  }
}

TEST(Seeking, DiffersByRoundingOnlyForLowSamplingRates) {
  const TemporaryFolder folder;
  constexpr float kRounding = 0.01F / 32768;
  for (const int sampleRate : {8000, 11025, 12000, 16000, 22050, 24000}) {
    for (const int channels : {1, 2}) {
      ExpectEverySeekWithin(kRounding, MakePoorestMp3(folder.File("arm.mp3"), 8, sampleRate, channels));
      ExpectEverySeekWithin(kRounding, MakeTone(folder.File("gewoon.mp3"), 8, sampleRate, channels));
    }
  }
}

TEST(Seeking, PositionIsClampedToTheFile) {
  const TemporaryFolder folder;
  const auto decoder = audio::OpenDecoder(MakeTone(folder.File("a.mp3"), 1));
  EXPECT_TRUE(ReadFrom(*decoder, decoder->TotalFrames() + 5, 10).empty());
  EXPECT_EQ(ReadFrom(*decoder, -5, 10), ReadFrom(*decoder, 0, 10));
}

TEST(Decoding, EqualsThePlainLibrarysOutput) {
  const TemporaryFolder folder;
  const std::string path = MakeVariableMp3(folder.File("a.mp3"), 3);
  mpg123_handle* plain = mpg123_new(nullptr, nullptr);
  mpg123_param(plain, MPG123_ADD_FLAGS, MPG123_QUIET, 0);
  ASSERT_EQ(mpg123_open(plain, path.c_str()), MPG123_OK);
  std::vector<std::int16_t> reference;
  std::vector<unsigned char> block(1 << 16);
  for (int code = MPG123_OK; code == MPG123_OK || code == MPG123_NEW_FORMAT;) {
    std::size_t done = 0;
    code = mpg123_read(plain, block.data(), block.size(), &done);
    const auto* samples = reinterpret_cast<const std::int16_t*>(block.data());
    reference.insert(reference.end(), samples, samples + done / 2);
  }
  mpg123_delete(plain);
  const auto ours = StraightDecode(path);
  ASSERT_EQ(ours.size(), reference.size());
  for (std::size_t i = 0; i < ours.size(); ++i)
    ASSERT_NEAR(ours[i], reference[i], 1) << i;
}

TEST(Decoding, RoundsAndClipsTo16Bits) {
  EXPECT_EQ(audio::Int16Sample(0.5F), 16384);
  EXPECT_EQ(audio::Int16Sample(-1.0F), -32768);
  EXPECT_EQ(audio::Int16Sample(1.0F), 32767);
  EXPECT_EQ(audio::Int16Sample(-7.0F), -32768);
  EXPECT_EQ(audio::Int16Sample(std::nanf("")), 0);
}

}  // namespace

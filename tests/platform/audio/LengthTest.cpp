// SPDX-License-Identifier: MIT
// The reported length must be that of the decoded sound, not of a header field.
#include "platform/audio/Decoder.h"
#include "platform/audio/Error.h"
#include "platform/audio/Measure.h"
#include "tests/platform/audio/support/SoundFiles.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <string>

namespace {

using namespace audiotest;

// Length of a complete decode in milliseconds, rounded to nearest.
std::int64_t FullDecodeMs(const std::string& path) {
  return audio::MsOfFrames(static_cast<std::int64_t>(StraightDecode(path).size() / 2),
                           audio::OpenDecoder(path)->SampleRate());
}

std::string ErrorOf(const std::string& path) {
  try {
    audio::MeasureMs(path);
  } catch (const audio::Error& error) {
    return error.what();
  }
  return {};
}

void Append(Bytes& bytes, const Bytes& more) {
  bytes.insert(bytes.end(), more.begin(), more.end());
}

class Length : public ::testing::Test {
 protected:
  TemporaryFolder folder_;
};

TEST_F(Length, IsExactForAWaveFile) {
  EXPECT_EQ(audio::MeasureMs(MakeTone(folder_.File("a.wav"), 75.9)), 75900);
}

TEST_F(Length, IsRoundedToTheNearestMillisecond) {
  EXPECT_EQ(audio::MeasureMs(MakeTone(folder_.File("down.wav"), 1.0004)), 1000);
  EXPECT_EQ(audio::MeasureMs(MakeTone(folder_.File("up.wav"), 1.0006)), 1001);
}

TEST_F(Length, ExcludesTheEncodersPaddingOfAConstantBitRateMp3) {
  EXPECT_EQ(audio::MeasureMs(MakeTone(folder_.File("a.mp3"), 30.04)), 30040);
}

TEST_F(Length, IsExactForAVariableBitRateMp3) {
  EXPECT_EQ(audio::MeasureMs(MakeVariableMp3(folder_.File("a.mp3"), 30.04)), 30040);
}

TEST_F(Length, CountsEveryFrameOfAnMp3WithoutALengthHeader) {
  for (const std::string& with :
       {MakeTone(folder_.File("c.mp3"), 30.04), MakeVariableMp3(folder_.File("v.mp3"), 30.04)}) {
    const std::string without = WithoutLengthHeader(with, with + ".none.mp3");
    const auto frames = audio::OpenDecoder(without)->TotalFrames();
    EXPECT_EQ(frames % 1152, 0) << "whole MPEG frames";
    EXPECT_GE(frames, 1324764);
    EXPECT_LE(frames, 1324764 + 3 * 1152);
    EXPECT_EQ(audio::MeasureMs(without), FullDecodeMs(without));
  }
}

TEST_F(Length, ExcludesAVbriHeader) {
  const std::string with = MakeVariableMp3(folder_.File("v.mp3"), 8);
  const std::string bare = WithoutLengthHeader(with, folder_.File("none.mp3"));
  const std::string vbri = WithVbriHeader(with, folder_.File("vbri.mp3"));
  ASSERT_EQ(StraightDecode(vbri), StraightDecode(bare));
  Bytes junk(3000, 0x55);
  Append(junk, ReadBytes(vbri));
  EXPECT_EQ(StraightDecode(WriteBytes(folder_.File("junk.mp3"), junk)), StraightDecode(bare));
}

TEST_F(Length, HeaderWithoutSoundIsAnError) {
  Bytes bytes = ReadBytes(WithVbriHeader(MakeVariableMp3(folder_.File("v.mp3"), 1), folder_.File("vbri.mp3")));
  bytes.resize(bytes.size() - ReadBytes(WithoutLengthHeader(folder_.File("v.mp3"), folder_.File("none.mp3"))).size());
  EXPECT_NE(ErrorOf(WriteBytes(folder_.File("kop.mp3"), bytes)).find("kop.mp3"), std::string::npos);
}

TEST_F(Length, OfATruncatedMp3IsThatOfTheRestDespiteItsHeader) {
  Bytes bytes = ReadBytes(MakeVariableMp3(folder_.File("whole.mp3"), 20));
  bytes.resize(bytes.size() / 2);
  const std::string cut = WriteBytes(folder_.File("cut.mp3"), bytes);
  EXPECT_EQ(audio::MeasureMs(cut), FullDecodeMs(cut));
  EXPECT_LT(audio::MeasureMs(cut), 15000);
  EXPECT_GT(audio::MeasureMs(cut), 5000);
}

TEST_F(Length, IsExactAfterALargeTag) {
  Bytes tagged = {'I', 'D', '3', 3, 0, 0, 0, 0x7F, 0x7F, 0x7F};  // length: 2 MiB less one byte
  tagged.resize(10 + (0x7F << 14 | 0x7F << 7 | 0x7F), 0xFF);     // looks like sync bits
  Append(tagged, ReadBytes(MakeTone(folder_.File("bare.mp3"), 5)));
  EXPECT_EQ(audio::MeasureMs(WriteBytes(folder_.File("tagged.mp3"), tagged)), 5000);
}

TEST_F(Length, GarbageInTheMiddleDoesNotEndTheFile) {
  const Bytes sound = ReadBytes(MakeTone(folder_.File("clean.mp3"), 20));
  const auto middle = sound.begin() + static_cast<std::ptrdiff_t>(sound.size() / 2);
  Bytes bytes(sound.begin(), middle);
  std::uint32_t noise = 7;
  for (int i = 0; i < 100000; ++i)
    bytes.push_back(static_cast<unsigned char>((noise = noise * 1664525 + 1013904223) >> 25));
  bytes.insert(bytes.end(), middle, sound.end());
  const std::string dirty = WriteBytes(folder_.File("dirty.mp3"), bytes);
  EXPECT_EQ(audio::MeasureMs(dirty), FullDecodeMs(dirty));
  EXPECT_NEAR(audio::MeasureMs(dirty), 20000, 150);
}

// Garbage is scanned byte by byte; 20 MB represent the gigabytes of a damaged file.
TEST_F(Length, ManyMegabytesWithoutAFrameEndTheSound) {
  const Bytes sound = ReadBytes(MakeTone(folder_.File("clean.mp3"), 5));
  Bytes bytes = sound;
  bytes.resize(sound.size() + (std::size_t{20} << 20));
  Append(bytes, sound);
  EXPECT_NEAR(audio::MeasureMs(WriteBytes(folder_.File("middle.mp3"), bytes)), 5000, 150);
  Bytes before(std::size_t{20} << 20);
  Append(before, sound);
  EXPECT_NE(ErrorOf(WriteBytes(folder_.File("before.mp3"), before)), "");
}

TEST_F(Length, ContentDecidesNotTheExtension) {
  std::filesystem::rename(MakeTone(folder_.File("a.wav"), 2), folder_.File("b.mp3"));
  std::filesystem::rename(MakeTone(folder_.File("a.mp3"), 3), folder_.File("b.wav"));
  EXPECT_EQ(audio::MeasureMs(folder_.File("b.mp3")), 2000);
  EXPECT_EQ(audio::MeasureMs(folder_.File("b.wav")), 3000);
}

// Offset 40 of a plain WAV: the number of bytes of sound, four bytes, little endian.
TEST_F(Length, OfAWaveFileWithATooLargeHeaderLengthIsThatOfItsContent) {
  Bytes bytes = ReadBytes(MakeTone(folder_.File("a.wav"), 4, 44100, 1));
  ASSERT_EQ(std::string(bytes.begin() + 36, bytes.begin() + 40), "data");
  bytes[43] = 0x7F;
  const std::string lying = WriteBytes(folder_.File("lying.wav"), bytes);
  EXPECT_EQ(audio::MeasureMs(lying), 4000);
  bytes.resize(44 + 88200);
  EXPECT_EQ(audio::MeasureMs(WriteBytes(folder_.File("cut.wav"), bytes)), 1000);
}

TEST_F(Length, OfAWaveFileWithATooSmallHeaderLengthIsWhatIsDecoded) {
  Bytes bytes = ReadBytes(MakeTone(folder_.File("a.wav"), 4, 44100, 1));
  const int promised = 2 * 44100;  // bytes: one second
  for (std::size_t i = 0; i < 4; ++i)
    bytes[40 + i] = static_cast<unsigned char>(promised >> (8 * i));
  const std::string lying = WriteBytes(folder_.File("lying.wav"), bytes);
  EXPECT_EQ(audio::MeasureMs(lying), 1000);
  EXPECT_EQ(FullDecodeMs(lying), 1000);
}

TEST_F(Length, OfATruncatedFlacIsCounted) {
  Bytes bytes = ReadBytes(MakeTone(folder_.File("a.flac"), 10));
  bytes.resize(bytes.size() / 2);
  const std::string cut = WriteBytes(folder_.File("cut.flac"), bytes);
  EXPECT_EQ(audio::MeasureMs(cut), FullDecodeMs(cut));
  EXPECT_LT(audio::MeasureMs(cut), 9000);
}

TEST_F(Length, SupportsThreeHours) {
  const std::int64_t dataBytes = std::int64_t{3} * 3600 * 2 * 8000;
  Bytes head = ReadBytes(MakeTone(folder_.File("long.wav"), 1, 8000, 1));
  head.resize(44);
  for (std::size_t i = 0; i < 4; ++i)
    head[40 + i] = static_cast<unsigned char>(dataBytes >> (8 * i));
  const std::string path = WriteBytes(folder_.File("long.wav"), head);
  std::filesystem::resize_file(path, static_cast<std::uintmax_t>(44 + dataBytes));
  EXPECT_EQ(audio::MeasureMs(path), 10800000);
}

// Every error text contains the path.
TEST_F(Length, FilesWithoutSoundAreErrorsWithTheirPath) {
  WriteBytes(folder_.File("leeg.mp3"), {});
  std::ofstream(folder_.File("tekst.mp3")) << "Dit is geen geluid.\n";
  std::filesystem::create_directory(folder_.File("map.wav"));
  for (const std::string name : {"leeg.mp3", "tekst.mp3", "map.wav", "weg.wav"}) {
    EXPECT_NE(ErrorOf(folder_.File(name)).find("'" + folder_.File(name) + "'"), std::string::npos) << name;
  }
  EXPECT_NE(ErrorOf(folder_.File("leeg.mp3")).find("leeg"), std::string::npos);
  EXPECT_NE(ErrorOf(folder_.File("map.wav")).find("een map"), std::string::npos);
  EXPECT_NE(ErrorOf(folder_.File("weg.wav")).find("bestaat niet"), std::string::npos);
  EXPECT_FALSE(ErrorOf("").empty());
  EXPECT_FALSE(ErrorOf("/dev/zero").empty());
}

// Offsets of a plain WAV: 22 channels, 24 rate, 28 bytes per second, 32 bytes per frame, 34 bits; little endian.
TEST_F(Length, ImpossibleRatesAndChannelsAreRefused) {
  const Bytes good = ReadBytes(MakeTone(folder_.File("a.wav"), 1));
  Bytes noRate = good;
  std::fill(noRate.begin() + 24, noRate.begin() + 32, 0);
  EXPECT_FALSE(ErrorOf(WriteBytes(folder_.File("0hz.wav"), noRate)).empty());
  Bytes crowd = good;
  crowd[22] = 200;
  crowd[32] = 400 % 256;
  crowd[33] = 400 / 256;
  EXPECT_NE(ErrorOf(WriteBytes(folder_.File("200.wav"), crowd)).find("kanalen (200)"), std::string::npos);
}

TEST_F(Length, WaveFileWithoutSoundIsRefused) {
  Bytes bytes = ReadBytes(MakeTone(folder_.File("a.wav"), 1));
  bytes.resize(44);
  std::fill(bytes.begin() + 40, bytes.begin() + 44, 0);
  EXPECT_FALSE(ErrorOf(WriteBytes(folder_.File("b.wav"), bytes)).empty());
}

TEST(Milliseconds, ConvertToAndFromFramesRoundedToNearest) {
  EXPECT_EQ(audio::MsOfFrames(44, 44100), 1);
  EXPECT_EQ(audio::MsOfFrames(22, 44100), 0);
  EXPECT_EQ(audio::MsOfFrames(std::int64_t{44100} * 3600 * 500, 44100), std::int64_t{3600} * 500 * 1000);
  for (const int rate : {8000, 11025, 22050, 32000, 44100, 48000, 96000}) {
    for (std::int64_t ms = 0; ms < 3000; ++ms)
      ASSERT_EQ(audio::MsOfFrames(audio::FramesOfMs(ms, rate), rate), ms);
  }
}

}  // namespace

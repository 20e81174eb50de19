// SPDX-License-Identifier: MIT
// The sound files that the program makes itself, and what is read from any file: stamps, bytes, loudness.
#include "platform/audio/Synth.h"

#include "platform/audio/Decoder.h"
#include "platform/audio/Error.h"
#include "platform/audio/FileStamp.h"
#include "platform/audio/Loudness.h"
#include "platform/audio/SourceFile.h"
#include "tests/platform/audio/support/SoundFiles.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <limits>

namespace {

using audio::ToneOptions;
using audiotest::ReadBytes;
using audiotest::StraightDecode;
using audiotest::TemporaryFolder;

std::string ErrorText(const auto& action) {
  try {
    action();
  } catch (const audio::Error& error) {
    return error.what();
  }
  return "no error";
}

class ToneFile : public testing::Test {
 protected:
  std::string Written(const std::string& name, const ToneOptions& options) const {
    audio::WriteToneFile(folder.File(name), options);
    return folder.File(name);
  }
  TemporaryFolder folder;
};

TEST_F(ToneFile, HasExactlyTheFramesRateAndChannelsOfItsOptions) {
  for (const char* name : {"a.wav", "b.flac", "c.mp3"}) {
    for (const int channels : {1, 2}) {
      ToneOptions options;
      options.seconds = 1.00005;
      options.sampleRate = 32000;
      options.channels = channels;
      const auto decoder = audio::OpenDecoder(Written(name, options));
      EXPECT_EQ(decoder->TotalFrames(), 32002) << name;
      EXPECT_EQ(decoder->SampleRate(), 32000) << name;
      EXPECT_EQ(decoder->Channels(), channels) << name;
    }
  }
}

TEST_F(ToneFile, SameSeedGivesTheSameSoundAndAnotherSeedAnother) {
  ToneOptions options;
  options.seconds = 0.5;
  for (const auto kind : {ToneOptions::Kind::Speech, ToneOptions::Kind::Jingle}) {
    options.kind = kind;
    options.seed = 7;
    const auto first = StraightDecode(Written("a.wav", options));
    EXPECT_EQ(StraightDecode(Written("b.wav", options)), first);
    options.seed = 8;
    EXPECT_NE(StraightDecode(Written("c.wav", options)), first);
  }
  const auto jingle = StraightDecode(folder.File("c.wav"));
  options.kind = ToneOptions::Kind::Speech;
  EXPECT_NE(StraightDecode(Written("d.wav", options)), jingle);
}

TEST_F(ToneFile, IsLoudEnoughToHearAndNeverClips) {
  ToneOptions options;
  options.seconds = 3;
  for (const auto kind : {ToneOptions::Kind::Speech, ToneOptions::Kind::Jingle}) {
    options.kind = kind;
    const auto decoder = audio::OpenDecoder(Written("a.wav", options));
    const audio::Loudness loudness = audio::MeasureLoudness(*decoder);
    EXPECT_GT(loudness.integratedLufs, -30);
    EXPECT_LT(loudness.truePeakDb, 0);
  }
}

// So that a mix point has something to fade out.
TEST_F(ToneFile, FadesInAndOut) {
  ToneOptions options;
  options.seconds = 4;
  options.kind = ToneOptions::Kind::Jingle;
  const auto sound = StraightDecode(Written("a.wav", options));
  const auto loudest = [&sound](double from, double to) {
    int most = 0;
    for (auto i = static_cast<std::size_t>(from * 44100) * 2; i < static_cast<std::size_t>(to * 44100) * 2; ++i)
      most = std::max(most, std::abs(int{sound[i]}));
    return most;
  };
  EXPECT_EQ(sound.front(), 0);
  EXPECT_LT(loudest(3.98, 4), loudest(1, 3) / 8);
}

TEST_F(ToneFile, ExtensionInAnyCaseIsTheFormat) {
  ToneOptions options;
  options.seconds = 0.1;
  EXPECT_EQ(ReadBytes(Written("a.WAV", options))[0], 'R');
  EXPECT_EQ(ReadBytes(Written("a.FLac", options))[0], 'f');
  EXPECT_NE(ReadBytes(Written("a.Mp3", options))[0], 'R');
}

TEST_F(ToneFile, VariableBitRateIsSmallerForQuietSound) {
  ToneOptions options;
  options.seconds = 5;
  const auto constant = ReadBytes(Written("a.mp3", options)).size();
  options.variableBitRate = true;
  const auto variable = Written("b.mp3", options);
  EXPECT_NE(ReadBytes(variable).size(), constant);
  EXPECT_EQ(audio::OpenDecoder(variable)->TotalFrames(), std::int64_t{5} * 44100);
}

TEST_F(ToneFile, ReplacesAnExistingLongerFile) {
  ToneOptions options;
  options.seconds = 2;
  Written("a.wav", options);
  options.seconds = 1;
  EXPECT_EQ(audio::OpenDecoder(Written("a.wav", options))->TotalFrames(), 44100);
}

TEST_F(ToneFile, ErrorsHaveThePathAndTheReason) {
  ToneOptions options;
  for (const char* name : {"a.ogg", "zonder", ".wav/a", "map.wav/b.mp4"}) {
    const std::string error = ErrorText([&] { Written(name, options); });
    EXPECT_EQ(error, "Kan het geluidsbestand '" + folder.File(name) +
                         "' niet schrijven: de extensie moet .wav, .flac of .mp3 zijn.");
  }
  const std::string missing = ErrorText([&] { Written("weg/a.wav", options); });
  EXPECT_NE(missing.find("'" + folder.File("weg/a.wav") + "' niet schrijven: "), std::string::npos) << missing;
  options.seconds = 0;
  EXPECT_NE(ErrorText([&] { Written("a.wav", options); }).find("er is niets te schrijven"), std::string::npos);
  options.seconds = 1;
  options.channels = 3;
  EXPECT_NE(ErrorText([&] { Written("a.wav", options); }).find("er is niets te schrijven"), std::string::npos);
  EXPECT_FALSE(std::filesystem::exists(folder.File("a.wav")));
}

TEST_F(ToneFile, LoudnessOfSilenceAndOfAMomentIsMinusInfinity) {
  constexpr double kNone = -std::numeric_limits<double>::infinity();
  ToneOptions options;
  options.seconds = 0.3;
  const auto moment = audio::OpenDecoder(Written("a.wav", options));
  const audio::Loudness loudness = audio::MeasureLoudness(*moment);
  EXPECT_EQ(loudness.integratedLufs, kNone);
  EXPECT_GT(loudness.truePeakDb, -40);
  auto bytes = ReadBytes(folder.File("a.wav"));
  std::fill(bytes.begin() + 44, bytes.end(), 0);
  const auto silence = audio::OpenDecoder(audiotest::WriteBytes(folder.File("b.wav"), bytes));
  EXPECT_EQ(audio::MeasureLoudness(*silence).integratedLufs, kNone);
  EXPECT_EQ(audio::MeasureLoudness(*silence).truePeakDb, kNone);
}

TEST_F(ToneFile, LoudnessIsMeasuredFromTheBeginning) {
  ToneOptions options;
  options.seconds = 2;
  const auto decoder = audio::OpenDecoder(Written("a.wav", options));
  const double once = audio::MeasureLoudness(*decoder).integratedLufs;
  decoder->Seek(80000);
  EXPECT_EQ(audio::MeasureLoudness(*decoder).integratedLufs, once);
}

// --- the bytes of a file

class SoundBytes : public testing::Test {
 protected:
  // 0, 1, 2 ... 250, 0, 1 ..., longer than the buffer.
  SoundBytes() {
    audiotest::Bytes bytes(200000);
    for (std::size_t i = 0; i < bytes.size(); ++i)
      bytes[i] = static_cast<unsigned char>(i % 251);
    audiotest::WriteBytes(folder.File("a.raw"), bytes);
  }
  static int ByteAt(audio::SourceFile& file, std::int64_t offset) {
    unsigned char byte = 0;
    return file.Seek(offset, SEEK_SET) == offset && file.Read(&byte, 1) == 1 ? byte : -1;
  }
  TemporaryFolder folder;
};

TEST_F(SoundBytes, AreReadFromEveryOffset) {
  audio::SourceFile file(folder.File("a.raw"));
  EXPECT_EQ(file.Size(), 200000);
  EXPECT_EQ(file.Path(), folder.File("a.raw"));
  for (const int offset : {0, 1, 65535, 65536, 131072, 199999, 70000, 3})
    EXPECT_EQ(ByteAt(file, offset), offset % 251) << offset;
  std::vector<unsigned char> all(300000);
  ASSERT_EQ(file.Seek(0, SEEK_SET), 0);
  EXPECT_EQ(file.Read(all.data(), all.size()), 200000);
  EXPECT_EQ(all[199999], 199999 % 251);
  EXPECT_EQ(file.Read(all.data(), 10), 0);
  EXPECT_EQ(file.Tell(), 200000);
}

TEST_F(SoundBytes, SeekWorksFromBeginningPositionAndEnd) {
  audio::SourceFile file(folder.File("a.raw"));
  EXPECT_EQ(file.Seek(100, SEEK_SET), 100);
  EXPECT_EQ(file.Seek(-30, SEEK_CUR), 70);
  EXPECT_EQ(file.Seek(-1, SEEK_END), 199999);
  EXPECT_EQ(file.Seek(5, SEEK_END), 200005);
  unsigned char byte = 0;
  EXPECT_EQ(file.Read(&byte, 1), 0);
  EXPECT_EQ(file.Seek(-1, SEEK_SET), -1);
  EXPECT_EQ(file.Seek(std::numeric_limits<std::int64_t>::max(), SEEK_CUR), -1);
  EXPECT_EQ(file.Tell(), 200005);  // a failed seek moves nothing
}

TEST_F(SoundBytes, ALaterBeginningIsTheNewOffsetZero) {
  audio::SourceFile file(folder.File("a.raw"));
  file.BeginAt(1000);
  EXPECT_EQ(file.Tell(), 0);
  EXPECT_EQ(ByteAt(file, 0), 1000 % 251);
  EXPECT_EQ(file.Seek(-1, SEEK_END), 198999);
  EXPECT_EQ(file.Seek(-1, SEEK_SET), -1);
}

TEST_F(SoundBytes, StayReadableWhenTheFileIsDeleted) {
  audio::SourceFile file(folder.File("a.raw"));
  std::filesystem::remove(folder.File("a.raw"));
  EXPECT_EQ(ByteAt(file, 150000), 150000 % 251);
}

TEST_F(SoundBytes, OfWhatIsNotASoundFileAreRefusedWithTheReason) {
  std::ofstream(folder.File("leeg.wav")).close();
  std::filesystem::create_directory(folder.File("map.wav"));
  const auto errorOf = [](const std::string& path) { return ErrorText([&] { const audio::SourceFile file(path); }); };
  EXPECT_EQ(errorOf(folder.File("leeg.wav")),
            "Kan het geluidsbestand '" + folder.File("leeg.wav") + "' niet lezen: het bestand is leeg.");
  for (const std::string& path : {folder.File("map.wav"), folder.File("weg.wav"), std::string("/dev/null")})
    EXPECT_NE(errorOf(path).find("Kan het geluidsbestand '" + path + "' niet lezen: "), std::string::npos)
        << errorOf(path);
  EXPECT_EQ(errorOf(""), "Er is geen geluidsbestand opgegeven.");
  EXPECT_EQ(errorOf(std::string("a\0b", 3)), "Kan het geluidsbestand 'a' niet lezen: de naam is ongeldig.");
}

TEST_F(SoundBytes, StampChangesWithPathSizeAndTime) {
  const std::string path = folder.File("a.raw");
  const audio::FileStamp stamp = audio::FileStamp::Of(path);
  EXPECT_EQ(stamp.size, 200000);
  EXPECT_EQ(stamp, audio::FileStamp::Of(path));
  std::filesystem::copy_file(path, folder.File("b.raw"));
  std::filesystem::last_write_time(folder.File("b.raw"), std::filesystem::last_write_time(path));
  EXPECT_NE(audio::FileStamp::Of(folder.File("b.raw")).Key(), stamp.Key());
  std::filesystem::last_write_time(path, std::filesystem::last_write_time(path) + std::chrono::microseconds(1));
  EXPECT_NE(audio::FileStamp::Of(path), stamp);
  EXPECT_NE(audio::FileStamp::Of(path).Key(), stamp.Key());
  EXPECT_NE(ErrorText([&] { audio::FileStamp::Of(folder.File("weg.wav")); }), "no error");
}

TEST(FileStamp, KeysOfDifferentStampsDiffer) {
  const audio::FileStamp one{"3 x", 1, 2};
  const audio::FileStamp other{"x", 1, 23};
  EXPECT_NE(one.Key(), other.Key());
  EXPECT_NE((audio::FileStamp{"x", 12, 3}.Key()), (audio::FileStamp{"x", 1, 23}.Key()));
}

}  // namespace

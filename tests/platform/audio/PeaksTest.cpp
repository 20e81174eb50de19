// The waveform of a file, and what is kept of it.
#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <limits>

#include "platform/audio/Loudness.h"
#include "platform/audio/PeakCache.h"
#include "platform/audio/Peaks.h"
#include "tests/platform/audio/support/SoundFiles.h"

namespace {

using namespace audiotest;

const audio::PeakProgress kToTheEnd = [](const audio::Peaks&, std::size_t) { return true; };

class PeaksOfAFile : public ::testing::Test {
 protected:
  // A stereo WAV of `seconds` at 44100 Hz, silent but for what `paint` sets.
  std::string Painted(double seconds, const std::vector<std::pair<std::size_t, std::int16_t>>& samples) {
    Bytes bytes = ReadBytes(MakeTone(folder_.File("geverfd.wav"), seconds));
    std::fill(bytes.begin() + 44, bytes.begin() + 44 + static_cast<std::ptrdiff_t>(seconds * 44100 * 4), 0);
    for (const auto& [index, value] : samples) {
      bytes[44 + index * 2] = static_cast<unsigned char>(value & 0xFF);
      bytes[45 + index * 2] = static_cast<unsigned char>((value >> 8) & 0xFF);
    }
    return WriteBytes(folder_.File("geverfd.wav"), bytes);
  }

  TemporaryFolder folder_;
};

TEST_F(PeaksOfAFile, HaveTheLowestHighestAndMeanSquareOfBothChannels) {
  const auto peaks = audio::ReadPeaks(Painted(1, {{0, 20000}, {1, -10000}, {441 * 2 + 1, 77}}), kToTheEnd);
  ASSERT_EQ(peaks.bins.size(), 100U);
  EXPECT_EQ(peaks.lengthMs, 1000);
  EXPECT_EQ(peaks.bins[0].high, 20000);
  EXPECT_EQ(peaks.bins[0].low, -10000);
  EXPECT_NEAR(peaks.bins[0].rms, std::sqrt((20000.0 * 20000 + 10000.0 * 10000) / 882), 1);
  EXPECT_EQ(peaks.bins[1].high, 77);
  EXPECT_EQ(peaks.bins[1].low, 0);
  EXPECT_EQ(peaks.bins[2], audio::PeakBin{});
}

TEST_F(PeaksOfAFile, CoverTheLastPartOfABin) {
  const auto peaks = audio::ReadPeaks(Painted(0.995, {{43879 * 2, -5}}), kToTheEnd);
  ASSERT_EQ(peaks.bins.size(), 100U);
  EXPECT_EQ(peaks.bins[99].low, -5);
}

TEST_F(PeaksOfAFile, ComeFrontToBackInOnePass) {
  std::vector<std::size_t> steps;
  const std::string path = MakeTone(folder_.File("a.mp3"), 20);
  const auto peaks = audio::ReadPeaks(
      path,
      [&](const audio::Peaks& soFar, std::size_t done) {
        EXPECT_EQ(soFar.bins.size(), 2000U);
        if (steps.empty() || done != steps.back()) steps.push_back(done);
        return true;
      },
      500);
  EXPECT_EQ(steps.front(), 0U);
  EXPECT_EQ(steps.back(), 2000U);
  EXPECT_GE(steps.size(), 4U);
  EXPECT_TRUE(std::is_sorted(steps.begin(), steps.end()));
  const auto loud = [](const audio::PeakBin& bin) { return bin.high > 1000; };
  EXPECT_GT(std::count_if(peaks.bins.begin(), peaks.bins.end(), loud), 500);
}

TEST_F(PeaksOfAFile, AreGivenUpWhenNobodyWantsThem) {
  int calls = 0;
  const auto peaks = audio::ReadPeaks(MakeTone(folder_.File("a.wav"), 10),
                                      [&](const audio::Peaks&, std::size_t) { return ++calls < 3; });
  EXPECT_EQ(calls, 3);
  EXPECT_TRUE(peaks.bins.empty());
}

class PeakCaching : public PeaksOfAFile {
 protected:
  void SetUp() override { audio::PeakCache::ForgetMemory(); }

  std::string path_ = MakeTone(folder_.File("a.wav"), 1);
  audio::FileStamp stamp_ = audio::FileStamp::Of(path_);
  audio::Peaks peaks_ = audio::ReadPeaks(path_, kToTheEnd);
  audio::PeakCache cache_{folder_.File("cache")};

  std::string KeptFile() const {
    for (const auto& entry : std::filesystem::directory_iterator(folder_.File("cache")))
      return entry.path();
    return {};
  }
};

TEST_F(PeakCaching, FindsWhatWasStoredInMemoryAndOnDisk) {
  EXPECT_FALSE(cache_.Find(stamp_));
  cache_.Store(stamp_, peaks_);
  ASSERT_TRUE(cache_.Find(stamp_));
  audio::PeakCache::ForgetMemory();
  const auto found = cache_.Find(stamp_);
  ASSERT_TRUE(found);
  EXPECT_EQ(found->bins, peaks_.bins);
  EXPECT_EQ(found->lengthMs, peaks_.lengthMs);
}

TEST_F(PeakCaching, AChangedFileIsReadAgain) {
  cache_.Store(stamp_, peaks_);
  audio::FileStamp touched = stamp_;
  touched.modifiedNs += 1;
  EXPECT_FALSE(cache_.Find(touched));
  audio::FileStamp grown = stamp_;
  grown.size += 1;
  EXPECT_FALSE(cache_.Find(grown));
}

TEST_F(PeakCaching, ADamagedFileIsNotBelieved) {
  cache_.Store(stamp_, peaks_);
  const Bytes good = ReadBytes(KeptFile());
  for (std::size_t at = 0; at < good.size(); at += 7) {
    Bytes bad = good;
    bad[at] ^= 0x10;
    WriteBytes(KeptFile(), bad);
    audio::PeakCache::ForgetMemory();
    ASSERT_FALSE(cache_.Find(stamp_)) << "byte " << at;
  }
  WriteBytes(KeptFile(), Bytes(good.begin(), good.end() - 1));
  EXPECT_FALSE(cache_.Find(stamp_));
}

TEST_F(PeakCaching, AFolderThatCannotBeMadeOnlyCostsTime) {
  const audio::PeakCache nowhere(path_ + "/is/geen/map");
  nowhere.Store(stamp_, peaks_);
  audio::PeakCache::ForgetMemory();
  EXPECT_FALSE(nowhere.Find(stamp_));
}

TEST_F(PeakCaching, KeepsTheFolderSmall) {
  audio::FileStamp many = stamp_;
  for (std::size_t i = 0; i < audio::PeakCache::kMaxFiles + 20; ++i) {
    many.size = static_cast<std::int64_t>(i);
    cache_.Store(many, peaks_);
  }
  const std::filesystem::directory_iterator files(folder_.File("cache"));
  EXPECT_EQ(static_cast<std::size_t>(std::distance(begin(files), end(files))), audio::PeakCache::kMaxFiles);
}

TEST_F(PeaksOfAFile, LoudnessOfAFullScaleSineIsKnown) {
  Bytes bytes = ReadBytes(MakeTone(folder_.File("sinus.wav"), 5, 48000));
  for (std::size_t i = 0; i < std::size_t{5} * 48000; ++i) {
    const auto value =
        static_cast<std::int16_t>(std::lrint(3276.7 * std::sin(2 * M_PI * 997 * static_cast<double>(i) / 48000)));
    for (std::size_t channel = 0; channel < 2; ++channel) {
      bytes[44 + i * 4 + channel * 2] = static_cast<unsigned char>(value & 0xFF);
      bytes[45 + i * 4 + channel * 2] = static_cast<unsigned char>((value >> 8) & 0xFF);
    }
  }
  const auto sine = audio::OpenDecoder(WriteBytes(folder_.File("sinus.wav"), bytes));
  const audio::Loudness loudness = audio::MeasureLoudness(*sine);
  EXPECT_NEAR(loudness.integratedLufs, -20.0, 0.1);
  EXPECT_NEAR(loudness.truePeakDb, -20.0, 0.1);
  const auto silence = audio::OpenDecoder(Painted(2, {}));
  EXPECT_EQ(audio::MeasureLoudness(*silence).truePeakDb, -std::numeric_limits<double>::infinity());
}

}  // namespace

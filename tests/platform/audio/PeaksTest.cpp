// SPDX-License-Identifier: MIT
// Waveform and loudness of a file.
#include "platform/audio/Peaks.h"

#include "platform/audio/Loudness.h"
#include "tests/platform/audio/support/SoundFiles.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>
#include <vector>

namespace {

using namespace audiotest;

class PeaksOfAFile : public ::testing::Test {
 protected:
  // A stereo WAV of `seconds` at 44100 Hz, silent except for the samples that `paint` sets.
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

// At any position within the bin: samples are processed several at a time.
TEST_F(PeaksOfAFile, IncludeEverySample) {
  constexpr std::size_t kSamples = 882;  // per bin, both channels
  std::vector<std::pair<std::size_t, std::int16_t>> spikes;
  for (std::size_t bin = 0; bin < kSamples; ++bin)
    spikes.emplace_back(bin * kSamples + bin, bin % 2 == 0 ? 3000 : -3000);
  const auto peaks = audio::ReadPeaks(Painted(8.82, spikes), kToTheEnd);
  ASSERT_EQ(peaks.bins.size(), kSamples);
  for (std::size_t bin = 0; bin < kSamples; ++bin) {
    const audio::PeakBin expected = bin % 2 == 0 ? audio::PeakBin{0, 3000, 101} : audio::PeakBin{-3000, 0, 101};
    ASSERT_EQ(peaks.bins[bin], expected) << bin;
  }
}

TEST_F(PeaksOfAFile, CoverTheLastPartOfABin) {
  const auto peaks = audio::ReadPeaks(Painted(0.995, {{43879 * 2, -5}}), kToTheEnd);
  ASSERT_EQ(peaks.bins.size(), 100U);
  EXPECT_EQ(peaks.bins[99].low, -5);
}

TEST_F(PeaksOfAFile, AreReportedInStepsFromTheBeginning) {
  std::vector<std::size_t> steps;
  const std::string path = MakeTone(folder_.File("a.mp3"), 20);
  const auto peaks = audio::ReadPeaks(path,
                                      [&](const audio::Peaks& soFar, std::size_t done) {
                                        EXPECT_EQ(soFar.bins.size(), 2000U);
                                        if (steps.empty() || done != steps.back()) steps.push_back(done);
                                        return true;
                                      },
                                      {.binsPerStep = 500});
  EXPECT_EQ(steps.front(), 0U);
  EXPECT_EQ(steps.back(), 2000U);
  EXPECT_GE(steps.size(), 4U);
  EXPECT_TRUE(std::is_sorted(steps.begin(), steps.end()));
  const auto loud = [](const audio::PeakBin& bin) { return bin.high > 1000; };
  EXPECT_GT(std::count_if(peaks.bins.begin(), peaks.bins.end(), loud), 500);
}

TEST_F(PeaksOfAFile, AreEmptyWhenCancelled) {
  int calls = 0;
  const auto peaks = audio::ReadPeaks(MakeTone(folder_.File("a.wav"), 10),
                                      [&](const audio::Peaks&, std::size_t) { return ++calls < 3; });
  EXPECT_EQ(calls, 3);
  EXPECT_TRUE(peaks.bins.empty());
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

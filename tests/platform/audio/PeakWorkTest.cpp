// SPDX-License-Identifier: MIT
// A waveform read by several threads equals that of a single pass; all threads stop together.
#include "platform/audio/PeakWork.h"

#include "platform/audio/Error.h"
#include "tests/platform/audio/support/SoundFiles.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <barrier>
#include <filesystem>
#include <future>
#include <memory>
#include <string>
#include <vector>

namespace {

using namespace audiotest;
using Bins = std::vector<audio::PeakBin>;

constexpr audio::PeakSplit kOnePass{.threads = 1, .binsPerStretch = 1U << 30, .binsPerStep = 1};

Bins BinsOf(const std::string& path, const audio::PeakSplit& split = kOnePass) {
  return audio::ReadPeaks(path, kToTheEnd, split).bins;
}

// Starts to read a stretch once every thread has one, so that every thread reads some.
class SynchronizedDecoder : public audio::Decoder {
 public:
  SynchronizedDecoder(const std::string& path, std::barrier<>& turn) : file_(audio::OpenDecoder(path)), turn_(turn) {}
  ~SynchronizedDecoder() override { turn_.arrive_and_drop(); }

  int SampleRate() const override { return file_->SampleRate(); }
  int Channels() const override { return file_->Channels(); }
  std::int64_t TotalFrames() const override { return file_->TotalFrames(); }
  bool SeeksExactly() const override { return file_->SeeksExactly(); }
  void Seek(std::int64_t frame) override {
    file_->Seek(frame);
    startsStretch_ = true;
  }
  using Decoder::Read;
  std::size_t Read(float* out, std::size_t frames) override {
    if (std::exchange(startsStretch_, false)) turn_.arrive_and_wait();
    return file_->Read(out, frames);
  }

 private:
  std::unique_ptr<audio::Decoder> file_;
  std::barrier<>& turn_;
  bool startsStretch_ = true;
};

// `threads` must not exceed the number of stretches.
Bins BinsOfThreads(const std::string& path, std::size_t binsPerStretch, int threads) {
  audio::PeakWork work(*audio::OpenDecoder(path), kToTheEnd, {.binsPerStretch = binsPerStretch});
  std::barrier<> turn(threads);
  std::vector<std::future<void>> parts;
  parts.reserve(static_cast<std::size_t>(threads));
  for (int thread = 0; thread < threads; ++thread) {
    parts.push_back(std::async(std::launch::async, [&] {
      SynchronizedDecoder decoder(path, turn);
      work.TakePart(decoder);
    }));
  }
  for (auto& part : parts)
    part.get();
  return std::move(work).Result().bins;
}

std::string Cut(const std::string& from, const std::string& to, std::size_t tenths) {
  Bytes bytes = ReadBytes(from);
  bytes.resize(bytes.size() * tenths / 10 + 7);  // ends within a frame
  return WriteBytes(to, bytes);
}

class PeakWorkTest : public ::testing::Test {
 protected:
  std::string File(const char* name) const { return folder_.File(name); }

  TemporaryFolder folder_;
};

TEST_F(PeakWorkTest, EqualsASinglePassAcrossEveryStretchBorder) {
  const std::string constant = MakeTone(File("cbr.mp3"), 7.3337);
  const std::string variable = MakeVariableMp3(File("vbr.mp3"), 5.005);
  const std::vector<std::string> files{constant,
                                       variable,
                                       WithoutLengthHeader(constant, File("cbr-none.mp3")),
                                       WithoutLengthHeader(variable, File("vbr-none.mp3")),
                                       WithVbriHeader(variable, File("vbri.mp3")),
                                       Cut(constant, File("cbr-cut.mp3"), 4),
                                       Cut(variable, File("vbr-cut.mp3"), 7),
                                       MakeTone(File("mono.mp3"), 4.4444, 44100, 1),
                                       MakeTone(File("48.mp3"), 4.001, 48000, 2),
                                       MakeTone(File("32.mp3"), 4.999, 32000, 1),
                                       MakePoorestMp3(File("arm.mp3"), 4, 48000, 2),
                                       MakePoorestMp3(File("arm1.mp3"), 4, 44100, 1)};
  for (const std::string& path : files) {
    ASSERT_TRUE(audio::OpenDecoder(path)->SeeksExactly()) << path;
    const Bins expected = BinsOf(path);
    EXPECT_EQ(BinsOfThreads(path, 1, 2), expected) << path;
    EXPECT_EQ(BinsOfThreads(path, 26, 4), expected) << path;
    EXPECT_EQ(BinsOfThreads(path, 101, 2), expected) << path;
  }
}

TEST_F(PeakWorkTest, EqualsASinglePassForEveryFormat) {
  const std::vector<std::string> files{MakeTone(File("a.mp3"), 9.87654),  MakeTone(File("laag.mp3"), 9.87, 22050, 1),
                                       MakeTone(File("a.wav"), 5.0004),   MakeTone(File("a.flac"), 5.5),
                                       MakeTone(File("kort.mp3"), 0.004), MakeTone(File("kort.wav"), 0.011)};
  for (const std::string& path : files) {
    EXPECT_EQ(BinsOf(path, {.threads = 4, .binsPerStretch = 10}), BinsOf(path)) << path;
  }
}

TEST_F(PeakWorkTest, ReportsFinalBinsFromTheBeginning) {
  const std::string path = MakeTone(File("a.mp3"), 20);
  const Bins expected = BinsOf(path);
  std::size_t before = 0;
  std::atomic<int> inside = 0;
  const audio::PeakProgress watch = [&](const audio::Peaks& soFar, std::size_t done) {
    EXPECT_EQ(++inside, 1);
    EXPECT_GE(done, before);
    EXPECT_TRUE(std::equal(expected.begin(), expected.begin() + static_cast<std::ptrdiff_t>(done), soFar.bins.begin()));
    before = done;
    --inside;
    return true;
  };
  audio::ReadPeaks(path, watch, {.threads = 4, .binsPerStretch = 60, .binsPerStep = 1});
  EXPECT_EQ(before, expected.size());
}

TEST_F(PeakWorkTest, CancelStopsAllThreads) {
  std::atomic<int> calls = 0;
  const audio::PeakProgress notAgain = [&](const audio::Peaks&, std::size_t) { return ++calls < 5; };
  const auto peaks = audio::ReadPeaks(MakeTone(File("a.mp3"), 20), notAgain, {.threads = 4, .binsPerStretch = 30});
  EXPECT_EQ(calls, 5);
  EXPECT_TRUE(peaks.bins.empty());
}

// Seeking to the second stretch fails.
class Unseekable : public SynchronizedDecoder {
 public:
  using SynchronizedDecoder::SynchronizedDecoder;
  void Seek(std::int64_t) override { throw audio::Error("onleesbaar"); }
};

TEST_F(PeakWorkTest, ReadErrorStopsAllThreads) {
  const std::string path = MakeTone(File("a.mp3"), 20);
  audio::PeakWork work(*audio::OpenDecoder(path), kToTheEnd, {.binsPerStretch = 30});
  std::barrier<> turn(2);
  auto other = std::async(std::launch::async, [&] {
    Unseekable decoder(path, turn);
    work.TakePart(decoder);
  });
  auto whole = std::async(std::launch::async, [&] {
    SynchronizedDecoder decoder(path, turn);
    work.TakePart(decoder);
  });
  int failures = 0;
  for (auto* part : {&other, &whole}) {
    try {
      part->get();
    } catch (const audio::Error&) {
      ++failures;
    }
  }
  EXPECT_EQ(failures, 1);
  EXPECT_TRUE(std::move(work).Result().bins.empty());
}

TEST_F(PeakWorkTest, BinsBeyondATruncatedFileAreSilent) {
  const std::string path = MakeTone(File("a.wav"), 4);
  const Bins expected = BinsOf(path);
  const auto decoder = audio::OpenDecoder(path);
  std::filesystem::resize_file(path, 44 + 44100 * 2 * 4);
  audio::PeakWork work(*decoder, kToTheEnd, {.binsPerStretch = 50});
  work.TakePart(*decoder);
  const Bins bins = std::move(work).Result().bins;
  ASSERT_EQ(bins.size(), expected.size());
  EXPECT_TRUE(std::equal(bins.begin(), bins.begin() + 199, expected.begin()));
  EXPECT_EQ(Bins(bins.begin() + 201, bins.end()), Bins(199));
}

TEST_F(PeakWorkTest, PeaksOfAReplacedFileAreNotMixedIn) {
  const auto decoder = audio::OpenDecoder(MakeTone(File("a.mp3"), 3));
  const audio::PeakWork work(*decoder, kToTheEnd, {});
  EXPECT_TRUE(work.Fits(*audio::OpenDecoder(File("a.mp3"))));
  EXPECT_FALSE(work.Fits(*audio::OpenDecoder(MakeTone(File("langer.mp3"), 3.1))));
  EXPECT_FALSE(work.Fits(*audio::OpenDecoder(MakeTone(File("mono.mp3"), 3, 44100, 1))));
}

}  // namespace

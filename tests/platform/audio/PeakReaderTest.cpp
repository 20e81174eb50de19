// SPDX-License-Identifier: MIT
// Reading waveforms in the background.
#include "platform/audio/PeakReader.h"

#include "platform/audio/PeakCache.h"
#include "tests/platform/audio/support/SoundFiles.h"

#include <QCoreApplication>
#include <QSignalSpy>

#include <gtest/gtest.h>

#include <vector>

namespace {

using namespace Qt::StringLiterals;
using namespace audiotest;

class PeakReaderTest : public ::testing::Test {
 protected:
  void SetUp() override { audio::PeakCache::ForgetMemory(); }

  QString File(const char* name, double seconds) {
    return QString::fromStdString(MakeTone(folder_.File(name), seconds, 8000, 1));
  }

  TemporaryFolder folder_;
  audio::PeakReader reader_{QString::fromStdString(folder_.File("cache"))};
  QSignalSpy progressed_{&reader_, &audio::PeakReader::progressed};
  QSignalSpy finished_{&reader_, &audio::PeakReader::finished};
  QSignalSpy failed_{&reader_, &audio::PeakReader::failed};
};

TEST_F(PeakReaderTest, PeaksArriveProgressivelyAndThenCompletely) {
  const QString path = File("a.wav", 40);
  reader_.Read(path);
  EXPECT_TRUE(reader_.Bins().empty());
  ASSERT_TRUE(finished_.wait(30000));
  EXPECT_GE(progressed_.count(), 3);
  EXPECT_EQ(reader_.LengthMs(), 40000);
  const auto all = audio::ReadPeaks(path.toStdString(), [](const audio::Peaks&, std::size_t) { return true; });
  EXPECT_EQ(std::vector<audio::PeakBin>(reader_.Bins().begin(), reader_.Bins().end()), all.bins);
}

TEST_F(PeakReaderTest, CachedPeaksArriveAtOnce) {
  reader_.Read(File("a.wav", 30));
  ASSERT_TRUE(finished_.wait(30000));
  progressed_.clear();
  reader_.Read(QString::fromStdString(folder_.File("a.wav")));
  ASSERT_TRUE(finished_.wait(30000));
  EXPECT_EQ(progressed_.count(), 1);
  EXPECT_EQ(reader_.Bins().size(), 3000U);
}

TEST_F(PeakReaderTest, PeaksOfAnotherFileReplaceThePreviousOnes) {
  const QString first = File("a.mp3", 20);
  const QString second = File("b.wav", 3);
  reader_.Read(first);
  reader_.Read(second);
  ASSERT_TRUE(finished_.wait(30000));
  EXPECT_EQ(reader_.LengthMs(), 3000);
  EXPECT_EQ(reader_.Bins().size(), 300U);
}

TEST_F(PeakReaderTest, SendsNoSignalsAfterCancel) {
  reader_.Read(File("a.wav", 5));
  reader_.Cancel();
  QCoreApplication::processEvents();
  EXPECT_EQ(progressed_.count() + finished_.count() + failed_.count(), 0);
}

TEST_F(PeakReaderTest, ReportsAnUnreadableFile) {
  reader_.Read(QString::fromStdString(WriteBytes(folder_.File("leeg.mp3"), {})));
  ASSERT_TRUE(failed_.wait(30000));
  EXPECT_TRUE(failed_.first().first().toString().contains(u"leeg.mp3"_s));
}

}  // namespace

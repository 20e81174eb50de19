// SPDX-License-Identifier: MIT
// The waveform when an editor opens a file again, checked by its picture.
#include "platform/audio/PeakCache.h"
#include "platform/controls/WaveformStrip.h"
#include "platform/runtime/HostPath.h"
#include "tests/media/support/EditorDesk.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QImage>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace media_testing;
using testing_support::Child;

namespace {

constexpr int kMs = 30'000;

class WaveformCache : public ::testing::Test {
 protected:
  void SetUp() override {
    QDir(kept_).removeRecursively();
    MakeWav(file_, kMs);
    SetTime(kThen_);
    desk_.AddSpot(1, u"A"_s, runtime::PathText(file_));
  }

  // The complete waveform of a program that was just started.
  QImage Picture() const {
    audio::PeakCache::ForgetMemory();
    const auto editor = desk_.OpenSpot(u"1"_s);
    auto& strip = Child<controls::WaveformStrip>(*editor, u"waveform"_s);
    const auto whole = [&] { return strip.PeakCount() == kMs / 10; };
    if (!QTest::qWaitFor(whole, 60'000)) ADD_FAILURE() << "the waveform never was complete";
    return strip.grab().toImage();
  }

  // The same size, but silent.
  void Silence() const {
    QByteArray bytes = ReadBytes(file_);
    constexpr qsizetype kHeader = 44;
    WriteBytes(file_, bytes.first(kHeader) + QByteArray(bytes.size() - kHeader, '\0'));
  }

  void SetTime(const QDateTime& time) const {
    QFile file(file_);
    ASSERT_TRUE(file.open(QIODevice::ReadWrite) && file.setFileTime(time, QFileDevice::FileModificationTime));
  }

  QStringList Kept() const {
    QStringList files;
    for (const QFileInfo& file : QDir(kept_).entryInfoList(QDir::Files))
      files << file.filePath();
    return files;
  }

  EditorDesk desk_;
  const QString file_ = desk_.AudioFile(u"spot.wav"_s);
  const QString kept_ = qEnvironmentVariable("XDG_CACHE_HOME") + u"/spotrooster/golfvormen"_s;
  const QDateTime kThen_{QDate(2025, 1, 31), QTime(12, 0)};
};

TEST_F(WaveformCache, OpenedAgainItComesFromTheUsersCache) {
  const QImage first = Picture();
  EXPECT_EQ(Kept().size(), 1);
  Silence();
  SetTime(kThen_);  // size and time are unchanged, so only the cache can give the old picture
  EXPECT_EQ(Picture(), first);
  EXPECT_EQ(Kept().size(), 1);
}

TEST_F(WaveformCache, AChangedFileIsReadAgain) {
  const QImage first = Picture();
  Silence();
  SetTime(kThen_.addMSecs(1));
  EXPECT_NE(Picture(), first);
}

TEST_F(WaveformCache, ABrokenCacheFileIsIgnoredAndReplaced) {
  const QImage first = Picture();
  ASSERT_EQ(Kept().size(), 1);
  const QString kept = Kept().first();
  const QByteArray good = ReadBytes(kept);
  QByteArray broken = good;
  broken[broken.size() / 2] = static_cast<char>(~broken[broken.size() / 2]);
  WriteBytes(kept, broken);
  EXPECT_EQ(Picture(), first);
  EXPECT_EQ(ReadBytes(kept), good);
}

TEST_F(WaveformCache, WithoutACacheFolderTheFileIsReadEachTime) {
  const QImage first = Picture();
  QDir(kept_).removeRecursively();
  WriteBytes(kept_, "hier kan geen map staan");
  EXPECT_EQ(Picture(), first);
  EXPECT_EQ(Picture(), first);
  QFile::remove(kept_);
}

}  // namespace

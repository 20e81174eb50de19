// SPDX-License-Identifier: MIT
#include "export/apply/AudioFiles.h"

#include "platform/runtime/Error.h"
#include "platform/runtime/HostPath.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

class AudioFilesOfAnExport : public testing::Test {
 protected:
  AudioFilesOfAnExport() {
    for (const QString& name : {u"spots"_s, u"export"_s, u"studio"_s})
      QDir(folder_.path()).mkpath(name);
    runtime::SetDrives({{u"D"_s, folder_.filePath(u"spots"_s)}});
    Write(u"spots/nieuw.wav"_s, "nieuw");
    Write(u"spots/zelfde.wav"_s, "zelfde");
    Write(u"studio/zelfde.wav"_s, "zelfde");
    Write(u"spots/anders.wav"_s, "van het werkstation");
    Write(u"studio/anders.wav"_s, "van de studio");
    Write(u"export/Audio.tae"_s,
          "D:\\nieuw.wav\r\nD:\\zelfde.wav\r\nD:\\nieuw.wav\r\nD:\\anders.wav\r\nD:\\weg.wav\r\nX:\\vreemd.wav\r\n");
  }
  ~AudioFilesOfAnExport() override { runtime::SetDrives({}); }

  void Write(const QString& name, const QByteArray& content) const {
    QFile file(folder_.filePath(name));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(content);
  }
  QByteArray Content(const QString& name) const {
    QFile file(folder_.filePath(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(none)");
  }
  apply::AudioFiles Copy(bool copies = true) const {
    return apply::CopyAudioFiles(folder_.filePath(u"export"_s), folder_.filePath(u"studio"_s), copies);
  }

  const QTemporaryDir folder_;
};

}  // namespace

TEST_F(AudioFilesOfAnExport, WhatIsNotThereYetIsCopiedAndWhatIsMissingIsNamed) {
  const apply::AudioFiles files = Copy();
  EXPECT_EQ(files.copied, QStringList{u"D:\\nieuw.wav"_s});
  EXPECT_EQ(files.present, QStringList{u"D:\\zelfde.wav"_s});
  EXPECT_EQ(files.different, QStringList{u"D:\\anders.wav"_s});
  EXPECT_EQ(files.missing, (QStringList{u"D:\\weg.wav"_s, u"X:\\vreemd.wav"_s}));
  EXPECT_EQ(Content(u"studio/nieuw.wav"_s), "nieuw");
  EXPECT_EQ(Content(u"studio/anders.wav"_s), "van de studio");
  EXPECT_EQ(Copy().copied, QStringList());
}

TEST_F(AudioFilesOfAnExport, ALookCopiesNothing) {
  EXPECT_EQ(Copy(false).copied, QStringList{u"D:\\nieuw.wav"_s});
  EXPECT_EQ(Content(u"studio/nieuw.wav"_s), "(none)");
}

TEST_F(AudioFilesOfAnExport, NoListIsNoFileAndAMissingFolderIsNamed) {
  const QString studio = folder_.filePath(u"studio"_s);
  EXPECT_EQ(apply::CopyAudioFiles(studio, studio, true).missing, QStringList());
  EXPECT_THROW(apply::CopyAudioFiles(folder_.filePath(u"export"_s), studio + u"/geen"_s, true), runtime::Error);
}

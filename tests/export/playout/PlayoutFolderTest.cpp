// SPDX-License-Identifier: MIT
#include "export/playout/PlayoutFolder.h"

#include "platform/runtime/Error.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

const QByteArray kOurs = "#EXTM3U\n# Spotrooster: x\n";

class PlayoutFolderTest : public testing::Test {
 protected:
  QString At(const QString& name) const { return folder_.filePath(u"uit/"_s + name); }
  FolderChanges Update(const std::vector<PlayoutFile>& files) const {
    return UpdatePlayoutFolder(folder_.filePath(u"uit"_s), PlayoutForm::M3u, files);
  }
  QStringList Present() const { return QDir(folder_.filePath(u"uit"_s)).entryList(QDir::Files); }
  QByteArray Content(const QString& name) const {
    QFile file(At(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
  }
  void Put(const QString& name, const QByteArray& content) const {
    QDir().mkpath(folder_.filePath(u"uit"_s));
    QFile file(At(name));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(content);
  }

  QTemporaryDir folder_;
};

}  // namespace

TEST_F(PlayoutFolderTest, FilesAreWrittenIntoANewFolder) {
  EXPECT_EQ(Update({{u"blok-1.m3u"_s, kOurs + "a\n"}, {u"blok-2.m3u"_s, kOurs}}).written, 2);
  EXPECT_EQ(Present(), (QStringList{u"blok-1.m3u"_s, u"blok-2.m3u"_s}));
  EXPECT_EQ(Content(u"blok-1.m3u"_s), kOurs + "a\n");
}

TEST_F(PlayoutFolderTest, AnUnchangedFileIsNotTouchedAndAChangedOneIs) {
  Update({{u"blok-1.m3u"_s, kOurs}, {u"blok-2.m3u"_s, kOurs}});
  const QDateTime old(QDate(2020, 1, 1), QTime(0, 0));
  for (const QString& name : {u"blok-1.m3u"_s, u"blok-2.m3u"_s}) {
    QFile file(At(name));
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    ASSERT_TRUE(file.setFileTime(old, QFileDevice::FileModificationTime));
  }
  const FolderChanges changes = Update({{u"blok-1.m3u"_s, kOurs}, {u"blok-2.m3u"_s, kOurs + "b\n"}});
  EXPECT_EQ(changes.unchanged, 1);
  EXPECT_EQ(changes.written, 1);
  EXPECT_EQ(QFileInfo(At(u"blok-1.m3u"_s)).lastModified(), old);
  EXPECT_NE(QFileInfo(At(u"blok-2.m3u"_s)).lastModified(), old);
}

TEST_F(PlayoutFolderTest, FilesOfRemovedBlocksAreDeletedAndOthersKept) {
  Put(u"muziek.m3u"_s, "/srv/a.wav\n");
  Put(u"blok-3.sh"_s, "#!/bin/sh\n# Spotrooster: van een andere vorm\n");
  Update({{u"blok-1.m3u"_s, kOurs}, {u"blok-2.m3u"_s, kOurs}});
  EXPECT_EQ(Update({{u"blok-2.m3u"_s, kOurs}}).removed, 1);
  EXPECT_EQ(Present(), (QStringList{u"blok-2.m3u"_s, u"blok-3.sh"_s, u"muziek.m3u"_s}));
}

TEST_F(PlayoutFolderTest, AForeignFileIsNamedAndNothingIsWritten) {
  Put(u"blok-9.m3u"_s, "#EXTM3U\n/srv/eigen.wav\n");
  try {
    Update({{u"blok-1.m3u"_s, kOurs}});
    FAIL();
  } catch (const runtime::Error& error) {
    EXPECT_TRUE(error.Description().contains(u"blok-9.m3u"_s)) << error.what();
  }
  EXPECT_EQ(Present(), QStringList{u"blok-9.m3u"_s});
}

TEST_F(PlayoutFolderTest, AFolderThatCannotBeMadeIsNamed) {
  Put(u"vast"_s, "x");
  try {
    UpdatePlayoutFolder(At(u"vast/onder"_s), PlayoutForm::M3u, {});
    FAIL();
  } catch (const runtime::Error& error) {
    EXPECT_TRUE(error.Description().contains(u"vast/onder"_s)) << error.what();
  }
}

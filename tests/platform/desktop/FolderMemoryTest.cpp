// SPDX-License-Identifier: MIT
#include "platform/desktop/FolderMemory.h"

#include "platform/runtime/Probe.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <cerrno>

namespace {

using namespace Qt::StringLiterals;
using desktop::FolderMemory;

class RememberedFolders : public testing::Test {
 protected:
  QString SettingsFile() const { return folder.filePath(u"mappen.ini"_s); }
  QString Made(const QString& name) const {
    QDir(folder.path()).mkpath(name);
    return folder.filePath(name);
  }

  const QTemporaryDir folder;
};

TEST_F(RememberedFolders, NothingIsStoredAtFirst) {
  const FolderMemory memory(SettingsFile());
  EXPECT_EQ(FolderMemory::FolderOf(u"spots"_s), QString());
  EXPECT_EQ(FolderMemory::SuffixOf(u"spots"_s), QString());
}

TEST_F(RememberedFolders, WithoutAnInstanceAChoiceHasNoEffect) {
  FolderMemory::Chosen(u"spots"_s, Made(u"a"_s) + u"/een.wav"_s);
  EXPECT_EQ(FolderMemory::FolderOf(u"spots"_s), QString());
  EXPECT_EQ(FolderMemory::SuffixOf(u"spots"_s), QString());
  const FolderMemory memory(SettingsFile());
  EXPECT_EQ(FolderMemory::FolderOf(u"spots"_s), QString());
}

TEST_F(RememberedFolders, AChooserWithoutAKindStoresNothing) {
  const QString audio = Made(u"audio"_s);
  {
    const FolderMemory memory(SettingsFile());
    FolderMemory::Chosen(QString(), audio + u"/een.wav"_s);
    EXPECT_EQ(FolderMemory::FolderOf(QString()), QString());
    EXPECT_EQ(FolderMemory::SuffixOf(QString()), QString());
  }
  EXPECT_FALSE(QFile::exists(SettingsFile()));
}

TEST_F(RememberedFolders, NextRunKnowsFolderAndSuffixOfAnyName) {
  const QString audio = Made(u"réclame, 50% = \"goed\"; [a]/Ütrecht"_s);
  const QString kind = u"Jingle/avond (café)"_s;
  {
    const FolderMemory memory(SettingsFile());
    FolderMemory::Chosen(kind, audio + u"/mix.van.nu.FLAC"_s);
  }
  const FolderMemory memory(SettingsFile());
  EXPECT_EQ(FolderMemory::FolderOf(kind), audio);
  EXPECT_EQ(FolderMemory::SuffixOf(kind), u"FLAC"_s);
}

TEST_F(RememberedFolders, AFileWithoutASuffixReplacesThePreviousSuffix) {
  const QString audio = Made(u"audio"_s);
  const FolderMemory memory(SettingsFile());
  FolderMemory::Chosen(u"spots"_s, audio + u"/een.wav"_s);
  FolderMemory::Chosen(u"spots"_s, audio + u"/zonder"_s);
  EXPECT_EQ(FolderMemory::SuffixOf(u"spots"_s), QString());
  EXPECT_EQ(FolderMemory::FolderOf(u"spots"_s), audio);
}

TEST_F(RememberedFolders, AFolderThatCannotBeOpenedIsNotProposed) {
  const QString audio = Made(u"audio"_s);
  const FolderMemory memory(SettingsFile());
  FolderMemory::Chosen(u"spots"_s, audio + u"/een.wav"_s);
  for (const int failure : {ENOENT, EIO, EACCES, ESTALE}) {
    const runtime::ProbeLookScope look([failure](const QString&) { return failure; });
    EXPECT_EQ(FolderMemory::FolderOf(u"spots"_s), QString()) << failure;
  }
  EXPECT_EQ(FolderMemory::FolderOf(u"spots"_s), audio);  // remembered for when the drive is back
}

// Also with rights for everything: the settings file's folder is a file.
TEST_F(RememberedFolders, AFileThatCannotBeWrittenIsNoError) {
  const QString audio = Made(u"audio"_s);
  QFile inTheWay(folder.filePath(u"bezet"_s));
  ASSERT_TRUE(inTheWay.open(QIODevice::WriteOnly));
  const QString file = inTheWay.fileName() + u"/mappen.ini"_s;
  {
    const FolderMemory memory(file);
    FolderMemory::Chosen(u"spots"_s, audio + u"/een.wav"_s);
    EXPECT_EQ(FolderMemory::FolderOf(u"spots"_s), audio);
  }
  const FolderMemory memory(file);
  EXPECT_EQ(FolderMemory::FolderOf(u"spots"_s), QString());
}

TEST_F(RememberedFolders, TheNewestInstanceIsUsedAndThenThePreviousAgain) {
  const QString outer = Made(u"buiten"_s);
  const FolderMemory memory(SettingsFile());
  FolderMemory::Chosen(u"spots"_s, outer + u"/een.wav"_s);
  {
    const FolderMemory newer(folder.filePath(u"andere.ini"_s));
    EXPECT_EQ(FolderMemory::FolderOf(u"spots"_s), QString());
    FolderMemory::Chosen(u"spots"_s, Made(u"binnen"_s) + u"/een.mp3"_s);
  }
  EXPECT_EQ(FolderMemory::FolderOf(u"spots"_s), outer);
  EXPECT_EQ(FolderMemory::SuffixOf(u"spots"_s), u"wav"_s);
}

}  // namespace

// SPDX-License-Identifier: MIT
// The cache of open database files, and files on another file system.
#include "platform/dao/OpenFiles.h"

#include "platform/dao/FileSystemScope.h"
#include "platform/dao/FrozenDatabase.h"
#include "platform/dao/WriteWait.h"
#include "platform/files/HookedFileSystem.h"
#include "platform/files/MemoryFileSystem.h"
#include "platform/runtime/Error.h"
#include "tests/platform/dao/Scratch.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <chrono>
#include <thread>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

class OpenFiles : public testing::Test {
 protected:
  OpenFiles() {
    for (int i = 0; i < 6; ++i)
      dao::CreateDatabase(Path(i));
  }
  QString Path(int number) const { return folder_.filePath(u"%1.mdb"_s.arg(number)); }
  std::shared_ptr<jet::Database> Opened(int number, const dao::OpenOptions& options = {}) const {
    return dao::OpenFile(Path(number), options);
  }

  QTemporaryDir folder_;
};

TEST_F(OpenFiles, AnOpenFileIsUsedAgain) {
  const auto first = Opened(0);
  EXPECT_EQ(Opened(0), first);
  EXPECT_NE(Opened(1), first);
  dao::CloseCachedFiles();
  EXPECT_NE(Opened(0), first);
}

TEST_F(OpenFiles, FourFilesAreCachedTheLeastRecentlyUsedIsClosed) {
  const std::weak_ptr<jet::Database> first = Opened(0);
  const std::weak_ptr<jet::Database> second = Opened(1);
  Opened(2);
  Opened(3);
  Opened(0);
  Opened(4);
  EXPECT_FALSE(first.expired());
  EXPECT_TRUE(second.expired());
}

TEST_F(OpenFiles, OtherOptionsOpenTheFileAgain) {
  const auto writable = Opened(0);
  EXPECT_FALSE(writable->IsReadOnly());
  const auto readOnly = Opened(0, {{}, true});
  EXPECT_TRUE(readOnly->IsReadOnly());
  EXPECT_NE(writable, readOnly);
}

TEST_F(OpenFiles, AnotherWaitOpensTheFileAgain) {
  const auto before = Opened(0);
  {
    const dao::WriteWaitScope wait(20ms);
    EXPECT_EQ(dao::WriteWait(), 20ms);
    EXPECT_NE(Opened(0), before);
  }
  EXPECT_EQ(dao::WriteWait(), 5000ms);
}

TEST_F(OpenFiles, EachThreadHasItsOwnCache) {
  const auto here = Opened(0);
  std::shared_ptr<jet::Database> there;
  std::thread([&] {
    there = Opened(0);
    dao::CloseCachedFiles();
  }).join();
  EXPECT_NE(there, here);
  EXPECT_EQ(Opened(0), here);
}

TEST_F(OpenFiles, AScopeReadsAnotherFileSystemAndClosesItsFiles) {
  files::MemoryFileSystem memory;
  dao::Database outside = dao::OpenDatabase(Path(0));
  outside.CreateTable(scratch::Spots());
  QFile file(Path(0));
  ASSERT_TRUE(file.open(QIODevice::ReadOnly));
  const QByteArray content = file.readAll();
  memory.Put(Path(0).toStdString(), files::Bytes(content.begin(), content.end()));
  outside.Execute(u"INSERT INTO tblSpots (ID) VALUES (1)"_s);
  {
    const dao::FileSystemScope scope(memory);
    EXPECT_TRUE(scratch::Rows(dao::OpenDatabase(Path(0)), u"SELECT ID FROM tblSpots"_s).isEmpty());
    dao::OpenDatabase(Path(0)).Execute(u"INSERT INTO tblSpots (ID) VALUES (7)"_s);
    EXPECT_EQ(scratch::Rows(dao::OpenDatabase(Path(0)), u"SELECT ID FROM tblSpots"_s), QStringList{u"7"_s});
  }
  EXPECT_EQ(scratch::Rows(dao::OpenDatabase(Path(0)), u"SELECT ID FROM tblSpots"_s), QStringList{u"1"_s});
}

class FrozenFiles : public OpenFiles {
 protected:
  FrozenFiles() { dao::OpenDatabase(Path(0)).CreateTable(scratch::Spots()); }
  QString Copy() const { return folder_.filePath(u"copy.mdb"_s); }
};

TEST_F(FrozenFiles, ACopyHasTheSameBytesAndPermissions) {
  ASSERT_EQ(::chmod(Path(0).toUtf8().constData(), 0640), 0);
  const dao::FrozenDatabase frozen(Path(0));
  frozen.CopyTo(Copy());
  EXPECT_TRUE(frozen.IsSameAs(Copy()));
  EXPECT_FALSE(frozen.IsSameAs(Path(1)));
  EXPECT_EQ(files::HostFileSystem().Status(Copy().toStdString())->permissions, 0640U);
}

TEST_F(FrozenFiles, OneDifferentByteIsNoticed) {
  const dao::FrozenDatabase frozen(Path(0));
  frozen.CopyTo(Copy());
  QFile file(Copy());
  ASSERT_TRUE(file.open(QIODevice::ReadWrite));
  file.seek(file.size() - 1);
  char last = 0;
  file.getChar(&last);
  file.seek(file.size() - 1);
  file.putChar(static_cast<char>(last ^ 1));
  file.close();
  EXPECT_FALSE(frozen.IsSameAs(Copy()));
}

TEST_F(FrozenFiles, AShorterFileDiffers) {
  const dao::FrozenDatabase frozen(Path(0));
  frozen.CopyTo(Copy());
  QFile file(Copy());
  ASSERT_TRUE(file.resize(file.size() - 4096));
  EXPECT_FALSE(frozen.IsSameAs(Copy()));
}

TEST_F(FrozenFiles, AnEarlierCopyIsReplaced) {
  {
    QFile file(Copy());
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("old");
  }
  const dao::FrozenDatabase frozen(Path(0));
  frozen.CopyTo(Copy());
  EXPECT_TRUE(frozen.IsSameAs(Copy()));
}

TEST_F(FrozenFiles, AFolderForCopiesIsMade) {
  const QString folder = folder_.filePath(u"reserve"_s);
  ASSERT_EQ(::chmod(Path(0).toUtf8().constData(), 0660), 0);
  const dao::FrozenDatabase frozen(Path(0));
  frozen.MakeFolder(folder);
  EXPECT_EQ(files::HostFileSystem().Status(folder.toStdString())->permissions & 0777, 0770U);
  frozen.MakeFolder(folder);
  frozen.CopyTo(folder + u"/copy.mdb"_s);
  EXPECT_TRUE(frozen.IsSameAs(folder + u"/copy.mdb"_s));
}

TEST_F(FrozenFiles, ErrorsHaveTheNameOfTheFile) {
  const dao::FrozenDatabase frozen(Path(0));
  const QString missing = folder_.filePath(u"weg/copy.mdb"_s);
  EXPECT_TRUE(scratch::ErrorOf([&] { frozen.CopyTo(missing); }).contains(missing));
  EXPECT_TRUE(scratch::ErrorOf([&] { frozen.IsSameAs(missing); }).contains(missing));
  EXPECT_TRUE(scratch::ErrorOf([&] { frozen.MakeFolder(missing); }).contains(missing));
  EXPECT_TRUE(scratch::ErrorOf([&] { const dao::FrozenDatabase none(missing); }).contains(missing));
}

TEST_F(FrozenFiles, AfterTheLockTheDatabaseCanBeChangedAgain) {
  { const dao::FrozenDatabase frozen(Path(0)); }
  EXPECT_EQ(dao::OpenDatabase(Path(0)).Execute(u"INSERT INTO tblSpots (ID) VALUES (1)"_s), 1);
}

}  // namespace

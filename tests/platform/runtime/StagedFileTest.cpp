// SPDX-License-Identifier: MIT
#include "platform/runtime/StagedFile.h"

#include "platform/files/HookedFileSystem.h"
#include "platform/files/TemporaryName.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/HostPath.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <cerrno>
#include <optional>

using namespace Qt::StringLiterals;
using files::FileCall;
using runtime::StagedFile;

namespace {

class StagedFiles : public testing::Test {
 protected:
  StagedFiles() { runtime::SetDrives({{u"E"_s, folder_.path()}}); }
  ~StagedFiles() override { runtime::SetDrives({}); }

  QStringList Names() const { return QDir(folder_.path()).entryList(QDir::Files | QDir::Hidden, QDir::Name); }
  QByteArray ContentOf(const QString& name) const {
    QFile file(folder_.filePath(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<none>");
  }
  void Put(const QString& name, const QByteArray& content) const {
    QFile file(folder_.filePath(name));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(content);
  }

  // Makes the calls of one kind fail for the rest of the test.
  void Fail(FileCall::Kind kind, int error) {
    hooked_.emplace(files::HostFileSystem(),
                    [kind, error](const FileCall& call, const files::HookedFileSystem::Make& make) -> std::int64_t {
                      return call.kind == kind ? -error : make();
                    });
    scope_.emplace(*hooked_);
  }

  // The error of `step`; fails the test when there is none.
  template <class Step>
  static runtime::Error ErrorOfStep(const Step& step) {
    try {
      step();
    } catch (const runtime::Error& error) {
      return error;
    }
    ADD_FAILURE() << "no error";
    return runtime::Error(QString());
  }

  QTemporaryDir folder_;
  std::optional<files::HookedFileSystem> hooked_;
  std::optional<files::FileSystemScope> scope_;
};

TEST_F(StagedFiles, PiecesAreWrittenInOrder) {
  {
    StagedFile file(u"E:\\a.tql"_s);
    file.Write("een ");
    file.Write("");
    file.Write("twee");
    file.Complete();
    file.Place();
  }
  EXPECT_EQ(ContentOf(u"a.tql"_s), "een twee");
  EXPECT_EQ(Names(), QStringList{u"a.tql"_s});
}

TEST_F(StagedFiles, TheTemporaryPathIsInTheSameFolderAsPathText) {
  const StagedFile file(u"E:\\a.tql"_s);
  EXPECT_TRUE(file.TemporaryPath().startsWith(u"E:\\.a.tql."_s));
  EXPECT_TRUE(files::IsTemporaryName(file.TemporaryPath().mid(3).toStdString()));
  EXPECT_EQ(Names(), QStringList{file.TemporaryPath().mid(3)});
}

TEST_F(StagedFiles, WithoutPlaceNothingIsLeft) {
  Put(u"a.tql"_s, "oud");
  {
    StagedFile file(u"E:\\a.tql"_s);
    file.Write("nieuw");
    file.Complete();
    file.SyncName();
  }
  EXPECT_EQ(ContentOf(u"a.tql"_s), "oud");
  EXPECT_EQ(Names(), QStringList{u"a.tql"_s});
}

TEST_F(StagedFiles, KeepLeavesTheTemporaryFile) {
  QString temporary;
  {
    StagedFile file(u"E:\\a.tql"_s);
    file.Write("nieuw");
    file.Complete();
    file.Keep();
    temporary = file.TemporaryPath().mid(3);
  }
  EXPECT_EQ(Names(), QStringList{temporary});
  EXPECT_EQ(ContentOf(temporary), "nieuw");
}

TEST_F(StagedFiles, AnUnmappedDriveIsAnError) {
  EXPECT_THROW(StagedFile(u"Q:\\a.tql"_s), runtime::Error);
}

TEST_F(StagedFiles, AMissingFolderIsReportedWithThePathText) {
  const runtime::Error error = ErrorOfStep([] { const StagedFile file(u"E:\\weg\\a.tql"_s); });
  EXPECT_EQ(error.Description(), u"Kan 'E:\\weg\\a.tql' niet schrijven: het bestand of de map bestaat niet."_s);
}

TEST_F(StagedFiles, AFailedWriteLeavesTheOldFile) {
  Put(u"a.tql"_s, "oud");
  Fail(FileCall::Write, ENOSPC);
  {
    StagedFile file(u"E:\\a.tql"_s);
    const runtime::Error error = ErrorOfStep([&] { file.Write("nieuw"); });
    EXPECT_EQ(error.Description(), u"Kan 'E:\\a.tql' niet schrijven: de schijf is vol."_s);
    EXPECT_FALSE(error.IsDone());
  }
  EXPECT_EQ(ContentOf(u"a.tql"_s), "oud");
  EXPECT_EQ(Names(), QStringList{u"a.tql"_s});
}

TEST_F(StagedFiles, AFailedSyncOrRenameLeavesTheOldFile) {
  Put(u"a.tql"_s, "oud");
  for (const FileCall::Kind kind : {FileCall::Sync, FileCall::Rename}) {
    Fail(kind, EIO);
    {
      StagedFile file(u"E:\\a.tql"_s);
      file.Write("nieuw");
      EXPECT_FALSE(ErrorOfStep([&] { file.Place(); }).IsDone());
    }
    scope_.reset();
    EXPECT_EQ(ContentOf(u"a.tql"_s), "oud");
    EXPECT_EQ(Names(), QStringList{u"a.tql"_s});
  }
}

TEST_F(StagedFiles, AFailedFolderSyncIsAnErrorThatIsDone) {
  Put(u"a.tql"_s, "oud");
  Fail(FileCall::SyncFolder, EIO);
  {
    StagedFile file(u"E:\\a.tql"_s);
    file.Write("nieuw");
    const runtime::Error error = ErrorOfStep([&] { file.Place(); });
    EXPECT_TRUE(error.IsDone());
    EXPECT_TRUE(error.Description().startsWith(u"'E:\\a.tql' is geschreven, maar"_s)) << error.what();
  }
  EXPECT_EQ(ContentOf(u"a.tql"_s), "nieuw");
  EXPECT_EQ(Names(), QStringList{u"a.tql"_s});
}

TEST_F(StagedFiles, ADiskThatCannotClaimANameIsReported) {
  hooked_.emplace(files::HostFileSystem(),
                  [](const FileCall& call, const files::HookedFileSystem::Make& make) -> std::int64_t {
                    if (call.kind == FileCall::RenameNew) return -EINVAL;
                    return call.kind == FileCall::Link ? -EPERM : make();
                  });
  scope_.emplace(*hooked_);
  StagedFile file(u"E:\\a.tql"_s);
  file.Write("nieuw");
  const runtime::Error error = ErrorOfStep([&] { static_cast<void>(file.PlaceNew(u"E:\\a.tql"_s)); });
  EXPECT_TRUE(error.Description().contains(u"Kies een map op een andere schijf"_s)) << error.what();
  EXPECT_FALSE(Names().contains(u"a.tql"_s));
}

}  // namespace

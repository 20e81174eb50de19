// SPDX-License-Identifier: MIT
#include "platform/runtime/TextFile.h"
#include "tests/support/FolderContent.h"
#include "tests/support/Hindrance.h"
#include "tests/tools/RunTool.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstdio>
#include <cstdlib>
#include <string>

using namespace Qt::StringLiterals;

namespace {

// A local database in which many rows were inserted and deleted.
class Compact : public testing::Test {
 protected:
  Compact() {
    RunTool({u"create"_s, folder_.path()});
    Sql(u"INSERT INTO tblOfflineLog (ID, SqlSyntax) VALUES (1, \"%1\")"_s.arg(QString(3000, u'x')));
    for (int n = 1; n <= 128; n *= 2)
      Sql(u"INSERT INTO tblOfflineLog (ID, SqlSyntax) SELECT ID + %1, SqlSyntax FROM tblOfflineLog"_s.arg(n));
    Sql(u"DELETE FROM tblOfflineLog WHERE ID > 3"_s);
  }
  QString Local() const { return folder_.filePath(u"data/OvalistoLocal.mdb"_s); }
  qint64 Size(const QString& path) const { return QFileInfo(path).size(); }
  std::string Sql(const QString& statement) const { return RunTool({u"sql"_s, Local(), statement}).out; }
  std::string Tables(const QString& path) const { return RunTool({u"tables"_s, path}).out; }

  QTemporaryDir folder_;
};

TEST_F(Compact, TheSmallerFileReplacesTheOldOneWhichIsKept) {
  const std::string tables = Tables(Local());
  const qint64 before = Size(Local());
  const ToolRun run = RunTool({u"compact"_s, Local()});
  ASSERT_EQ(run.exitCode, kDone) << run.err;
  EXPECT_LT(Size(Local()), before);
  EXPECT_EQ(run.out, std::to_string(before) + " -> " + std::to_string(Size(Local())) + "\n");
  EXPECT_EQ(Size(Local() + u".bak"_s), before);
  EXPECT_EQ(Tables(Local()), tables);
  EXPECT_EQ(RunTool({u"check"_s, Local()}).out, "ok\n");
  EXPECT_EQ(Sql(u"DELETE FROM tblOfflineLog"_s), "3\n");
}

TEST_F(Compact, AFullDiskLeavesTheDatabaseAsItWas) {
  const std::string tables = Tables(Local());
  for (const bool backups : {true, false}) {
    if (!backups) runtime::WriteFile(folder_.filePath(u"ovalis.ini"_s), "[Backup]\r\nEnabled=0\r\n");
    ToolRun run;
    {
      const testing_support::FullDisk full(8192);
      run = RunTool({u"compact"_s, Local()});
    }
    EXPECT_EQ(run.exitCode, kFailed);
    EXPECT_FALSE(run.err.empty());
    EXPECT_EQ(RunTool({u"check"_s, Local()}).out, "ok\n");
    EXPECT_EQ(Tables(Local()), tables);
    const QStringList remains = {u"*-tmp"_s, u"*.bak"_s, u"*.compact.mdb"_s};
    EXPECT_EQ(QDir(folder_.filePath(u"data"_s)).entryList(remains, QDir::Files | QDir::Hidden), QStringList());
    EXPECT_TRUE(QDir(folder_.filePath(u"data/backup"_s)).isEmpty());
  }
}

// In a child process without root, to which permissions apply.
using CompactDeathTest = Compact;

TEST_F(CompactDeathTest, AReadOnlyFileOrFolderIsUnchanged) {
  struct Case {
    mode_t file;
    mode_t folder;
  };
  const auto permit = [](const QString& path, mode_t mode) { ::chmod(QFile::encodeName(path).constData(), mode); };
  permit(folder_.path(), 0755);
  const QString data = folder_.filePath(u"data"_s);
  for (const Case& may : {Case{0444, 0777}, Case{0666, 0555}, Case{0444, 0555}}) {
    permit(Local(), may.file);
    permit(data, may.folder);
    const auto before = testing_support::FolderContent(data);
    const auto compact = [&] {
      testing_support::BecomeNobody();
      const ToolRun run = RunTool({u"compact"_s, Local()});
      std::fputs(run.err.c_str(), stderr);
      std::_Exit(run.exitCode);
    };
    EXPECT_EXIT(compact(), testing::ExitedWithCode(kFailed),
                "(OvalistoLocal.mdb.*alleen-lezen|backup.*toegang geweigerd)");
    EXPECT_TRUE(testing_support::FolderContent(data) == before);
  }
  permit(data, 0777);
}

TEST_F(Compact, ANewFileIsMadeAndTheOldOneIsUnchanged) {
  const QString target = folder_.filePath(u"nieuw.mdb"_s);
  const qint64 before = Size(Local());
  ASSERT_EQ(RunTool({u"compact"_s, Local(), target}).exitCode, kDone);
  EXPECT_EQ(Size(Local()), before);
  EXPECT_FALSE(QFile::exists(Local() + u".bak"_s));
  EXPECT_LT(Size(target), before);
  EXPECT_EQ(Tables(target), Tables(Local()));
  EXPECT_EQ(RunTool({u"check"_s, target}).out, "ok\n");
}

TEST_F(Compact, AnExistingFileIsNotReplaced) {
  const ToolRun run = RunTool({u"compact"_s, Local(), folder_.filePath(u"data/work.mdb"_s)});
  EXPECT_EQ(run.exitCode, kFailed);
  EXPECT_NE(run.err.find("work.mdb"), std::string::npos) << run.err;
}

}  // namespace

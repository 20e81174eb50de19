// SPDX-License-Identifier: MIT
// Messages of the commands without access to the files; in a child process, since root always has access.
#include "tests/support/Hindrance.h"
#include "tests/tools/RunTool.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstdio>
#include <cstdlib>

using namespace Qt::StringLiterals;

namespace {

// A station in a folder without permissions.
class DeniedDeathTest : public testing::Test {
 protected:
  DeniedDeathTest() {
    EXPECT_EQ(RunTool({u"create"_s, Folder()}).exitCode, kDone);
    Permit(folder_.path(), 0755);
    Permit(Folder(), 0);
  }
  ~DeniedDeathTest() override { Permit(Folder(), 0755); }

  QString Folder() const { return folder_.filePath(u"dicht"_s); }
  QString Local() const { return Folder() + u"/data/OvalistoLocal.mdb"_s; }
  [[noreturn]] static void RunAsNobody(const QStringList& words) {
    testing_support::BecomeNobody();
    const ToolRun run = RunTool(words);
    std::fputs(run.err.c_str(), stderr);
    std::_Exit(run.exitCode);
  }

 private:
  static void Permit(const QString& path, mode_t mode) { ::chmod(QFile::encodeName(path).constData(), mode); }

  QTemporaryDir folder_;
};

}  // namespace

TEST_F(DeniedDeathTest, EveryCommandOnAFileSaysThatAccessIsRefused) {
  const QList<QStringList> commands{{u"tables"_s, Local()},
                                    {u"schema"_s, Local()},
                                    {u"dump"_s, Local(), u"tblOfflineLog"_s},
                                    {u"sql"_s, Local(), u"SELECT * FROM tblOfflineLog"_s},
                                    {u"check"_s, Local()},
                                    {u"compact"_s, Local()}};
  for (const QStringList& words : commands)
    EXPECT_EXIT(RunAsNobody(words), testing::ExitedWithCode(kFailed), "OvalistoLocal.mdb.*toegang geweigerd")
        << words.first().toStdString();
}

TEST_F(DeniedDeathTest, EveryCommandOnAStationSaysThatAccessIsRefused) {
  for (const QStringList& words : {QStringList{u"export"_s, Folder()}, QStringList{u"spots"_s, Folder()},
                                   QStringList{u"locate"_s, Folder(), QDir::tempPath()}})
    EXPECT_EXIT(RunAsNobody(words), testing::ExitedWithCode(kFailed), "dicht.*toegang geweigerd")
        << words.first().toStdString();
}

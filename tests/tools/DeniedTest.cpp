// SPDX-License-Identifier: MIT
// Messages of the commands without access to the files; in a child process, since root always has access.
#include "tests/support/Hindrance.h"
#include "tests/tools/EveryCommand.h"
#include "tests/tools/RunTool.h"

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

TEST_F(DeniedDeathTest, EveryCommandSaysThatAccessIsRefused) {
  for (const QStringList& words : EveryCommand({Folder(), Local(), u"tblOfflineLog"_s}))
    EXPECT_EXIT(RunAsNobody(words), testing::ExitedWithCode(kFailed), "dicht.*toegang geweigerd")
        << words.first().toStdString();
}

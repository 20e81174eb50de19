// SPDX-License-Identifier: MIT
// A program folder that two users of a group share: each may do what the other did before, whatever the umask of
// either.
#include "tests/support/Fork.h"
#include "tests/tools/StationProgram.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>

#include <grp.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <string>
#include <utility>

using namespace Qt::StringLiterals;
using testing_support::Station;

namespace {

constexpr uid_t kFirst = 1001;
constexpr gid_t kGroup = 2000;

class GroupShare : public testing::TestWithParam<std::pair<mode_t, mode_t>> {
 protected:
  GroupShare() {
    Give(station_.Folder());
    QDirIterator below(station_.Folder(), QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot,
                       QDirIterator::Subdirectories);
    while (below.hasNext())
      Give(below.next());
  }

  // Runs a command in the folder as one of the users, each with a primary group of its own. Without root, both are the
  // user running the test.
  void Run(bool second, const QStringList& words) const {
    const pid_t child = testing_support::Fork();
    if (child == 0) {
      umask(second ? GetParam().second : GetParam().first);
      const uid_t user = second ? kFirst + 1 : kFirst;
      if (geteuid() == 0 && (setgroups(1, &kGroup) != 0 || setgid(user) != 0 || setuid(user) != 0)) _exit(3);
      const ToolRun run = RunTool(words);
      std::fputs(run.err.c_str(), stderr);
      _exit(run.exitCode);
    }
    const int status = testing_support::WaitFor(child);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == kDone)
        << (second ? "second user: " : "first user: ") << words.join(u' ').toStdString();
  }
  void Log(bool second, int number) const {
    Run(second, {u"sql"_s, Local(),
                 u"INSERT INTO tblOfflineLog (ID, SqlSyntax) VALUES (%1, \"UPDATE t SET a = %1\")"_s.arg(number)});
  }
  QString Local() const { return station_.At(u"data/OvalistoLocal.mdb"_s); }

  StationProgram station_{Station::Mode::Offline};

 private:
  static void Give(const QString& path) {
    const QByteArray name = QFile::encodeName(path);
    if (geteuid() == 0) {
      EXPECT_EQ(chown(name.constData(), kFirst, kGroup), 0);
    }
    EXPECT_EQ(chmod(name.constData(), QFileInfo(path).isDir() ? 0770 : 0660), 0);
  }
};

}  // namespace

INSTANTIATE_TEST_SUITE_P(Umasks, GroupShare,
                         testing::Values(std::pair{022U, 077U}, std::pair{077U, 022U}, std::pair{077U, 077U}));

TEST_P(GroupShare, BothUsersWriteCompactRestoreAndExport) {
  QByteArray expected;
  for (int number = 1; number <= 4; ++number) {
    const bool second = number % 2 == 0;
    Log(second, number);
    Run(!second, {u"compact"_s, Local()});
    Run(second, {u"export"_s, station_.Folder(), u"--vorige-verwerkt"_s});
    expected += "UPDATE t SET a = " + QByteArray::number(number) + ";\r\n";
    Run(!second, {u"sql"_s, Local(), u"INSERT INTO tblCopie_Items (ID) VALUES (%1)"_s.arg(number)});
    const QDir backups(station_.At(u"data/backup"_s));
    const QString newest = backups.entryList({u"OvalistoLocal-*.mdb"_s}, QDir::Files, QDir::Name).last();
    Run(second, {u"restore"_s, backups.filePath(newest), Local(), u"tblCopie_Items"_s});
    Run(!second, {u"check"_s, Local()});
  }
  QByteArray exported;
  const QDir exports(station_.At(u"export"_s));
  for (const QString& name : exports.entryList({u"*.tql"_s}, QDir::Files, QDir::Name)) {
    QFile file(exports.filePath(name));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    exported += file.readAll();
  }
  EXPECT_EQ(exported, expected);
}

// SPDX-License-Identifier: MIT
// Owner, group and permissions of the copies of a database that several users share.
#include "data/Backup.h"
#include "data/Schema.h"
#include "platform/dao/Database.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/HostPath.h"
#include "tests/support/Fork.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <grp.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <functional>

using namespace Qt::StringLiterals;

namespace {

constexpr uid_t kFirst = 1001;
constexpr uid_t kSecond = 1002;
constexpr gid_t kGroup = 2000;

class BackupRights : public testing::Test {
 protected:
  BackupRights() {
    schema::CreateLocalDatabase(runtime::PathText(Path()));
    Give(folder_.path(), 0770);
    Give(Path(), 0660);
  }

  QString Path() const { return folder_.filePath(u"station.mdb"_s); }
  QString Folder() const { return folder_.filePath(u"backup"_s); }
  QStringList Copies() const { return QDir(Folder()).entryList(QDir::Files); }

  // Sets the owner to the first user and the group. Without root, all users are the one running the test.
  static void Give(const QString& path, mode_t mode) {
    const QByteArray name = QFile::encodeName(path);
    if (geteuid() == 0) {
      ASSERT_EQ(chown(name.constData(), kFirst, kGroup), 0);
    }
    ASSERT_EQ(chmod(name.constData(), mode), 0);
  }
  static void ExpectShared(const QString& path, mode_t mode) {
    struct stat found = {};
    ASSERT_EQ(stat(QFile::encodeName(path).constData(), &found), 0);
    EXPECT_EQ(found.st_mode & 07777, mode) << path.toStdString();
    EXPECT_EQ(found.st_gid, geteuid() == 0 ? kGroup : getegid()) << path.toStdString();
  }

  // Changes and copies the database as a member of the group whose primary group is another one. Returns whether both
  // succeeded.
  bool ChangedAndCopiedBy(uid_t user, mode_t mask) const {
    const pid_t child = testing_support::Fork();
    if (child == 0) {
      umask(mask);
      if (geteuid() == 0 && (setgroups(1, &kGroup) != 0 || setgid(user) != 0 || setuid(user) != 0)) _exit(3);
      try {
        dao::OpenDatabase(runtime::PathText(Path()))
            .Execute(u"INSERT INTO tblOfflineLog (ID, SqlSyntax) VALUES (%1, \"x\")"_s.arg(::getpid()));
        _exit(BackUp(Path()) ? 0 : 2);
      } catch (const runtime::Error& error) {
        std::fputs(error.what(), stderr);
      }
      _exit(1);
    }
    const int status = testing_support::WaitFor(child);
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
  }

  QTemporaryDir folder_;
};

}  // namespace

TEST_F(BackupRights, CopiesOfOneGroupMemberAreUsableByTheOthers) {
  for (const mode_t mask : {022U, 077U}) {
    QDir(Folder()).removeRecursively();
    for (const uid_t user : {kFirst, kSecond, kFirst})
      EXPECT_TRUE(ChangedAndCopiedBy(user, mask)) << user;
    ExpectShared(Folder(), 0770);
    EXPECT_EQ(Copies().size(), 3);
    for (const QString& name : Copies())
      ExpectShared(Folder() + u'/' + name, 0660);
  }
}

TEST_F(BackupRights, CopyOfAPrivateDatabaseIsPrivate) {
  Give(Path(), 0600);
  for (const mode_t mask : {022U, 077U, 0U}) {
    QDir(Folder()).removeRecursively();
    EXPECT_TRUE(ChangedAndCopiedBy(kFirst, mask));
    ExpectShared(Folder(), 0700);
    ASSERT_EQ(Copies().size(), 1);
    ExpectShared(Folder() + u'/' + Copies().first(), 0600);
  }
}

TEST_F(BackupRights, SetgidFolderStaysSetgid) {
  Give(folder_.path(), 02770);
  EXPECT_TRUE(ChangedAndCopiedBy(kSecond, 077));
  ExpectShared(Folder(), 02770);
}

TEST_F(BackupRights, ExistingFolderKeepsItsRights) {
  QDir().mkdir(Folder());
  Give(Folder(), 0750);
  EXPECT_TRUE(ChangedAndCopiedBy(kFirst, 022));
  ExpectShared(Folder(), 0750);
}

// SPDX-License-Identifier: MIT
#include "tests/platform/dao/Scratch.h"
#include "tests/support/Fork.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <functional>

using namespace Qt::StringLiterals;
using namespace scratch;

namespace {

QString OpenError(const QString& path) {
  return ErrorOf([&] { dao::OpenDatabase(path); });
}

void WriteBytes(const QString& path, const QByteArray& bytes) {
  QFile file(path);
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  ASSERT_EQ(file.write(bytes), bytes.size());
}

// Runs a check in a child process without rights; returns its exit code, 0 for success.
int InChildWithoutRights(const std::function<bool()>& check) {
  const pid_t child = testing_support::Fork();
  if (child == 0) {
    const bool gaveUp = getuid() != 0 || (setgid(65534) == 0 && setuid(65534) == 0);
    _exit(gaveUp && check() ? 0 : 1);
  }
  int status = -1;
  status = testing_support::WaitFor(child);
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

TEST(OpenDatabase, MissingFileIsReportedAndNotCreated) {
  const Scratch s;
  const QString path = s.Path(u"weg.mdb"_s);
  const QString error = OpenError(path);
  EXPECT_TRUE(error.contains(path) && error.contains(u"bestaat niet"_s)) << qPrintable(error);
  EXPECT_FALSE(QFile::exists(path));
}

TEST(OpenDatabase, FolderIsNotADatabase) {
  const Scratch s;
  QDir(s.Path(u"."_s)).mkdir(u"map.mdb"_s);
  EXPECT_TRUE(OpenError(s.Path(u"map.mdb"_s)).contains(u"het is een map"_s));
}

TEST(OpenDatabase, GarbageIsNotADatabaseAndNotChanged) {
  const Scratch s;
  for (const QByteArray& bytes : {QByteArray(), QByteArray("x"), QByteArray(9000, '\xff')}) {
    WriteBytes(s.Path(u"rommel.mdb"_s), bytes);
    const QString error = OpenError(s.Path(u"rommel.mdb"_s));
    EXPECT_TRUE(error.contains(u"rommel.mdb"_s) && error.contains(u"geen database"_s)) << qPrintable(error);
    EXPECT_EQ(QFileInfo(s.Path(u"rommel.mdb"_s)).size(), bytes.size());
  }
}

TEST(OpenDatabase, DamagedFileIsReported) {
  const SpotScratch s;
  QFile file(s.Path());
  ASSERT_TRUE(file.open(QIODevice::ReadWrite));
  file.seek(50);
  file.write(QByteArray(static_cast<int>(file.size()) - 50, '\xee'));
  file.close();
  const QString error = ErrorOf([&] { s.Open().Execute(u"DELETE FROM tblSpots"_s); });
  EXPECT_TRUE(error.contains(s.Path())) << qPrintable(error);
}

TEST(OpenDatabase, FileWithoutReadPermissionIsReported) {
  const SpotScratch s;
  QFile::setPermissions(QFileInfo(s.Path()).path(), QFile::Permissions(0x7777));
  QFile::setPermissions(s.Path(), QFile::Permissions());
  EXPECT_EQ(InChildWithoutRights([&] {
              const QString error = OpenError(s.Path());
              return error.contains(s.Path()) && error.contains(u"toegang geweigerd"_s);
            }),
            0);
}

TEST(OpenDatabase, ReadOnlyFileIsReadButNotWritten) {
  const SpotScratch s;
  QFile::setPermissions(s.Path(), QFile::ReadOwner | QFile::ReadGroup | QFile::ReadOther);
  QFile::setPermissions(QFileInfo(s.Path()).path(),
                        QFile::ReadOwner | QFile::ExeOwner | QFile::ReadOther | QFile::ExeOther);
  EXPECT_EQ(InChildWithoutRights([&] {
              dao::Database database = s.Open();
              const bool reads = Rows(database, u"SELECT ID FROM tblSpots"_s).size() == 3;
              const QString error = ExecuteError(database, u"DELETE FROM tblSpots"_s);
              return reads && error.contains(s.Path()) && error.contains(u"alleen-lezen"_s);
            }),
            0);
  QFile::setPermissions(QFileInfo(s.Path()).path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
  EXPECT_EQ(Rows(s.Open(), u"SELECT ID FROM tblSpots"_s).size(), 3);
}

TEST(OpenDatabase, AnExistingFileIsNotReplaced) {
  const SpotScratch s;
  EXPECT_TRUE(ErrorOf([&] { dao::CreateDatabase(s.Path()); }).contains(u"bestaat al"_s));
  EXPECT_EQ(Rows(s.Open(), u"SELECT ID FROM tblSpots"_s).size(), 3);
}

TEST(OpenDatabase, NewFileInAMissingFolderIsAnError) {
  const Scratch s;
  const QString path = s.Path(u"nergens/x.mdb"_s);
  EXPECT_TRUE(ErrorOf([&] { dao::CreateDatabase(path); }).contains(path));
}

TEST(OpenDatabase, BackslashesAndLetterCaseFindTheFile) {
  const SpotScratch s;
  const QString text = s.Path(u"PLANNING.MDB"_s).replace(u'/', u'\\');
  EXPECT_EQ(Rows(dao::OpenDatabase(u"Z:"_s + text), u"SELECT ID FROM tblSpots"_s).size(), 3);
}

}  // namespace

// SPDX-License-Identifier: MIT
#include "data/ProgramLock.h"
#include "tests/support/HeldDatabase.h"
#include "tests/tools/RunTool.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <string>

using namespace Qt::StringLiterals;

namespace {

// A station whose copy tables and log hold one row each; compacting has made a backup of it.
class Restore : public testing::Test {
 protected:
  Restore() {
    RunTool({u"create"_s, folder_.path()});
    Sql(u"INSERT INTO tblCopie_Items (ID, Naam) VALUES (1, \"was\")"_s);
    Sql(u"INSERT INTO tblCopie_ItemSpots (ID, Naam) VALUES (1, \"was\")"_s);
    Sql(u"INSERT INTO tblOfflineLog (ID, SqlSyntax) VALUES (1, \"was\")"_s);
    EXPECT_EQ(RunTool({u"compact"_s, Local()}).exitCode, kDone);
  }
  QString Local() const { return folder_.filePath(u"data/OvalistoLocal.mdb"_s); }
  QStringList Backups() const {
    return QDir(folder_.filePath(u"data/backup"_s)).entryList({u"OvalistoLocal-*.mdb"_s}, QDir::Files, QDir::Name);
  }
  QString Backup() const { return folder_.filePath(u"data/backup/"_s + Backups().first()); }
  ToolRun Sql(const QString& statement) const { return RunTool({u"sql"_s, Local(), statement}); }
  std::string Naam(const QString& table) const { return Sql(u"SELECT Naam FROM "_s + table).out; }

  QTemporaryDir folder_;
};

TEST_F(Restore, CompactMakesABackupFirst) {
  ASSERT_EQ(Backups().size(), 1);
  EXPECT_EQ(RunTool({u"check"_s, Backup()}).out, "ok\n");
  EXPECT_NE(RunTool({u"tables"_s, Backup()}).out.find("tblCopie_Items\t1"), std::string::npos);
}

TEST_F(Restore, CompactMakesNoBackupWhereTheSettingsTurnThemOff) {
  QFile settings(folder_.filePath(u"ovalis.ini"_s));
  ASSERT_TRUE(settings.open(QIODevice::Append));
  settings.write("\r\n[Backup]\r\nEnabled=0\r\n");
  settings.close();
  Sql(u"DELETE FROM tblCopie_Items"_s);
  EXPECT_EQ(RunTool({u"compact"_s, Local()}).exitCode, kDone);
  EXPECT_EQ(Backups().size(), 1);
}

TEST_F(Restore, ChosenTablesAreRestoredAndOthersAreUnchanged) {
  Sql(u"DELETE FROM tblCopie_Items"_s);
  Sql(u"UPDATE tblCopie_ItemSpots SET Naam = \"later\""_s);
  const ToolRun run = RunTool({u"restore"_s, Backup(), Local(), u"tblCopie_Items"_s});
  ASSERT_EQ(run.exitCode, kDone) << run.err;
  EXPECT_EQ(run.out, "1\n");
  EXPECT_EQ(Naam(u"tblCopie_Items"_s), "Naam\r\nwas\r\n");
  EXPECT_EQ(Naam(u"tblCopie_ItemSpots"_s), "Naam\r\nlater\r\n");
  EXPECT_EQ(Backups().size(), 2);  // the previous rows are kept too
}

// The copy that is made first lets older ones expire, but never the one that is restored.
TEST_F(Restore, EveryCopyCanBeRestored) {
  for (int id = 2; id <= 8; ++id) {
    Sql(u"UPDATE tblCopie_Items SET ID = %1"_s.arg(id));
    EXPECT_EQ(RunTool({u"compact"_s, Local()}).exitCode, kDone);
  }
  const QStringList before = Backups();
  ASSERT_GE(before.size(), 3);
  for (const QString& name : before) {
    Sql(u"UPDATE tblCopie_Items SET Naam = \"before %1\""_s.arg(name));
    const QString backup = folder_.filePath(u"data/backup/"_s + name);
    if (!QFile::exists(backup)) continue;  // expired meanwhile
    const ToolRun run = RunTool({u"restore"_s, backup, Local(), u"tblCopie_Items"_s});
    EXPECT_EQ(run.exitCode, kDone) << run.err;
    EXPECT_TRUE(QFile::exists(backup)) << name.toStdString();
  }
}

TEST_F(Restore, TheOfflineLogIsNeverRestored) {
  Sql(u"UPDATE tblOfflineLog SET SqlSyntax = \"later\""_s);
  Sql(u"DELETE FROM tblCopie_Items"_s);
  const ToolRun run = RunTool({u"restore"_s, Backup(), Local(), u"tblCopie_Items"_s, u"TBLOFFLINELOG"_s});
  EXPECT_EQ(run.exitCode, kFailed);
  EXPECT_NE(run.err.find("tblOfflineLog"), std::string::npos);
  EXPECT_NE(Sql(u"SELECT SqlSyntax FROM tblOfflineLog"_s).out.find("later"), std::string::npos);
  EXPECT_EQ(Naam(u"tblCopie_Items"_s), "Naam\r\n");
}

TEST_F(Restore, WhileThePlannerRunsTablesAndLogAreUnchanged) {
  const ProgramLock running(folder_.filePath(u"data"_s));
  EXPECT_EQ(RunTool({u"restore"_s, Backup(), Local(), u"tblCopie_Items"_s}).exitCode, kFailed);
  const ToolRun run = Sql(u"DELETE FROM tblOfflineLog"_s);
  EXPECT_EQ(run.exitCode, kFailed);
  EXPECT_NE(run.err.find("draait al"), std::string::npos);
  EXPECT_EQ(Sql(u"UPDATE tblCopie_Items SET Naam = \"x\""_s).exitCode, kDone);
}

TEST_F(Restore, TheOfflineLogIsRefusedUnderEverySpellingOfItsName) {
  Sql(u"UPDATE tblOfflineLog SET SqlSyntax = \"later\""_s);
  for (const QString& name : {u"tblOfflineLog "_s, u"tblOfflineLog   "_s, u"TblOfflinelog "_s}) {
    const ToolRun run = RunTool({u"restore"_s, Backup(), Local(), name});
    EXPECT_EQ(run.exitCode, kFailed) << name.toStdString();
    EXPECT_NE(run.err.find("tblOfflineLog"), std::string::npos) << run.err;
    EXPECT_NE(Sql(u"SELECT SqlSyntax FROM tblOfflineLog"_s).out.find("later"), std::string::npos);
  }
}

TEST_F(Restore, WhileThePlannerRunsOtherNamesOfTheDatabaseAreRefusedToo) {
  const ProgramLock running(folder_.filePath(u"data"_s));
  const QString link = folder_.filePath(u"anders.mdb"_s);
  ASSERT_TRUE(QFile::link(Local(), link));
  const QString server = folder_.filePath(u"server/OvalistoServer.mdb"_s);
  const QString intoAll = u"INSERT INTO tblOfflineLog IN \"%1\" SELECT * FROM tblItems"_s;
  const QList<QStringList> commands{{u"restore"_s, Backup(), link, u"tblCopie_Items"_s},
                                    {u"sql"_s, link, u"DELETE FROM tblOfflineLog"_s},
                                    {u"sql"_s, server, intoAll.arg(Local())},
                                    {u"sql"_s, server, intoAll.arg(link)},
                                    {u"sql"_s, Local(), u"DELETE FROM [tblOfflineLog ]"_s}};
  for (const QStringList& words : commands) {
    const ToolRun run = RunTool(words);
    EXPECT_EQ(run.exitCode, kFailed) << words.last().toStdString();
    EXPECT_NE(run.err.find("draait al"), std::string::npos) << words.last().toStdString() << run.err;
  }
  EXPECT_NE(Sql(u"SELECT SqlSyntax FROM tblOfflineLog"_s).out.find("was"), std::string::npos);
}

TEST_F(Restore, NothingIsRestoredOrCompactedWithoutABackupExceptByOption) {
  Sql(u"UPDATE tblCopie_Items SET Naam = \"later\""_s);
  const auto blockBackups = [&] {
    EXPECT_TRUE(QDir(folder_.filePath(u"data/backup"_s))
                    .rename(folder_.filePath(u"data/backup"_s), folder_.filePath(u"data/oud"_s)));
    QFile inTheWay(folder_.filePath(u"data/backup"_s));
    EXPECT_TRUE(inTheWay.open(QIODevice::WriteOnly));
  };
  const QString backup = Backup();
  const QString moved = QString(backup).replace(u"/backup/"_s, u"/oud/"_s);
  {
    const testing_support::HeldDatabase held(Local());
    for (const QStringList& words :
         {QStringList{u"restore"_s, backup, Local(), u"tblCopie_Items"_s}, QStringList{u"compact"_s, Local()}}) {
      const ToolRun run = RunTool(words);
      EXPECT_EQ(run.exitCode, kFailed);
      EXPECT_NE(run.err.find("--zonder-reservekopie"), std::string::npos) << run.err;
      EXPECT_NE(run.err.find("reservekopie"), std::string::npos) << run.err;
    }
  }
  EXPECT_EQ(Naam(u"tblCopie_Items"_s), "Naam\r\nlater\r\n");
  blockBackups();
  for (const QStringList& words :
       {QStringList{u"restore"_s, moved, Local(), u"tblCopie_Items"_s}, QStringList{u"compact"_s, Local()}}) {
    EXPECT_EQ(RunTool(words).exitCode, kFailed) << words.first().toStdString();
    EXPECT_EQ(Naam(u"tblCopie_Items"_s), "Naam\r\nlater\r\n");
  }
  for (const QStringList& words :
       {QStringList{u"compact"_s, Local()}, QStringList{u"restore"_s, moved, Local(), u"tblCopie_Items"_s}}) {
    const ToolRun run = RunTool(words + QStringList{u"--zonder-reservekopie"_s});
    EXPECT_EQ(run.exitCode, kDone) << run.err;
  }
  EXPECT_EQ(Naam(u"tblCopie_Items"_s), "Naam\r\nwas\r\n");
}

TEST_F(Restore, TablesOfTheSharedDatabaseComeFromALocalCopy) {
  const QString server = folder_.filePath(u"server/OvalistoServer.mdb"_s);
  RunTool({u"sql"_s, server, u"INSERT INTO tblItems (ID, Naam) VALUES (7, \"later\")"_s});
  const ToolRun run = RunTool({u"restore"_s, Backup(), server, u"tblItems"_s, u"TBLITEMSPOTS"_s});
  ASSERT_EQ(run.exitCode, kDone) << run.err;
  EXPECT_EQ(run.out, "2\n");
  EXPECT_EQ(RunTool({u"sql"_s, server, u"SELECT ID, Naam FROM tblItems"_s}).out, "ID,Naam\r\n1,was\r\n");
  // The previous rows are in a copy next to the shared database.
  EXPECT_EQ(QDir(folder_.filePath(u"server/backup"_s)).entryList(QDir::Files).size(), 1);
}

TEST_F(Restore, CopyTablesComeFromABackupOfTheSharedDatabase) {
  const QString server = folder_.filePath(u"server/OvalistoServer.mdb"_s);
  RunTool({u"sql"_s, server, u"INSERT INTO tblItems (ID, Naam) VALUES (7, \"gedeeld\")"_s});
  ASSERT_EQ(RunTool({u"restore"_s, server, Local(), u"tblCopie_Items"_s}).exitCode, kDone);
  EXPECT_EQ(Naam(u"tblCopie_Items"_s), "Naam\r\ngedeeld\r\n");
  const ToolRun run = RunTool({u"restore"_s, server, Local(), u"cdeLicenties"_s});
  EXPECT_EQ(run.exitCode, kFailed);
  EXPECT_NE(run.err.find("cdeLicenties"), std::string::npos) << run.err;
}

TEST_F(Restore, WithoutATableItPrintsItsUsage) {
  EXPECT_EQ(RunTool({u"restore"_s, Backup(), Local()}).exitCode, kWrongUse);
}

}  // namespace

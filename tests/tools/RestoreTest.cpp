#include "data/ProgramLock.h"
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

TEST_F(Restore, CompactKeepsNoneWhereTheSettingsTurnThemOff) {
  QFile settings(folder_.filePath(u"ovalis.ini"_s));
  ASSERT_TRUE(settings.open(QIODevice::Append));
  settings.write("\r\n[Backup]\r\nEnabled=0\r\n");
  settings.close();
  Sql(u"DELETE FROM tblCopie_Items"_s);
  EXPECT_EQ(RunTool({u"compact"_s, Local()}).exitCode, kDone);
  EXPECT_EQ(Backups().size(), 1);
}

TEST_F(Restore, ChosenTablesComeBackAndOthersStayAsTheyAre) {
  Sql(u"DELETE FROM tblCopie_Items"_s);
  Sql(u"UPDATE tblCopie_ItemSpots SET Naam = \"later\""_s);
  const ToolRun run = RunTool({u"restore"_s, Backup(), Local(), u"tblCopie_Items"_s});
  ASSERT_EQ(run.exitCode, kDone) << run.err;
  EXPECT_EQ(run.out, "1\n");
  EXPECT_EQ(Naam(u"tblCopie_Items"_s), "Naam\r\nwas\r\n");
  EXPECT_EQ(Naam(u"tblCopie_ItemSpots"_s), "Naam\r\nlater\r\n");
  EXPECT_EQ(Backups().size(), 2);  // what stood there before is kept too
}

TEST_F(Restore, TheOfflineLogIsNeverTaken) {
  Sql(u"UPDATE tblOfflineLog SET SqlSyntax = \"later\""_s);
  Sql(u"DELETE FROM tblCopie_Items"_s);
  const ToolRun run = RunTool({u"restore"_s, Backup(), Local(), u"tblCopie_Items"_s, u"TBLOFFLINELOG"_s});
  EXPECT_EQ(run.exitCode, kFailed);
  EXPECT_NE(run.err.find("tblOfflineLog"), std::string::npos);
  EXPECT_NE(Sql(u"SELECT SqlSyntax FROM tblOfflineLog"_s).out.find("later"), std::string::npos);
  EXPECT_EQ(Naam(u"tblCopie_Items"_s), "Naam\r\n");
}

TEST_F(Restore, WhileTheProgramRunsNeitherTablesNorLogAreTouched) {
  const ProgramLock running(folder_.filePath(u"data"_s));
  EXPECT_EQ(RunTool({u"restore"_s, Backup(), Local(), u"tblCopie_Items"_s}).exitCode, kFailed);
  const ToolRun run = Sql(u"DELETE FROM tblOfflineLog"_s);
  EXPECT_EQ(run.exitCode, kFailed);
  EXPECT_NE(run.err.find("draait al"), std::string::npos);
  EXPECT_EQ(Sql(u"UPDATE tblCopie_Items SET Naam = \"x\""_s).exitCode, kDone);
}

TEST_F(Restore, WithoutATableItTellsHowItIsUsed) {
  EXPECT_EQ(RunTool({u"restore"_s, Backup(), Local()}).exitCode, kWrongUse);
}

}  // namespace

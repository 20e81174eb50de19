// SPDX-License-Identifier: MIT
// Commands that are killed at each of their file calls: their files stay good, and the same command succeeds when it is
// run again. The real program runs under strace, which kills it at the start of a call.
#include "tests/tools/CommandKills.h"
#include "tests/tools/StationProgram.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

#include <string>

using namespace Qt::StringLiterals;
using command_kills::KillAtEachCall;
using testing_support::Station;

namespace {

QString Local(const QString& folder) {
  return folder + u"/data/OvalistoLocal.mdb"_s;
}

std::string Sql(const QString& folder, const QString& statement) {
  return RunTool({u"sql"_s, Local(folder), statement}).out;
}

std::string Checked(const QString& database) {
  return RunTool({u"check"_s, database}).out;
}

QStringList Backups(const QString& folder) {
  return QDir(folder + u"/data/backup"_s).entryList({u"OvalistoLocal-*.mdb"_s}, QDir::Files, QDir::Name);
}

void ExpectNoJournal(const QString& folder) {
  EXPECT_EQ(QDir(folder).entryList({u"*-journal"_s}, QDir::Files | QDir::Hidden), QStringList());
}

class CommandKills : public testing::Test {
 protected:
  void SetUp() override {
    if (!command_kills::HasStrace()) GTEST_SKIP() << "strace is not installed";
  }
};

}  // namespace

TEST_F(CommandKills, CompactLeavesTheDatabaseGood) {
  const QTemporaryDir station;
  RunTool({u"create"_s, station.path()});
  Sql(station.path(), u"INSERT INTO tblOfflineLog (ID, SqlSyntax) VALUES (1, \"%1\")"_s.arg(QString(3000, u'x')));
  const QString all = u"SELECT * FROM tblOfflineLog"_s;
  const std::string rows = Sql(station.path(), all);
  KillAtEachCall({.name = "compact",
                  .folder = station.path(),
                  .words =
                      [](const QString& folder) {
                        return QStringList{u"compact"_s, Local(folder)};
                      },
                  .afterKill =
                      [&](const QString& folder) {
                        EXPECT_EQ(Checked(Local(folder)), "ok\n");
                        EXPECT_EQ(Sql(folder, all), rows);
                      },
                  .afterNext =
                      [&](const QString& folder, const ToolRun& next) {
                        EXPECT_EQ(next.exitCode, kDone) << next.err;
                        EXPECT_EQ(Checked(Local(folder)), "ok\n");
                        EXPECT_EQ(Sql(folder, all), rows);
                        ExpectNoJournal(folder + u"/data"_s);
                      }});
}

TEST_F(CommandKills, RestoreLeavesTheOldOrTheNewRows) {
  const QTemporaryDir station;
  const QString naam = u"SELECT Naam FROM tblCopie_Items"_s;
  RunTool({u"create"_s, station.path()});
  Sql(station.path(), u"INSERT INTO tblCopie_Items (ID, Naam) VALUES (1, \"was\")"_s);
  ASSERT_EQ(RunTool({u"compact"_s, Local(station.path())}).exitCode, kDone);  // makes a backup
  Sql(station.path(), u"UPDATE tblCopie_Items SET Naam = \"later\""_s);
  ASSERT_EQ(Backups(station.path()).size(), 1);
  const QString backup = u"/data/backup/"_s + Backups(station.path()).first();
  const auto words = [&](const QString& folder) {
    return QStringList{u"restore"_s, folder + backup, Local(folder), u"tblCopie_Items"_s};
  };
  KillAtEachCall({.name = "restore",
                  .folder = station.path(),
                  .words = words,
                  .afterKill =
                      [&](const QString& folder) {
                        EXPECT_EQ(Checked(Local(folder)), "ok\n");
                        const std::string rows = Sql(folder, naam);
                        EXPECT_TRUE(rows == "Naam\r\nwas\r\n" || rows == "Naam\r\nlater\r\n") << rows;
                        for (const QString& copy : Backups(folder))
                          EXPECT_EQ(Checked(folder + u"/data/backup/"_s + copy), "ok\n") << copy.toStdString();
                      },
                  .afterNext =
                      [&](const QString& folder, const ToolRun& next) {
                        EXPECT_EQ(next.exitCode, kDone) << next.err;
                        EXPECT_EQ(Checked(Local(folder)), "ok\n");
                        EXPECT_EQ(Sql(folder, naam), "Naam\r\nwas\r\n");
                        ExpectNoJournal(folder + u"/data"_s);
                      }});
}

TEST_F(CommandKills, ExportLosesNoStatementAndWritesNoneTwice) {
  const StationProgram station(Station::Mode::Offline);
  QByteArray statements;
  for (int id = 1; id <= 5; ++id) {
    station.Rows().OnLocal(u"INSERT INTO tblOfflineLog (ID, SqlSyntax) VALUES (%1, \"UPDATE a SET b = %1\")"_s.arg(id));
    statements += "UPDATE a SET b = " + QByteArray::number(id) + ";\r\n";
  }
  KillAtEachCall({.name = "export",
                  .folder = station.Folder(),
                  .words =
                      [](const QString& folder) {
                        return QStringList{u"export"_s, folder, u"--vorige-verwerkt"_s};
                      },
                  .afterKill = [](const QString& folder) { EXPECT_EQ(Checked(Local(folder)), "ok\n"); },
                  .afterNext =
                      [&](const QString& folder, const ToolRun& next) {
                        EXPECT_EQ(next.exitCode, kDone) << next.err;
                        QByteArray exported;
                        const QDir exports(folder + u"/export"_s);
                        for (const QString& name : exports.entryList({u"*.tql"_s}, QDir::Files, QDir::Name)) {
                          QFile file(exports.filePath(name));
                          EXPECT_TRUE(file.open(QIODevice::ReadOnly));
                          exported += file.readAll();
                        }
                        EXPECT_EQ(exported, statements);
                        EXPECT_EQ(Sql(folder, u"SELECT ID FROM tblOfflineLog"_s), "ID\r\n");
                      }});
}

// SPDX-License-Identifier: MIT
// Commands that are killed at each of their file calls: their files stay good, and the same command succeeds when it is
// run again. The real program runs under strace, which kills it at the start of a call.
#include "tests/tools/CommandKills.h"
#include "tests/tools/StationProgram.h"

#include <QDir>
#include <QDirIterator>
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

// No journal and no temporary file remains in the folder and those below it.
void ExpectNothingLeftOver(const QString& folder) {
  QDirIterator files(folder, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
  while (files.hasNext()) {
    const QString path = files.next();
    EXPECT_FALSE(path.endsWith(u"-journal") || path.endsWith(u".spotrooster-tmp")) << path.toStdString();
  }
}

// A killed or completed create: no database is there that is not good.
void ExpectGoodDatabases(const QString& folder) {
  QDirIterator files(folder, {u"*.mdb"_s}, QDir::Files, QDirIterator::Subdirectories);
  while (files.hasNext()) {
    const QString path = files.next();
    EXPECT_EQ(Checked(path), "ok\n") << path.toStdString();
    EXPECT_NE(RunTool({u"tables"_s, path}).exitCode, kFailed);
  }
}

// Kills `create` of that station in a copy of the folder.
void KillCreate(const QString& folder, const QString& station) {
  const QString number = station == u"0"_s ? QString() : station;
  const auto words = [&](const QString& copy) {
    return QStringList{u"create"_s, copy, u"--station"_s, station, u"--name"_s, u"Radio Proef"_s};
  };
  KillAtEachCall(
      {.name = "create",
       .folder = folder,
       .words = words,
       .afterKill = ExpectGoodDatabases,
       .afterNext = [&](const QString& copy, const ToolRun& next) {
         // Killed when all was done: nothing is left to create.
         const bool wasComplete = next.err.find("is er al") != std::string::npos;
         EXPECT_TRUE(next.exitCode == kDone || wasComplete) << next.err;
         ExpectGoodDatabases(copy);
         const QString local = copy + u"/data/OvalistoLocal%1.mdb"_s.arg(number);
         const QString licence = u"SELECT RadioNaam FROM cdeLicenties WHERE LicentieNummer = "_s + station;
         for (const QString& database : {Local(copy), local})
           EXPECT_EQ(RunTool({u"sql"_s, database, licence}).out, "RadioNaam\r\nRadio Proef\r\n");
         EXPECT_NE(RunTool({u"tables"_s, local}).out.find("appMessages\t13"), std::string::npos);
         EXPECT_NE(
             RunTool({u"tables"_s, copy + u"/server/OvalistoServer%1.mdb"_s.arg(number)}).out.find("tblItemsItemSpots"),
             std::string::npos);
         EXPECT_TRUE(QFile::exists(copy + u"/data/work.mdb"));
         ExpectNothingLeftOver(copy);
         EXPECT_EQ(RunTool(words(copy)).exitCode, kFailed);
       }});
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
                        ExpectNothingLeftOver(folder);
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
                        ExpectNothingLeftOver(folder);
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
                        ExpectNothingLeftOver(folder);
                      }});
}

TEST_F(CommandKills, CreateLeavesWholeDatabasesAndTheNextCompletesTheStation) {
  const QTemporaryDir empty;
  KillCreate(empty.path(), u"0"_s);
}

TEST_F(CommandKills, CreateOfASecondStationLeavesWholeDatabases) {
  const QTemporaryDir first;
  ASSERT_EQ(RunTool({u"create"_s, first.path()}).exitCode, kDone);
  KillCreate(first.path(), u"3"_s);
}

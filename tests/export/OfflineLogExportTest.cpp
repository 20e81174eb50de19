// SPDX-License-Identifier: MIT
// An export that fails or is killed at any step: each statement remains in the log or is in one complete file.
#include "export/OfflineLogExport.h"

#include "data/Globals.h"
#include "export/ExportRecord.h"
#include "export/InterruptedExport.h"
#include "platform/runtime/Clock.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/HostPath.h"
#include "platform/runtime/Probe.h"
#include "platform/runtime/TextFile.h"
#include "tests/export/ExportWindow.h"
#include "tests/export/LogWitness.h"
#include "tests/support/FileFaults.h"
#include "tests/support/Fork.h"
#include "tests/support/Station.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <filesystem>

using namespace Qt::StringLiterals;
using testing_support::Station;

namespace {

const QStringList kStatements = {u"DELETE FROM c"_s, u"UPDATE a SET b = 1"_s, u"UPDATE a SET b = 2"_s};

class ExportSteps : public testing::Test {
 protected:
  ExportSteps() {
    for (int row = 0; row < kStatements.size(); ++row)
      Log(row + 1, kStatements[row]);
  }

  void Log(int id, const QString& statement) {
    station_.OnLocal(
        u"INSERT INTO tblOfflineLog (ID, SqlSyntax) VALUES (%1, \"%2\")"_s.arg(QString::number(id), statement));
  }
  static void Export() {
    OfflineLogExport logExport(global.localDatabasePath);
    logExport.WriteFile(global.exportPath);
    logExport.EmptyLog();
  }
  static InterruptedExport Settle() { return SettleInterruptedExport(global.localDatabasePath).what; }
  // An export whose process is killed instead of its file call number `call`. False when the export finished.
  static bool ExportKilledAt(int call) {
    const pid_t child = testing_support::Fork();
    if (child == 0) {
      int calls = 0;
      const testing_support::FileFaults killer([&](const files::FileCall&) {
        if (calls++ == call) ::raise(SIGKILL);
        return 0;
      });
      Export();
      ::_exit(0);
    }
    const int status = testing_support::WaitFor(child);
    return WIFSIGNALED(status);
  }
  QStringList Files() const { return QDir(station_.ExportFolder()).entryList(QDir::Files | QDir::Hidden); }
  QString RecordFile() const { return runtime::HostPath(ExportRecordPath(global.localDatabasePath)); }
  // The statements in the log and in every file, in this order.
  QStringList Everywhere() const { return StatementsInFiles(station_.ExportFolder()) + station_.Log(); }

  Station station_;
  runtime::ClockScope clock_{export_window::kNow};
};

}  // namespace

TEST_F(ExportSteps, AnExportLeavesOnlyItsFile) {
  Export();
  EXPECT_EQ(Files(), (QStringList{u"20240131154507.tql"_s, u"20240131154507.tql.basis"_s}));
  EXPECT_EQ(StatementsInFiles(station_.ExportFolder()), kStatements);
  EXPECT_EQ(station_.Log(), QStringList());
  EXPECT_FALSE(QFile::exists(RecordFile()));
  EXPECT_EQ(Settle(), InterruptedExport::None);
}

TEST_F(ExportSteps, AFailureOfAnyStepLosesAndDuplicatesNothing) {
  int failing = 0;
  for (bool failed = true; failed; ++failing) {
    failed = false;
    int calls = 0;
    {
      const testing_support::FileFaults fault([&](const files::FileCall&) {
        if (calls++ != failing) return 0;
        failed = true;
        return EIO;
      });
      try {
        Export();
      } catch (const runtime::Error& error) {
        const QString& text = error.Description();
        // The last one is the folder of the database and its journal.
        EXPECT_TRUE(text.contains(u".tql"_s) || text.contains(u"-export"_s) || text.contains(u"/data'"_s) ||
                    text.contains(u"OvalistoLocal.mdb"_s))
            << text.toStdString();
      }
    }
    Settle();
    EXPECT_EQ(Everywhere(), kStatements) << "call " << failing;
    EXPECT_FALSE(QFile::exists(RecordFile())) << "call " << failing;
    EXPECT_TRUE(Files().filter(u"-tmp"_s).isEmpty()) << "call " << failing;
    for (const QString& name : Files())
      QFile::remove(station_.ExportFolder() + u'/' + name);
    station_.OnLocal(u"DELETE FROM tblOfflineLog"_s);
    for (int row = 0; row < kStatements.size(); ++row)
      Log(row + 1, kStatements[row]);
  }
  EXPECT_GT(failing, 10);
}

TEST_F(ExportSteps, AKillAtAnyStepLosesAndDuplicatesNothing) {
  QList<InterruptedExport> met;
  int call = 0;
  for (; ExportKilledAt(call); ++call) {
    // Nothing is logged in between: the program settles the export first when it starts.
    met += Settle();
    EXPECT_EQ(Everywhere(), kStatements) << "call " << call;
    EXPECT_FALSE(QFile::exists(RecordFile())) << "call " << call;
    Log(4, u"UPDATE after"_s);
    Export();
    EXPECT_EQ(Everywhere().count(u"UPDATE after"_s), 1);
    export_window::RemoveLeftovers(station_);
    for (const QString& name : Files())
      QFile::remove(station_.ExportFolder() + u'/' + name);
    for (int row = 0; row < kStatements.size(); ++row)
      Log(row + 1, kStatements[row]);
  }
  EXPECT_GT(call, 10);
  EXPECT_TRUE(met.contains(InterruptedExport::None));
  EXPECT_TRUE(met.contains(InterruptedExport::Dropped));
  EXPECT_TRUE(met.contains(InterruptedExport::Finished));
}

TEST_F(ExportSteps, AFileOfAnotherProgramKeepsItsNameAndItsStatements) {
  runtime::WriteFile(global.exportPath + u"\\20240131154507.tql"_s, "UPDATE other;\r\n");
  runtime::WriteFile(global.exportPath + u"\\20240131154508.tql"_s, "UPDATE another;\r\n");
  OfflineLogExport logExport(global.localDatabasePath);
  EXPECT_EQ(logExport.WriteFile(global.exportPath, OfflineLogExport::SameSecond::ReplaceOwn),
            global.exportPath + u"\\20240131154509.tql"_s);
  EXPECT_EQ(StatementsInFiles(station_.ExportFolder()),
            (QStringList{u"UPDATE other"_s, u"UPDATE another"_s} + kStatements));
}

// The name is free when it is checked, and exists just before the file is renamed.
TEST_F(ExportSteps, AFileThatAppearsAtTheLastMomentIsNotReplaced) {
  int left = 3;
  const testing_support::FileFaults other([&](const files::FileCall& call) {
    if (call.kind == files::FileCall::RenameNew && left > 0) {
      const QString name = u"/2024013115450%1.tql"_s.arg(10 - left--);
      QFile file(station_.ExportFolder() + name);
      EXPECT_TRUE(file.open(QIODevice::WriteOnly));
      file.write("UPDATE other;\r\n");
    }
    return 0;
  });
  OfflineLogExport logExport(global.localDatabasePath);
  EXPECT_EQ(logExport.WriteFile(global.exportPath), global.exportPath + u"\\20240131154510.tql"_s);
  logExport.EmptyLog();
  EXPECT_EQ(StatementsInFiles(station_.ExportFolder()).size(), 3 + kStatements.size());
  EXPECT_FALSE(QFile::exists(RecordFile()));
}

TEST_F(ExportSteps, AFileUnderBothNamesIsFinishedAndExportedOnce) {
  OfflineLogExport logExport(global.localDatabasePath);
  const QString path = logExport.WriteFile(global.exportPath);
  const auto record = ReadExportRecord(global.localDatabasePath);
  ASSERT_TRUE(record);
  std::filesystem::create_hard_link(runtime::HostPath(path).toStdString(),
                                    runtime::HostPath(record->temporary).toStdString());
  EXPECT_EQ(Settle(), InterruptedExport::Finished);
  EXPECT_EQ(Everywhere(), kStatements);
  EXPECT_TRUE(Files().filter(u"-tmp"_s).isEmpty());
}

namespace {

// An export that was killed directly after its file was renamed.
class FileWithoutEmptiedLog : public ExportSteps {
 protected:
  FileWithoutEmptiedLog() {
    OfflineLogExport logExport(global.localDatabasePath);
    path_ = logExport.WriteFile(global.exportPath);
  }
  QString path_;
};

}  // namespace

TEST_F(FileWithoutEmptiedLog, OnlyTheRowsInTheFileAreDeletedFromTheLog) {
  Log(4, u"UPDATE later"_s);
  const ExportSettlement settlement = SettleInterruptedExport(global.localDatabasePath);
  EXPECT_EQ(settlement.what, InterruptedExport::Finished);
  EXPECT_EQ(settlement.path, path_);
  EXPECT_EQ(station_.Log(), QStringList{u"UPDATE later"_s});
  EXPECT_EQ(Settle(), InterruptedExport::None);
}

TEST_F(FileWithoutEmptiedLog, AnUnreachableDriveChangesNothing) {
  {
    const runtime::ProbeLookScope away([](const QString& path) { return path.contains(u".tql"_s) ? EIO : 0; });
    EXPECT_EQ(Settle(), InterruptedExport::NotReachable);
  }
  EXPECT_EQ(station_.Log(), kStatements);
  EXPECT_EQ(Settle(), InterruptedExport::Finished);
}

TEST_F(FileWithoutEmptiedLog, AFolderWithoutPermissionChangesNothing) {
  {
    const runtime::ProbeLookScope closed([](const QString& path) { return path.contains(u".tql"_s) ? EACCES : 0; });
    EXPECT_EQ(Settle(), InterruptedExport::Denied);
    try {
      FinishInterruptedExport(global.localDatabasePath);
      FAIL() << "settled";
    } catch (const runtime::Error& error) {
      EXPECT_TRUE(error.Description().contains(u"de toegang tot de map wordt geweigerd"_s));
    }
  }
  EXPECT_EQ(station_.Log(), kStatements);
  EXPECT_EQ(Settle(), InterruptedExport::Finished);
}

TEST_F(FileWithoutEmptiedLog, AnInaccessibleRecordIsNotIgnored) {
  for (const int failure : {EACCES, EIO}) {
    const runtime::ProbeLookScope hindered(
        [failure](const QString& path) { return path.endsWith(u"-export"_s) ? failure : 0; });
    EXPECT_THROW(Settle(), runtime::Error);
  }
  EXPECT_EQ(station_.Log(), kStatements);
}

TEST_F(FileWithoutEmptiedLog, TheUserDecidesAboutAMissingFile) {
  ASSERT_TRUE(QFile::remove(runtime::HostPath(path_)));
  EXPECT_EQ(Settle(), InterruptedExport::Missing);
  EXPECT_EQ(station_.Log(), kStatements);
  SettleMissingFile(global.localDatabasePath, MissingFile::NotProcessed);
  EXPECT_EQ(station_.Log(), kStatements);
  EXPECT_EQ(Settle(), InterruptedExport::None);
}

TEST_F(FileWithoutEmptiedLog, AMissingProcessedFileEmptiesTheLog) {
  ASSERT_TRUE(QFile::remove(runtime::HostPath(path_)));
  SettleMissingFile(global.localDatabasePath, MissingFile::Processed);
  EXPECT_EQ(station_.Log(), QStringList());
  EXPECT_EQ(Settle(), InterruptedExport::None);
}

TEST_F(FileWithoutEmptiedLog, AnotherFileWithThatNameDoesNotCount) {
  runtime::WriteFile(path_, "DELETE FROM other;\r\n");
  EXPECT_EQ(Settle(), InterruptedExport::Missing);
  EXPECT_EQ(station_.Log(), kStatements);
}

TEST_F(FileWithoutEmptiedLog, ARecordWithoutItsLogDeletesNoNewStatement) {
  station_.OnLocal(u"DELETE FROM tblOfflineLog"_s);
  Log(1, u"UPDATE new"_s);
  EXPECT_EQ(Settle(), InterruptedExport::None);
  EXPECT_EQ(station_.Log(), QStringList{u"UPDATE new"_s});
  EXPECT_FALSE(QFile::exists(RecordFile()));
}

TEST_F(FileWithoutEmptiedLog, AnUnreadableRecordIsNamedAndChangesNothing) {
  runtime::WriteFile(ExportRecordPath(global.localDatabasePath), "half");
  try {
    Settle();
    FAIL() << "accepted";
  } catch (const runtime::Error& error) {
    EXPECT_TRUE(error.Description().contains(u"OvalistoLocal.mdb-export"_s));
  }
  EXPECT_EQ(station_.Log(), kStatements);
}

namespace {

// A record next to the database that no export of this program made.
class ForgedRecord : public ExportSteps {
 protected:
  // Settling the record is refused with its name, and the file is kept.
  void ExpectRefused(const QString& path, const QString& temporary) {
    const QString victim = runtime::HostPath(temporary);
    ASSERT_TRUE(QDir().mkpath(QFileInfo(victim).path()));
    runtime::WriteFile(temporary, "of the user");
    ExportContent log;
    log.AddLog(global.localDatabasePath);
    WriteExportRecord(global.localDatabasePath, {path, temporary, log.HighestID(), log.Finish(), {}, {}});
    try {
      Settle();
      ADD_FAILURE() << "accepted " << temporary.toStdString();
    } catch (const runtime::Error& error) {
      EXPECT_TRUE(error.Description().contains(u"OvalistoLocal.mdb-export"_s)) << error.Description().toStdString();
    }
    EXPECT_TRUE(QFile::exists(victim)) << temporary.toStdString();
    EXPECT_EQ(station_.Log(), kStatements);
  }
  // Likewise of a record that names `basisTemporary` as the unfinished basis.
  void ExpectRefusedBasis(const QString& basisTemporary) {
    const QString victim = runtime::HostPath(basisTemporary);
    ASSERT_TRUE(QDir().mkpath(QFileInfo(victim).path()));
    runtime::WriteFile(basisTemporary, "of the user");
    ExportContent log;
    log.AddLog(global.localDatabasePath);
    WriteExportRecord(global.localDatabasePath,
                      {InExports(u"20240131154507.tql"_s), InExports(u"20240131154507.tql.0123abcd.tmp"_s),
                       log.HighestID(), log.Finish(), basisTemporary, "00"});
    EXPECT_THROW(Settle(), runtime::Error) << basisTemporary.toStdString();
    EXPECT_TRUE(QFile::exists(victim)) << basisTemporary.toStdString();
  }
  static QString InExports(const QString& name) { return global.exportPath + u'\\' + name; }
};

}  // namespace

TEST_F(ForgedRecord, RemovesNoFileThatIsNotCalledAsAnUnfinishedBasis) {
  const QString name = u".20240131154507.tql.basis.0123456789abcdef.spotrooster-tmp"_s;
  ExpectRefusedBasis(global.programFolder + u"\\audio\\"_s + name);
  ExpectRefusedBasis(InExports(u"..\\audio\\"_s + name));
  ExpectRefusedBasis(InExports(u"Audio.tae"_s));
  ExpectRefusedBasis(InExports(u"20240131154507.tql.basis"_s));
}

TEST_F(ForgedRecord, RemovesNoFileOfAnotherFolder) {
  const QString path = InExports(u"20240131154507.tql"_s);
  const QString elsewhere = global.programFolder + u"\\audio\\"_s;
  ExpectRefused(path, elsewhere + u"spot.wav"_s);
  ExpectRefused(path, elsewhere + u"20240131154507.tql.0123abcd.tmp"_s);
  ExpectRefused(path, InExports(u"..\\audio\\20240131154507.tql.0123abcd.tmp"_s));
  ExpectRefused(elsewhere + u"20240131154507.tql"_s, elsewhere + u"20240131154507.tql.0123abcd.tmp"_s);
}

TEST_F(ForgedRecord, RemovesNoFileWithAnotherName) {
  const QString path = InExports(u"20240131154507.tql"_s);
  for (const QString& name : {u"Audio.tae"_s, u"20240131154507.tql"_s, u"20240131154507.tql.tmp"_s,
                              u"20240131154507.tql.0123abcd.tmp.bak"_s, u"x20240131154507.tql.0123abcd.tmp"_s})
    ExpectRefused(path, InExports(name));
  ExpectRefused(InExports(u"brief.txt"_s), InExports(u"20240131154507.tql.0123abcd.tmp"_s));
}

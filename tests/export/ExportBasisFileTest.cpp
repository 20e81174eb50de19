// SPDX-License-Identifier: MIT
// The basis beside each export: the rows that its statements changed, in the same protected steps as the export.
#include "data/ExportBasis.h"
#include "data/Globals.h"
#include "data/OfflineBasis.h"
#include "data/Writes.h"
#include "export/ContentDigest.h"
#include "export/ExportRecord.h"
#include "export/InterruptedExport.h"
#include "export/OfflineLogExport.h"
#include "platform/dao/Storage.h"
#include "platform/runtime/Clock.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/HostPath.h"
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

using namespace Qt::StringLiterals;
using testing_support::Station;

namespace {

class BasisOfExport : public testing::Test {
 protected:
  BasisOfExport() {
    station_.OnLocal(u"INSERT INTO tblCopie_ItemSpots (ID, Naam, Aktief) VALUES (4, \"Jan's \u0416\", 1)"_s);
    Change();
  }

  static void Change() {
    Update_tblItemSpots_Aktief(4, 0, global.localDatabasePath, u"tblCopie_ItemSpots"_s);
    Update_tblItemSpots_Aktief(4, 1, global.localDatabasePath, u"tblCopie_ItemSpots"_s);
  }
  static QString Export() {
    OfflineLogExport logExport(global.localDatabasePath);
    QString path = logExport.WriteFile(global.exportPath, OfflineLogExport::SameSecond::ReplaceOwn);
    logExport.EmptyLog();
    return path;
  }
  QStringList Files() const { return QDir(station_.ExportFolder()).entryList(QDir::Files | QDir::Hidden); }
  int KeptCount() const { return station_.LocalRows(u"SELECT ID FROM tblOfflineBasis"_s).RecordCount(); }
  // Each export has its own basis, and no other file is there.
  void CheckFolder() const {
    const QDir folder(station_.ExportFolder());
    QStringList expected;
    for (const QString& name : folder.entryList({u"*.tql"_s}, QDir::Files)) {
      expected << name << name + u".basis"_s;
      const QByteArray content = runtime::ReadFile(global.exportPath + u'\\' + name);
      const basis::File file = basis::Read(basis::PathOf(global.exportPath + u'\\' + name));
      EXPECT_EQ(file.header.digest, ContentDigest::Of(content));
      EXPECT_EQ(file.header.bytes, content.size());
      EXPECT_EQ(static_cast<qsizetype>(file.entries.size()), content.count(";\r\n"));
    }
    EXPECT_EQ(folder.entryList(QDir::Files), expected);
  }
  void CleanUp() const {
    for (const QString& name : Files())
      QFile::remove(station_.ExportFolder() + u'/' + name);
    export_window::RemoveLeftovers(station_);
    station_.OnLocal(u"DELETE FROM tblOfflineLog"_s);
    station_.OnLocal(u"DELETE FROM tblOfflineBasis"_s);
  }

  Station station_{Station::Mode::Offline};
  runtime::ClockScope clock_{export_window::kNow};
};

}  // namespace

TEST_F(BasisOfExport, HoldsTheRowsOfEachStatementAndTheyLeaveTheDatabase) {
  const QString path = Export();
  const basis::File file = basis::Read(basis::PathOf(path));
  ASSERT_EQ(file.entries.size(), 2u);
  ASSERT_TRUE(file.entries[0] && file.entries[1]);
  EXPECT_EQ(file.entries[0]->table, u"tblItemSpots"_s);
  EXPECT_EQ(file.entries[0]->key, 4);
  ASSERT_EQ(file.entries[0]->before.size(), 1);
  EXPECT_EQ(file.entries[0]->before[0][2], dao::Value(u"Jan's \u0416"_s.toStdU16String()));
  EXPECT_EQ(file.entries[0]->before, file.entries[1]->after);
  EXPECT_EQ(file.entries[0]->after, file.entries[1]->before);
  EXPECT_NE(file.entries[0]->before, file.entries[0]->after);
  EXPECT_FALSE(file.header.exportID.isEmpty());
  // The real folder: every user's program folder may be the same drive.
  EXPECT_TRUE(file.header.source.endsWith(u' ' + QFileInfo(station_.Folder()).canonicalFilePath()));
  CheckFolder();
  EXPECT_EQ(KeptCount(), 0);
}

TEST_F(BasisOfExport, EveryExportHasItsOwnNumber) {
  const QString first = basis::Read(basis::PathOf(Export())).header.exportID;
  Change();
  const runtime::ClockScope later(export_window::kNow.addSecs(1));
  EXPECT_NE(basis::Read(basis::PathOf(Export())).header.exportID, first);
}

// As an earlier version of the program logged it, between two statements of this one; and a row without a statement.
TEST_F(BasisOfExport, AStatementWithoutItsRowsIsUnknown) {
  station_.OnLocal(u"INSERT INTO tblOfflineLog (ID, SqlSyntax) VALUES (3, \"UPDATE oud\")"_s);
  station_.OnLocal(u"INSERT INTO tblOfflineLog (ID, SqlSyntax) VALUES (4, \"  \")"_s);
  Change();
  const basis::File file = basis::Read(basis::PathOf(Export()));
  ASSERT_EQ(file.entries.size(), 5u);
  EXPECT_TRUE(file.entries[1]);
  EXPECT_FALSE(file.entries[2]);
  EXPECT_TRUE(file.entries[3]);
  CheckFolder();
}

TEST_F(BasisOfExport, ALogOfAnEarlierVersionHasABasisThatKnowsNoRows) {
  const Station old(Station::Mode::Offline);
  old.OnLocal(u"INSERT INTO tblOfflineLog (ID, SqlSyntax) VALUES (1, \"UPDATE oud\")"_s);
  old.OnLocal(u"INSERT INTO tblOfflineLog (ID, SqlSyntax) VALUES (2, \"  \")"_s);
  old.OnLocal(u"INSERT INTO tblOfflineLog (ID, SqlSyntax) VALUES (3, \"UPDATE ouder\")"_s);
  const basis::File file = basis::Read(basis::PathOf(Export()));
  ASSERT_EQ(file.entries.size(), 2u);
  EXPECT_FALSE(file.entries[0]);
  EXPECT_FALSE(file.entries[1]);
  EXPECT_FALSE(file.header.exportID.isEmpty());
}

// More lines than are written at once.
TEST_F(BasisOfExport, ALongLogOfAnEarlierVersionHasALineForEachStatement) {
  const Station old(Station::Mode::Offline);
  const auto storage = dao::OpenStorage(global.localDatabasePath);
  const auto turn = storage->Begin(dao::Access::Write);
  const auto log = storage->OpenTable(u"tblOfflineLog"_s);
  constexpr int kRows = 2345;
  for (int id = 1; id <= kRows; ++id)
    log->Insert({std::int64_t{id}, u"UPDATE oud"});
  turn->Commit();
  EXPECT_EQ(basis::Read(basis::PathOf(Export())).entries.size(), std::size_t{kRows});
}

// The rows belong to a log row of the same number only when the statement is the same.
TEST_F(BasisOfExport, RowsAreNeverThoseOfAnotherStatement) {
  station_.OnLocal(u"UPDATE tblOfflineLog SET SqlSyntax = \"UPDATE ander\" WHERE ID = 1"_s);
  const basis::File file = basis::Read(basis::PathOf(Export()));
  ASSERT_EQ(file.entries.size(), 2u);
  EXPECT_FALSE(file.entries[0]);
  EXPECT_TRUE(file.entries[1]);
}

TEST_F(BasisOfExport, AnExportThatIsReplacedGivesUpItsBasisToo) {
  const QString first = Export();
  const QString number = basis::Read(basis::PathOf(first)).header.exportID;
  Change();
  EXPECT_EQ(Export(), first);
  EXPECT_NE(basis::Read(basis::PathOf(first)).header.exportID, number);
  CheckFolder();
}

TEST_F(BasisOfExport, ABasisOfAnotherExportKeepsItsName) {
  runtime::WriteFile(global.exportPath + u"\\20240131154507.tql.basis"_s, "other");
  EXPECT_TRUE(Export().endsWith(u"20240131154508.tql"_s));
  EXPECT_EQ(runtime::ReadFile(global.exportPath + u"\\20240131154507.tql.basis"_s), "other");
}

// The name of the export, or of its basis, is taken between the look and the renaming.
TEST_F(BasisOfExport, ANameTakenAtTheLastMomentIsNotTakenAway) {
  for (const bool takesBasis : {false, true}) {
    int left = 3;
    const testing_support::FileFaults other([&](const files::FileCall& call) {
      if (call.kind == files::FileCall::RenameNew && left > 0) {
        const QString name = u"/2024013115450%1.tql"_s.arg(10 - left--) + (takesBasis ? u".basis"_s : QString());
        QFile file(station_.ExportFolder() + name);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("other");
      }
      return 0;
    });
    EXPECT_TRUE(Export().endsWith(u"20240131154510.tql"_s));
    EXPECT_EQ(Files().size(), 3 + 2) << Files().join(u' ').toStdString();
    CleanUp();
    Change();
  }
}

TEST_F(BasisOfExport, AFailureOfAnyStepLeavesBothFilesOrNone) {
  int failing = 0;
  for (bool failed = true; failed; ++failing) {
    SCOPED_TRACE(failing);
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
      } catch (const runtime::Error&) {
      }
    }
    SettleInterruptedExport(global.localDatabasePath);
    const bool isThere = !QDir(station_.ExportFolder()).entryList({u"*.tql"_s}, QDir::Files).isEmpty();
    if (failed && !isThere) {
      EXPECT_EQ(station_.Log().size(), 2);
      EXPECT_EQ(KeptCount(), 2);
    } else {
      EXPECT_EQ(station_.Log().size(), 0);
      EXPECT_EQ(KeptCount(), 0);
    }
    // Removing the basis of an export that failed may fail too; then it is there without an export.
    if (isThere || failing < 0) CheckFolder();
    CleanUp();
    Change();
  }
  EXPECT_GT(failing, 15);
}

TEST_F(BasisOfExport, AKillAtAnyStepLeavesBothFilesOrNone) {
  int call = 0;
  for (;; ++call) {
    SCOPED_TRACE(call);
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
    SettleInterruptedExport(global.localDatabasePath);
    CheckFolder();
    const bool isThere = !QDir(station_.ExportFolder()).entryList({u"*.tql"_s}, QDir::Files).isEmpty();
    EXPECT_EQ(KeptCount(), isThere ? 0 : 2);
    EXPECT_EQ(station_.Log().size(), isThere ? 0 : 2);
    if (!WIFSIGNALED(status)) break;
    CleanUp();
    Change();
  }
  EXPECT_GT(call, 15);
}

TEST_F(BasisOfExport, AFileThatWasNotProcessedTakesItsBasisWithIt) {
  OfflineLogExport logExport(global.localDatabasePath);
  const QString path = logExport.WriteFile(global.exportPath);
  ASSERT_TRUE(QFile::remove(runtime::HostPath(path)));
  SettleMissingFile(global.localDatabasePath, MissingFile::NotProcessed);
  EXPECT_EQ(Files(), QStringList());
  EXPECT_EQ(KeptCount(), 2);
}

// The record of an earlier version of the program, which made no basis.
TEST_F(BasisOfExport, ARecordWithoutABasisIsSettled) {
  OfflineLogExport logExport(global.localDatabasePath);
  const QString path = logExport.WriteFile(global.exportPath);
  const QString record = ExportRecordPath(global.localDatabasePath);
  runtime::WriteFile(record, runtime::ReadFile(record).split('\n').first(4).join('\n') + '\n');
  EXPECT_EQ(SettleInterruptedExport(global.localDatabasePath).what, InterruptedExport::Finished);
  EXPECT_EQ(station_.Log(), QStringList());
  EXPECT_TRUE(QFile::exists(runtime::HostPath(path)));
}

// Closing the item-spot list refreshes the copy: the next new spot gets the number of the one before.
TEST_F(BasisOfExport, NewRecordsWithTheSameNumberAreNamed) {
  const auto insert = [](int id, const QString& naam) {
    ItemSpotRow row;
    row.id = id;
    row.naam = naam;
    EXPECT_TRUE(Insert_tblItemSpots(row, global.localDatabasePath, u"tblCopie_ItemSpots"_s));
  };
  const auto refresh = [&] { station_.OnLocal(u"DELETE FROM tblCopie_ItemSpots WHERE ID > 4"_s); };
  insert(42, u"Apotheek"_s);
  refresh();
  insert(42, u"Garage"_s);
  insert(43, u"Bakker"_s);
  Delete_tblBeheer(43, u"tblCopie_ItemSpots"_s, u"ID"_s, global.localDatabasePath);
  insert(43, u"Slager"_s);
  OfflineLogExport logExport(global.localDatabasePath);
  logExport.WriteFile(global.exportPath);
  EXPECT_EQ(logExport.RecordsWithSameNumber(), QStringList{u"item-spot 42 (Apotheek, Garage)"_s});
}

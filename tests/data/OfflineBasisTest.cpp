// SPDX-License-Identifier: MIT
#include "data/OfflineBasis.h"

#include "data/Globals.h"
#include "data/LogQueue.h"
#include "data/Writes.h"
#include "platform/desktop/MessageBox.h"
#include "platform/files/HookedFileSystem.h"
#include "platform/runtime/HostPath.h"
#include "platform/runtime/TextFile.h"
#include "tests/support/Fork.h"
#include "tests/support/Station.h"

#include <QFile>

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>

using namespace Qt::StringLiterals;
using dao::Value;
using desktop::MessageBoxScript;
using testing_support::Station;

namespace {

const QString kSpots = u"tblCopie_ItemSpots"_s;
const QString kLinks = u"tblCopie_ItemsItemSpots"_s;

Value TextOf(const QString& text) {
  return text.toStdU16String();
}

class OfflineBasis : public testing::Test {
 protected:
  struct BasisRow {
    int logID = 0;
    QString statement;
    basis::Entry entry;
  };

  OfflineBasis() {
    station_.OnLocal(
        u"INSERT INTO tblCopie_ItemSpots (ID, Naam, StartDatum, Aktief) VALUES (4, \"'s \u0416\", 45658, 1)"_s);
  }

  static bool SetAktief(int id, int aktief) {
    return Update_tblItemSpots_Aktief(id, aktief, global.localDatabasePath, kSpots);
  }
  QList<BasisRow> BasisRows() const {
    QList<BasisRow> all;
    dao::Recordset rows = station_.LocalRows(u"SELECT * FROM tblOfflineBasis ORDER BY ID"_s);
    for (; !rows.Eof(); rows.MoveNext()) {
      all += {rows.Field(u"LogID"_s).toInt(), rows.Field(u"SqlSyntax"_s).toString(),
              basis::Decode(rows.Field(u"Basis"_s).toString().toUtf8())};
    }
    return all;
  }
  int Aktief(int id) const {
    return station_.LocalRows(u"SELECT Aktief FROM tblCopie_ItemSpots WHERE ID = %1"_s.arg(id))
        .Field(u"Aktief"_s)
        .toInt();
  }
  bool HasTable() const {
    return dao::OpenDatabase(global.localDatabasePath).TableNames().contains(u"tblOfflineBasis"_s);
  }
  // Runs `work` in a child process that is killed at the n-th sync of a file or folder; true when it was.
  static bool KilledAtSync(int n, const std::function<void()>& work) {
    const pid_t child = testing_support::Fork();
    if (child == 0) {
      int syncs = 0;
      files::HookedFileSystem files(
          files::HostFileSystem(), [&](files::FileCall& call, const files::HookedFileSystem::Make& make) {
            const bool isSync = call.kind == files::FileCall::Sync || call.kind == files::FileCall::SyncFolder;
            if (isSync && ++syncs == n) ::raise(SIGKILL);
            return make();
          });
      const dao::FileSystemScope scope(files);
      work();
      ::_exit(0);
    }
    const int status = testing_support::WaitFor(child);
    return WIFSIGNALED(status);
  }

  Station station_{Station::Mode::Offline};
};

}  // namespace

TEST_F(OfflineBasis, TheTableIsMadeWhenItIsFirstNeeded) {
  EXPECT_FALSE(HasTable());
  EXPECT_TRUE(SetAktief(4, 0));
  EXPECT_TRUE(HasTable());
}

TEST_F(OfflineBasis, OnlineNothingIsKept) {
  station_.Use(Station::Mode::Online);
  EXPECT_TRUE(Update_tblItemSpots_Aktief(4, 0, global.serverDatabasePath, u"tblItemSpots"_s));
  EXPECT_FALSE(HasTable());
}

TEST_F(OfflineBasis, AnUpdateKeepsTheWholeRowBeforeAndAfterWithItsExactTexts) {
  EXPECT_TRUE(SetAktief(4, 0));
  const QList<BasisRow> rows = BasisRows();
  ASSERT_EQ(rows.size(), 1);
  EXPECT_EQ(rows[0].logID, 1);
  EXPECT_EQ(rows[0].statement, u"UPDATE tblItemSpots SET Aktief = 0 WHERE ID = 4"_s);
  const basis::Entry& entry = rows[0].entry;
  EXPECT_EQ(entry.table, u"tblItemSpots"_s);
  EXPECT_EQ(entry.keyField, u"ID"_s);
  EXPECT_EQ(entry.key, 4);
  EXPECT_EQ(entry.fields, station_.LocalRows(u"SELECT * FROM tblCopie_ItemSpots"_s).FieldNames());
  ASSERT_EQ(entry.before.size(), 1);
  ASSERT_EQ(entry.after.size(), 1);
  const auto naam = static_cast<std::size_t>(entry.fields.indexOf(u"Naam"_s));
  const auto aktief = static_cast<std::size_t>(entry.fields.indexOf(u"Aktief"_s));
  EXPECT_EQ(entry.before[0][naam], TextOf(u"'s \u0416"_s));
  EXPECT_EQ(entry.before[0][aktief], Value(std::int64_t{1}));
  EXPECT_EQ(entry.after[0][naam], TextOf(u"'s \u0416"_s));
  EXPECT_EQ(entry.after[0][aktief], Value(std::int64_t{0}));
}

TEST_F(OfflineBasis, AnInsertHasNothingBeforeAndADeleteNothingAfter) {
  ItemSpotRow row;
  row.id = 5;
  row.naam = u"Jan's \u0416"_s;
  EXPECT_TRUE(Insert_tblItemSpots(row, global.localDatabasePath, kSpots));
  EXPECT_TRUE(Delete_tblBeheer(5, kSpots, kSpots + u".ID"_s, global.localDatabasePath));
  const QList<BasisRow> rows = BasisRows();
  ASSERT_EQ(rows.size(), 2);
  EXPECT_TRUE(rows[0].entry.before.isEmpty());
  ASSERT_EQ(rows[0].entry.after.size(), 1);
  EXPECT_EQ(rows[0].entry.after[0][2], TextOf(row.naam));
  EXPECT_EQ(rows[1].entry.before, rows[0].entry.after);
  EXPECT_TRUE(rows[1].entry.after.isEmpty());
  EXPECT_EQ(rows[1].logID, 2);
}

TEST_F(OfflineBasis, LinksAreKeptOneByOneAndDeletedTogether) {
  EXPECT_TRUE(Insert_tblItemsItemSpots({7, 1, 4}, global.localDatabasePath, kLinks));
  EXPECT_TRUE(Insert_tblItemsItemSpots({7, 2, 5}, global.localDatabasePath, kLinks));
  EXPECT_TRUE(Delete_tblBeheer(7, kLinks, kLinks + u".ItemID"_s, global.localDatabasePath));
  const QList<BasisRow> rows = BasisRows();
  ASSERT_EQ(rows.size(), 3);
  const basis::Row first{std::int64_t{7}, std::int64_t{1}, std::int64_t{4}};
  const basis::Row second{std::int64_t{7}, std::int64_t{2}, std::int64_t{5}};
  EXPECT_EQ(rows[1].entry.table, u"tblItemsItemSpots"_s);
  EXPECT_EQ(rows[1].entry.keyField, u"ItemID"_s);
  EXPECT_EQ(rows[1].entry.key, 7);
  EXPECT_TRUE(rows[1].entry.before.isEmpty());
  EXPECT_EQ(rows[1].entry.after, QList<basis::Row>{second});
  EXPECT_EQ(rows[2].statement, u"DELETE FROM tblCopie_ItemsItemSpots WHERE tblCopie_ItemsItemSpots.ItemID = 7"_s);
  EXPECT_EQ(rows[2].entry.table, u"tblItemsItemSpots"_s);
  EXPECT_EQ(rows[2].entry.keyField, u"ItemID"_s);
  EXPECT_EQ(rows[2].entry.before, (QList<basis::Row>{first, second}));
  EXPECT_TRUE(rows[2].entry.after.isEmpty());
}

// A list that closes refreshes the copy from the server: the next change starts from the server's row again.
// A number alone does not tell which record it is of: the copy may get another under it.
TEST_F(OfflineBasis, AStatementKeepsWhatTheRecordsAreThatItRefersTo) {
  QStringList fields;
  const auto fingerprint = [&](const QString& table) {
    return basis::Fingerprint(basis::RowsOf(station_.LocalRows(u"SELECT * FROM "_s + table), fields).first());
  };
  station_.OnLocal(u"INSERT INTO tblCopie_ItemPingles (ID, Naam) VALUES (3, \"Opener\")"_s);
  ItemRow item;
  item.id = 7;
  item.naam = u"Ochtend"_s;
  item.opener = 3;
  ASSERT_TRUE(Insert_tblItems(item, global.localDatabasePath, u"tblCopie_Items"_s));
  ASSERT_TRUE(Insert_tblItemsItemSpots({7, 1, 4}, global.localDatabasePath, kLinks));
  ASSERT_TRUE(Insert_tblItemsItemSpots({7, 2, 99}, global.localDatabasePath, kLinks));
  ASSERT_TRUE(Delete_tblBeheer(7, kLinks, kLinks + u".ItemID"_s, global.localDatabasePath));
  const QList<BasisRow> rows = BasisRows();
  ASSERT_EQ(rows.size(), 4);
  const basis::Reference itself{u"tblItems"_s, 7, fingerprint(u"tblCopie_Items"_s)};
  const basis::Reference spot{u"tblItemSpots"_s, 4, fingerprint(kSpots)};
  const basis::Reference gone{u"tblItemSpots"_s, 99, QString()};
  EXPECT_EQ(itself.fingerprint, basis::Fingerprint(rows[0].entry.after.first()));
  EXPECT_EQ(rows[0].entry.references,
            (QList<basis::Reference>{{u"tblItemPingles"_s, 3, fingerprint(u"tblCopie_ItemPingles"_s)}}));
  EXPECT_EQ(rows[1].entry.references, (QList<basis::Reference>{itself, spot}));
  EXPECT_EQ(rows[2].entry.references, (QList<basis::Reference>{itself, gone}));
  EXPECT_EQ(rows[3].entry.references, (QList<basis::Reference>{itself, spot, gone}));
}

TEST_F(OfflineBasis, TheRowIsTheOneOfTheMomentAlsoWhenTheCopyIsRefreshedLater) {
  EXPECT_TRUE(SetAktief(4, 0));
  EXPECT_TRUE(DeleteAllInTable(kSpots, global.localDatabasePath));
  EXPECT_TRUE(SetAktief(4, 1));
  const QList<BasisRow> rows = BasisRows();
  ASSERT_EQ(rows.size(), 2);
  EXPECT_EQ(rows[0].entry.after.size(), 1);
  EXPECT_TRUE(rows[1].entry.before.isEmpty());
}

TEST_F(OfflineBasis, AJingleThatIsDeletedIsNeitherLoggedNorKept) {
  EXPECT_TRUE(Delete_tblBeheer(1, u"tblCopie_ItemPingles"_s, u"ID"_s, global.localDatabasePath));
  EXPECT_FALSE(HasTable());
}

TEST_F(OfflineBasis, AStatementWhoseRowsCannotBeStoredIsNotExecuted) {
  EXPECT_TRUE(SetAktief(4, 1));
  station_.OnLocal(u"INSERT INTO tblOfflineBasis (ID) VALUES (2147483647)"_s);
  const MessageBoxScript boxes;
  EXPECT_FALSE(SetAktief(4, 0));
  ASSERT_EQ(boxes.Shown().size(), 1u);
  EXPECT_EQ(boxes.Last().title, u"Update_tblItemSpots_Aktief"_s);
  EXPECT_FALSE(WasExecuted());
  EXPECT_FALSE(WaitsForLog());
  EXPECT_EQ(Aktief(4), 1);
  EXPECT_EQ(station_.Log().size(), 1);
}

TEST_F(OfflineBasis, OfAStatementThatFailsNothingIsKept) {
  EXPECT_TRUE(SetAktief(4, 0));
  const MessageBoxScript boxes;
  ItemSpotRow row;
  row.id = 4;
  EXPECT_FALSE(Insert_tblItemSpots(row, global.localDatabasePath, kSpots));
  ASSERT_EQ(boxes.Shown().size(), 1u);
  EXPECT_EQ(boxes.Last().title, u"Insert_tblItemSpots"_s);
  EXPECT_EQ(BasisRows().size(), 1);
}

// The basis row is there when the statement itself meets a full disk.
TEST_F(OfflineBasis, OfAStatementThatTheDiskRefusesNothingIsKept) {
  EXPECT_TRUE(SetAktief(4, 0));
  {
    int commits = 0;
    files::HookedFileSystem files(files::HostFileSystem(),
                                  [&](files::FileCall& call, const files::HookedFileSystem::Make& make) {
                                    const bool isJournal = call.path.string().ends_with("-journal");
                                    if (call.kind != files::FileCall::Open || !isJournal || ++commits != 2)
                                      return make();
                                    errno = ENOSPC;
                                    return std::int64_t{-1};
                                  });
    const dao::FileSystemScope scope(files);
    const MessageBoxScript boxes;
    EXPECT_FALSE(SetAktief(4, 1));
    EXPECT_EQ(boxes.Shown().size(), 1u);
  }
  EXPECT_EQ(Aktief(4), 0);
  EXPECT_EQ(BasisRows().size(), 1);
}

TEST_F(OfflineBasis, AStatementThatIsLoggedLaterTakesItsRowsWithIt) {
  station_.OnLocal(u"INSERT INTO tblOfflineLog (ID, SqlSyntax) VALUES (2147483647, \"vol\")"_s);
  {
    const MessageBoxScript boxes;
    EXPECT_FALSE(SetAktief(4, 0));
    EXPECT_FALSE(SetAktief(4, 1));
  }
  station_.OnLocal(u"DELETE FROM tblOfflineLog"_s);
  station_.OnLocal(u"INSERT INTO tblOfflineLog (ID, SqlSyntax) VALUES (8, \"ander\")"_s);
  EXPECT_TRUE(SetAktief(4, 0));
  EXPECT_EQ(station_.Log().size(), 4);
  const QList<BasisRow> rows = BasisRows();
  ASSERT_EQ(rows.size(), 3);
  for (int i = 0; i < 3; ++i)
    EXPECT_EQ(rows[i].logID, 9 + i);
}

// The file that an earlier version of the program left.
TEST_F(OfflineBasis, AStatementThatWasKeptWithoutItsRowsIsLogged) {
  QByteArray content;
  QDataStream out(&content, QIODevice::WriteOnly);
  out.setVersion(QDataStream::Qt_6_4);
  out << quint32{1} << quint32{1} << u"UPDATE oud"_s << QString() << false << qint32{0} << QStringList();
  runtime::WriteFile(global.localDatabasePath + u"-unlogged"_s, content);
  EXPECT_EQ(QueuedStatementCount(), 1);
  EXPECT_TRUE(SetAktief(4, 0));
  EXPECT_EQ(station_.Log(), (QStringList{u"UPDATE oud"_s, u"UPDATE tblItemSpots SET Aktief = 0 WHERE ID = 4"_s}));
  ASSERT_EQ(BasisRows().size(), 1);
  EXPECT_EQ(BasisRows()[0].logID, 2);
}

// Wherever it is killed: a statement that changed the copy is in the log once, with its rows; one that did not is
// nowhere.
TEST_F(OfflineBasis, AKilledProgramLosesNoStatementAndLogsNoneThatWasNotExecuted) {
  EXPECT_TRUE(SetAktief(4, 1));
  int kills = 0;
  int recovered = 0;
  for (int n = 1; kills == n - 1; ++n) {
    SCOPED_TRACE(n);
    station_.OnLocal(u"UPDATE tblCopie_ItemSpots SET Aktief = 1"_s);
    station_.OnLocal(u"DELETE FROM tblOfflineLog WHERE ID > 1"_s);
    station_.OnLocal(u"DELETE FROM tblOfflineBasis WHERE LogID > 1"_s);
    if (KilledAtSync(n, [] { SetAktief(4, 0); })) ++kills;
    const bool executed = Aktief(4) == 0;
    const qsizetype logged = station_.Log().size() - 1;
    QueueUnloggedStatements();
    LogQueuedStatements();
    recovered += executed && logged == 0 ? 1 : 0;
    EXPECT_EQ(station_.Log().size(), executed ? 2 : 1);
    const QList<BasisRow> rows = BasisRows();
    ASSERT_EQ(rows.size(), executed ? 2 : 1);
    EXPECT_EQ(rows.last().logID, executed ? 2 : 1);
  }
  EXPECT_EQ(kills, 12);
  EXPECT_GT(recovered, 0);
}

// Another program, or an older version of this one, empties the log and does not know the other table.
TEST_F(OfflineBasis, ALogThatAnotherProgramEmptiedIsNotFilledAgain) {
  EXPECT_TRUE(SetAktief(4, 0));
  EXPECT_TRUE(SetAktief(4, 1));
  station_.OnLocal(u"DELETE FROM tblOfflineLog"_s);
  EXPECT_TRUE(SetAktief(4, 0));
  EXPECT_EQ(station_.Log(), QStringList{u"UPDATE tblItemSpots SET Aktief = 0 WHERE ID = 4"_s});
  ASSERT_EQ(BasisRows().size(), 1);
  EXPECT_EQ(BasisRows()[0].logID, 1);
}

TEST_F(OfflineBasis, OneStatementCostsFourMoreSyncs) {
  EXPECT_TRUE(SetAktief(4, 0));
  int syncs = 0;
  files::HookedFileSystem files(files::HostFileSystem(),
                                [&](files::FileCall& call, const files::HookedFileSystem::Make& make) {
                                  if (call.kind == files::FileCall::Sync || call.kind == files::FileCall::SyncFolder)
                                    ++syncs;
                                  return make();
                                });
  const dao::FileSystemScope scope(files);
  EXPECT_TRUE(SetAktief(4, 1));
  EXPECT_EQ(syncs, 3 * 4);  // the rows, the statement, the log row
}

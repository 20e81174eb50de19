// SPDX-License-Identifier: MIT
#include "platform/dao/Storage.h"
#include "platform/dao/WriteWait.h"
#include "platform/jet/storage/Storage.h"
#include "tests/platform/dao/Scratch.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <gtest/gtest.h>

#include <array>
#include <chrono>

using namespace Qt::StringLiterals;
using namespace scratch;

namespace {

QByteArray ContentOf(const QString& path) {
  QFile file(path);
  EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << qPrintable(path);
  return file.readAll();
}

TEST(Atomicity, StatementThatFailsHalfwayChangesNothing) {
  const SpotScratch s;
  const QStringList before = Rows(s.Open(), u"SELECT * FROM tblSpots"_s);
  // Rows 1 and 2 would get keys 2 and 3; one of them collides during the statement.
  EXPECT_FALSE(ExecuteError(s.Open(), u"UPDATE tblSpots SET ID = 3 WHERE ID < 4"_s).isEmpty());
  EXPECT_FALSE(
      ExecuteError(s.Open(), u"INSERT INTO tblSpots (ID, Naam) SELECT 5 - ID, Naam FROM tblSpots"_s).isEmpty());
  // The third row's text does not fit.
  s.Open().Execute(u"UPDATE tblSpots SET Memo = \"%1\" WHERE ID = 3"_s.arg(QString(60, u'x')));
  EXPECT_TRUE(ExecuteError(s.Open(), u"UPDATE tblSpots SET Naam = Memo"_s).contains(u"te lang"_s));
  s.Open().Execute(u"UPDATE tblSpots SET Memo = NULL"_s);
  EXPECT_EQ(Rows(s.Open(), u"SELECT * FROM tblSpots"_s), before);
}

// The first rows could be written; for the third no key can be built.
TEST(Atomicity, AnUnknownCharacterInAnIndexedTextIsRefusedBeforeAnyChange) {
  const SpotScratch s;
  dao::TableDef byName = Spots(u"tblNamen"_s);
  byName.indexes += Index(u"Naam"_s, {u"Naam"_s});
  s.Open().CreateTable(byName);
  s.Open().Execute(u"INSERT INTO tblNamen SELECT * FROM tblSpots"_s);
  s.Open().Execute(u"UPDATE tblSpots SET Naam = \"\u4E2D\" WHERE ID = 3"_s);
  const QByteArray before = ContentOf(s.Path());
  const QString inserted =
      ExecuteError(s.Open(), u"INSERT INTO tblNamen (ID, Naam) SELECT ID + 10, Naam FROM tblSpots"_s);
  const QString updated = ExecuteError(s.Open(), u"UPDATE tblNamen SET Naam = \"\u4E2D\" WHERE ID = 3"_s);
  for (const QString& error : {inserted, updated}) {
    EXPECT_TRUE(error.contains(u"'tblNamen'"_s) && error.contains(u"'Naam'"_s) && error.contains(u"U+4E2D"_s))
        << qPrintable(error);
  }
  EXPECT_EQ(ContentOf(s.Path()), before);
}

TEST(Atomicity, APreviewShowsWhatAChangeWouldDoAndChangesNothing) {
  const SpotScratch s;
  const QByteArray before = ContentOf(s.Path());
  const QString select = u"SELECT Naam FROM tblSpots WHERE ID = 2"_s;
  const auto name = [](const dao::Recordset& rows) { return rows.Field(u"Naam"_s).toString(); };
  const dao::Database::Preview update =
      s.Open().PreviewChange(u"UPDATE tblSpots SET Naam = \"x\" WHERE ID = 2"_s, select);
  EXPECT_EQ(name(update.before), u"bier"_s);
  EXPECT_EQ(name(update.after), u"x"_s);
  const dao::Database::Preview deletion = s.Open().PreviewChange(u"DELETE FROM tblSpots WHERE ID = 2"_s, select);
  EXPECT_EQ(deletion.before.RecordCount(), 1);
  EXPECT_EQ(deletion.after.RecordCount(), 0);
  EXPECT_TRUE(ErrorOf([&] {
                s.Open().PreviewChange(u"INSERT INTO tblSpots (ID) VALUES (2)"_s, select);
              }).contains(u"tblSpots"_s));
  EXPECT_FALSE(ErrorOf([&] { s.Open().PreviewChange(select, select); }).isEmpty());
  EXPECT_EQ(Rows(s.Open(), select), QStringList{u"bier"_s});
  EXPECT_EQ(ContentOf(s.Path()), before);
}

TEST(Atomicity, DuplicateKeyNamesTableFieldAndValue) {
  const SpotScratch s;
  const QString error = ExecuteError(s.Open(), u"INSERT INTO tblSpots (ID, Naam) VALUES (2, \"dubbel\")"_s);
  EXPECT_TRUE(error.contains(u"'tblSpots'"_s) && error.contains(u"'ID'"_s) && error.contains(u"waarde 2"_s))
      << qPrintable(error);
}

TEST(Atomicity, TwoConnectionsSeeEachOthersStatements) {
  const SpotScratch s;
  dao::Database first = s.Open();
  dao::Database second = s.Open();
  first.Execute(u"UPDATE tblSpots SET Naam = \"een\" WHERE ID = 1"_s);
  second.Execute(u"UPDATE tblSpots SET Naam = \"twee\" WHERE ID = 2"_s);
  EXPECT_EQ(Rows(first, u"SELECT Naam FROM tblSpots ORDER BY ID"_s),
            Rows(second, u"SELECT Naam FROM tblSpots ORDER BY ID"_s));
  first.CreateTable(Spots(u"tblNieuw"_s));
  EXPECT_EQ(second.Execute(u"INSERT INTO tblNieuw (ID) VALUES (1)"_s), 1);
}

TEST(Atomicity, WaitForAnotherWriterIsBounded) {
  const SpotScratch s;
  const dao::WriteWaitScope wait(std::chrono::milliseconds(20));
  jet::Storage otherProgram(s.Path().toStdString(), {}, jet::HostFileSystem());
  otherProgram.BeginWrite();
  dao::Database database = s.Open();
  const QString error = ExecuteError(database, u"DELETE FROM tblSpots"_s);
  EXPECT_TRUE(error.contains(s.Path()) && error.contains(u"in gebruik"_s)) << qPrintable(error);
  EXPECT_EQ(Rows(database, u"SELECT ID FROM tblSpots"_s).size(), 3);
  otherProgram.Rollback();
  EXPECT_EQ(database.Execute(u"DELETE FROM tblSpots"_s), 3);
}

TEST(Atomicity, TransactionWithoutCommitRollsBack) {
  const SpotScratch s;
  {
    const auto storage = dao::OpenStorage(s.Path());
    const auto turn = storage->Begin(dao::Access::Write);
    const auto table = storage->OpenTable(u"tblspots"_s);
    const auto row = table->Scan({});
    ASSERT_TRUE(row->Next());
    table->Delete(std::array{row->Id()});
    EXPECT_TRUE(row->Next());
  }
  EXPECT_EQ(Rows(s.Open(), u"SELECT ID FROM tblSpots"_s).size(), 3);
}

TEST(Atomicity, NoJournalRemains) {
  const SpotScratch s;
  s.Open().Execute(u"DELETE FROM tblSpots"_s);
  QStringList files = QFileInfo(s.Path()).dir().entryList(QDir::Files);
  files.removeAll(u"planning.ldb"_s);  // the lock file, which lists the users of the database
  EXPECT_EQ(files, QStringList{u"planning.mdb"_s});
}

}  // namespace

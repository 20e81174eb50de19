// SPDX-License-Identifier: MIT
// Copies of a complete database file, and restoring rows from one.
#include "platform/dao/RestoreTables.h"

#include "platform/dao/Database.h"
#include "platform/dao/FrozenDatabase.h"
#include "platform/dao/WriteWait.h"
#include "platform/runtime/Error.h"
#include "tests/platform/dao/Scratch.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <chrono>
#include <exception>
#include <thread>

using namespace Qt::StringLiterals;

namespace {

const QList<dao::FieldDef> kFields = {scratch::Field(u"ID"_s, dao::FieldType::Long),
                                      scratch::Field(u"Naam"_s, dao::FieldType::Text, 20),
                                      scratch::Field(u"Memo"_s, dao::FieldType::Memo)};

class RestoredTables : public testing::Test {
 protected:
  RestoredTables() {
    dao::CreateDatabase(path_);
    dao::Database database = dao::OpenDatabase(path_);
    for (const QString& table : {u"a"_s, u"b"_s}) {
      dao::TableDef definition{table, kFields, {}};
      dao::IndexDef key;
      key.name = u"PrimaryKey"_s;
      key.fields = {{u"ID"_s}};
      key.primary = true;
      definition.indexes = {key};
      database.CreateTable(definition);
    }
    Run(u"INSERT INTO a (ID, Naam, Memo) VALUES (1, \"een\", \"%1\")"_s.arg(QString(5000, u'm')));
    Run(u"INSERT INTO a (ID) VALUES (2)"_s);
    Run(u"INSERT INTO b (ID, Naam) VALUES (7, \"zeven\")"_s);
    dao::FrozenDatabase(path_).CopyTo(backup_);
  }

  void Run(const QString& statement) const { dao::OpenDatabase(path_).Execute(statement); }
  QStringList Names(const QString& table) const {
    QStringList names;
    dao::Recordset rows = dao::OpenDatabase(path_).OpenRecordset(u"SELECT * FROM %1 ORDER BY ID"_s.arg(table));
    for (; !rows.Eof(); rows.MoveNext())
      names += rows.Field(u"ID"_s).toString() + rows.Field(u"Naam"_s).toString();
    return names;
  }

  QTemporaryDir folder_;
  QString path_ = folder_.filePath(u"x.mdb"_s);
  QString backup_ = folder_.filePath(u"backup.mdb"_s);
};

}  // namespace

TEST_F(RestoredTables, OnlyTheChosenTablesAreRestored) {
  Run(u"DELETE FROM a"_s);
  Run(u"INSERT INTO a (ID, Naam) VALUES (1, \"ander\")"_s);
  Run(u"UPDATE b SET Naam = \"later\""_s);
  EXPECT_EQ(dao::RestoreTables(backup_, path_, {{u"a"_s, u"a"_s}}), 2);
  EXPECT_EQ(Names(u"a"_s), (QStringList{u"1een"_s, u"2"_s}));
  EXPECT_EQ(Names(u"b"_s), QStringList{u"7later"_s});
  const dao::Recordset row = dao::OpenDatabase(path_).OpenRecordset(u"SELECT Memo FROM a WHERE ID = 1"_s);
  EXPECT_EQ(row.Field(u"Memo"_s).toString(), QString(5000, u'm'));
}

TEST_F(RestoredTables, WhenOneTableFailsNoneIsChanged) {
  Run(u"DELETE FROM a"_s);
  EXPECT_THROW(dao::RestoreTables(backup_, path_, {{u"a"_s, u"a"_s}, {u"niets"_s, u"niets"_s}}), runtime::Error);
  EXPECT_EQ(Names(u"a"_s), QStringList());
}

TEST_F(RestoredTables, AMissingFieldIsReported) {
  const QString other = folder_.filePath(u"other.mdb"_s);
  dao::CreateDatabase(other);
  dao::OpenDatabase(other).CreateTable({u"a"_s, {kFields[0], kFields[2]}, {}});
  try {
    dao::RestoreTables(backup_, other, {{u"a"_s, u"a"_s}});
    FAIL() << "restored";
  } catch (const runtime::Error& error) {
    EXPECT_TRUE(error.Description().contains(u"Naam"_s)) << error.what();
  }
}

TEST_F(RestoredTables, AFrozenDatabaseCannotBeChanged) {
  const dao::WriteWaitScope soon(std::chrono::milliseconds(20));
  const dao::FrozenDatabase frozen(path_);
  EXPECT_TRUE(frozen.IsSameAs(backup_));
  // Opened separately, as by another program: the cached file of this thread already has the write lock.
  std::exception_ptr refused;
  std::thread([&] {
    try {
      Run(u"DELETE FROM a"_s);
    } catch (const runtime::Error&) {
      refused = std::current_exception();
    }
  }).join();
  EXPECT_TRUE(refused);
}

TEST_F(RestoredTables, AChangedDatabaseDiffersFromItsCopy) {
  Run(u"UPDATE b SET Naam = \"later\""_s);
  EXPECT_FALSE(dao::FrozenDatabase(path_).IsSameAs(backup_));
}

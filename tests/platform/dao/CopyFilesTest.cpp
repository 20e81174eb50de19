// SPDX-License-Identifier: MIT
// Copying a database to another file.
#include "platform/dao/CopyDatabase.h"
#include "tests/platform/dao/Scratch.h"

#include <QFile>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace scratch;
using dao::CopyMode;

namespace {

class CopyFiles : public testing::Test {
 protected:
  QString Target() const { return source_.Path(u"doel.mdb"_s); }
  QStringList Names(const QString& path) const {
    return Rows(dao::OpenDatabase(path), u"SELECT ID, Naam FROM tblSpots ORDER BY ID"_s);
  }
  QString CopyError(CopyMode mode) const {
    return ErrorOf([&] { dao::CopyDatabase(source_.Path(), Target(), mode); });
  }

  SpotScratch source_;
};

TEST_F(CopyFiles, AMissingTargetIsCreatedWithAllTables) {
  source_.Open().CreateTable(Spots(u"tblLeeg"_s));
  const auto copied = dao::CopyDatabase(source_.Path(), Target(), CopyMode::Fill);
  ASSERT_EQ(copied.size(), 2U);
  EXPECT_EQ(copied[0].name, u"tblLeeg"_s);
  EXPECT_EQ(copied[0].rows, 0);
  EXPECT_EQ(copied[1].name, u"tblSpots"_s);
  EXPECT_EQ(copied[1].rows, 3);
  EXPECT_EQ(copied[1].inserted, 3);
  EXPECT_EQ(copied[1].deleted, 0);
  EXPECT_EQ(Names(Target()), Names(source_.Path()));
  EXPECT_EQ(dao::OpenDatabase(Target()).Table(u"tblSpots"_s).indexes, source_.Open().Table(u"tblSpots"_s).indexes);
}

TEST_F(CopyFiles, TablesThatOnlyTheTargetHasAreNotChanged) {
  source_.Another(u"doel.mdb"_s).CreateTable(Spots(u"tblEigen"_s));
  dao::OpenDatabase(Target()).Execute(u"INSERT INTO tblEigen (ID) VALUES (7)"_s);
  dao::CopyDatabase(source_.Path(), Target(), CopyMode::Fill);
  EXPECT_EQ(Rows(dao::OpenDatabase(Target()), u"SELECT ID FROM tblEigen"_s), QStringList{u"7"_s});
}

TEST_F(CopyFiles, AnEqualTargetIsNotChangedByARefresh) {
  dao::CopyDatabase(source_.Path(), Target(), CopyMode::Fill);
  const auto again = dao::CopyDatabase(source_.Path(), Target(), CopyMode::Refresh);
  EXPECT_EQ(again[0].inserted, 0);
  EXPECT_EQ(again[0].deleted, 0);
  EXPECT_EQ(again[0].rows, 3);
  EXPECT_TRUE(CopyError(CopyMode::Fill).contains(u"--refresh"_s));
}

TEST_F(CopyFiles, ARefreshChangesOnlyDifferentRows) {
  dao::CopyDatabase(source_.Path(), Target(), CopyMode::Fill);
  source_.Open().Execute(u"UPDATE tblSpots SET Memo = \"nieuw\" WHERE ID = 1"_s);
  source_.Open().Execute(u"DELETE FROM tblSpots WHERE ID = 2"_s);
  const auto copied = dao::CopyDatabase(source_.Path(), Target(), CopyMode::Refresh);
  EXPECT_EQ(copied[0].rows, 2);
  EXPECT_EQ(copied[0].inserted, 1);
  EXPECT_EQ(copied[0].deleted, 2);
  EXPECT_EQ(Names(Target()), Names(source_.Path()));
}

TEST_F(CopyFiles, EqualRowsAreCountedEachTime) {
  for (const QString& path : {source_.Path(), Target()}) {
    if (path == Target()) dao::CreateDatabase(path);
    dao::OpenDatabase(path).CreateTable({u"tblDubbel"_s, {Field(u"Naam"_s, dao::FieldType::Text, 5)}, {}});
  }
  for (int i = 0; i < 3; ++i)
    source_.Open().Execute(u"INSERT INTO tblDubbel VALUES (\"x\")"_s);
  dao::OpenDatabase(Target()).Execute(u"INSERT INTO tblDubbel VALUES (\"x\")"_s);
  const auto copied = dao::CopyDatabase(source_.Path(), Target(), CopyMode::Refresh);
  EXPECT_EQ(copied[0].inserted, 2);
  EXPECT_EQ(copied[0].deleted, 0);
  EXPECT_EQ(Rows(dao::OpenDatabase(Target()), u"SELECT Naam FROM tblDubbel"_s).size(), 3);
}

TEST_F(CopyFiles, FieldsMayHaveAnotherOrder) {
  dao::TableDef other = Spots();
  other.fields.swapItemsAt(1, 4);
  source_.Another(u"doel.mdb"_s).CreateTable(other);
  dao::CopyDatabase(source_.Path(), Target(), CopyMode::Fill);
  EXPECT_EQ(Names(Target()), Names(source_.Path()));
  EXPECT_EQ(dao::OpenDatabase(Target()).Table(u"tblSpots"_s).fields[1].name, u"Memo"_s);
}

TEST_F(CopyFiles, OtherFieldsAreAnErrorThatChangesNothing) {
  dao::TableDef fewer = Spots();
  fewer.fields.removeLast();
  dao::TableDef otherType = Spots();
  otherType.fields[2].type = dao::FieldType::Long;
  for (const dao::TableDef& table : {fewer, otherType}) {
    const QString target = source_.Path(u"ander%1.mdb"_s.arg(table.fields.size()));
    dao::CreateDatabase(target);
    dao::OpenDatabase(target).CreateTable(table);
    dao::OpenDatabase(target).Execute(u"INSERT INTO tblSpots (ID) VALUES (8)"_s);
    const QString error = ErrorOf([&] { dao::CopyDatabase(source_.Path(), target, CopyMode::Refresh); });
    EXPECT_TRUE(error.contains(u"'tblSpots' heeft in het doel andere velden"_s)) << qPrintable(error);
    EXPECT_EQ(Rows(dao::OpenDatabase(target), u"SELECT ID FROM tblSpots"_s), QStringList{u"8"_s});
  }
}

TEST_F(CopyFiles, AnErrorInOneTableLeavesAllTables) {
  dao::OpenDatabase(source_.Path()).CreateTable(Spots(u"tblAA"_s));
  source_.Open().Execute(u"INSERT INTO tblAA (ID) VALUES (1)"_s);
  source_.Another(u"doel.mdb"_s).CreateTable(Spots());
  dao::OpenDatabase(Target()).Execute(u"INSERT INTO tblSpots (ID) VALUES (9)"_s);
  EXPECT_TRUE(CopyError(CopyMode::Fill).contains(u"'tblSpots'"_s));
  EXPECT_EQ(dao::OpenDatabase(Target()).TableNames(), QStringList{u"tblSpots"_s});
}

TEST_F(CopyFiles, SourceAndTargetMustDiffer) {
  for (const CopyMode mode : {CopyMode::Fill, CopyMode::Refresh}) {
    const QString error = ErrorOf([&] { dao::CopyDatabase(source_.Path(), source_.Path(), mode); });
    EXPECT_TRUE(error.contains(u"dezelfde database"_s)) << qPrintable(error);
  }
  EXPECT_EQ(Names(source_.Path()).size(), 3);
}

}  // namespace

// SPDX-License-Identifier: MIT
// One SQLite connection executes many statements: nothing cached about a table may outlive its definition.
#include "platform/dao/Row.h"
#include "tests/platform/dao/Scratch.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace scratch;
using dao::FieldType;

namespace {

const QString kAll = u"SELECT * FROM tblSpots"_s;

TEST(EngineReuse, TheSameTableOfAnotherFileHasItsOwnRows) {
  const SpotScratch s;
  dao::Database other = s.Another(u"other.mdb"_s);
  other.CreateTable(Spots());
  other.Execute(u"INSERT INTO tblSpots (ID, Naam) VALUES (9, \"Druif\")"_s);
  EXPECT_EQ(Rows(s.Open(), kAll).size(), 3);
  EXPECT_EQ(Rows(other, kAll), QStringList{u"9|Druif|-|-|-"_s});
  EXPECT_EQ(Rows(s.Open(), kAll).size(), 3);
}

TEST(EngineReuse, TheSameNameWithOtherFieldsIsAnotherTable) {
  const SpotScratch s;
  dao::Database other = s.Another(u"other.mdb"_s);
  other.CreateTable({u"tblSpots"_s, {Field(u"Kleur"_s, FieldType::Text, 10)}, {}});
  EXPECT_EQ(Rows(s.Open(), kAll).size(), 3);
  EXPECT_EQ(other.Execute(u"INSERT INTO tblSpots VALUES (\"rood\")"_s), 1);
  EXPECT_EQ(Rows(other, kAll), QStringList{u"rood"_s});
  EXPECT_EQ(Rows(s.Open(), kAll).size(), 3);
}

TEST(EngineReuse, TheSameFieldsWithOtherIndexesUseTheirOwnIndexes) {
  const SpotScratch s;
  dao::TableDef keyless = Spots();
  keyless.indexes.clear();
  dao::Database other = s.Another(u"other.mdb"_s);
  other.CreateTable(keyless);
  for (int copy = 0; copy < 2; ++copy)
    other.Execute(u"INSERT INTO tblSpots (ID, Naam) VALUES (2, \"twee\")"_s);
  const QString second = u"SELECT Naam FROM tblSpots WHERE ID = 2"_s;
  EXPECT_EQ(Rows(s.Open(), second), QStringList{u"bier"_s});
  EXPECT_EQ(Rows(other, second), (QStringList{u"twee"_s, u"twee"_s}));
  EXPECT_EQ(Rows(s.Open(), second), QStringList{u"bier"_s});
}

TEST(EngineReuse, ATableOfThePreviousStatementIsNotVisible) {
  const SpotScratch s;
  dao::Database empty = s.Another(u"empty.mdb"_s);
  for (const QString& sql : {kAll, u"SELECT COUNT(*) AS n FROM tblSpots"_s}) {
    EXPECT_EQ(Rows(s.Open(), kAll).size(), 3);
    EXPECT_TRUE(ErrorOf([&] { empty.OpenRecordset(sql); }).contains(u"tblSpots"_s)) << sql.toStdString();
  }
  EXPECT_EQ(Rows(s.Open(), kAll).size(), 3);
  EXPECT_TRUE(ExecuteError(empty, u"DELETE FROM tblSpots WHERE ID = 1"_s).contains(u"tblSpots"_s));
  EXPECT_EQ(Rows(s.Open(), kAll).size(), 3);
}

TEST(EngineReuse, FieldsGivenByAnInsertAreNotUsedForTheNext) {
  const SpotScratch s;
  s.Open().Execute(u"INSERT INTO tblSpots (ID, Naam, Aktief, Memo) VALUES (4, \"Druif\", 1, \"m\")"_s);
  s.Open().Execute(u"INSERT INTO tblSpots (ID) VALUES (5)"_s);
  s.Open().Execute(u"INSERT INTO tblSpots VALUES (6, \"Framboos\", 0, NULL, \"n\")"_s);
  EXPECT_EQ(Rows(s.Open(), u"SELECT * FROM tblSpots WHERE ID > 3 ORDER BY ID"_s),
            (QStringList{u"4|Druif|1|-|m"_s, u"5|-|-|-|-"_s, u"6|Framboos|0|-|n"_s}));
}

TEST(EngineReuse, RowsOfADeleteAreNotDeletedByTheNext) {
  const SpotScratch s;
  EXPECT_EQ(s.Open().Execute(u"DELETE FROM tblSpots WHERE ID = 1"_s), 1);
  s.Open().Execute(u"INSERT INTO tblSpots (ID) VALUES (1)"_s);
  EXPECT_EQ(s.Open().Execute(u"DELETE FROM tblSpots WHERE ID = 2"_s), 1);
  EXPECT_EQ(Rows(s.Open(), u"SELECT ID FROM tblSpots ORDER BY ID"_s), (QStringList{u"1"_s, u"3"_s}));
}

TEST(EngineReuse, AStatementInsideAVisitUsesAnotherEngine) {
  const SpotScratch s;
  QStringList names;
  s.Open().Visit(u"SELECT ID FROM tblSpots ORDER BY ID"_s, [&](const dao::Row& row) {
    names += Rows(s.Open(), u"SELECT Naam FROM tblSpots WHERE ID = %1"_s.arg(row.Field(0).toInt()));
    return true;
  });
  EXPECT_EQ(names, (QStringList{u"Appel"_s, u"bier"_s, u"Cola"_s}));
  EXPECT_EQ(Rows(s.Open(), kAll).size(), 3);
}

TEST(EngineReuse, AnErrorDoesNotAffectTheNextStatement) {
  const SpotScratch s;
  EXPECT_FALSE(ExecuteError(s.Open(), u"INSERT INTO tblSpots (ID) VALUES (1)"_s).isEmpty());
  EXPECT_FALSE(ExecuteError(s.Open(), u"UPDATE tblSpots SET Nergens = 1"_s).isEmpty());
  EXPECT_EQ(Rows(s.Open(), kAll).size(), 3);
}

}  // namespace

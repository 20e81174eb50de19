// SPDX-License-Identifier: MIT
#include "tests/platform/dao/Scratch.h"

#include <gtest/gtest.h>

#include <algorithm>

using namespace Qt::StringLiterals;
using namespace scratch;

namespace {

QString Copy(const Scratch& s, const QString& select) {
  return u"INSERT INTO tblCopie IN \"%1\" %2"_s.arg(s.Path(u"local.mdb"_s), select);
}

TEST(InsertIntoFile, CopiesAllRowsIntoTheOtherFile) {
  const SpotScratch s;
  dao::Database local = s.Another(u"local.mdb"_s);
  local.CreateTable(Spots(u"tblCopie"_s));
  EXPECT_EQ(s.Open().Execute(Copy(s, u"SELECT * FROM tblSpots"_s)), 3);
  EXPECT_EQ(Rows(local, u"SELECT * FROM tblCopie"_s), Rows(s.Open(), u"SELECT * FROM tblSpots"_s));
}

TEST(InsertIntoFile, FieldsAreMatchedByName) {
  const SpotScratch s;
  dao::Database local = s.Another(u"local.mdb"_s);
  dao::TableDef turned = Spots(u"tblCopie"_s);
  std::reverse(turned.fields.begin(), turned.fields.end());
  turned.fields.append(Field(u"Extra"_s, dao::FieldType::Long));
  local.CreateTable(turned);
  EXPECT_EQ(s.Open().Execute(Copy(s, u"SELECT * FROM tblSpots WHERE ID = 3"_s)), 1);
  EXPECT_EQ(Rows(local, u"SELECT ID, Naam, Aktief, Extra FROM tblCopie"_s), QStringList{u"3|Cola|1|-"_s});
  EXPECT_EQ(s.Open().Execute(Copy(s, u"SELECT tblSpots.Naam, tblSpots.ID FROM tblSpots WHERE ID = 1"_s)), 1);
  EXPECT_EQ(Rows(local, u"SELECT ID, Naam FROM tblCopie WHERE ID = 1"_s), QStringList{u"1|Appel"_s});
}

TEST(InsertIntoFile, UnknownFieldIsReported) {
  const SpotScratch s;
  dao::Database local = s.Another(u"local.mdb"_s);
  local.CreateTable(Spots(u"tblCopie"_s));
  EXPECT_TRUE(ExecuteError(s.Open(), Copy(s, u"SELECT ID, Naam AS Titel FROM tblSpots"_s)).contains(u"'Titel'"_s));
  EXPECT_TRUE(Rows(local, u"SELECT ID FROM tblCopie"_s).isEmpty());
}

TEST(InsertIntoFile, TargetMayHaveTheNameOfTheSource) {
  const SpotScratch s;
  dao::Database local = s.Another(u"local.mdb"_s);
  local.CreateTable(Spots());
  EXPECT_EQ(s.Open().Execute(
                u"INSERT INTO tblSpots (ID, Naam) IN '%1' SELECT ID, Naam FROM tblSpots"_s.arg(s.Path(u"local.mdb"_s))),
            3);
  EXPECT_EQ(Rows(local, u"SELECT ID FROM tblSpots"_s).size(), 3);
  EXPECT_EQ(Rows(s.Open(), u"SELECT ID FROM tblSpots"_s).size(), 3);
}

TEST(InsertIntoFile, TheSourceTableIsNeverThatOfTheOtherFile) {
  const SpotScratch s;
  dao::Database local = s.Another(u"local.mdb"_s);
  local.CreateTable(Spots(u"tblCopie"_s));
  EXPECT_TRUE(ExecuteError(s.Open(), Copy(s, u"SELECT * FROM tblCopie"_s)).contains(u"'tblCopie' bestaat niet"_s));
}

TEST(InsertIntoFile, TheSameFileIsNotOpenedTwice) {
  const SpotScratch s;
  dao::Database database = s.Open();
  database.CreateTable(Spots(u"tblCopie"_s));
  const QString sql = u"INSERT INTO tblCopie IN \"%1\" SELECT * FROM tblSpots"_s.arg(s.Path());
  EXPECT_EQ(database.Execute(sql), 3);
  EXPECT_EQ(Rows(database, u"SELECT ID FROM tblCopie"_s).size(), 3);
}

TEST(InsertIntoFile, FailureLeavesTheOtherFileAsItWas) {
  const SpotScratch s;
  dao::Database local = s.Another(u"local.mdb"_s);
  local.CreateTable(Spots(u"tblCopie"_s));
  local.Execute(u"INSERT INTO tblCopie (ID, Naam) VALUES (3, \"al hier\")"_s);
  const QString error = ExecuteError(s.Open(), Copy(s, u"SELECT * FROM tblSpots"_s));
  EXPECT_TRUE(error.contains(u"tblCopie"_s) && error.contains(u"ID"_s)) << qPrintable(error);
  EXPECT_EQ(Rows(local, u"SELECT ID, Naam FROM tblCopie"_s), QStringList{u"3|al hier"_s});
}

// Without Memo fields, so that rows can be copied in their stored form.
dao::TableDef Names(const QString& name) {
  dao::TableDef table{name,
                      {Field(u"ID"_s, dao::FieldType::Long), Field(u"Naam"_s, dao::FieldType::Text, 255),
                       Field(u"Dag"_s, dao::FieldType::Date), Field(u"Aan"_s, dao::FieldType::Boolean)},
                      {Key({u"ID"_s}), Index(u"Naam"_s, {u"Naam"_s})}};
  table.fields[0].autoNumber = true;
  return table;
}

TEST(InsertIntoFile, AWholeTableKeepsItsRowsIndexesAndNumbers) {
  const SpotScratch s;
  dao::Database source = s.Open();
  source.CreateTable(Names(u"tblNamen"_s));
  for (int i = 1; i <= 120; ++i)
    source.Execute(u"INSERT INTO tblNamen (Naam, Aan) VALUES (\"Naam %1\", %2)"_s.arg(i % 40).arg(-(i % 2)));
  source.Execute(u"DELETE FROM tblNamen WHERE ID > 20 AND ID < 40"_s);
  source.Execute(u"UPDATE tblNamen SET Naam = \"%1\" WHERE ID < 15"_s.arg(QString(250, u'\u0416')));
  source.Execute(u"UPDATE tblNamen SET Dag = 45000.5 WHERE ID = 7"_s);
  dao::Database local = s.Another(u"local.mdb"_s);
  local.CreateTable(Names(u"tblCopie"_s));
  EXPECT_EQ(source.Execute(Copy(s, u"SELECT * FROM tblNamen"_s)), 101);
  const QString ordered = u"SELECT * FROM %1 ORDER BY ID"_s;
  EXPECT_EQ(Rows(local, ordered.arg(u"tblCopie"_s)), Rows(source, ordered.arg(u"tblNamen"_s)));
  EXPECT_EQ(Rows(local, u"SELECT ID FROM tblCopie WHERE Naam = \"naam 39\""_s), (QStringList{u"79"_s, u"119"_s}));
  local.Execute(u"INSERT INTO tblCopie (Naam) VALUES (\"nieuw\")"_s);
  EXPECT_EQ(Rows(local, u"SELECT ID FROM tblCopie WHERE Naam = \"nieuw\""_s), QStringList{u"121"_s});
  const QString error = ExecuteError(source, Copy(s, u"SELECT * FROM tblNamen"_s));
  EXPECT_TRUE(error.contains(u"tblCopie"_s) && error.contains(u"ID"_s)) << qPrintable(error);
  EXPECT_EQ(Rows(local, u"SELECT ID FROM tblCopie"_s).size(), 102);
}

TEST(InsertIntoFile, MissingFileOrTableIsNamed) {
  const SpotScratch s;
  EXPECT_TRUE(ExecuteError(s.Open(), Copy(s, u"SELECT * FROM tblSpots"_s)).contains(s.Path(u"local.mdb"_s)));
  s.Another(u"local.mdb"_s);
  EXPECT_TRUE(ExecuteError(s.Open(), Copy(s, u"SELECT * FROM tblSpots"_s)).contains(u"'tblCopie'"_s));
}

}  // namespace

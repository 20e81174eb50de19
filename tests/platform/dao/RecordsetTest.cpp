// SPDX-License-Identifier: MIT
#include "tests/platform/dao/Scratch.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace scratch;

namespace {

TEST(Recordset, EmptyIsAtBothEnds) {
  const SpotScratch s;
  dao::Recordset rows = s.Open().OpenRecordset(u"SELECT ID FROM tblSpots WHERE Aktief = -10000"_s);
  EXPECT_TRUE(rows.Bof());
  EXPECT_TRUE(rows.Eof());
  EXPECT_EQ(rows.RecordCount(), 0);
  EXPECT_FALSE(ErrorOf([&] { rows.MoveFirst(); }).isEmpty());
  EXPECT_FALSE(ErrorOf([&] { rows.MoveNext(); }).isEmpty());
  EXPECT_TRUE(ErrorOf([&] { rows.Field(u"ID"_s); }).contains(u"geen huidige record"_s));
}

TEST(Recordset, MovesForwardAndToTheFirst) {
  const SpotScratch s;
  dao::Recordset rows = s.Open().OpenRecordset(u"SELECT ID, Naam As Code FROM tblSpots ORDER BY Naam"_s);
  EXPECT_FALSE(rows.Bof());
  EXPECT_EQ(rows.RecordCount(), 3);
  EXPECT_EQ(rows.Field(u"code"_s), u"Appel"_s);
  rows.MoveNext();
  EXPECT_EQ(rows.Field(u"ID"_s), 2);
  rows.MoveNext();
  rows.MoveNext();
  EXPECT_TRUE(rows.Eof());
  EXPECT_FALSE(rows.Bof());
  rows.MoveFirst();
  EXPECT_EQ(rows.Field(u"ID"_s), 1);
  EXPECT_TRUE(ErrorOf([&] { rows.Field(u"Naam"_s); }).contains(u"'Naam'"_s));
}

TEST(Recordset, ALoopMayDeleteTheRowsItReads) {
  const SpotScratch s;
  dao::Database database = s.Open();
  int walked = 0;
  for (dao::Recordset rows = database.OpenRecordset(u"SELECT ID FROM tblSpots"_s); !rows.Eof(); rows.MoveNext()) {
    database.Execute(u"DELETE FROM tblSpots WHERE ID = %1"_s.arg(rows.Field(u"ID"_s).toInt()));
    ++walked;
  }
  EXPECT_EQ(walked, 3);
  EXPECT_TRUE(Rows(database, u"SELECT ID FROM tblSpots"_s).isEmpty());
}

TEST(Recordset, OutlivesItsDatabaseAndHoldsNoLock) {
  const SpotScratch s;
  dao::Database first = s.Open();
  const dao::Recordset rows = first.OpenRecordset(u"SELECT Naam FROM tblSpots"_s);
  EXPECT_EQ(s.Open().Execute(u"DELETE FROM tblSpots"_s), 3);
  first.Close();
  EXPECT_EQ(rows.Field(u"Naam"_s), u"Appel"_s);
}

TEST(Recordset, ClosedIsAnErrorToUse) {
  const SpotScratch s;
  dao::Recordset rows = s.Open().OpenRecordset(u"SELECT ID FROM tblSpots"_s);
  rows.Close();
  EXPECT_TRUE(ErrorOf([&] { rows.Eof(); }).contains(u"gesloten"_s));
  EXPECT_TRUE(ErrorOf([&] { rows.Field(u"ID"_s); }).contains(u"gesloten"_s));
  dao::Database database = s.Open();
  database.Close();
  EXPECT_TRUE(ErrorOf([&] { database.Execute(u"DELETE FROM tblSpots"_s); }).contains(u"gesloten"_s));
}

TEST(Recordset, FieldNamesComeInTheOrderOfTheStatement) {
  const SpotScratch s;
  EXPECT_EQ(s.Open().OpenRecordset(u"SELECT Naam As Code, tblSpots.ID FROM tblSpots"_s).FieldNames(),
            (QStringList{u"Code"_s, u"ID"_s}));
  EXPECT_EQ(s.Open().OpenRecordset(u"SELECT * FROM tblSpots"_s).FieldNames().join(u' '),
            u"ID Naam Aktief StartDatum Memo"_s);
}

}  // namespace

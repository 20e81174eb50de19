// SPDX-License-Identifier: MIT
#include "tests/platform/dao/Scratch.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace scratch;
using dao::FieldType;

namespace {

// Items 5 and 6 with their spots in order, as the planner stores them.
class LinkedScratch : public SpotScratch {
 public:
  LinkedScratch() {
    dao::Database database = Open();
    database.CreateTable(
        {u"tblItems"_s, {Field(u"ID"_s, FieldType::Long), Field(u"Naam"_s, FieldType::Text, 50)}, {Key({u"ID"_s})}});
    database.CreateTable({u"tblLinks"_s,
                          {Field(u"ItemID"_s, FieldType::Long), Field(u"SpotOrder"_s, FieldType::Long),
                           Field(u"SpotID"_s, FieldType::Long)},
                          {Key({u"ItemID"_s, u"SpotOrder"_s})}});
    for (const int item : {5, 6})
      database.Execute(u"INSERT INTO tblItems (ID, Naam) VALUES (%1, \"x\")"_s.arg(item));
    const QList<QList<int>> links = {{5, 1, 3}, {5, 2, 1}, {6, 1, 2}, {5, 3, 99}};
    for (const auto& link : links) {
      database.Execute(u"INSERT INTO tblLinks VALUES (%1, %2, %3)"_s.arg(link[0]).arg(link[1]).arg(link[2]));
    }
  }
};

TEST(Query, ParenthesisedJoinOfThreeTables) {
  const LinkedScratch s;
  const QString sql =
      u"SELECT tblSpots.* FROM (tblItems INNER JOIN tblLinks ON tblItems.ID = tblLinks.ItemID) "
      "INNER JOIN tblSpots ON tblLinks.SpotID = tblSpots.ID WHERE tblItems.ID = 5"_s;
  dao::Recordset rows = s.Open().OpenRecordset(sql);
  EXPECT_EQ(rows.FieldNames().join(u' '), u"ID Naam Aktief StartDatum Memo"_s);
  EXPECT_EQ(rows.RecordCount(), 2);
  EXPECT_EQ(Rows(s.Open(), sql + u" ORDER BY tblLinks.SpotOrder"_s),
            (QStringList{u"3|Cola|1|-|-"_s, u"1|Appel|1|-|-"_s}));
}

TEST(Query, MaximumOfAnEmptyTableIsNull) {
  const Scratch s;
  s.Open().CreateTable(Spots());
  dao::Recordset rows = s.Open().OpenRecordset(u"Select MAX(ID) AS LaatsteID FROM tblSpots"_s);
  EXPECT_EQ(rows.RecordCount(), 1);
  EXPECT_FALSE(rows.Field(u"LaatsteID"_s).isValid());
}

TEST(Query, MaximumOfAKey) {
  const SpotScratch s;
  EXPECT_EQ(Value(s.Open(), u"Select MAX(ID) AS LaatsteID FROM tblSpots"_s, u"LaatsteID"_s), 3);
}

TEST(Query, FilterAndOrderOfTheLists) {
  const SpotScratch s;
  EXPECT_EQ(Rows(s.Open(),
                 u"SELECT tblSpots.ID, tblSpots.Naam As Code From tblSpots WHERE tblSpots.Aktief = 1 OR "
                 "tblSpots.Aktief = 0 ORDER BY tblSpots.Naam"_s),
            (QStringList{u"1|Appel"_s, u"2|bier"_s, u"3|Cola"_s}));
}

TEST(Query, OrAndNotHaveTheirPrecedence) {
  const SpotScratch s;
  EXPECT_EQ(Rows(s.Open(), u"SELECT ID FROM tblSpots WHERE Aktief = 1 AND NOT ID = 1 OR ID = 2 ORDER BY ID"_s),
            (QStringList{u"2"_s, u"3"_s}));
}

TEST(Query, NullMatchesNoComparison) {
  const SpotScratch s;
  EXPECT_TRUE(Rows(s.Open(), u"SELECT ID FROM tblSpots WHERE Memo = NULL"_s).isEmpty());
  EXPECT_TRUE(Rows(s.Open(), u"SELECT ID FROM tblSpots WHERE ID = NULL"_s).isEmpty());
  EXPECT_EQ(Rows(s.Open(), u"SELECT ID FROM tblSpots WHERE Memo IS NULL AND Naam IS NOT NULL"_s).size(), 3);
}

TEST(Query, KeyOfAnotherKindStillMatchesItsRow) {
  const SpotScratch s;
  EXPECT_EQ(Rows(s.Open(), u"SELECT ID FROM tblSpots WHERE ID = 2.0"_s), QStringList{u"2"_s});
  EXPECT_EQ(Rows(s.Open(), u"SELECT ID FROM tblSpots WHERE ID = \"2\""_s), QStringList{u"2"_s});
  EXPECT_TRUE(Rows(s.Open(), u"SELECT ID FROM tblSpots WHERE ID = 2.5"_s).isEmpty());
  EXPECT_TRUE(Rows(s.Open(), u"SELECT ID FROM tblSpots WHERE ID = 99999999999"_s).isEmpty());
}

TEST(Query, SubqueriesAndUnions) {
  const LinkedScratch s;
  EXPECT_EQ(Rows(s.Open(),
                 u"SELECT ID FROM tblSpots WHERE ID IN (SELECT SpotID FROM tblLinks WHERE ItemID = 5) ORDER BY ID"_s),
            (QStringList{u"1"_s, u"3"_s}));
  EXPECT_EQ(Rows(s.Open(), u"SELECT ID FROM tblItems UNION SELECT ID FROM tblSpots ORDER BY ID"_s).size(), 5);
}

TEST(Query, UpdateCountsTheMatchingRows) {
  const SpotScratch s;
  EXPECT_EQ(s.Open().Execute(u"UPDATE tblSpots SET Aktief = 0 WHERE Aktief = 1"_s), 2);
  EXPECT_EQ(s.Open().Execute(u"UPDATE tblSpots SET Aktief = 0 WHERE ID = 77"_s), 0);
  EXPECT_EQ(s.Open().Execute(u"UPDATE tblSpots SET ID = ID + 10"_s), 3);
  EXPECT_EQ(Rows(s.Open(), u"SELECT ID FROM tblSpots ORDER BY ID"_s), (QStringList{u"11"_s, u"12"_s, u"13"_s}));
}

TEST(Query, RowsMayBeCopiedWithinATable) {
  const SpotScratch s;
  EXPECT_EQ(s.Open().Execute(u"INSERT INTO tblSpots (ID, Naam) SELECT ID + 100, Naam FROM tblSpots"_s), 3);
  EXPECT_EQ(Rows(s.Open(), u"SELECT ID FROM tblSpots"_s).size(), 6);
}

// SQLite would take such a character for a byte order mark.
TEST(Query, ALeadingByteOrderMarkIsACharacterOfTheText) {
  const SpotScratch s;
  for (const char16_t mark : {u'\uFEFF', u'\uFFFE'}) {
    const QString name = QChar(mark) + u"Appel"_s;
    s.Open().Execute(u"UPDATE tblSpots SET Naam = \"%1\" WHERE ID = 1"_s.arg(name));
    EXPECT_EQ(Value(s.Open(), u"SELECT Naam FROM tblSpots WHERE ID = 1"_s, u"Naam"_s).toString(), name);
    EXPECT_EQ(Value(s.Open(), u"SELECT ID FROM tblSpots WHERE Naam = \"%1\""_s.arg(name), u"ID"_s), 1);
  }
}

// The next statement uses the same SQLite connection, which must keep no tables or failures of the previous one.
TEST(Query, NoStateOfAStatementReachesTheNext) {
  const SpotScratch s;
  dao::Database other = s.Another(u"ander.mdb"_s);
  other.CreateTable({u"tblSpots"_s, {Field(u"Titel"_s, dao::FieldType::Text, 20)}, {}});
  other.Execute(u"INSERT INTO tblSpots (Titel) VALUES (\"Peer\")"_s);
  EXPECT_EQ(Rows(s.Open(), u"SELECT * FROM tblSpots WHERE ID = 1"_s).size(), 1);
  EXPECT_EQ(Rows(other, u"SELECT * FROM tblSpots"_s), QStringList{u"Peer"_s});
  EXPECT_FALSE(ExecuteError(other, u"UPDATE tblSpots SET Naam = \"x\""_s).isEmpty());
  EXPECT_EQ(Rows(other, u"SELECT * FROM tblSpots"_s), QStringList{u"Peer"_s});
  EXPECT_FALSE(ErrorOf([&] { Rows(other, u"SELECT * FROM tblItems"_s); }).isEmpty());
  EXPECT_EQ(Rows(s.Open(), u"SELECT Naam FROM tblSpots WHERE ID = 3"_s), QStringList{u"Cola"_s});
}

TEST(Query, ATableWithANameReservedBySqliteIsRefused) {
  const Scratch s;
  s.Open().CreateTable(Spots(u"sqlite_master"_s));
  const QString error = ErrorOf([&] { Rows(s.Open(), u"SELECT * FROM sqlite_master"_s); });
  EXPECT_TRUE(error.contains(u"'sqlite_master'"_s) && error.contains(u"niet bruikbaar"_s)) << qPrintable(error);
}

}  // namespace

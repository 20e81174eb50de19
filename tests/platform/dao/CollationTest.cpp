// SPDX-License-Identifier: MIT
#include "tests/platform/dao/Scratch.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace scratch;

namespace {

TEST(Collation, EqualityOrderAndMaximumIgnoreLetterCase) {
  const SpotScratch s;
  s.Open().Execute(u"INSERT INTO tblSpots (ID, Naam) VALUES (4, \"ÉCLAIR\")"_s);
  EXPECT_EQ(Rows(s.Open(), u"SELECT ID FROM tblSpots WHERE Naam = \"éclair\""_s), QStringList{u"4"_s});
  EXPECT_EQ(Rows(s.Open(), u"SELECT Naam FROM tblSpots WHERE ID < 4 ORDER BY Naam DESC"_s),
            (QStringList{u"Cola"_s, u"bier"_s, u"Appel"_s}));
  EXPECT_EQ(Value(s.Open(), u"SELECT MAX(Naam) AS x FROM tblSpots WHERE ID < 4"_s, u"x"_s), u"Cola"_s);
}

TEST(Collation, DistinctAndGroupsIgnoreLetterCase) {
  const SpotScratch s;
  s.Open().Execute(u"INSERT INTO tblSpots (ID, Naam) VALUES (4, \"COLA\")"_s);
  EXPECT_EQ(Rows(s.Open(), u"SELECT DISTINCT Naam FROM tblSpots"_s).size(), 3);
  EXPECT_EQ(Rows(s.Open(), u"SELECT COUNT(*) AS n FROM tblSpots GROUP BY Naam ORDER BY Naam"_s),
            (QStringList{u"1"_s, u"1"_s, u"2"_s}));
}

TEST(Collation, UCaseHandlesAllLettersAndComparesWithoutCase) {
  const SpotScratch s;
  s.Open().Execute(u"UPDATE tblSpots SET Naam = \"crème brûlée ß\" WHERE ID = 1"_s);
  EXPECT_EQ(Value(s.Open(), u"SELECT UCase(Naam) AS x FROM tblSpots WHERE ID = 1"_s, u"x"_s), u"CRÈME BRÛLÉE ß"_s);
  EXPECT_EQ(Rows(s.Open(), u"SELECT tblSpots.ID From tblSpots WHERE UCase(tblSpots.Naam) =  \"Crème brûlée ß\""_s),
            QStringList{u"1"_s});
  EXPECT_EQ(Rows(s.Open(), u"SELECT ID FROM tblSpots WHERE \"cola\" = UCase(Naam) AND NOT tblSpots.ID = 2"_s),
            QStringList{u"3"_s});
  EXPECT_EQ(Rows(s.Open(), u"SELECT ID FROM tblSpots WHERE UCase((Naam)) IN (\"Bier\")"_s), QStringList{u"2"_s});
  EXPECT_EQ(Rows(s.Open(), u"SELECT UCase(Memo) AS x FROM tblSpots WHERE ID = 1"_s), QStringList{u"-"_s});
}

TEST(Collation, TextKeyIsUniqueWithoutCase) {
  const Scratch s;
  s.Open().CreateTable({u"cde"_s, {Field(u"InitCode"_s, dao::FieldType::Text, 50)}, {Key({u"InitCode"_s})}});
  s.Open().Execute(u"INSERT INTO cde (InitCode) VALUES (\"OnlineYn\")"_s);
  EXPECT_TRUE(ExecuteError(s.Open(), u"INSERT INTO cde (InitCode) VALUES (\"ONLINEYN\")"_s).contains(u"InitCode"_s));
  EXPECT_EQ(s.Open().Execute(u"UPDATE cde SET InitCode = \"x\" WHERE InitCode = 'onlineyn'"_s), 1);
}

TEST(Collation, OrderIsThatOfTheIndexes) {
  const SpotScratch s;
  dao::Database database = s.Open();
  database.Execute(u"DELETE FROM tblSpots"_s);
  const QStringList sorted = {u"Coop"_s, u"Co-op"_s, u"cote"_s, u"coté"_s, u"Côte"_s, u"zee"_s, u"Ω"_s};
  for (const qsizetype at : {3, 6, 0, 5, 2, 4, 1})
    database.Execute(u"INSERT INTO tblSpots (ID, Naam) VALUES (%1, \"%2\")"_s.arg(at).arg(sorted[at]));
  EXPECT_EQ(Rows(database, u"SELECT Naam FROM tblSpots ORDER BY Naam"_s), sorted);
  EXPECT_EQ(Value(database, u"SELECT MAX(Naam) AS x FROM tblSpots"_s, u"x"_s), sorted.last());
}

// SQLite's sorter stores rows of all lengths without padding, so that texts also begin at odd addresses.
TEST(Collation, TextsOfAnyLengthAreOrdered) {
  const SpotScratch s;
  dao::Database database = s.Open();
  database.Execute(u"DELETE FROM tblSpots"_s);
  QStringList texts;
  for (int number = 0; number < 60; ++number)
    texts += QString(number * 7 % 20, u'x') + QString(number * 37 % 600, u'a') + QString::number(100 + number);
  for (qsizetype at = 0; at < texts.size(); ++at)
    database.Execute(u"INSERT INTO tblSpots (ID, Memo) VALUES (%1, \"%2\")"_s.arg(at * at * at).arg(texts[at]));
  texts.sort();
  EXPECT_EQ(Rows(database, u"SELECT Memo FROM tblSpots ORDER BY Memo"_s), texts);
}

}  // namespace

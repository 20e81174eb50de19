// SPDX-License-Identifier: MIT
#include "tests/platform/dao/Scratch.h"

#include <gtest/gtest.h>

#include <random>

using namespace Qt::StringLiterals;
using namespace scratch;

namespace {

TEST(Dialect, DoubleQuotedTextIsALiteralNeverAColumn) {
  const SpotScratch s;
  EXPECT_EQ(s.Open().Execute(u"UPDATE tblSpots SET Naam = \"Memo\" WHERE ID = 1"_s), 1);
  EXPECT_EQ(Value(s.Open(), u"SELECT Naam FROM tblSpots WHERE ID = 1"_s, u"Naam"_s), u"Memo"_s);
  s.Open().Execute(u"UPDATE tblSpots SET Naam = \"Aktief\" WHERE Naam = \"Naam\""_s);
  EXPECT_EQ(Rows(s.Open(), u"SELECT Naam FROM tblSpots ORDER BY ID"_s), (QStringList{u"Memo"_s, u"bier"_s, u"Cola"_s}));
}

TEST(Dialect, ApostropheInsideDoubleQuotesIsOrdinary) {
  const SpotScratch s;
  s.Open().Execute(u"UPDATE tblSpots SET Naam = \"'t Café d'Or\" WHERE ID = 1"_s);
  EXPECT_EQ(Rows(s.Open(), u"SELECT Naam FROM tblSpots WHERE Naam = \"'t café D'OR\""_s),
            QStringList{u"'t Café d'Or"_s});
}

TEST(Dialect, DoubledQuotesInsideALiteralAreOne) {
  const SpotScratch s;
  s.Open().Execute(u"UPDATE tblSpots SET Naam = \"zeg \"\"ja\"\"\" WHERE ID = 1"_s);
  EXPECT_EQ(Value(s.Open(), u"SELECT Naam FROM tblSpots WHERE ID = 1"_s, u"Naam"_s), u"zeg \"ja\""_s);
  s.Open().Execute(u"UPDATE tblSpots SET Naam = 'd''r' WHERE ID = 1"_s);
  EXPECT_EQ(Value(s.Open(), u"SELECT Naam FROM tblSpots WHERE ID = 1"_s, u"Naam"_s), u"d'r"_s);
}

TEST(Dialect, SingleQuotedTextIsALiteralToo) {
  const SpotScratch s;
  EXPECT_EQ(Rows(s.Open(), u"SELECT ID FROM tblSpots WHERE Naam = 'say \"x\"' OR Naam = 'COLA'"_s),
            QStringList{u"3"_s});
}

TEST(Dialect, UnmatchedQuoteIsASyntaxErrorThatShowsTheStatement) {
  const SpotScratch s;
  const QString sql = u"UPDATE tblSpots SET Naam = 'NULL, Aktief = 1 WHERE ID = 1"_s;
  const QString error = ExecuteError(s.Open(), sql);
  EXPECT_TRUE(error.startsWith(u"Syntaxisfout"_s)) << qPrintable(error);
  EXPECT_TRUE(error.contains(sql));
  EXPECT_EQ(Value(s.Open(), u"SELECT Naam FROM tblSpots WHERE ID = 1"_s, u"Naam"_s), u"Appel"_s);
}

TEST(Dialect, NumberBehindALiteralIsASyntaxError) {
  const SpotScratch s;
  const QString error =
      ErrorOf([&] { s.Open().OpenRecordset(u"SELECT Naam From tblSpots WHERE UCase(Naam) = 'APPEL'3"_s); });
  EXPECT_TRUE(error.contains(u"syntaxisfout bij '3'"_s)) << qPrintable(error);
}

TEST(Dialect, OneCallTakesOneStatement) {
  const SpotScratch s;
  EXPECT_FALSE(ExecuteError(s.Open(), u"DELETE FROM tblSpots; DELETE FROM tblSpots"_s).isEmpty());
  EXPECT_EQ(Rows(s.Open(), u"SELECT ID FROM tblSpots"_s).size(), 3);
  EXPECT_EQ(s.Open().Execute(u"DELETE FROM tblSpots WHERE ID = 1 ; "_s), 1);
}

TEST(Dialect, OtherVerbsAreRefusedByName) {
  const SpotScratch s;
  for (const QString& sql : {u"DROP TABLE tblSpots"_s, u"CREATE TABLE x (y)"_s, u"PRAGMA encoding"_s,
                             u"ATTACH 'x' AS y"_s, u"REPLACE INTO tblSpots (ID) VALUES (9)"_s, u"BEGIN"_s, u"VACUUM"_s,
                             u"WITH x AS (SELECT 1) SELECT * FROM x"_s, u"VALUES (1)"_s, u"EXPLAIN SELECT 1"_s}) {
    const QString error = ExecuteError(s.Open(), sql);
    EXPECT_TRUE(error.contains(u"'%1' wordt niet ondersteund"_s.arg(sql.section(u' ', 0, 0)))) << qPrintable(error);
  }
  EXPECT_TRUE(ExecuteError(s.Open(), u"  "_s).contains(u"leeg"_s));
}

TEST(Dialect, CommentsAndUnknownCharactersAreRefused) {
  const SpotScratch s;
  EXPECT_TRUE(ExecuteError(s.Open(), u"DELETE FROM tblSpots -- alles"_s).contains(u"commentaar"_s));
  EXPECT_TRUE(ExecuteError(s.Open(), u"DELETE /* x */ FROM tblSpots"_s).contains(u"commentaar"_s));
  for (const QString& mark : {u"&"_s, u"?"_s, u":x"_s, u"@x"_s, u"`"_s, u"||"_s, u"{"_s, u"!"_s}) {
    EXPECT_TRUE(ExecuteError(s.Open(), u"UPDATE tblSpots SET Aktief = 1 %1 2"_s.arg(mark))
                    .contains(u"het teken '%1'"_s.arg(mark[0])));
  }
}

TEST(Dialect, SeveralValueRowsAreRefused) {
  const SpotScratch s;
  const QString error = ExecuteError(s.Open(), u"INSERT INTO tblSpots (ID) VALUES (7), (8)"_s);
  EXPECT_TRUE(error.contains(u"een rij waarden"_s)) << qPrintable(error);
  EXPECT_EQ(Rows(s.Open(), u"SELECT ID FROM tblSpots"_s).size(), 3);
}

TEST(Dialect, FieldSetTwiceIsRefusedByName) {
  const SpotScratch s;
  EXPECT_TRUE(ExecuteError(s.Open(), u"UPDATE tblSpots SET Naam = \"a\", NAAM = \"b\""_s).contains(u"'NAAM'"_s));
  EXPECT_TRUE(
      ExecuteError(s.Open(), u"INSERT INTO tblSpots (ID, Naam, id) VALUES (7, \"x\", 8)"_s).contains(u"'id'"_s));
}

TEST(Dialect, NamesIgnoreCaseAndMayBeInBrackets) {
  const SpotScratch s;
  EXPECT_EQ(Rows(s.Open(), u"select TBLSPOTS.naam as Code from tblspots where [tblSpots].[id]=2"_s),
            QStringList{u"bier"_s});
  EXPECT_EQ(s.Open().OpenRecordset(u"SELECT NAAM FROM tblSpots"_s).Field(u"naam"_s), u"Appel"_s);
}

TEST(Dialect, TableQualifiesTheColumnOfADelete) {
  const SpotScratch s;
  EXPECT_EQ(s.Open().Execute(u"DELETE FROM tblSpots WHERE tblSpots.ID = 2"_s), 1);
  EXPECT_EQ(s.Open().Execute(u"DELETE * FROM tblSpots WHERE ID = 3"_s), 1);
  EXPECT_EQ(Rows(s.Open(), u"SELECT tblSpots.* FROM tblSpots"_s), QStringList{u"1|Appel|1|-|-"_s});
}

TEST(Dialect, TableQualifiesAFieldThatIsSet) {
  const SpotScratch s;
  EXPECT_EQ(s.Open().Execute(u"UPDATE tblSpots SET tblSpots.Aktief = Aktief + 1, Naam=\"x\" WHERE ID=1"_s), 1);
  EXPECT_EQ(Rows(s.Open(), u"SELECT Aktief, Naam FROM tblSpots WHERE ID = 1"_s), QStringList{u"2|x"_s});
}

TEST(Dialect, TrueIsMinusOne) {
  const SpotScratch s;
  s.Open().Execute(u"UPDATE tblSpots SET Aktief = True WHERE ID = 1"_s);
  s.Open().Execute(u"UPDATE tblSpots SET Aktief = FALSE WHERE ID = 3"_s);
  EXPECT_EQ(Rows(s.Open(), u"SELECT Aktief FROM tblSpots ORDER BY ID"_s), (QStringList{u"-1"_s, u"0"_s, u"0"_s}));
}

TEST(Dialect, DivisionKeepsItsFraction) {
  const SpotScratch s;
  EXPECT_EQ(Rows(s.Open(), u"SELECT ID / 2 AS Half FROM tblSpots WHERE ID = 3"_s), QStringList{u"1.5"_s});
}

TEST(Dialect, ArithmeticWithATextIsRefusedByItsOperator) {
  const SpotScratch s;
  const struct {
    QString expression;
    QString operation;
  } cases[] = {{u"Naam + Naam"_s, u"+"_s},
               {u"Naam + \"x\""_s, u"+"_s},
               {u"\"x\" + 1"_s, u"+"_s},
               {u"ID + Naam"_s, u"+"_s},
               {u"1 - tblSpots.Naam"_s, u"-"_s},
               {u"tblSpots.Naam * 2"_s, u"*"_s},
               {u"UCase(Naam) + 1"_s, u"+"_s},
               {u"1 + LCase(Naam)"_s, u"+"_s},
               {u"(Naam) / 2"_s, u"/"_s},
               {u"ID * (2 + [Naam])"_s, u"+"_s},
               {u"-Naam"_s, u"-"_s},
               {u"ID + 1 + Naam"_s, u"+"_s},
               {u"(ID + 1) * ID - Naam"_s, u"-"_s},
               {u"MAX(Naam) + 1"_s, u"+"_s},
               {u"SUM(Naam)"_s, u"SUM"_s},
               {u"AVG(DISTINCT Naam)"_s, u"AVG"_s},
               {u"\"12\" + \"34\""_s, u"+"_s}};
  for (const auto& each : cases) {
    const QString sql = u"SELECT %1 AS Uit FROM tblSpots"_s.arg(each.expression);
    const QString error = ErrorOf([&] { s.Open().OpenRecordset(sql); });
    EXPECT_TRUE(error.contains(u": %1 werkt alleen met getallen, en '"_s.arg(each.operation)))
        << qPrintable(sql + u": "_s + error);
    EXPECT_TRUE(error.contains(sql)) << qPrintable(error);
  }
  EXPECT_TRUE(ExecuteError(s.Open(), u"UPDATE tblSpots SET ID = 10 + Naam"_s).contains(u"'Appel' is tekst"_s));
  EXPECT_TRUE(ExecuteError(s.Open(), u"DELETE FROM tblSpots WHERE Naam + Naam = 0"_s).contains(u"is tekst"_s));
  EXPECT_EQ(Rows(s.Open(), u"SELECT ID FROM tblSpots"_s), (QStringList{u"1"_s, u"2"_s, u"3"_s}));
}

TEST(Dialect, ArithmeticWithNumbersKeepsItsPrecedence) {
  const SpotScratch s;
  const auto result = [&](const QString& expression) {
    return Rows(s.Open(), u"SELECT %1 AS Uit FROM tblSpots WHERE ID = 3"_s.arg(expression)).value(0);
  };
  EXPECT_EQ(result(u"ID + 2 * ID"_s), u"9"_s);
  EXPECT_EQ(result(u"(ID + 2) * tblSpots.ID"_s), u"15"_s);
  EXPECT_EQ(result(u"-ID - -[ID] - 1"_s), u"-1"_s);
  EXPECT_EQ(result(u"2 * -ID"_s), u"-6"_s);
  EXPECT_EQ(result(u"(SELECT MAX(ID) FROM tblSpots) + 1"_s), u"4"_s);
  EXPECT_EQ(result(u"MAX(ID) + SUM(ID) + COUNT(*)"_s), u"7"_s);
  EXPECT_EQ(result(u"Memo + 1"_s), u"-"_s);
  EXPECT_EQ(result(u"NULL + ID"_s), u"-"_s);
  EXPECT_EQ(result(u"True + ID"_s), u"2"_s);
  EXPECT_EQ(Rows(s.Open(), u"SELECT tblSpots.*, ID + 1 AS Uit FROM tblSpots WHERE ID * 2 = 6 AND Naam = \"Cola\""_s),
            QStringList{u"3|Cola|1|-|-|4"_s});
}

TEST(Dialect, ExpressionsWithoutNameAreNumbered) {
  const SpotScratch s;
  EXPECT_EQ(Value(s.Open(), u"SELECT COUNT(*) FROM tblSpots"_s, u"Expr1000"_s), 3);
  EXPECT_EQ(Value(s.Open(), u"SELECT Naam, UCase(Naam) FROM tblSpots WHERE ID = 2"_s, u"Expr1001"_s), u"BIER"_s);
}

TEST(Dialect, UnknownNamesAreReported) {
  const SpotScratch s;
  const auto error = [&](const QString& sql) { return ErrorOf([&] { s.Open().OpenRecordset(sql); }); };
  EXPECT_TRUE(error(u"SELECT Foo FROM tblSpots"_s).contains(u"het veld 'Foo' bestaat niet"_s));
  EXPECT_TRUE(error(u"SELECT tblSpots.Foo FROM tblSpots"_s).contains(u"tblSpots.Foo"_s));
  EXPECT_TRUE(error(u"SELECT ID FROM tblFoo"_s).contains(u"de tabel 'tblFoo' bestaat niet"_s));
  EXPECT_TRUE(error(u"SELECT rowid FROM tblSpots"_s).contains(u"bestaat niet"_s));
  EXPECT_TRUE(error(u"SELECT name FROM sqlite_master"_s).contains(u"bestaat niet"_s));
  // A newer SQLite accepts the name of a join as that of a function.
  const QString left = error(u"SELECT Left(Naam, 2) FROM tblSpots"_s);
  EXPECT_TRUE(left.contains(u"yntaxisfout"_s) || left.contains(u"de functie LEFT bestaat niet"_s)) << qPrintable(left);
  EXPECT_TRUE(error(u"SELECT load_extension(Naam) FROM tblSpots"_s).contains(u"'load_extension'"_s));
  EXPECT_TRUE(ExecuteError(s.Open(), u"INSERT INTO tblFoo (ID) VALUES (1)"_s).contains(u"'tblFoo' bestaat niet"_s));
  EXPECT_TRUE(ExecuteError(s.Open(), u"INSERT INTO tblSpots (Foo) VALUES (1)"_s).contains(u"'Foo' bestaat niet"_s));
  EXPECT_TRUE(ExecuteError(s.Open(), u"UPDATE tblSpots SET Foo = 1"_s).contains(u"'Foo' bestaat niet"_s));
}

TEST(Dialect, KeywordsOfSqliteAreOrdinaryNames) {
  const SpotScratch s;
  const auto error = [&](const QString& sql) { return ErrorOf([&] { s.Open().OpenRecordset(sql); }); };
  for (const QString& tail :
       {u"LIMIT 1"_s, u"WHERE Naam GLOB \"a\""_s, u"WHERE Naam LIKE \"a*\""_s, u"WHERE Naam ISNULL"_s,
        u"EXCEPT SELECT ID FROM tblSpots"_s, u"WHERE Naam = \"a\" COLLATE NOCASE"_s, u"WHERE Naam == \"a\""_s}) {
    EXPECT_FALSE(error(u"SELECT ID FROM tblSpots "_s + tail).isEmpty()) << qPrintable(tail);
  }
  EXPECT_FALSE(ExecuteError(s.Open(), u"DELETE FROM tblSpots RETURNING ID"_s).isEmpty());
  EXPECT_FALSE(ExecuteError(s.Open(), u"UPDATE OR IGNORE tblSpots SET ID = 1"_s).isEmpty());
  EXPECT_EQ(Rows(s.Open(), u"SELECT ID FROM tblSpots"_s).size(), 3);
}

TEST(Dialect, ValueCountMustMatchTheFields) {
  const SpotScratch s;
  EXPECT_TRUE(
      ExecuteError(s.Open(), u"INSERT INTO tblSpots (ID, Naam) VALUES (7)"_s).contains(u"1 waarden voor 2 velden"_s));
  EXPECT_FALSE(ExecuteError(s.Open(), u"INSERT INTO tblSpots VALUES (7)"_s).isEmpty());
  EXPECT_EQ(s.Open().Execute(u"INSERT INTO tblSpots VALUES (7, \"x\", 1, NULL, NULL)"_s), 1);
}

TEST(Dialect, OpenRecordsetTakesSelectsExecuteTheOthers) {
  const SpotScratch s;
  EXPECT_TRUE(ExecuteError(s.Open(), u"SELECT ID FROM tblSpots"_s).contains(u"SELECT"_s));
  EXPECT_TRUE(ErrorOf([&] { s.Open().OpenRecordset(u"DELETE FROM tblSpots"_s); }).contains(u"alleen met SELECT"_s));
  EXPECT_EQ(Rows(s.Open(), u"SELECT ID FROM tblSpots"_s).size(), 3);
}

TEST(Dialect, NoBlankIsRequiredBeforeValues) {
  const SpotScratch s;
  EXPECT_EQ(s.Open().Execute(u"INSERT INTO tblSpots (ID, Naam)VALUES (8, \"x\")"_s), 1);
}

// Any text is either executed or a runtime::Error, and the table keeps its rows.
TEST(Dialect, RandomStatementsSucceedOrThrowAnError) {
  const SpotScratch s;
  dao::Database database = s.Open();
  const QStringList parts = {u"SELECT"_s, u"UPDATE"_s, u"SET"_s, u"FROM"_s, u"tblSpots"_s, u"ID"_s,     u"("_s,
                             u")"_s,      u","_s,      u"="_s,   u"*"_s,    u"."_s,        u"\"x\""_s,  u"'"_s,
                             u"["_s,      u"]"_s,      u"1"_s,   u";"_s,    u"WHERE"_s,    u"UCase("_s, u"IN"_s,
                             u"AS"_s,     u"NULL"_s,   u"/"_s,   u"é"_s,    u"\""_s,       u"+"_s,      u"-"_s};
  std::mt19937 random(1);
  for (int i = 0; i < 3000; ++i) {
    QString sql = i % 2 == 0 ? u"SELECT ID FROM tblSpots"_s : u"SELECT"_s;
    for (auto n = random() % 9; n > 0; --n)
      sql += u' ' + parts[static_cast<qsizetype>(random()) % parts.size()];
    ErrorOf([&] { database.OpenRecordset(sql); });
  }
  EXPECT_EQ(Rows(database, u"SELECT ID FROM tblSpots"_s).size(), 3);
}

}  // namespace

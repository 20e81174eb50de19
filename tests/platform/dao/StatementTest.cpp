// SPDX-License-Identifier: MIT
// How a statement of the dialect is rewritten for SQLite.
#include "platform/dao/Statement.h"

#include "tests/platform/dao/Scratch.h"

#include <gtest/gtest.h>

#include <utility>
#include <vector>

using namespace Qt::StringLiterals;
using dao::ParseStatement;
using dao::Statement;
using dao::Verb;

namespace {

QString Body(const QString& sql) {
  return ParseStatement(sql).body;
}

QString ParseError(const QString& sql) {
  return scratch::ErrorOf([&] { ParseStatement(sql); });
}

TEST(Statement, NamesAreQuotedAndKeywordsAreUpperCase) {
  EXPECT_EQ(Body(u"select ID, [mijn veld] from tblSpots where Naam is not null order by ID desc"_s),
            u"SELECT \"ID\" , \"mijn veld\" FROM \"tblSpots\" WHERE \"Naam\" IS NOT NULL ORDER BY \"ID\" DESC"_s);
  EXPECT_EQ(Body(u"SELECT [a\"b] FROM t"_s), u"SELECT \"a\"\"b\" FROM \"t\""_s);
}

TEST(Statement, AKeywordAfterAPointOrInBracketsIsAName) {
  EXPECT_EQ(Body(u"SELECT t.Order FROM t"_s), u"SELECT \"t\" . \"Order\" FROM \"t\""_s);
  EXPECT_EQ(Body(u"SELECT [From] FROM [Select]"_s), u"SELECT \"From\" FROM \"Select\""_s);
  EXPECT_EQ(Body(u"SELECT ROWID, LIMIT FROM t"_s), u"SELECT \"ROWID\" , \"LIMIT\" FROM \"t\""_s);
}

TEST(Statement, TextsAreNumberedParameters) {
  const Statement statement = ParseStatement(u"SELECT a FROM t WHERE a = \"x\" OR b = 'y' OR a = \"x\""_s);
  EXPECT_EQ(statement.body, u"SELECT \"a\" FROM \"t\" WHERE \"a\" = ?1 OR \"b\" = ?2 OR \"a\" = ?3"_s);
  EXPECT_EQ(statement.texts, (QStringList{u"x"_s, u"y"_s, u"x"_s}));
  EXPECT_EQ(statement.names, (QStringList{u"a"_s, u"t"_s, u"a"_s, u"b"_s, u"a"_s}));
}

TEST(Statement, ValuesOfTheDialectAreRewritten) {
  EXPECT_EQ(Body(u"SELECT a FROM t WHERE a = True AND b = false"_s),
            u"SELECT \"a\" FROM \"t\" WHERE \"a\" = (-1) AND \"b\" = 0"_s);
  EXPECT_EQ(Body(u"SELECT a / 2 AS h FROM t"_s), u"SELECT operand ( \"a\" , '/' ) * 1.0 / 2 AS \"h\" FROM \"t\""_s);
  EXPECT_EQ(Body(u"SELECT a FROM t WHERE UCase(a) = \"X\""_s),
            u"SELECT \"a\" FROM \"t\" WHERE UCASE ( \"a\" ) COLLATE jet = ?1"_s);
  EXPECT_EQ(Body(u"SELECT MAX(a) AS m FROM t"_s), u"SELECT MAX ( \"a\" ) AS \"m\" FROM \"t\""_s);
}

TEST(Statement, NumbersBeyondADoubleAreTexts) {
  const Statement statement = ParseStatement(u"UPDATE t SET a = -1234567890123456, b = 123456789012345"_s);
  EXPECT_EQ(statement.body, u"UPDATE \"t\" SET \"a\" = ?1 , \"b\" = 123456789012345"_s);
  EXPECT_EQ(statement.texts, QStringList{u"-1234567890123456"_s});
  EXPECT_EQ(ParseStatement(u"SELECT a FROM t WHERE a = b - 1234567890123456"_s).texts,
            QStringList{u"1234567890123456"_s});
}

TEST(Statement, OnlyExpressionsWithoutANameGetANumber) {
  const std::vector<std::pair<QString, QString>> cases = {
      {u"a"_s, u"\"a\""_s},
      {u"t.a"_s, u"\"t\" . \"a\""_s},
      {u"*"_s, u"*"_s},
      {u"t.*"_s, u"\"t\" . *"_s},
      {u"a AS b"_s, u"\"a\" AS \"b\""_s},
      {u"a + b"_s, u"operand ( \"a\" , '+' ) + operand ( \"b\" , '+' ) AS \"Expr1000\""_s},
      {u"-a"_s, u"- operand ( \"a\" , '-' ) AS \"Expr1000\""_s},
      {u"MAX(a)"_s, u"MAX ( \"a\" ) AS \"Expr1000\""_s},
      {u"\"x\""_s, u"?1 AS \"Expr1000\""_s},
      {u"a, 1, b, 2"_s, u"\"a\" , 1 AS \"Expr1001\" , \"b\" , 2 AS \"Expr1003\""_s},
      {u"DISTINCT a"_s, u"DISTINCT \"a\""_s},
      {u"(SELECT MAX(b) FROM u)"_s, u"( SELECT MAX ( \"b\" ) FROM \"u\" ) AS \"Expr1000\""_s}};
  for (const auto& [list, expected] : cases)
    EXPECT_EQ(Body(u"SELECT %1 FROM t"_s.arg(list)), u"SELECT %1 FROM \"t\""_s.arg(expected)) << qPrintable(list);
}

TEST(Statement, InsertHasItsTargetAndFields) {
  const Statement values = ParseStatement(u"INSERT INTO t (a, [b c]) VALUES (1, \"x\")"_s);
  EXPECT_EQ(values.verb, Verb::Insert);
  EXPECT_EQ(values.target, u"t"_s);
  EXPECT_EQ(values.fields, (QStringList{u"a"_s, u"b c"_s}));
  EXPECT_EQ(values.body, u"VALUES ( 1 , ?1 )"_s);
  EXPECT_FALSE(values.fromSelect);
  EXPECT_FALSE(values.inFile.has_value());
  const Statement select = ParseStatement(u"INSERT INTO t IN \"D:\\a.mdb\" SELECT a, b FROM u WHERE a > 1"_s);
  EXPECT_TRUE(select.fromSelect);
  EXPECT_EQ(select.inFile, u"D:\\a.mdb"_s);
  EXPECT_EQ(select.body, u"SELECT \"a\" , \"b\" FROM \"u\" WHERE \"a\" > 1"_s);
}

TEST(Statement, ACompleteTableIsRecognised) {
  EXPECT_EQ(ParseStatement(u"INSERT INTO t SELECT * FROM u;"_s).wholeTable, u"u"_s);
  EXPECT_EQ(ParseStatement(u"INSERT INTO t SELECT * FROM [u v]"_s).wholeTable, u"u v"_s);
  for (const QString& sql : {u"INSERT INTO t (a) SELECT * FROM u"_s, u"INSERT INTO t SELECT a FROM u"_s,
                             u"INSERT INTO t SELECT * FROM u WHERE a = 1"_s, u"INSERT INTO t SELECT * FROM u, v"_s,
                             u"INSERT INTO t SELECT u.* FROM u"_s})
    EXPECT_TRUE(ParseStatement(sql).wholeTable.isEmpty()) << qPrintable(sql);
}

TEST(Statement, UpdateAndDeleteKnowWhetherTheyHaveACondition) {
  const Statement update = ParseStatement(u"UPDATE t SET t.a = 1, b = a + 1 WHERE ID = 2"_s);
  EXPECT_EQ(update.verb, Verb::Update);
  EXPECT_EQ(update.fields, (QStringList{u"a"_s, u"b"_s}));
  EXPECT_EQ(update.body, u"UPDATE \"t\" SET \"a\" = 1 , \"b\" = operand ( \"a\" , '+' ) + 1 WHERE \"ID\" = 2"_s);
  EXPECT_FALSE(update.everyRow);
  EXPECT_TRUE(ParseStatement(u"UPDATE t SET a = 1"_s).everyRow);
  const Statement deletion = ParseStatement(u"DELETE * FROM t"_s);
  EXPECT_EQ(deletion.verb, Verb::Delete);
  EXPECT_TRUE(deletion.everyRow);
  EXPECT_EQ(deletion.body, u"DELETE FROM \"t\""_s);
  EXPECT_FALSE(ParseStatement(u"DELETE FROM t WHERE a = 1"_s).everyRow);
}

TEST(Statement, ASignBelongsToItsOwnValue) {
  EXPECT_EQ(ParseStatement(u"UPDATE t SET a = \"x\", b = -7, c = d, e = -1 WHERE ID = -2"_s).body,
            u"UPDATE \"t\" SET \"a\" = ?1 , \"b\" = - 7 , \"c\" = \"d\" , \"e\" = - 1 WHERE \"ID\" = - 2"_s);
}

TEST(Statement, IncompleteStatementsAreErrors) {
  for (const QString& sql : {u"SELECT"_s, u"INSERT"_s, u"INSERT INTO"_s, u"INSERT INTO t"_s, u"INSERT INTO t (a"_s,
                             u"INSERT INTO t VALUES"_s, u"UPDATE t"_s, u"UPDATE t SET"_s, u"UPDATE t SET a"_s,
                             u"UPDATE t SET a ="_s, u"DELETE"_s, u"DELETE FROM"_s})
    EXPECT_TRUE(ParseError(sql).contains(u"niet volledig"_s)) << qPrintable(sql) << ": " << qPrintable(ParseError(sql));
}

TEST(Statement, UnexpectedWordsAreNamed) {
  const std::vector<std::pair<QString, QString>> cases = {
      {u"INSERT t VALUES (1)"_s, u"'t'"_s},           {u"INSERT INTO Select VALUES (1)"_s, u"'Select'"_s},
      {u"INSERT INTO t (1) VALUES (1)"_s, u"'1'"_s},  {u"UPDATE t SET u.a = 1"_s, u"'a'"_s},
      {u"UPDATE t WHERE a = 1"_s, u"'WHERE'"_s},      {u"DELETE a FROM t"_s, u"'a'"_s},
      {u"DELETE FROM t ORDER BY a"_s, u"'ORDER'"_s},  {u"SELECT FROM t"_s, u"'FROM'"_s},
      {u"INSERT INTO t IN u VALUES (1)"_s, u"'u'"_s}, {u"INSERT INTO t VALUES 1"_s, u"'1'"_s}};
  for (const auto& [sql, word] : cases)
    EXPECT_TRUE(ParseError(sql).contains(word + u" wordt hier niet verwacht"_s)) << qPrintable(ParseError(sql));
}

TEST(Statement, ParenthesesMustMatch) {
  EXPECT_TRUE(ParseError(u"SELECT a FROM t WHERE (a = 1"_s).contains(u"haakje wordt niet gesloten"_s));
  EXPECT_TRUE(ParseError(u"SELECT a FROM t WHERE a = 1)"_s).contains(u"haakje te veel"_s));
  EXPECT_TRUE(ParseError(u"INSERT INTO t VALUES (1), (2)"_s).contains(u"een rij waarden"_s));
}

TEST(Statement, FunctionsOutsideTheDialectAreErrors) {
  for (const QString& call : {u"Mid(a, 1)"_s, u"Now()"_s, u"load_extension(\"x\")"_s, u"Len(a)"_s})
    EXPECT_TRUE(ParseError(u"SELECT %1 FROM t"_s.arg(call)).contains(u"wordt niet ondersteund"_s)) << qPrintable(call);
}

TEST(Statement, ErrorsShowAtMostTheStartOfALongStatement) {
  const QString error = ParseError(u"SELECT a FROM t WHERE ("_s + QString(5000, u'x'));
  EXPECT_LT(error.size(), 750);
  EXPECT_TRUE(error.endsWith(u" ..."_s));
}

}  // namespace

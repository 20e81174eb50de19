// SPDX-License-Identifier: MIT
// Values and texts on their way through SQLite.
#include "platform/dao/Sqlite.h"

#include "platform/dao/SqlFunctions.h"
#include "platform/dao/SqlText.h"
#include "platform/jet/values/TextOrder.h"

#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <random>
#include <string>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

class SqliteValues : public testing::Test {
 protected:
  SqliteValues() {
    dao::SetUpSqlite();
    sqlite3* connection = nullptr;
    EXPECT_EQ(sqlite3_open16(u":memory:", &connection), SQLITE_OK);
    connection_.reset(connection);
    dao::AddTextOrder(connection);
    dao::AddSqlFunctions(connection);
  }

  // The value of an expression of the parameters ?1, ?2, ...
  dao::Value Evaluate(const QString& expression, const std::vector<dao::Value>& parameters) {
    const dao::SqliteStatement statement = dao::Compile(connection_.get(), u"SELECT "_s + expression);
    EXPECT_TRUE(statement) << sqlite3_errmsg16(connection_.get());
    for (std::size_t i = 0; i < parameters.size(); ++i)
      dao::Bind(statement.get(), static_cast<int>(i) + 1, dao::View(parameters[i]));
    EXPECT_EQ(sqlite3_step(statement.get()), SQLITE_ROW);
    return dao::Owned(dao::ValueOf(sqlite3_column_value(statement.get(), 0)));
  }

  dao::SqliteConnection connection_;
};

TEST_F(SqliteValues, EveryKindRoundTrips) {
  const std::vector<dao::Value> values = {dao::Value(),
                                          std::int64_t{0},
                                          std::int64_t{-1} << 62,
                                          0.1,
                                          std::u16string(),
                                          std::u16string(u"caf\u00E9 \U0001F600"),
                                          std::u16string(u"a\0b", 3),
                                          dao::Bytes{},
                                          dao::Bytes{0, 1, 255}};
  for (const dao::Value& value : values)
    EXPECT_EQ(Evaluate(u"?1"_s, {value}), value) << value.index();
}

TEST_F(SqliteValues, ALeadingByteOrderMarkIsKept) {
  for (const std::u16string& text : {std::u16string(u"\uFEFFabc"), std::u16string(u"\uFFFEabc"),
                                     std::u16string(u"\uFEFF\uFEFF"), std::u16string(u"a\uFEFF")}) {
    EXPECT_EQ(Evaluate(u"?1"_s, {text}), dao::Value(text));
    EXPECT_EQ(Evaluate(u"lcase(?1)"_s, {text}), dao::Value(text));
  }
}

TEST_F(SqliteValues, TheCollationOrdersAsDatabaseFilesDo) {
  const jet::TextOrder& order = jet::TextOrder::Legacy();
  const std::vector<std::u16string> texts = {u"",
                                             u"a",
                                             u"A",
                                             u"b",
                                             u"B",
                                             u"\u00E9",
                                             u"e",
                                             u"f",
                                             u"a b",
                                             u"a-b",
                                             u"ab",
                                             u"1",
                                             u"10",
                                             u"2",
                                             u"\u00DF",
                                             u"ss",
                                             u"\u0133",
                                             u"ij",
                                             std::u16string(300, u'x')};
  for (const std::u16string& left : texts) {
    for (const std::u16string& right : texts) {
      const int expected = order.Compare(left, right);
      EXPECT_EQ(Evaluate(u"?1 = ?2 COLLATE jet"_s, {left, right}), dao::Value(std::int64_t{expected == 0}));
      EXPECT_EQ(Evaluate(u"?1 < ?2 COLLATE jet"_s, {left, right}), dao::Value(std::int64_t{expected < 0}));
    }
  }
}

TEST_F(SqliteValues, SortingUsesTheCollationForTextsOfEveryLength) {
  ASSERT_EQ(sqlite3_exec(connection_.get(), "CREATE TABLE t (a TEXT COLLATE jet, pad BLOB)", nullptr, nullptr, nullptr),
            SQLITE_OK);
  std::mt19937 random(9);
  const dao::SqliteStatement insert = dao::Compile(connection_.get(), u"INSERT INTO t VALUES (?1, ?2)"_s);
  for (int i = 0; i < 500; ++i) {
    std::u16string text;
    for (auto length = random() % 300; text.size() < length;)
      text += static_cast<char16_t>((random() % 2 == 0 ? u'a' : u'A') + random() % 26);
    dao::Bind(insert.get(), 1, std::u16string_view(text));
    const dao::Bytes pad(random() % 5);
    dao::Bind(insert.get(), 2, std::span<const std::uint8_t>(pad));
    ASSERT_EQ(sqlite3_step(insert.get()), SQLITE_DONE);
    sqlite3_reset(insert.get());
  }
  const dao::SqliteStatement select = dao::Compile(connection_.get(), u"SELECT a, pad FROM t ORDER BY a"_s);
  dao::Value previous = std::u16string();
  int rows = 0;
  for (; sqlite3_step(select.get()) == SQLITE_ROW; ++rows) {
    const dao::Value current = dao::Owned(dao::ValueOf(sqlite3_column_value(select.get(), 0)));
    EXPECT_LE(jet::TextOrder::Legacy().Compare(std::get<std::u16string>(previous), std::get<std::u16string>(current)),
              0);
    previous = current;
  }
  EXPECT_EQ(rows, 500);
}

TEST_F(SqliteValues, UCaseAndLCaseKeepTheLength) {
  EXPECT_EQ(Evaluate(u"ucase(?1)"_s, {std::u16string(u"stra\u00DFe \u00E9\u0133")}),
            dao::Value(std::u16string(u"STRA\u00DFE \u00C9\u0132")));
  EXPECT_EQ(Evaluate(u"lcase(?1)"_s, {std::u16string(u"\u00C9\u0130X")}).index(), dao::Value(std::u16string()).index());
  EXPECT_EQ(std::get<std::u16string>(Evaluate(u"lcase(?1)"_s, {std::u16string(u"\u00C9\u0130X")})).size(), 3U);
  EXPECT_EQ(Evaluate(u"ucase(?1)"_s, {dao::Value()}), dao::Value());
  EXPECT_EQ(Evaluate(u"ucase(?1)"_s, {std::int64_t{12}}), dao::Value(std::u16string(u"12")));
}

TEST_F(SqliteValues, AnInvalidStatementIsNull) {
  EXPECT_FALSE(dao::Compile(connection_.get(), u"SELECT FROM"_s));
  EXPECT_NE(std::string(sqlite3_errmsg(connection_.get())).find("syntax error"), std::string::npos);
}

TEST(SqlNames, AreQuotedWithDoubledQuotes) {
  EXPECT_EQ(dao::QuotedName(u"mijn veld"_s), u"\"mijn veld\""_s);
  EXPECT_EQ(dao::QuotedName(u"a\"b"_s), u"\"a\"\"b\""_s);
  EXPECT_EQ(dao::QuotedName(QString()), u"\"\""_s);
}

TEST(SqlNames, OnlyFunctionsOfTheDialectAreAllowed) {
  for (const char* name : {"max", "MIN", "Count", "sum", "avg", "ucase", "LCase"})
    EXPECT_TRUE(dao::IsDialectFunction(name)) << name;
  for (const char* name : {"upper", "lower", "load_extension", "random", "length", "", "maxx"})
    EXPECT_FALSE(dao::IsDialectFunction(name)) << name;
}

TEST(SqlNames, ALongStatementIsShortened) {
  EXPECT_EQ(dao::Shown(QString(600, u'x')), QString(600, u'x'));
  EXPECT_EQ(dao::Shown(QString(601, u'x')), QString(600, u'x') + u" ..."_s);
}

}  // namespace

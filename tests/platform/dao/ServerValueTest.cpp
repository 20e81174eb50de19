// SPDX-License-Identifier: MIT
// Values in the text format of a server, and definitions; needs no server.
#include "platform/dao/postgres/ServerValue.h"

#include "platform/dao/postgres/Catalog.h"
#include "platform/dao/postgres/TableDefText.h"
#include "platform/jet/values/TextOrder.h"
#include "tests/platform/dao/Scratch.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <utility>
#include <vector>

using namespace Qt::StringLiterals;
using dao::FieldType;

namespace {

dao::FieldDef ServerField(FieldType type) {
  return scratch::Field(u"Veld"_s, type, type == FieldType::Text ? 50 : 0);
}

dao::Value Parsed(FieldType type, const char* reply) {
  std::u16string text;
  dao::Bytes bytes;
  return dao::Owned(dao::ValueOfText(ServerField(type), reply, text, bytes));
}

TEST(ServerValues, EachTypeIsParsed) {
  EXPECT_EQ(Parsed(FieldType::Boolean, "-1"), dao::Value(std::int64_t{-1}));
  EXPECT_EQ(Parsed(FieldType::Byte, "255"), dao::Value(std::int64_t{255}));
  EXPECT_EQ(Parsed(FieldType::Long, "-2147483648"), dao::Value(std::int64_t{-2147483648LL}));
  EXPECT_EQ(Parsed(FieldType::Double, "0.1"), dao::Value(0.1));
  EXPECT_EQ(Parsed(FieldType::Double, "1e-300"), dao::Value(1e-300));
  EXPECT_EQ(Parsed(FieldType::Single, "0.1"), dao::Value(static_cast<double>(0.1F)));
  EXPECT_EQ(Parsed(FieldType::Currency, "12.3400"), dao::Value(12.34));
  EXPECT_EQ(Parsed(FieldType::Currency, "-922337203685477.5808"), dao::Value(std::u16string(u"-922337203685477.5808")));
  EXPECT_EQ(Parsed(FieldType::Numeric, "0.250"), dao::Value(0.25));
  EXPECT_EQ(Parsed(FieldType::Text, "caf\xC3\xA9 \xF0\x9F\x98\x80"),
            dao::Value(std::u16string(u"caf\u00E9 \U0001F600")));
  EXPECT_EQ(Parsed(FieldType::Memo, ""), dao::Value(std::u16string()));
  EXPECT_EQ(Parsed(FieldType::Guid, "0a0b0c0d-1111-2222-3333-444455556666"),
            dao::Value(std::u16string(u"{0A0B0C0D-1111-2222-3333-444455556666}")));
  EXPECT_EQ(Parsed(FieldType::Binary, "\\x00ff7a"), dao::Value(dao::Bytes{0, 255, 122}));
  EXPECT_EQ(Parsed(FieldType::Binary, "\\x"), dao::Value(dao::Bytes{}));
}

TEST(ServerValues, LeadingByteOrderMarksAreKept) {
  EXPECT_EQ(Parsed(FieldType::Text,
                   "\xEF\xBB\xBF\xEF\xBB\xBF"
                   "a"),
            dao::Value(std::u16string(u"\uFEFF\uFEFFa")));
}

TEST(ServerValues, MomentsAreExactToTheMicrosecond) {
  const auto day = [](const char* text) { return std::get<double>(Parsed(FieldType::Date, text)); };
  EXPECT_EQ(day("2025-01-01 00:00:00"), 45658.0);
  EXPECT_EQ(day("2025-01-01 18:00:00"), 45658.75);
  EXPECT_EQ(day("1899-12-29 06:00:00"), -0.75);
  EXPECT_EQ(day("0100-01-01 00:00:00"), -657434.0);
  EXPECT_EQ(day("9999-12-31 12:00:00"), 2958465.5);
  for (const auto& [text, micros] : {std::pair{"2025-01-01 00:00:00.5", 500000},
                                     {"2025-01-01 00:00:00.000001", 1},
                                     {"2025-01-01 00:00:00.12", 120000},
                                     {"2025-01-01 00:00:01.25", 1250000}})
    EXPECT_EQ(std::llround((day(text) - 45658) * 86'400'000'000.0), micros) << text;
}

TEST(ServerValues, EachTypeHasItsColumnType) {
  dao::FieldDef numeric = ServerField(FieldType::Numeric);
  numeric.precision = 12;
  numeric.scale = 3;
  EXPECT_EQ(dao::ColumnTypeOf(numeric), "numeric(12,3)");
  EXPECT_EQ(dao::ColumnTypeOf(ServerField(FieldType::Text)), "varchar(50) COLLATE \"C\"");
  const std::vector<std::pair<FieldType, std::string>> cases = {{FieldType::Boolean, "smallint"},
                                                                {FieldType::Byte, "smallint"},
                                                                {FieldType::Integer, "smallint"},
                                                                {FieldType::Long, "integer"},
                                                                {FieldType::Currency, "numeric(19,4)"},
                                                                {FieldType::Single, "real"},
                                                                {FieldType::Double, "double precision"},
                                                                {FieldType::Date, "timestamp"},
                                                                {FieldType::Memo, "text COLLATE \"C\""},
                                                                {FieldType::Binary, "bytea"},
                                                                {FieldType::Guid, "uuid"}};
  for (const auto& [type, expected] : cases)
    EXPECT_EQ(dao::ColumnTypeOf(ServerField(type)), expected);
}

TEST(ServerValues, TextsThatAreEqualHaveEqualKeys) {
  const std::vector<std::u16string> texts = {u"",     u"a",   u"A",      u"caf\u00E9", u"CAF\u00C9",
                                             u"cafe", u"a b", u"\u6F22", u"\u6F22x",   u"\u6F22X"};
  const jet::TextOrder& order = jet::TextOrder::Legacy();
  for (const std::u16string& left : texts) {
    for (const std::u16string& right : texts) {
      if (order.FirstUnknown(left) || order.FirstUnknown(right)) continue;
      EXPECT_EQ(dao::OrderKeyLiteral(left) == dao::OrderKeyLiteral(right), order.Compare(left, right) == 0);
    }
  }
  EXPECT_EQ(dao::OrderKeyLiteral(dao::Value()), "NULL");
  EXPECT_EQ(dao::OrderKeyLiteral(std::u16string(u"\u6F22x")), dao::OrderKeyLiteral(std::u16string(u"\u6F22X")));
  EXPECT_NE(dao::OrderKeyLiteral(std::u16string(u"\u6F22")), dao::OrderKeyLiteral(std::u16string(u"\u6F23")));
}

dao::TableDef EverythingDefined() {
  dao::TableDef table{u"tbl\"Alles"_s, {}, {}};
  for (int type = 0; type < 13; ++type) {
    dao::FieldDef field = scratch::Field(u"v\u00E9ld %1"_s.arg(type), static_cast<FieldType>(type), type * 7);
    field.required = type % 2 == 0;
    field.allowZeroLength = type % 3 == 0;
    field.autoNumber = type == 3;
    field.precision = 10 + type;
    field.scale = type;
    table.fields += field;
  }
  table.fields[1].defaultValue = 7;
  table.fields[8].defaultValue = u"a\"b"_s;
  table.fields[7].defaultExpression = u"Now()"_s;
  dao::IndexDef index = scratch::Index(u"Op"_s, {table.fields[8].name, table.fields[1].name});
  index.fields[1].direction = dao::Direction::Descending;
  index.unique = index.ignoreNull = true;
  table.indexes = {scratch::Key({table.fields[3].name}), index};
  return table;
}

TEST(ServerDefinitions, ATableRoundTripsAsText) {
  const dao::TableDef table = EverythingDefined();
  const dao::TableDef read = dao::TableDefOfText(dao::TextOfTableDef(table));
  EXPECT_EQ(read.name, table.name);
  ASSERT_EQ(read.fields.size(), table.fields.size());
  for (qsizetype i = 0; i < table.fields.size(); ++i)
    EXPECT_EQ(read.fields[i], table.fields[i]) << qPrintable(table.fields[i].name);
  EXPECT_EQ(read.indexes, table.indexes);
}

TEST(ServerDefinitions, OnlyTextsOfUniqueIndexesHaveAnOrderColumn) {
  dao::TableDef table = scratch::Spots();
  EXPECT_FALSE(dao::HasOrderColumn(table, 1));
  table.indexes += scratch::Index(u"OpNaam"_s, {u"naam"_s});
  EXPECT_FALSE(dao::HasOrderColumn(table, 1));
  table.indexes.last().unique = true;
  EXPECT_TRUE(dao::HasOrderColumn(table, 1));
  EXPECT_FALSE(dao::HasOrderColumn(table, 0));
  EXPECT_EQ(dao::OrderColumn(1), "spotrooster_order_2");
}

TEST(ServerDefinitions, IndexNamesFitTheServer) {
  dao::TableDef table = scratch::Spots();
  EXPECT_EQ(dao::ServerIndexName(table, scratch::Index(u"OpNaam"_s, {})), u"tblSpots_OpNaam"_s);
  const QString one = dao::ServerIndexName(table, scratch::Index(QString(60, u'x'), {}));
  const QString other = dao::ServerIndexName(table, scratch::Index(QString(59, u'x') + u'y', {}));
  EXPECT_LE(one.size(), 63);
  EXPECT_NE(one, other);
}

TEST(ServerDefinitions, NamesAreQuoted) {
  EXPECT_EQ(dao::QuotedServerName(u"a\"b"_s), "\"a\"\"b\"");
  dao::Catalog catalog;
  catalog.schema = u"Zender 3"_s;
  EXPECT_EQ(catalog.Quoted(u"tblSpots"_s), "\"Zender 3\".\"tblSpots\"");
  const std::string statements = dao::SchemaStatements(u"x\"; DROP SCHEMA y; --"_s);
  EXPECT_EQ(statements.find("CREATE SCHEMA IF NOT EXISTS \"x\"\"; DROP SCHEMA y; --\";"), 0U) << statements;
}

}  // namespace

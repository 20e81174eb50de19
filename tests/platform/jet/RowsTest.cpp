// SPDX-License-Identifier: MIT
#include "platform/jet/rows/RowBuilder.h"
#include "platform/jet/rows/RowView.h"
#include "platform/jet/values/Codec.h"
#include "platform/jet/values/Error.h"
#include "tests/platform/jet/SpotsImage.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

using jet::Bytes;
using jet::ColumnType;
using jet::Value;

jet::StoredColumn Column(ColumnType type, std::uint16_t number, std::uint16_t place, bool fixed) {
  jet::StoredColumn column;
  column.rawType = static_cast<std::uint8_t>(type);
  column.number = number;
  column.flags = fixed ? 3 : 2;
  (fixed ? column.fixedOffset : column.variableIndex) = place;
  column.length = 510;
  return column;
}

jet::StoredTable Table(std::vector<jet::StoredColumn> columns, std::uint16_t variables) {
  jet::StoredTable table;
  table.maxColumns = static_cast<std::uint16_t>(columns.size());
  table.variableColumns = variables;
  table.columns = std::move(columns);
  return table;
}

Value Field(const jet::StoredTable& table, const Bytes& row, std::size_t column) {
  const auto database = OpenBytes(DatabaseImage().File());
  Value value;
  jet::ReadField(database->Source(), jet::RowView(row, table), table.columns[column], value);
  return value;
}

// A row of a sample table: number, company, telephone.
const Bytes kShipper = {0x03, 0x00, 0x01, 0x00, 0x00, 0x00, 0xFF, 0xFE, 'S',  'p',  'e',  'e',  'd',  'y',  ' ', 'E',
                        'x',  'p',  'r',  'e',  's',  's',  0xFF, 0xFE, '(',  '5',  '0',  '3',  ')',  ' ',  '5', '5',
                        '5',  '-',  '9',  '8',  '3',  '1',  0x26, 0x00, 0x16, 0x00, 0x06, 0x00, 0x02, 0x00, 0x07};
const jet::StoredTable kShippers = Table({Column(ColumnType::Long, 0, 0, true), Column(ColumnType::Text, 1, 0, false),
                                          Column(ColumnType::Text, 2, 1, false)},
                                         2);

TEST(Rows, ReadsARealRow) {
  EXPECT_EQ(Field(kShippers, kShipper, 0), Value(std::int64_t{1}));
  EXPECT_EQ(Field(kShippers, kShipper, 1), Value(u"Speedy Express"));
  EXPECT_EQ(Field(kShippers, kShipper, 2), Value(u"(503) 555-9831"));
}

TEST(Rows, ColumnsMadeLaterAreNullInOlderRows) {
  jet::StoredTable table = kShippers;
  table.maxColumns = 5;
  table.variableColumns = 3;
  table.columns.push_back(Column(ColumnType::Text, 3, 2, false));
  table.columns.push_back(Column(ColumnType::Boolean, 4, 0, true));
  EXPECT_EQ(Field(table, kShipper, 3), Value());
  EXPECT_EQ(Field(table, kShipper, 4), Value(false));
}

TEST(Rows, EmptyTextIsNotNull) {
  const jet::StoredTable table =
      Table({Column(ColumnType::Text, 0, 0, false), Column(ColumnType::Text, 1, 1, false)}, 2);
  const Bytes row = RowBytes(2, {}, {{}, {}}, 0b01);
  EXPECT_EQ(Field(table, row, 0), Value(u""));
  EXPECT_EQ(Field(table, row, 1), Value());
}

TEST(Rows, PaddingBeforeTheOffsetsIsSkipped) {
  const jet::StoredTable table = Table({Column(ColumnType::Text, 0, 0, false)}, 1);
  const Bytes row = Le(1, 2) + Utf16("ab") + Bytes(5, 0xEE) + Le(6, 2) + Le(2, 2) + Le(1, 2) + Bytes{1};
  EXPECT_EQ(Field(table, row, 0), Value(u"ab"));
}

TEST(Rows, NumbersMayLieInTheVariableArea) {
  const jet::StoredTable table = Table({Column(ColumnType::Long, 0, 0, false)}, 1);
  EXPECT_EQ(Field(table, RowBytes(1, {}, {Le(77, 4)}, 1), 0), Value(std::int64_t{77}));
  EXPECT_THROW(Field(table, RowBytes(1, {}, {Le(77, 3)}, 1), 0), jet::Error);
}

Value Decoded(ColumnType type, const Bytes& stored, std::uint8_t scale = 0) {
  jet::StoredColumn column = Column(type, 0, 0, true);
  column.scale = scale;
  Value value;
  jet::DecodeValue(column, stored, value);
  return value;
}

Bytes OfDouble(double number) {
  Bytes bytes(8);
  jet::Store(bytes.data(), number);
  return bytes;
}

TEST(Rows, DecodesEveryType) {
  EXPECT_EQ(Decoded(ColumnType::Byte, {200}), Value(std::int64_t{200}));
  EXPECT_EQ(Decoded(ColumnType::Integer, {0xFF, 0xFF}), Value(std::int64_t{-1}));
  EXPECT_EQ(Decoded(ColumnType::Long, {0, 0, 0, 0x80}), Value(std::int64_t{-2147483648}));
  EXPECT_EQ(Decoded(ColumnType::Currency, {0xE0, 0x22, 2, 0, 0, 0, 0, 0}), Value(jet::Currency{140000}));
  EXPECT_EQ(Decoded(ColumnType::Single, {0, 0, 0x20, 0x40}), Value(2.5));
  EXPECT_EQ(Decoded(ColumnType::Date, OfDouble(-1.25)), Value(-1.25));
  EXPECT_EQ(Decoded(ColumnType::Binary, {1, 2, 3}), Value(Bytes{1, 2, 3}));
  const Bytes minusOne = Bytes{0x80} + Bytes(12, 0) + Bytes{1, 0, 0, 0};
  EXPECT_EQ(Decoded(ColumnType::Decimal, minusOne, 2), Value(jet::Decimal{true, 2, 0, 1}));
  Bytes guid(16);
  for (std::size_t i = 0; i < guid.size(); ++i)
    guid[i] = static_cast<std::uint8_t>(i);
  EXPECT_EQ(std::get<jet::Guid>(Decoded(ColumnType::Guid, guid)).bytes[15], 15);
}

// Text of a fixed column fills its place with spaces, so that an empty text differs from null.
TEST(Rows, FixedTextIsPaddedWithSpaces) {
  jet::StoredTable table = Table({Column(ColumnType::Text, 0, 0, true)}, 0);
  table.columns[0].length = 2 * 3;
  const auto stored = [&](const std::u16string& text) {
    jet::Field field;
    jet::EncodeValue(table.columns[0], text, field.stored);
    field.bit = true;
    return Field(table, jet::RowBuilder(table).Build({field}), 0);
  };
  EXPECT_EQ(stored(u"ab"), Value(u"ab "));
  EXPECT_EQ(stored(u""), Value(u"   "));
  EXPECT_EQ(Field(table, jet::RowBuilder(table).Build({{}}), 0), Value());
  EXPECT_THROW(stored(u"abcd"), jet::Error);
}

TEST(Rows, EveryCutOfARowIsAnErrorOrAnotherRow) {
  const auto database = OpenBytes(DatabaseImage().File());
  for (std::size_t size = 0; size < kShipper.size(); ++size) {
    const Bytes row(kShipper.begin(), kShipper.begin() + static_cast<std::ptrdiff_t>(size));
    try {
      const jet::RowView view(row, kShippers);
      for (const jet::StoredColumn& column : kShippers.columns) {
        if (!view.Bit(column)) continue;
        const jet::ByteView bytes = view.BytesOf(column);
        EXPECT_TRUE(bytes.empty() || (bytes.data() >= row.data() && bytes.data() + bytes.size() <= row.data() + size));
      }
    } catch (const jet::Error& error) {
      EXPECT_EQ(error.Code(), jet::ErrorCode::Damaged);
    }
  }
}

}  // namespace

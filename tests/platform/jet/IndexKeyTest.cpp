// SPDX-License-Identifier: MIT
#include "platform/jet/index/IndexKey.h"

#include "platform/jet/values/Error.h"

#include <gtest/gtest.h>

#include <vector>

namespace jet {
namespace {

Bytes KeyOf(ColumnType type, const Value& value, bool ascending = true) {
  StoredColumn column;
  column.name = u"Naam";
  column.rawType = static_cast<std::uint8_t>(type);
  Bytes key;
  AppendKeyField(column, value, ascending, key);
  return key;
}

Value Number(std::int64_t number) {
  return number;
}

TEST(IndexKey, IsWhatRealFilesHold) {
  EXPECT_EQ(KeyOf(ColumnType::Long, Number(2)), (Bytes{0x7F, 0x80, 0, 0, 2}));
  EXPECT_EQ(KeyOf(ColumnType::Long, Number(-1)), (Bytes{0x7F, 0x7F, 0xFF, 0xFF, 0xFF}));
  EXPECT_EQ(KeyOf(ColumnType::Long, Number(5), false), (Bytes{0x80, 0x7F, 0xFF, 0xFF, 0xFA}));
  EXPECT_EQ(KeyOf(ColumnType::Date, 35000.0), (Bytes{0x7F, 0xC0, 0xE1, 0x17, 0, 0, 0, 0, 0}));
  EXPECT_EQ(KeyOf(ColumnType::Binary, Bytes{0, 0, 0, 1}), (Bytes{0x7F, 0, 0, 0, 1, 0, 0, 0, 0, 4}));
}

TEST(IndexKey, NullHasAFlagAndNothingElse) {
  EXPECT_EQ(KeyOf(ColumnType::Long, Value{}), Bytes{0x00});
  EXPECT_EQ(KeyOf(ColumnType::Text, Value{}, false), Bytes{0xFF});
}

TEST(IndexKey, CutsBinariesAndGuidsIntoPieces) {
  const Bytes nine = {1, 2, 3, 4, 5, 6, 7, 8, 9};
  EXPECT_EQ(KeyOf(ColumnType::Binary, nine), (Bytes{0x7F, 1, 2, 3, 4, 5, 6, 7, 8, 9, 9, 0, 0, 0, 0, 0, 0, 0, 1}));
  EXPECT_EQ(KeyOf(ColumnType::Binary, nine, false), (Bytes{0x80, 0xFE, 0xFD, 0xFC, 0xFB, 0xFA, 0xF9, 0xF8, 0xF7, 9,
                                                           0xF6, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFE}));
  Guid guid;
  for (std::uint8_t i = 0; i < 16; ++i)
    guid.bytes[i] = i;
  EXPECT_EQ(KeyOf(ColumnType::Guid, guid), (Bytes{0x7F, 3, 2, 1, 0, 5, 4, 7, 6, 9, 8, 9, 10, 11, 12, 13, 14, 15, 8}));
}

TEST(IndexKey, DescendingTextIsInvertedAndEndsInZero) {
  EXPECT_EQ(KeyOf(ColumnType::Text, std::u16string(u"Ab")), (Bytes{0x7F, 0x4A, 0x4C, 0x01, 0x00}));
  EXPECT_EQ(KeyOf(ColumnType::Text, std::u16string(u"Ab"), false), (Bytes{0x80, 0xB5, 0xB3, 0xFE, 0xFF, 0x00}));
}

TEST(IndexKey, SignOfADecimalIsTheSameInBothOrders) {
  const Decimal seven{.negative = false, .scale = 0, .high = 0, .low = 7};
  const Decimal minusSeven{.negative = true, .scale = 0, .high = 0, .low = 7};
  Bytes up = {0x7F, 0xFF, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 7};
  EXPECT_EQ(KeyOf(ColumnType::Decimal, seven), up);
  EXPECT_EQ(KeyOf(ColumnType::Decimal, minusSeven, false)[1], 0x00);
  EXPECT_EQ(KeyOf(ColumnType::Decimal, minusSeven, false)[17], 7);
  EXPECT_EQ(KeyOf(ColumnType::Decimal, minusSeven)[17], 0xF8);
  EXPECT_EQ(KeyOf(ColumnType::Decimal, seven, false)[17], 0xF8);
}

// Keys must sort as their values do, ascending and descending.
void ExpectSorted(ColumnType type, const std::vector<Value>& rising) {
  for (std::size_t i = 1; i < rising.size(); ++i) {
    EXPECT_LT(KeyOf(type, rising[i - 1]), KeyOf(type, rising[i])) << static_cast<int>(type) << " at " << i;
    EXPECT_GT(KeyOf(type, rising[i - 1], false), KeyOf(type, rising[i], false))
        << static_cast<int>(type) << " at " << i;
  }
}

TEST(IndexKey, SortsAsTheValuesDo) {
  ExpectSorted(ColumnType::Byte, {Value{}, Number(0), Number(127), Number(128), Number(255)});
  ExpectSorted(ColumnType::Integer, {Value{}, Number(-32768), Number(-1), Number(0), Number(32767)});
  ExpectSorted(ColumnType::Long, {Value{}, Number(INT32_MIN), Number(-1), Number(0), Number(1), Number(INT32_MAX)});
  ExpectSorted(ColumnType::Currency, {Value{}, Currency{INT64_MIN}, Currency{-1}, Currency{0}, Currency{INT64_MAX}});
  ExpectSorted(ColumnType::Single, {Value{}, -1e30, -1.5, -1e-30, 0.0, 1e-30, 1.5, 1e30});
  ExpectSorted(ColumnType::Double, {Value{}, -1e300, -1.5, -1e-300, 0.0, 1e-300, 1.5, 1e300});
  ExpectSorted(ColumnType::Date, {Value{}, -657434.0, -1.25, 0.0, 36526.5, 2958465.0});
  ExpectSorted(ColumnType::Boolean, {Value{}, true, false});
  ExpectSorted(ColumnType::Binary, {Value{}, Bytes{0}, Bytes{0, 0}, Bytes{0, 1}, Bytes{1}, Bytes(9, 1), Bytes{2}});
}

TEST(IndexKey, RefusesWhatCannotBeIndexed) {
  StoredColumn column;
  column.name = u"Plaatje";
  column.rawType = static_cast<std::uint8_t>(ColumnType::Ole);
  EXPECT_FALSE(CanBuildKeys(column));
  Bytes key;
  EXPECT_THROW(AppendKeyField(column, Bytes{1}, true, key), Error);
  column.rawType = static_cast<std::uint8_t>(ColumnType::Text);
  EXPECT_TRUE(CanBuildKeys(column));
  column.sortOrder.language = 0x0415;
  EXPECT_FALSE(CanBuildKeys(column));
  try {
    AppendKeyField(column, std::u16string(u"x"), true, key);
    FAIL();
  } catch (const Error& error) {
    EXPECT_STREQ(error.what(), "Veld 'Plaatje': De sorteervolgorde van de index is niet bekend.");
  }
}

}  // namespace
}  // namespace jet

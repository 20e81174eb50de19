// SPDX-License-Identifier: MIT
// Values of fields and their stored form in a database file.
#include "platform/dao/JetValue.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace {

jet::ColumnDefinition ColumnWith(jet::ColumnType type, int scale = 0) {
  jet::ColumnDefinition column;
  column.type = type;
  column.precision = 28;
  column.scale = static_cast<std::uint8_t>(scale);
  return column;
}

// The value as read after it was stored; nothing when the column cannot store it.
std::optional<dao::Value> RoundTrip(const jet::ColumnDefinition& column, const dao::Value& value) {
  const std::optional<jet::Value> stored = dao::StoredOf(column, value);
  if (!stored) return std::nullopt;
  std::u16string text;
  return dao::Owned(dao::ViewOf(*stored, text));
}

TEST(JetValue, EachKindRoundTripsThroughItsColumn) {
  using jet::ColumnType;
  const std::vector<std::pair<ColumnType, dao::Value>> cases = {
      {ColumnType::Boolean, std::int64_t{-1}},
      {ColumnType::Boolean, std::int64_t{0}},
      {ColumnType::Byte, std::int64_t{255}},
      {ColumnType::Integer, std::int64_t{-32768}},
      {ColumnType::Long, std::int64_t{2147483647}},
      {ColumnType::Single, 0.5},
      {ColumnType::Double, 0.1},
      {ColumnType::Date, 45658.25},
      {ColumnType::Text, std::u16string(u"caf\u00E9")},
      {ColumnType::Memo, std::u16string()},
      {ColumnType::Binary, dao::Bytes{0, 255}},
      {ColumnType::Ole, dao::Bytes{}},
      {ColumnType::Guid, std::u16string(u"{0A0B0C0D-1111-2222-3333-444455556666}")}};
  for (const auto& [type, value] : cases) {
    EXPECT_EQ(RoundTrip(ColumnWith(type), value), value) << static_cast<int>(type);
    EXPECT_EQ(RoundTrip(ColumnWith(type), dao::Value()), dao::Value()) << static_cast<int>(type);
  }
}

TEST(JetValue, AGuidIsStoredInItsMixedByteOrder) {
  const auto stored =
      dao::StoredOf(ColumnWith(jet::ColumnType::Guid), std::u16string(u"{00010203-0405-0607-0809-0A0B0C0D0E0F}"));
  ASSERT_TRUE(stored);
  const std::array<std::uint8_t, 16> expected = {3, 2, 1, 0, 5, 4, 7, 6, 8, 9, 10, 11, 12, 13, 14, 15};
  EXPECT_EQ(std::get<jet::Guid>(*stored).bytes, expected);
}

TEST(JetValue, WholeNumbersAreStoredInNumberColumns) {
  const dao::Value seven = std::int64_t{7};
  EXPECT_EQ(RoundTrip(ColumnWith(jet::ColumnType::Double), seven), dao::Value(7.0));
  EXPECT_EQ(RoundTrip(ColumnWith(jet::ColumnType::Currency), seven), dao::Value(7.0));
  EXPECT_EQ(RoundTrip(ColumnWith(jet::ColumnType::Decimal, 2), seven), dao::Value(7.0));
  EXPECT_EQ(RoundTrip(ColumnWith(jet::ColumnType::Date), seven), dao::Value(7.0));
  EXPECT_EQ(RoundTrip(ColumnWith(jet::ColumnType::Boolean), seven), dao::Value(std::int64_t{-1}));
}

TEST(JetValue, AValueOfAnotherKindIsNotStored) {
  for (const jet::ColumnType type :
       {jet::ColumnType::Text, jet::ColumnType::Memo, jet::ColumnType::Guid, jet::ColumnType::Binary}) {
    EXPECT_EQ(RoundTrip(ColumnWith(type), std::int64_t{7}), std::nullopt) << static_cast<int>(type);
    EXPECT_EQ(RoundTrip(ColumnWith(type), 0.5), std::nullopt) << static_cast<int>(type);
  }
  EXPECT_EQ(RoundTrip(ColumnWith(jet::ColumnType::Long), 0.5), std::nullopt);
  EXPECT_EQ(RoundTrip(ColumnWith(jet::ColumnType::Currency), std::u16string(u"kaart")), std::nullopt);
  EXPECT_EQ(RoundTrip(ColumnWith(jet::ColumnType::Decimal), std::u16string(u"kaart")), std::nullopt);
}

TEST(JetValue, AmountsAreExactToFourDecimals) {
  const jet::ColumnDefinition column = ColumnWith(jet::ColumnType::Currency);
  for (int unit = -20000; unit <= 20000; unit += 7) {
    const double amount = unit / 10000.0;
    const auto stored = dao::StoredOf(column, amount);
    ASSERT_TRUE(stored);
    ASSERT_EQ(std::get<jet::Currency>(*stored), jet::Currency{unit}) << amount;
    ASSERT_EQ(RoundTrip(column, amount), dao::Value(amount));
  }
  EXPECT_EQ(RoundTrip(column, 1e15), std::nullopt);
  EXPECT_EQ(RoundTrip(column, std::nan("")), std::nullopt);
}

TEST(JetValue, NumbersWithMoreDigitsThanADoubleAreTexts) {
  const std::u16string largest = u"922337203685477.5807";
  EXPECT_EQ(RoundTrip(ColumnWith(jet::ColumnType::Currency), largest), dao::Value(largest));
  const std::u16string decimal = u"-12345678901234567890.123456";
  EXPECT_EQ(RoundTrip(ColumnWith(jet::ColumnType::Decimal, 6), decimal), dao::Value(decimal));
  EXPECT_EQ(RoundTrip(ColumnWith(jet::ColumnType::Currency), std::u16string(u"12,5")), dao::Value(12.5));
}

TEST(JetValue, DecimalsKeepTheDigitsOfADouble) {
  const jet::ColumnDefinition column = ColumnWith(jet::ColumnType::Decimal, 4);
  for (const double number : {0.0, 0.5, -0.5, 12.3456, -9999.9999, 0.0001, 123456789.1234})
    EXPECT_EQ(RoundTrip(column, number), dao::Value(number)) << number;
  EXPECT_EQ(RoundTrip(column, 0.00004), dao::Value(0.0));
  EXPECT_EQ(RoundTrip(column, 1e20), std::nullopt);
}

TEST(JetValue, ViewsPointToTheStoredTextAndBytes) {
  const jet::Value text = std::u16string(u"abc");
  std::u16string unused;
  const auto view = std::get<std::u16string_view>(dao::ViewOf(text, unused));
  EXPECT_EQ(view.data(), std::get<std::u16string>(text).data());
  EXPECT_TRUE(unused.empty());
  const jet::Value bytes = jet::Bytes{1, 2};
  EXPECT_EQ(std::get<std::span<const std::uint8_t>>(dao::ViewOf(bytes, unused)).data(),
            std::get<jet::Bytes>(bytes).data());
}

}  // namespace

// SPDX-License-Identifier: MIT
// The conversion of every kind of value for every type of field.
#include "platform/dao/Conversion.h"
#include "tests/platform/dao/Scratch.h"

#include <QDateTime>

#include <gtest/gtest.h>

#include <cfloat>
#include <cmath>
#include <optional>
#include <variant>
#include <vector>

using namespace Qt::StringLiterals;
using dao::FieldType;

namespace {

dao::FieldDef FieldOfType(FieldType type) {
  dao::FieldDef field = scratch::Field(u"Veld"_s, type, type == FieldType::Text ? 10 : 0);
  field.precision = 6;
  field.scale = 2;
  return field;
}

// The converted value; nothing when it was refused.
std::optional<dao::Value> Converted(const dao::FieldDef& field, const dao::Value& value) {
  std::optional<dao::Value> converted;
  const QString error = scratch::ErrorOf([&] { converted = dao::ConvertToField(u"tbl"_s, field, dao::View(value)); });
  EXPECT_EQ(error.isEmpty(), converted.has_value());
  EXPECT_TRUE(error.isEmpty() || (error.contains(u"'Veld'"_s) && error.contains(u"'tbl'"_s))) << qPrintable(error);
  return converted;
}

std::optional<dao::Value> Converted(FieldType type, const dao::Value& value) {
  return Converted(FieldOfType(type), value);
}

dao::Value Whole(std::int64_t number) {
  return number;
}
dao::Value Words(const char16_t* text) {
  return std::u16string(text);
}

const FieldType kAllTypes[] = {FieldType::Boolean,  FieldType::Byte,   FieldType::Integer, FieldType::Long,
                               FieldType::Currency, FieldType::Single, FieldType::Double,  FieldType::Date,
                               FieldType::Text,     FieldType::Memo,   FieldType::Binary,  FieldType::Guid,
                               FieldType::Numeric};

TEST(FieldValues, NullIsKeptExceptInABoolean) {
  for (const FieldType type : kAllTypes) {
    const dao::Value expected = type == FieldType::Boolean ? Whole(0) : dao::Value();
    EXPECT_EQ(Converted(type, dao::Value()), expected) << static_cast<int>(type);
  }
}

TEST(FieldValues, ARequiredFieldRefusesNull) {
  for (const FieldType type : kAllTypes) {
    dao::FieldDef field = FieldOfType(type);
    field.required = true;
    EXPECT_EQ(Converted(field, dao::Value()).has_value(), type == FieldType::Boolean) << static_cast<int>(type);
  }
  dao::FieldDef number = FieldOfType(FieldType::Long);
  number.required = number.autoNumber = true;
  EXPECT_EQ(Converted(number, dao::Value()), dao::Value());
}

TEST(FieldValues, WholeNumberTypesHaveTheirRange) {
  const struct {
    FieldType type;
    std::int64_t least;
    std::int64_t most;
  } cases[] = {
      {FieldType::Byte, 0, 255}, {FieldType::Integer, -32768, 32767}, {FieldType::Long, -2147483648LL, 2147483647}};
  for (const auto& [type, least, most] : cases) {
    EXPECT_EQ(Converted(type, Whole(least)), Whole(least));
    EXPECT_EQ(Converted(type, Whole(most)), Whole(most));
    EXPECT_EQ(Converted(type, Whole(least - 1)), std::nullopt);
    EXPECT_EQ(Converted(type, Whole(most + 1)), std::nullopt);
    EXPECT_EQ(Converted(type, dao::Value(static_cast<double>(most) + 0.25)), Whole(most));
    EXPECT_EQ(Converted(type, dao::Value(static_cast<double>(most) + 0.75)), std::nullopt);
    EXPECT_EQ(Converted(type, dao::Value(std::nan(""))), std::nullopt);
  }
}

TEST(FieldValues, NumericTextsBecomeNumbers) {
  EXPECT_EQ(Converted(FieldType::Long, Words(u" 12 ")), Whole(12));
  EXPECT_EQ(Converted(FieldType::Long, Words(u"-1,5")), Whole(-2));
  EXPECT_EQ(Converted(FieldType::Double, Words(u"0,25")), dao::Value(0.25));
  EXPECT_EQ(Converted(FieldType::Boolean, Words(u"7")), Whole(-1));
  EXPECT_EQ(Converted(FieldType::Currency, Words(u"1.5")), dao::Value(1.5));
  for (const FieldType type : {FieldType::Boolean, FieldType::Byte, FieldType::Integer, FieldType::Long,
                               FieldType::Currency, FieldType::Single, FieldType::Double, FieldType::Numeric}) {
    EXPECT_EQ(Converted(type, Words(u"kaart")), std::nullopt) << static_cast<int>(type);
    EXPECT_EQ(Converted(type, Words(u"")), std::nullopt) << static_cast<int>(type);
    EXPECT_EQ(Converted(type, dao::Bytes{1}), std::nullopt) << static_cast<int>(type);
  }
}

TEST(FieldValues, ABooleanIsMinusOneForEveryOtherNumber) {
  for (const dao::Value& value : {Whole(1), Whole(-1), Whole(300), dao::Value(0.25), Words(u"-1")})
    EXPECT_EQ(Converted(FieldType::Boolean, value), Whole(-1));
  for (const dao::Value& value : {Whole(0), dao::Value(0.0), Words(u"0,0")})
    EXPECT_EQ(Converted(FieldType::Boolean, value), Whole(0));
}

TEST(FieldValues, FloatingPointTypesHaveTheirPrecisionAndRange) {
  EXPECT_EQ(Converted(FieldType::Single, dao::Value(0.1)), dao::Value(static_cast<double>(0.1F)));
  EXPECT_EQ(Converted(FieldType::Double, dao::Value(0.1)), dao::Value(0.1));
  EXPECT_EQ(Converted(FieldType::Single, dao::Value(static_cast<double>(FLT_MAX))),
            dao::Value(static_cast<double>(FLT_MAX)));
  EXPECT_EQ(Converted(FieldType::Single, dao::Value(2.0 * static_cast<double>(FLT_MAX))), std::nullopt);
  EXPECT_EQ(Converted(FieldType::Double, dao::Value(HUGE_VAL)), std::nullopt);
  EXPECT_EQ(Converted(FieldType::Double, Whole(3)), dao::Value(3.0));
}

TEST(FieldValues, CurrencyHasFourDecimals) {
  EXPECT_EQ(Converted(FieldType::Currency, dao::Value(0.12345)), dao::Value(0.1234));
  EXPECT_EQ(Converted(FieldType::Currency, dao::Value(0.12355)), dao::Value(0.1236));
  EXPECT_EQ(Converted(FieldType::Currency, Words(u"922337203685477,5807")), Words(u"922337203685477.5807"));
  EXPECT_EQ(Converted(FieldType::Currency, Words(u"922337203685477,5808")), std::nullopt);
  EXPECT_EQ(Converted(FieldType::Currency, dao::Value(1e15)), std::nullopt);
  EXPECT_EQ(Converted(FieldType::Currency, Whole(922337203685478)), std::nullopt);
}

TEST(FieldValues, NumericHasItsPrecisionAndScale) {
  EXPECT_EQ(Converted(FieldType::Numeric, dao::Value(9999.99)), dao::Value(9999.99));
  EXPECT_EQ(Converted(FieldType::Numeric, dao::Value(9999.994)), dao::Value(9999.99));
  EXPECT_EQ(Converted(FieldType::Numeric, dao::Value(9999.996)), std::nullopt);
  EXPECT_EQ(Converted(FieldType::Numeric, Words(u"-9999,99")), dao::Value(-9999.99));
  EXPECT_EQ(Converted(FieldType::Numeric, Words(u"10000")), std::nullopt);
  EXPECT_EQ(Converted(FieldType::Numeric, Whole(-10000)), std::nullopt);
}

TEST(FieldValues, DatesAreDayNumbersOrTexts) {
  const double newYear = 45658;
  EXPECT_EQ(Converted(FieldType::Date, dao::Value(newYear + 0.5)), dao::Value(newYear + 0.5));
  for (const char16_t* text : {u"1-1-2025", u"01/01/2025", u"1.1.25", u"2025-01-01", u" 1-1-2025  0:00 ", u"45658"})
    EXPECT_EQ(Converted(FieldType::Date, Words(text)), dao::Value(newYear)) << qPrintable(QString::fromUtf16(text));
  EXPECT_EQ(Converted(FieldType::Date, Words(u"1-1-2025 18:00:00")), dao::Value(newYear + 0.75));
  EXPECT_EQ(Converted(FieldType::Date, Words(u"2025-01-01 6:00")), dao::Value(newYear + 0.25));
  for (const char16_t* text : {u"", u"vandaag", u"31-2-2025", u"1-1-2025 24:00", u"1-1-2025 12:60", u"1-1-2025 12",
                               u"2025-13-01", u"12:00", u"1-1-2025 1:2"})
    EXPECT_EQ(Converted(FieldType::Date, Words(text)), std::nullopt) << qPrintable(QString::fromUtf16(text));
}

TEST(FieldValues, DatesHaveTheirRange) {
  EXPECT_TRUE(Converted(FieldType::Date, Whole(-657434)));
  EXPECT_TRUE(Converted(FieldType::Date, dao::Value(2958465.999)));
  EXPECT_FALSE(Converted(FieldType::Date, Whole(-657435)));
  EXPECT_FALSE(Converted(FieldType::Date, Whole(2958466)));
  EXPECT_FALSE(Converted(FieldType::Date, dao::Value(std::nan(""))));
}

TEST(FieldValues, NumbersBecomeTextsWithAComma) {
  EXPECT_EQ(Converted(FieldType::Text, Whole(-12)), Words(u"-12"));
  EXPECT_EQ(Converted(FieldType::Text, dao::Value(1.5)), Words(u"1,5"));
  EXPECT_EQ(Converted(FieldType::Memo, dao::Value(0.1)), Words(u"0,1"));
  EXPECT_EQ(Converted(FieldType::Text, dao::Bytes{1}), std::nullopt);
}

TEST(FieldValues, TextsHaveTheirLength) {
  EXPECT_EQ(Converted(FieldType::Text, Words(u"tien teken")), Words(u"tien teken"));
  EXPECT_EQ(Converted(FieldType::Text, Words(u"elf letters")), std::nullopt);
  EXPECT_EQ(Converted(FieldType::Memo, dao::Value(std::u16string(100000, u'm'))),
            dao::Value(std::u16string(100000, u'm')));
  dao::FieldDef notEmpty = FieldOfType(FieldType::Memo);
  EXPECT_EQ(Converted(notEmpty, Words(u"")), Words(u""));
  notEmpty.allowZeroLength = false;
  EXPECT_EQ(Converted(notEmpty, Words(u"")), std::nullopt);
}

TEST(FieldValues, ALongValueIsShortenedInTheError) {
  const dao::Value value = std::u16string(5000, u'x');
  const QString error =
      scratch::ErrorOf([&] { dao::ConvertToField(u"tbl"_s, FieldOfType(FieldType::Text), dao::View(value)); });
  EXPECT_LT(error.size(), 250) << qPrintable(error);
  EXPECT_TRUE(error.contains(u"(5000 tekens, maximaal 10)"_s));
}

TEST(FieldValues, GuidsAreUpperCaseInBraces) {
  const dao::Value expected = Words(u"{0A0B0C0D-1111-2222-3333-444455556666}");
  EXPECT_EQ(Converted(FieldType::Guid, Words(u"{0a0b0c0d-1111-2222-3333-444455556666}")), expected);
  EXPECT_EQ(Converted(FieldType::Guid, Words(u"0a0b0c0d-1111-2222-3333-444455556666")), expected);
  EXPECT_TRUE(Converted(FieldType::Guid, Words(u"{00000000-0000-0000-0000-000000000000}")));
  for (const dao::Value& value : {Words(u""), Words(u"x"), Words(u"{0a0b0c0d-1111}"), Whole(1)})
    EXPECT_EQ(Converted(FieldType::Guid, value), std::nullopt);
}

TEST(FieldValues, OnlyBytesGoIntoABinary) {
  const dao::Value bytes = dao::Bytes{0, 255};
  EXPECT_EQ(Converted(FieldType::Binary, bytes), bytes);
  EXPECT_EQ(Converted(FieldType::Binary, Whole(1)), std::nullopt);
  EXPECT_EQ(Converted(FieldType::Binary, Words(u"x")), std::nullopt);
  dao::FieldDef small = FieldOfType(FieldType::Binary);
  small.size = 1;
  EXPECT_EQ(Converted(small, bytes), std::nullopt);
}

TEST(FieldValues, AConvertedValueIsNotChangedByAnotherConversion) {
  const std::vector<dao::Value> values = {
      Whole(0),           Whole(-1),   Whole(200),         dao::Value(12.5),
      dao::Value(-3.25),  Words(u"7"), Words(u"1-2-2025"), Words(u"{0a0b0c0d-1111-2222-3333-444455556666}"),
      dao::Bytes{1, 2, 3}};
  int converted = 0;
  for (const FieldType type : kAllTypes) {
    for (const dao::Value& value : values) {
      dao::FieldDef field = FieldOfType(type);
      if (type == FieldType::Text) field.size = 50;
      const auto once = Converted(field, value);
      if (!once) continue;
      ++converted;
      EXPECT_EQ(Converted(field, *once), once) << static_cast<int>(type);
    }
  }
  EXPECT_GT(converted, 60);
}

TEST(FieldValues, VariantsHaveTheKindOfTheirType) {
  EXPECT_EQ(dao::ValueOfVariant(QVariant()), dao::Value());
  EXPECT_EQ(dao::ValueOfVariant(QVariant(true)), Whole(-1));
  EXPECT_EQ(dao::ValueOfVariant(QVariant(false)), Whole(0));
  EXPECT_EQ(dao::ValueOfVariant(QVariant(41)), Whole(41));
  EXPECT_EQ(dao::ValueOfVariant(QVariant(qlonglong{1} << 40)), Whole(std::int64_t{1} << 40));
  EXPECT_EQ(dao::ValueOfVariant(QVariant(1.5)), dao::Value(1.5));
  EXPECT_EQ(dao::ValueOfVariant(QVariant(QDate(2025, 1, 1))), dao::Value(45658.0));
  EXPECT_EQ(dao::ValueOfVariant(QVariant(QDateTime(QDate(2025, 1, 1), QTime(6, 0)))), dao::Value(45658.25));
  EXPECT_EQ(dao::ValueOfVariant(QVariant(QByteArray("\0\xFF", 2))), dao::Value(dao::Bytes{0, 255}));
  EXPECT_EQ(dao::ValueOfVariant(QVariant(u"caf\u00E9"_s)), Words(u"caf\u00E9"));
}

TEST(FieldValues, OwnedAndViewAreInverse) {
  for (const dao::Value& value : {dao::Value(), Whole(7), dao::Value(0.5), Words(u"x"), dao::Value(dao::Bytes{1, 2})})
    EXPECT_EQ(dao::Owned(dao::View(value)), value);
  EXPECT_TRUE(dao::IsNull(dao::Value()));
  EXPECT_FALSE(dao::IsNull(Words(u"")));
}

}  // namespace

// SPDX-License-Identifier: MIT
// Decimal numbers against the compiler's 128-bit arithmetic.
#include "platform/jet/values/ExactNumber.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <random>
#include <string>

namespace {

__extension__ using WideInt = unsigned __int128;

jet::Decimal DecimalWith(bool negative, int scale, WideInt magnitude) {
  return {negative, static_cast<std::uint8_t>(scale), static_cast<std::uint64_t>(magnitude >> 64),
          static_cast<std::uint64_t>(magnitude)};
}

WideInt MagnitudeOf(const jet::Decimal& number) {
  return WideInt{number.high} << 64 | number.low;
}

WideInt PowerOfTen(int exponent) {
  WideInt power = 1;
  for (; exponent > 0; --exponent)
    power *= 10;
  return power;
}

WideInt RandomMagnitude(std::mt19937_64& random, int digits) {
  return (WideInt{random()} << 64 | random()) % PowerOfTen(digits);
}

// "-12.50" for 1250 with two decimals.
std::u16string TextWith(bool negative, int scale, WideInt magnitude) {
  std::u16string digits;
  for (; magnitude != 0 || static_cast<int>(digits.size()) <= scale; magnitude /= 10)
    digits.insert(digits.begin(), static_cast<char16_t>(u'0' + static_cast<int>(magnitude % 10)));
  if (scale > 0) digits.insert(digits.size() - static_cast<std::size_t>(scale), u".");
  return negative ? u"-" + digits : digits;
}

TEST(ExactNumbers, TextRoundTrips) {
  std::mt19937_64 random(1);
  for (int i = 0; i < 5000; ++i) {
    const int scale = static_cast<int>(random() % 20);
    const WideInt magnitude = RandomMagnitude(random, 1 + static_cast<int>(random() % 28));
    const bool negative = magnitude != 0 && random() % 2 == 0;
    const std::u16string text = TextWith(negative, scale, magnitude);
    EXPECT_EQ(jet::TextOf(DecimalWith(negative, scale, magnitude)), text);
    const auto read = jet::ExactOf(std::u16string_view(text));
    ASSERT_TRUE(read);
    EXPECT_EQ(read->negative, negative);
    EXPECT_EQ(jet::TextOf(*read), text);
  }
}

TEST(ExactNumbers, RoundingIsHalfToEven) {
  std::mt19937_64 random(2);
  for (int i = 0; i < 5000; ++i) {
    const int scale = 1 + static_cast<int>(random() % 10);
    const int wanted = static_cast<int>(random() % static_cast<unsigned>(scale + 1));
    WideInt magnitude = RandomMagnitude(random, 20);
    const WideInt unit = PowerOfTen(scale - wanted);
    if (i % 3 == 0) magnitude = magnitude / unit * unit + unit / 2;
    WideInt expected = magnitude / unit;
    const WideInt rest = magnitude % unit;
    if (rest * 2 > unit || (rest * 2 == unit && unit > 1 && expected % 2 == 1)) ++expected;
    const auto rounded = jet::RoundedTo(DecimalWith(false, scale, magnitude), wanted);
    ASSERT_TRUE(rounded);
    EXPECT_EQ(int{rounded->scale}, wanted);
    EXPECT_TRUE(MagnitudeOf(*rounded) == expected) << i;
  }
}

TEST(ExactNumbers, MoreDecimalsKeepTheValue) {
  const jet::Decimal number = DecimalWith(true, 2, 1250);
  const auto longer = jet::RoundedTo(number, 6);
  ASSERT_TRUE(longer);
  EXPECT_EQ(jet::TextOf(*longer), u"-12.500000");
  EXPECT_FALSE(jet::RoundedTo(DecimalWith(false, 0, PowerOfTen(28) - 1), 28));
}

TEST(ExactNumbers, DigitsAreCounted) {
  for (int digits = 1; digits <= 28; ++digits) {
    EXPECT_EQ(jet::DigitsOf(DecimalWith(false, 0, PowerOfTen(digits) - 1)), digits);
    EXPECT_EQ(jet::DigitsOf(DecimalWith(false, 3, PowerOfTen(digits - 1))), digits);
  }
}

TEST(ExactNumbers, CurrencyHasItsRange) {
  for (const std::int64_t scaled :
       {std::int64_t{0}, std::int64_t{1}, std::int64_t{-1}, std::numeric_limits<std::int64_t>::max(),
        std::numeric_limits<std::int64_t>::min()}) {
    const auto amount = jet::CurrencyOf(jet::ExactOf(jet::Currency{scaled}));
    ASSERT_TRUE(amount) << scaled;
    EXPECT_EQ(amount->scaled, scaled);
  }
  const WideInt limit = WideInt{1} << 63;
  EXPECT_FALSE(jet::CurrencyOf(DecimalWith(false, 4, limit)));
  EXPECT_TRUE(jet::CurrencyOf(DecimalWith(true, 4, limit)));
  EXPECT_FALSE(jet::CurrencyOf(DecimalWith(true, 4, limit + 1)));
}

TEST(ExactNumbers, WholeNumbersAreExact) {
  for (const std::int64_t number :
       {std::int64_t{0}, std::int64_t{-1}, std::int64_t{1} << 62, std::numeric_limits<std::int64_t>::min()}) {
    const std::string digits = std::to_string(number);
    EXPECT_EQ(jet::TextOf(jet::ExactOf(number)), std::u16string(digits.begin(), digits.end()));
  }
}

TEST(ExactNumbers, ADoubleIsReturnedOnlyWhenNoDigitIsLost) {
  std::mt19937_64 random(3);
  for (int i = 0; i < 2000; ++i) {
    const int scale = static_cast<int>(random() % 10);
    const WideInt magnitude = RandomMagnitude(random, 15);
    const auto value = jet::DoubleOf(DecimalWith(false, scale, magnitude));
    ASSERT_TRUE(value);
    EXPECT_EQ(*value, static_cast<double>(static_cast<std::uint64_t>(magnitude)) / std::pow(10.0, scale));
  }
  EXPECT_FALSE(jet::DoubleOf(DecimalWith(false, 0, PowerOfTen(17) + 1)));
  EXPECT_FALSE(jet::DoubleOf(DecimalWith(false, 4, WideInt{9223372036854775807U})));
}

TEST(ExactNumbers, OtherTextsAreNotNumbers) {
  for (const char16_t* text : {u"", u" ", u"-", u".", u"1.2.3", u"1e5", u"1 2", u"--1", u"a", u"1,2,3", u"\u0661"})
    EXPECT_FALSE(jet::ExactOf(std::u16string_view(text))) << std::string(text, text + std::u16string_view(text).size());
  for (const char16_t* text : {u"1", u" 1 ", u"+1", u"-1", u"1.", u".5", u"0,5"})
    EXPECT_TRUE(jet::ExactOf(std::u16string_view(text)));
  EXPECT_TRUE(jet::ExactOf(std::u16string(38, u'9')));
  EXPECT_FALSE(jet::ExactOf(std::u16string(39, u'9')));
}

}  // namespace

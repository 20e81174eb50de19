// SPDX-License-Identifier: MIT
// Numeric texts and whole numbers against an independent description of the rules.
#include "platform/runtime/Error.h"
#include "platform/runtime/Numbers.h"

#include <QDate>
#include <QRegularExpression>

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <random>

using namespace Qt::StringLiterals;

namespace {

// The rule as a regular expression: sign, digits, at most one mark, not followed by exactly three digits at the end.
bool IsNumericByRule(const QString& text) {
  static const QRegularExpression kNumber(QRegularExpression::anchoredPattern(
      u" *[+-]?(?:[0-9]+(?:[.,](?![0-9]{3} *$)[0-9]*)?|[.,](?![0-9]{3} *$)[0-9]+) *"_s));
  return kNumber.match(text).hasMatch();
}

QString RandomNumberText(std::mt19937& random) {
  static const QString kLetters = u"0123456789 +-.,ex"_s;
  QString text;
  for (auto length = random() % 8; text.size() < static_cast<qsizetype>(length);)
    text += kLetters[static_cast<qsizetype>(random() % static_cast<unsigned>(kLetters.size()))];
  return text;
}

template <class Call>
QString NumberError(const Call& call) {
  try {
    call();
  } catch (const runtime::Error& error) {
    return error.Description();
  }
  return {};
}

TEST(NumbersReference, RandomTextsFollowTheRule) {
  std::mt19937 random(11);
  int numeric = 0;
  for (int i = 0; i < 200000; ++i) {
    const QString text = RandomNumberText(random);
    const bool expected = IsNumericByRule(text);
    numeric += expected ? 1 : 0;
    ASSERT_EQ(runtime::IsNumeric(text), expected) << '"' << qPrintable(text) << '"';
  }
  EXPECT_GT(numeric, 10000);
}

TEST(NumbersReference, NumericTextsHaveTheirValue) {
  std::mt19937 random(12);
  for (int i = 0; i < 20000; ++i) {
    const int whole = static_cast<int>(random() % 2000001) - 1000000;
    const int cents = static_cast<int>(random() % 100);
    const QString sign = whole < 0 ? u"-"_s : QString();
    const QString digits = u"%1%2,%3"_s.arg(sign).arg(std::abs(whole)).arg(cents, 2, 10, QChar(u'0'));
    const double expected = (whole < 0 ? -1 : 1) * (std::abs(whole) * 100.0 + cents) / 100;
    ASSERT_DOUBLE_EQ(runtime::ToDouble(digits), expected) << qPrintable(digits);
    ASSERT_DOUBLE_EQ(runtime::ToDouble(u" %1 "_s.arg(QString(digits).replace(u',', u'.'))), expected);
  }
}

TEST(NumbersReference, HalvesAreRoundedToEven) {
  for (int whole = -1000; whole <= 1000; ++whole) {
    const int even = whole % 2 == 0 ? whole : whole + 1;
    ASSERT_EQ(runtime::ToLong(whole + 0.5), even) << whole;
    ASSERT_EQ(runtime::ToInteger(whole + 0.5), even) << whole;
    ASSERT_EQ(runtime::ToLong(double{static_cast<double>(whole)}), whole);
  }
}

TEST(NumbersReference, TheLimitsOfEachTypeAreExact) {
  EXPECT_EQ(runtime::ToLong(2147483647.4), 2147483647);
  EXPECT_EQ(runtime::ToLong(-2147483648.5), std::numeric_limits<qint32>::min());
  EXPECT_TRUE(NumberError([] { runtime::ToLong(2147483647.5); }).startsWith(u"Overloop: het getal 2147483647.5"_s));
  EXPECT_EQ(runtime::ToInteger(32767.4), 32767);
  EXPECT_TRUE(NumberError([] { runtime::ToInteger(32767.5); }).startsWith(u"Overloop"_s));
  EXPECT_TRUE(NumberError([] { runtime::ToInteger(-32769.0); }).startsWith(u"Overloop"_s));
  EXPECT_TRUE(NumberError([] { runtime::ToLong(std::numeric_limits<double>::quiet_NaN()); }).startsWith(u"Overloop"_s));
}

TEST(NumbersReference, SixteenBitArithmeticAgreesWithWiderArithmetic) {
  const auto check = [](int left, int right) {
    const auto expected = [](int value) { return value < -32768 || value > 32767; };
    const auto l = static_cast<qint16>(left);
    const auto r = static_cast<qint16>(right);
    EXPECT_EQ(!NumberError([&] { EXPECT_EQ(runtime::AddInteger(l, r), left + right); }).isEmpty(),
              expected(left + right));
    EXPECT_EQ(!NumberError([&] { EXPECT_EQ(runtime::MultiplyInteger(l, r), left * right); }).isEmpty(),
              expected(left * right));
  };
  for (int left = -32768; left <= 32767; left += 257) {
    for (const int right : {-32768, -182, -2, -1, 0, 1, 2, 181, 182, 32767})
      check(left, right);
  }
}

TEST(NumbersReference, LongSubtractionAgreesWithWiderArithmetic) {
  constexpr qint32 kLeast = std::numeric_limits<qint32>::min();
  constexpr qint32 kMax = std::numeric_limits<qint32>::max();
  for (const qint32 left : {kLeast, -1, 0, 1, kMax}) {
    for (const qint32 right : {kLeast, -1, 0, 1, kMax}) {
      const std::int64_t expected = std::int64_t{left} - right;
      const bool overflows = expected < kLeast || expected > kMax;
      EXPECT_EQ(!NumberError([&] { EXPECT_EQ(runtime::SubtractLong(left, right), expected); }).isEmpty(), overflows)
          << left << " - " << right;
    }
  }
}

TEST(NumbersReference, VariantsAreConvertedByTheirType) {
  EXPECT_EQ(runtime::ToLong(QVariant(2.5)), 2);
  EXPECT_EQ(runtime::ToLong(QVariant(u" 7,5 "_s)), 8);
  EXPECT_EQ(runtime::ToLong(QVariant(qlonglong{41})), 41);
  EXPECT_TRUE(NumberError([] { runtime::ToLong(QVariant(u"kaart"_s)); }).contains(u"'kaart' is geen getal"_s));
  EXPECT_FALSE(NumberError([] { runtime::ToLong(QVariant()); }).isEmpty());
  EXPECT_FALSE(NumberError([] { runtime::ToLong(QVariant(QDate(2025, 1, 1))); }).isEmpty());
}

TEST(NumbersReference, TrimBlanksOfAViewIsAPartOfIt) {
  const QString text = u"  a \u00A0 "_s;
  const QStringView trimmed = runtime::TrimBlanks(QStringView(text));
  EXPECT_EQ(trimmed, u"a \u00A0");
  EXPECT_EQ(trimmed.data(), text.constData() + 2);
  EXPECT_TRUE(runtime::TrimBlanks(QStringView(u"   ")).isEmpty());
}

}  // namespace

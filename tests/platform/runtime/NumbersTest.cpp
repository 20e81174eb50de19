// SPDX-License-Identifier: MIT
#include "platform/runtime/Numbers.h"

#include "platform/runtime/Error.h"

#include <QDateTime>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using runtime::IsNumeric;

TEST(Numeric, TakesBlanksSignDigitsAndOneMark) {
  for (const QString& text : {u"0"_s, u" 42 "_s, u"-3"_s, u"+7"_s, u"2,5"_s, u"2.5"_s, u"1234,5678"_s, u",5"_s, u"5,"_s,
                              u"99999"_s, u"1,2345"_s, u"0,12"_s}) {
    EXPECT_TRUE(IsNumeric(text)) << text.toStdString();
  }
}

TEST(Numeric, RefusesEverythingElse) {
  for (const QString& text :
       {u""_s, u" "_s, u"abc"_s, u"1e3"_s, u"&H10"_s, u"0x10"_s, u"1,234"_s, u"1.234"_s, u"1.2.3"_s, u"1 2"_s, u"--1"_s,
        u"-"_s, u","_s, u"\t1"_s, u"12a"_s, u"NIEUW"_s, u"\u0661"_s}) {
    EXPECT_FALSE(IsNumeric(text)) << text.toStdString();
  }
}

TEST(Numeric, NullAndDatesAreNotNumericNumbersAre) {
  EXPECT_FALSE(IsNumeric(QVariant()));
  EXPECT_FALSE(IsNumeric(QVariant(QDateTime::currentDateTime())));
  EXPECT_TRUE(IsNumeric(QVariant(0)));
  EXPECT_TRUE(IsNumeric(QVariant(1.5)));
  EXPECT_TRUE(IsNumeric(QVariant(true)));
  EXPECT_TRUE(IsNumeric(QVariant(u" 5 "_s)));
}

TEST(WholeNumber, RoundsHalfToEven) {
  EXPECT_EQ(runtime::ToLong(u"2,5"_s), 2);
  EXPECT_EQ(runtime::ToLong(u"3,5"_s), 4);
  EXPECT_EQ(runtime::ToLong(u"-2.5"_s), -2);
  EXPECT_EQ(runtime::ToLong(u"2,51"_s), 3);
  EXPECT_EQ(runtime::ToInteger(u" -30 "_s), -30);
}

TEST(WholeNumber, OverflowAndTextAreErrorsThatNameTheValue) {
  EXPECT_EQ(runtime::ToLong(u"2147483647"_s), 2147483647);
  EXPECT_THROW(runtime::ToLong(u"2147483648"_s), runtime::Error);
  EXPECT_EQ(runtime::ToInteger(u"-32768"_s), -32768);
  EXPECT_THROW(runtime::ToInteger(u"32768"_s), runtime::Error);
  try {
    runtime::ToInteger(u"kaart"_s);
    FAIL() << "a text was taken for a number";
  } catch (const runtime::Error& error) {
    EXPECT_TRUE(error.Description().contains(u"kaart"_s));
  }
}

TEST(WholeNumber, TrueIsMinusOne) {
  EXPECT_EQ(runtime::ToLong(QVariant(true)), -1);
  EXPECT_EQ(runtime::ToLong(QVariant(false)), 0);
}

TEST(SixteenBitArithmetic, OverflowIsAnError) {
  EXPECT_EQ(runtime::MultiplyInteger(59, 60), 3540);
  EXPECT_THROW(runtime::MultiplyInteger(600, 60), runtime::Error);
  EXPECT_EQ(runtime::AddInteger(32766, 1), 32767);
  EXPECT_THROW(runtime::AddInteger(32767, 1), runtime::Error);
  EXPECT_THROW(runtime::SubtractLong(-2147483647, 2), runtime::Error);
}

TEST(Trim, RemovesBlanksAndNothingElse) {
  EXPECT_EQ(runtime::TrimBlanks(u"  a b  "_s), u"a b"_s);
  EXPECT_EQ(runtime::TrimBlanks(u"\ta\n"_s), u"\ta\n"_s);
  EXPECT_EQ(runtime::TrimBlanks(u"   "_s), u""_s);
}

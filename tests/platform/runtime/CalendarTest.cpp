// SPDX-License-Identifier: MIT
// Dates over the complete calendar, each against an independent calculation.
#include "platform/runtime/Clock.h"
#include "platform/runtime/Dates.h"
#include "platform/runtime/Error.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <random>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

bool IsLeapYear(int year) {
  return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
}

int DaysInMonth(int year, int month) {
  constexpr std::array<int, 12> kDays = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  return month == 2 && IsLeapYear(year) ? 29 : kDays[static_cast<std::size_t>(month) - 1];
}

TEST(Calendar, DayNumbersCountEveryDay) {
  int expected = -657434;
  for (int year = 100; year <= 9999; ++year) {
    for (int month = 1; month <= 12; ++month) {
      ASSERT_EQ(runtime::DayNumber(QDate(year, month, 1)), expected) << year << '-' << month;
      expected += DaysInMonth(year, month);
      ASSERT_EQ(runtime::DateOfDayNumber(expected - 1), QDate(year, month, DaysInMonth(year, month)));
    }
  }
  EXPECT_EQ(expected, 2958466);
}

TEST(Calendar, EveryMinuteOfADayRoundTrips) {
  for (const QDate date : {QDate(100, 1, 2), QDate(1899, 12, 29), QDate(1899, 12, 31), QDate(2024, 2, 29)}) {
    for (int minute = 0; minute < 24 * 60; ++minute) {
      const QDateTime moment(date, QTime(minute / 60, minute % 60));
      ASSERT_EQ(runtime::MomentOfDayNumber(runtime::DayNumber(moment)), moment)
          << qPrintable(moment.toString(Qt::ISODate));
    }
  }
}

TEST(Calendar, RandomMillisecondsRoundTrip) {
  std::mt19937 random(7);
  for (int i = 0; i < 20000; ++i) {
    const QDate date = runtime::DateOfDayNumber(static_cast<int>(random() % 3000000) - 650000);
    const QDateTime moment(date, QTime::fromMSecsSinceStartOfDay(static_cast<int>(random() % 86400000)));
    ASSERT_EQ(runtime::MomentOfDayNumber(runtime::DayNumber(moment)), moment)
        << qPrintable(moment.toString(Qt::ISODateWithMs));
  }
}

TEST(Calendar, AMomentThatRoundsToMidnightIsTheNextDay) {
  const QDateTime midnight(QDate(2025, 1, 2), QTime(0, 0));
  EXPECT_EQ(runtime::MomentOfDayNumber(45658.9999999999), midnight);
  EXPECT_EQ(runtime::MomentOfDayNumber(-1.0), QDateTime(QDate(1899, 12, 29), QTime(0, 0)));
}

TEST(Calendar, TheLimitsAreInclusive) {
  EXPECT_EQ(runtime::MomentOfDayNumber(-657434).date(), QDate(100, 1, 1));
  EXPECT_EQ(runtime::MomentOfDayNumber(2958465.5), QDateTime(QDate(9999, 12, 31), QTime(12, 0)));
  EXPECT_THROW(runtime::MomentOfDayNumber(HUGE_VAL), runtime::Error);
  EXPECT_THROW(runtime::MomentOfDayNumber(-HUGE_VAL), runtime::Error);
}

TEST(Calendar, EveryDateIsParsedInEveryNotation) {
  for (QDate date(1928, 1, 1); date.year() < 2033; date = date.addDays(1)) {
    const int day = date.day();
    const int month = date.month();
    const int year = date.year();
    for (const QChar mark : {u'-', u'/', u'.'}) {
      ASSERT_EQ(runtime::ParseDate(u"%1%2%3%2%4"_s.arg(day).arg(mark).arg(month).arg(year)), date);
    }
    ASSERT_EQ(runtime::ParseDate(runtime::FormatDate(date.startOfDay(), u"dd-mm-yyyy"_s)), date);
    const auto shortYear = runtime::ParseDate(runtime::FormatDate(date.startOfDay(), u"d-m-yy"_s));
    const bool isWithinCentury = year >= 1930 && year <= 2029;
    ASSERT_EQ(shortYear == date, isWithinCentury) << qPrintable(date.toString(Qt::ISODate));
  }
}

TEST(Calendar, DatesThatDoNotExistAreRefused) {
  for (const int year : {1900, 1999, 2000, 2023, 2024}) {
    for (int month = 1; month <= 12; ++month) {
      const int last = DaysInMonth(year, month);
      EXPECT_TRUE(runtime::ParseDate(u"%1-%2-%3"_s.arg(last).arg(month).arg(year)));
      EXPECT_FALSE(runtime::ParseDate(u"%1-%2-%3"_s.arg(last + 1).arg(month).arg(year)));
    }
  }
  for (const QString& text : {u"0-1-2025"_s, u"1-0-2025"_s, u"1-1-99x"_s, u"1-1-0099"_s, u"1--1-2025"_s, u"1-1"_s,
                              u"1 - 1 - 2025"_s, u"-1-1-2025"_s, u"001-1-2025"_s, u"1-1-2025 12:00"_s}) {
    EXPECT_FALSE(runtime::ParseDate(text)) << qPrintable(text);
  }
}

TEST(Calendar, EachLetterFormatsItsPart) {
  const QDateTime moment(QDate(2009, 3, 4), QTime(5, 6, 7));
  const std::vector<std::pair<QString, QString>> cases = {{u"d"_s, u"4"_s},          {u"dd"_s, u"04"_s},
                                                          {u"m"_s, u"3"_s},          {u"mm"_s, u"03"_s},
                                                          {u"yy"_s, u"09"_s},        {u"yyyy"_s, u"2009"_s},
                                                          {u"h"_s, u"5"_s},          {u"hh"_s, u"05"_s},
                                                          {u"n"_s, u"6"_s},          {u"nn"_s, u"06"_s},
                                                          {u"s"_s, u"7"_s},          {u"ss"_s, u"07"_s},
                                                          {u"hhmm"_s, u"0506"_s},    {u"hh:mm"_s, u"05:06"_s},
                                                          {u"mmhh"_s, u"0305"_s},    {u"hhddmm"_s, u"050403"_s},
                                                          {u"DD-MM"_s, u"04-03"_s},  {u"\u00E9 x"_s, u"\u00E9 x"_s},
                                                          {u"w"_s, u"w"_s},          {u""_s, u""_s},
                                                          {u"www"_s, u"www"_s},      {u"[dd]"_s, u"[04]"_s},
                                                          {u"hhmmmm"_s, u"050006"_s}};
  for (const auto& [format, expected] : cases)
    EXPECT_EQ(runtime::FormatDate(moment, format), expected) << qPrintable(format);
}

TEST(Calendar, WeeksFollowTheFirstDayOfTheWeek) {
  const QDateTime sunday(QDate(2025, 1, 5), QTime(0, 0));
  EXPECT_EQ(runtime::FormatDate(sunday, u"ww"_s, 1), u"02"_s);
  EXPECT_EQ(runtime::FormatDate(sunday, u"ww"_s, 2), u"01"_s);
  EXPECT_EQ(runtime::FormatDate(sunday, u"yyyyww"_s, 7), u"202502"_s);
}

TEST(Clocks, ScopesNest) {
  const QDateTime first(QDate(2025, 1, 1), QTime(1, 0));
  const runtime::ClockScope outer(first);
  {
    int asked = 0;
    const runtime::ClockScope inner([&] { return first.addSecs(++asked); });
    EXPECT_EQ(runtime::Now(), first.addSecs(1));
    EXPECT_EQ(runtime::Now(), first.addSecs(2));
  }
  EXPECT_EQ(runtime::Now(), first);
}

}  // namespace

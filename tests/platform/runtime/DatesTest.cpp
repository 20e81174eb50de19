// SPDX-License-Identifier: MIT
#include "platform/runtime/Dates.h"

#include "platform/runtime/Clock.h"
#include "platform/runtime/Error.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using runtime::FormatDate;

namespace {

// Independent of the library: counts how often a week begins among the days of the year.
int WeekByCounting(QDate date, int firstDay) {
  int week = 1;
  for (QDate day(date.year(), 1, 1); day < date; day = day.addDays(1)) {
    const int next = day.addDays(1).dayOfWeek() % 7 + 1;  // 1 = Sunday
    if (next == firstDay) ++week;
  }
  return week;
}

}  // namespace

TEST(DayNumber, CountsFromThirtyDecember1899) {
  EXPECT_EQ(runtime::DayNumber(QDate(1899, 12, 30)), 0);
  EXPECT_EQ(runtime::DayNumber(QDate(2025, 1, 1)), 45658);
  EXPECT_EQ(runtime::DayNumber(QDate(100, 1, 1)), -657434);
  EXPECT_EQ(runtime::DayNumber(QDate(9999, 12, 31)), 2958465);
  EXPECT_EQ(runtime::DateOfDayNumber(45658), QDate(2025, 1, 1));
}

TEST(DayNumber, TimeIsTheFractionAlsoBeforeDayZero) {
  const QDateTime late(QDate(1899, 12, 29), QTime(6, 0));
  EXPECT_DOUBLE_EQ(runtime::DayNumber(late), -1.25);
  EXPECT_EQ(runtime::MomentOfDayNumber(-1.25), late);
  EXPECT_EQ(runtime::MomentOfDayNumber(45658.5), QDateTime(QDate(2025, 1, 1), QTime(12, 0)));
  EXPECT_EQ(runtime::MomentOfDayNumber(0.9999999999), QDateTime(QDate(1899, 12, 31), QTime(0, 0)));
}

TEST(DayNumber, OutOfRangeIsAnError) {
  EXPECT_THROW(runtime::MomentOfDayNumber(2958466), runtime::Error);
  EXPECT_THROW(runtime::MomentOfDayNumber(-657435), runtime::Error);
  EXPECT_THROW(runtime::MomentOfDayNumber(std::nan("")), runtime::Error);
}

TEST(FormatDate, GivesTheFormatsOfTheSystem) {
  const QDateTime moment(QDate(2024, 1, 31), QTime(15, 45, 7));
  EXPECT_EQ(FormatDate(moment, u"dd-mm-yyyy"_s), u"31-01-2024"_s);
  EXPECT_EQ(FormatDate(moment, u"yyyymmddhhmmss"_s), u"20240131154507"_s);
  EXPECT_EQ(FormatDate(moment, u"ddmmyyyy"_s), u"31012024"_s);
  EXPECT_EQ(FormatDate(moment, u"ddmmyyyyhh"_s), u"3101202415"_s);
  EXPECT_EQ(FormatDate(moment, u"mm"_s), u"01"_s);
  EXPECT_EQ(FormatDate(moment, u"ww"_s), u"05"_s);
  EXPECT_EQ(FormatDate(moment, u"d/m/yy hh:nn:ss"_s), u"31/1/24 15:45:07"_s);
}

TEST(DateText, HasDayMonthYearAndIsEmptyWithoutADate) {
  EXPECT_EQ(runtime::DateText(QDate(2024, 1, 31)), u"31-01-2024"_s);
  EXPECT_EQ(runtime::DateText(std::nullopt), QString());
}

TEST(WeekOfYear, AgreesWithCountingForEveryDayAndFirstDay) {
  for (int firstDay = 1; firstDay <= 7; ++firstDay) {
    for (QDate day(1990, 1, 1); day.year() <= 2040; day = day.addDays(day.month() == 1 || day.month() == 12 ? 1 : 5)) {
      ASSERT_EQ(runtime::WeekOfYear(day, firstDay), WeekByCounting(day, firstDay))
          << day.toString(Qt::ISODate).toStdString() << " first day " << firstDay;
    }
  }
}

TEST(WeekOfYear, YearEndIsWeek53Or54AndNewYearIsWeekOne) {
  EXPECT_EQ(runtime::WeekOfYear(QDate(2025, 1, 1), 2), 1);
  EXPECT_EQ(runtime::WeekOfYear(QDate(2024, 12, 31), 2), 53);
  EXPECT_EQ(runtime::WeekOfYear(QDate(2000, 12, 31), 1), 54);  // leap year that begins on a Saturday
}

// In every program language.
TEST(WeekOfYear, WithoutAFirstDayUsesThatOfTheSystem) {
  const QLocale before;
  const QDate sunday(2025, 1, 5);
  const int systems = QLocale::system().firstDayOfWeek() % 7 + 1;
  for (const QLocale& language :
       {QLocale(QLocale::Dutch, QLocale::Belgium), QLocale(QLocale::English, QLocale::UnitedStates)}) {
    QLocale::setDefault(language);
    EXPECT_EQ(runtime::WeekOfYear(sunday, 0), runtime::WeekOfYear(sunday, systems)) << language.name().toStdString();
  }
  QLocale::setDefault(before);
}

TEST(ParseDate, TakesDayMonthYear) {
  EXPECT_EQ(runtime::ParseDate(u"31-01-2024"_s), QDate(2024, 1, 31));
  EXPECT_EQ(runtime::ParseDate(u" 1/2/2025 "_s), QDate(2025, 2, 1));
  EXPECT_EQ(runtime::ParseDate(u"1.2.29"_s), QDate(2029, 2, 1));
  EXPECT_EQ(runtime::ParseDate(u"1-2-30"_s), QDate(1930, 2, 1));
}

TEST(ParseDate, RefusesInvalidDates) {
  for (const QString& text :
       {u""_s, u"abc"_s, u"31-02-2025"_s, u"1-13-2025"_s, u"2025-01-01"_s, u"1-2/2025"_s, u"1-1-10000"_s}) {
    EXPECT_FALSE(runtime::ParseDate(text).has_value()) << text.toStdString();
  }
}

TEST(Clock, CanBeReplacedAndIsRestored) {
  const QDateTime fixed(QDate(2025, 3, 5), QTime(1, 2, 3));
  {
    const runtime::ClockScope scope(fixed);
    EXPECT_EQ(runtime::Now(), fixed);
  }
  EXPECT_NE(runtime::Now(), fixed);
}

// SPDX-License-Identifier: MIT
#include "export/playout/FileNameExample.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

FileNamePattern Pattern(int code, const QString& format, int firstDay = 0) {
  FileNamePattern pattern;
  pattern.directory = u" D:\\Spots "_s;
  pattern.fixedPart = u" blok "_s;
  pattern.variableCode = code;
  pattern.format = format;
  pattern.firstDayOfWeek = firstDay;
  pattern.extension = u" wav "_s;
  return pattern;
}

const QDateTime kMarch(QDate(2025, 3, 5), QTime(9, 8, 7));

// The week number by counting the days of the year: a week starts on each first day of the week.
int CountedWeek(QDate date, int firstDay) {
  int week = 1;
  for (QDate day(date.year(), 1, 2); day <= date; day = day.addDays(1)) {
    if (day.dayOfWeek() % 7 + 1 == firstDay) ++week;
  }
  return week;
}

}  // namespace

TEST(FileNameExample, MakesTheNameForTheMoment) {
  FileNamePattern pattern = Pattern(1, u"ddmmyyyy"_s);
  pattern.severalSpots = true;
  EXPECT_EQ(FileNameExample(pattern, kMarch), u"D:\\Spots\\blok05032025-x.wav"_s);
  EXPECT_EQ(FileNameExample(Pattern(2, u"ddmmyyyyhh"_s), kMarch), u"D:\\Spots\\blok0503202509.wav"_s);
  EXPECT_EQ(FileNameExample(Pattern(4, u"mm"_s), kMarch), u"D:\\Spots\\blok03.wav"_s);
  EXPECT_EQ(FileNameExample(Pattern(3, u"ww"_s, 2), kMarch), u"D:\\Spots\\blok10.wav"_s);
}

TEST(FileNameExample, IsEmptyWhilePartsAreMissing) {
  FileNamePattern pattern = Pattern(1, u"ddmmyyyy"_s);
  pattern.directory = u"  "_s;
  EXPECT_EQ(FileNameExample(pattern, kMarch), u""_s);
  pattern = Pattern(1, u"ddmmyyyy"_s);
  pattern.extension.clear();
  EXPECT_EQ(FileNameExample(pattern, kMarch), u""_s);
  pattern = Pattern(0, {});
  EXPECT_EQ(FileNameExample(pattern, kMarch), u"D:\\Spots\\blok.wav"_s);
  pattern.fixedPart.clear();
  EXPECT_EQ(FileNameExample(pattern, kMarch), u""_s);
}

TEST(FileNameExample, CodesOutsideOneToTenGiveNoVariablePart) {
  EXPECT_EQ(FileNameExample(Pattern(11, u"mm"_s), kMarch), u"D:\\Spots\\blok.wav"_s);
  EXPECT_EQ(FileNameExample(Pattern(-1, u"mm"_s), kMarch), u"D:\\Spots\\blok.wav"_s);
}

TEST(FileNameExample, AllCodesButTheWeekCountFromSunday) {
  FileNamePattern pattern = Pattern(1, u"ww"_s, 2);
  const QDateTime sunday(QDate(2025, 1, 5), QTime(0, 0));
  EXPECT_EQ(FileNameExample(pattern, sunday), u"D:\\Spots\\blok02.wav"_s);
  pattern.variableCode = 3;
  EXPECT_EQ(FileNameExample(pattern, sunday), u"D:\\Spots\\blok01.wav"_s);
}

TEST(FileNameExample, WeeksAgreeWithCountingForEveryDayFrom1990To2040) {
  for (int firstDay = 1; firstDay <= 7; ++firstDay) {
    int week = 1;
    for (QDate day(1990, 1, 1); day.year() <= 2040; day = day.addDays(1)) {
      if (day.dayOfYear() == 1) {
        week = 1;
      } else if (day.dayOfWeek() % 7 + 1 == firstDay) {
        ++week;
      }
      const QString expected = u"D:\\Spots\\blok%1.wav"_s.arg(week, 2, 10, QChar(u'0'));
      ASSERT_EQ(FileNameExample(Pattern(3, u"ww"_s, firstDay), QDateTime(day, QTime(12, 0))), expected)
          << day.toString(Qt::ISODate).toStdString();
    }
  }
}

TEST(FileNameExample, TheYearsEdgesAreWeekOneAnd53Or54) {
  const auto week = [](QDate day, int first) {
    return FileNameExample(Pattern(3, u"ww"_s, first), QDateTime(day, QTime(0, 0))).mid(13, 2).toInt();
  };
  EXPECT_EQ(week(QDate(2025, 1, 1), 2), 1);
  EXPECT_EQ(week(QDate(2024, 12, 31), 2), CountedWeek(QDate(2024, 12, 31), 2));
  EXPECT_EQ(week(QDate(2024, 12, 31), 2), 53);
  EXPECT_EQ(week(QDate(2000, 12, 31), 1), 54);
  EXPECT_EQ(week(QDate(2028, 12, 31), 7), CountedWeek(QDate(2028, 12, 31), 7));
}

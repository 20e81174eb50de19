// SPDX-License-Identifier: MIT
#include "data/BackupRetention.h"

#include <QStringList>

#include <gtest/gtest.h>

#include <functional>

using namespace Qt::StringLiterals;

namespace {

const QDate kToday(2024, 3, 31);

BackupFile Copy(int daysAgo, int hour, int minute = 0) {
  const QDateTime moment(kToday.addDays(-daysAgo), QTime(hour, minute));
  return {moment.toString(minute == 0 ? u"MMdd-HH"_s : u"MMdd-HHmm"_s), moment, moment};
}

// Names of the copies that are not expired.
QStringList Kept(const QList<BackupFile>& newestFirst, const std::function<bool(const BackupFile&)>& isComplete) {
  QList<BackupFile> kept = newestFirst;
  for (const BackupFile& file : ExpiredBackups(newestFirst, kToday, isComplete))
    kept.removeAll(file);
  QStringList names;
  for (const BackupFile& file : kept)
    names += file.name;
  return names;
}

bool NoneIsComplete(const BackupFile&) {
  return false;
}

}  // namespace

TEST(BackupRetention, KeepsTheNewestOfTheLastTenHours) {
  QList<BackupFile> files;
  for (int hour = 14; hour >= 0; --hour)
    files += Copy(0, hour);
  EXPECT_EQ(Kept(files, NoneIsComplete),
            (QStringList{u"0331-14"_s, u"0331-13"_s, u"0331-12"_s, u"0331-11"_s, u"0331-10"_s, u"0331-09"_s,
                         u"0331-08"_s, u"0331-07"_s, u"0331-06"_s, u"0331-05"_s}));
}

TEST(BackupRetention, ManyCopiesWithinMinutesKeepThoseOfEarlierHours) {
  QList<BackupFile> files;
  for (int minute = 19; minute > 0; --minute)
    files += Copy(0, 14, minute);
  files += {Copy(0, 11, 50), Copy(0, 11, 10), Copy(0, 8, 30)};
  EXPECT_EQ(Kept(files, NoneIsComplete),
            (QStringList{u"0331-1419"_s, u"0331-1418"_s, u"0331-1417"_s, u"0331-1150"_s, u"0331-0830"_s}));
}

TEST(BackupRetention, KeepsTheNewestOfEachDayForThirtyDays) {
  QList<BackupFile> files;
  for (int day = 0; day < 40; ++day)
    files += {Copy(day, 20), Copy(day, 8)};
  const QStringList kept = Kept(files, NoneIsComplete);
  // The newest ten are two a day; then one a day up to the thirtieth.
  EXPECT_EQ(kept.size(), 10 + 25);
  EXPECT_EQ(kept.last(), u"0302-20"_s);
}

TEST(BackupRetention, KeepsOldCopiesThatAreAmongTheNewestTen) {
  QList<BackupFile> files;
  for (int day = 100; day < 110; ++day)
    files += Copy(day, 8);
  EXPECT_EQ(Kept(files, NoneIsComplete).size(), 10);
}

TEST(BackupRetention, KeepsTheNewestCompleteCopyOfAnyAge) {
  QList<BackupFile> files;
  for (int hour = 14; hour >= 0; --hour)
    files += Copy(0, hour);
  files += {Copy(300, 9), Copy(301, 9)};
  const auto isComplete = [&](const BackupFile& file) { return file.moment.date() != kToday; };
  const QStringList kept = Kept(files, isComplete);
  EXPECT_EQ(kept.size(), 11);
  EXPECT_EQ(kept.last(), files[15].name);
}

TEST(BackupRetention, OpensNoFileWhenNothingExpires) {
  int asked = 0;
  const auto isComplete = [&](const BackupFile&) {
    ++asked;
    return true;
  };
  EXPECT_EQ(Kept({Copy(0, 9), Copy(0, 8), Copy(400, 8)}, isComplete).size(), 3);
  EXPECT_EQ(asked, 0);
}

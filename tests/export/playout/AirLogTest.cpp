// SPDX-License-Identifier: MIT
#include "export/playout/AirLog.h"

#include "platform/runtime/Error.h"

#include <gtest/gtest.h>

#include <string>

using namespace Qt::StringLiterals;

namespace {

std::string ErrorOf(const QByteArray& content) {
  try {
    ReadAirLog(content, u"x.log"_s);
  } catch (const runtime::Error& error) {
    return error.what();
  }
  return {};
}

bool Says(const QByteArray& content, const std::string& part) {
  return ErrorOf(content).find(part) != std::string::npos;
}

const QByteArray kCutHead =
    "                Rivendell RDAirPlay Cut Report for %\n                    Dag -- dagrapport\n"
    "--Time--  -Cart-  --Title----------------  Cut  --Description-------  -Len-\n";

QByteArray CutLog(const QByteArray& date, const QByteArray& rows) {
  return QByteArray(kCutHead).replace("%", date) + rows;
}

}  // namespace

TEST(AirLog, LiquidsoapsLogHasSecondsSpotAndItem) {
  const auto airings = ReadAirLog("1763820003.125,41,12\n1763820010,7,\n", u"x"_s);
  ASSERT_EQ(airings.size(), 2U);
  EXPECT_EQ(airings[0].spotID, 41);
  EXPECT_EQ(airings[0].itemID, 12);
  EXPECT_EQ(airings[0].moment, QDateTime::fromMSecsSinceEpoch(1763820003125));
  EXPECT_EQ(airings[1].itemID, 0);
}

TEST(AirLog, ATableMayHaveAnyOrderAndEitherSeparator) {
  for (const QByteArray& table :
       {QByteArray("Moment,ItemSpot,Item\r\n2025-03-11 14:32:07,41,12\r\n"),
        QByteArray("\xEF\xBB\xBFItemSpot;Naam;Moment;Item\n41;\"x\";\"11-03-2025 14:32:07\";12\n")}) {
    const auto airings = ReadAirLog(table, u"x"_s);
    ASSERT_EQ(airings.size(), 1U) << table.toStdString();
    EXPECT_EQ(airings[0].spotID, 41);
    EXPECT_EQ(airings[0].itemID, 12);
    EXPECT_EQ(airings[0].moment, QDateTime(QDate(2025, 3, 11), QTime(14, 32, 7)));
  }
  EXPECT_EQ(ReadAirLog("ItemSpot,Moment\n41,2025-03-11 14:32:07\n", u"x"_s).size(), 1U);
}

TEST(AirLog, ACutLogHasTheSpotsOfOneDay) {
  const auto airings =
      ReadAirLog(CutLog("2025-03-11",
                        "06:20:03  100041  Bakker                   001                        00:30\n"
                        " 6:20:33  200003  Tune                     001                        00:03\n"
                        "16:20:36  000123  Muziek                        x                     03:30\n"),
                 u"x"_s);
  ASSERT_EQ(airings.size(), 1U);
  EXPECT_EQ(airings[0].spotID, 41);
  EXPECT_EQ(airings[0].moment, QDateTime(QDate(2025, 3, 11), QTime(6, 20, 3)));
}

TEST(AirLog, ACutLogMayUseTwelveHourTimes) {
  const auto airings = ReadAirLog(CutLog("13/03/2025", " 6:20:03 PM  100041  Bakker\n"), u"x"_s);
  ASSERT_EQ(airings.size(), 1U);
  EXPECT_EQ(airings[0].moment, QDateTime(QDate(2025, 3, 13), QTime(18, 20, 3)));
}

TEST(AirLog, AnAmbiguousDateNeedsTheDayOption) {
  EXPECT_TRUE(Says(CutLog("03/11/2025", ""), "--dag"));
  EXPECT_TRUE(Says(CutLog("2025-03-11 - 2025-03-12", ""), "meer dan één dag"));
  EXPECT_TRUE(Says(CutLog("maart", ""), "geen datum"));
  EXPECT_EQ(ReadAirLog(CutLog("03/11/2025", "06:20:03  100041  x\n"), u"x"_s, QDate(2025, 11, 3)).at(0).moment.date(),
            QDate(2025, 11, 3));
  EXPECT_EQ(ErrorOf(CutLog("03/03/2025", "")), "") << "the same day either way";
}

TEST(AirLog, ErrorsNameTheLogAndTheLine) {
  EXPECT_TRUE(Says("zomaar\n", "'x.log', regel 1"));
  EXPECT_TRUE(Says("1763820003,41,12\nstuk\n", "regel 2"));
  EXPECT_TRUE(Says("Moment,ItemSpot\n2025-03-11 14:32:07,veel\n", "'veel'"));
  EXPECT_TRUE(Says("Moment,ItemSpot\nmorgen,4\n", "'morgen'"));
  EXPECT_TRUE(Says("Moment,ItemSpot\n2025-03-11 14:32:07\n", "ontbreekt"));
  EXPECT_TRUE(Says(CutLog("2025-03-11", "geen tijd\n"), "regel 4"));
}

TEST(AirLog, AnEmptyLogHasNoAirings) {
  EXPECT_TRUE(ReadAirLog("", u"x"_s).empty());
  EXPECT_TRUE(ReadAirLog("\n\n", u"x"_s).empty());
}

#include "media/SpotValidity.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using controls::LineMark;

namespace {

const QDateTime kNow(QDate(2025, 3, 11), QTime(12, 30));

SpotValidity Running() {
  SpotValidity spot;
  spot.aktief = true;
  spot.startDatum = QDate(2025, 3, 1);
  spot.eindDatum = QDate(2025, 4, 20);
  spot.startUur = 6;
  spot.eindUur = 22;
  return spot;
}

std::string Word(const SpotValidity& spot) {
  return RemarkOn(spot, kNow).word.toStdString();
}

}  // namespace

TEST(SpotValidity, RunningTellsTheDaysLeft) {
  EXPECT_EQ(Word(Running()), "loopt, nog 40 dagen");
  EXPECT_EQ(RemarkOn(Running(), kNow).mark, LineMark::Circle);
}

TEST(SpotValidity, FirstStateThatHoldsWins) {
  SpotValidity spot = Running();
  spot.eindDatum = QDate(2025, 2, 28);
  EXPECT_EQ(Word(spot), "verlopen op 28-02-2025");
  spot.fileMissing = true;
  EXPECT_EQ(Word(spot), "geluidsbestand ontbreekt");
  spot.aktief = false;
  EXPECT_EQ(Word(spot), "niet aktief");
}

TEST(SpotValidity, EndsWithinSevenDays) {
  SpotValidity spot = Running();
  spot.eindDatum = QDate(2025, 3, 11);
  EXPECT_EQ(Word(spot), "verloopt vandaag");
  spot.eindDatum = QDate(2025, 3, 12);
  EXPECT_EQ(Word(spot), "verloopt morgen");
  spot.eindDatum = QDate(2025, 3, 18);
  EXPECT_EQ(Word(spot), "verloopt over 7 dagen");
  spot.eindDatum = QDate(2025, 3, 19);
  EXPECT_EQ(Word(spot), "loopt, nog 8 dagen");
}

TEST(SpotValidity, BeginsLater) {
  SpotValidity spot = Running();
  spot.startDatum = QDate(2025, 3, 31);
  EXPECT_EQ(Word(spot), "begint over 20 dagen");
  EXPECT_TRUE(RemarkOn(spot, kNow).wordInTone);
}

TEST(SpotValidity, HoursAreInclusiveAndMayRunOverMidnight) {
  SpotValidity spot = Running();
  spot.startUur = 12;
  spot.eindUur = 12;
  EXPECT_EQ(Word(spot), "loopt, nog 40 dagen");
  spot.startUur = 13;
  spot.eindUur = 22;
  EXPECT_EQ(Word(spot), "nu buiten de uren");
  spot.startUur = 22;
  spot.eindUur = 12;
  EXPECT_EQ(Word(spot), "loopt, nog 40 dagen");
}

TEST(SpotValidity, UnknownDatesSayNothing) {
  SpotValidity spot = Running();
  spot.eindDatum.reset();
  EXPECT_EQ(Word(spot), "");
  EXPECT_EQ(RemarkOn(spot, kNow).mark, LineMark::None);
}

// SPDX-License-Identifier: MIT
#include "media/ValidityRemark.h"

#include <gtest/gtest.h>

#include <string>

using namespace Qt::StringLiterals;
using controls::LineMark;

namespace {

const QDateTime kNow(QDate(2025, 3, 11), QTime(12, 30));

SpotFacts Running() {
  SpotFacts spot;
  spot.path = u"D:\\a.wav"_s;
  spot.aktief = true;
  spot.startDatum = QDate(2025, 3, 1);
  spot.eindDatum = QDate(2025, 4, 20);
  spot.startUur = 6;
  spot.eindUur = 22;
  return spot;
}

std::string Word(const SpotFacts& spot) {
  return RemarkOn(spot, kNow).word.toStdString();
}

}  // namespace

TEST(ValidityRemark, RunningShowsTheDaysLeft) {
  EXPECT_EQ(Word(Running()), "loopt, nog 40 dagen");
  EXPECT_EQ(RemarkOn(Running(), kNow).mark, LineMark::Circle);
}

TEST(ValidityRemark, FirstMatchingStateIsShown) {
  SpotFacts spot = Running();
  spot.startDatum = QDate(2025, 2, 1);
  spot.eindDatum = QDate(2025, 2, 28);
  EXPECT_EQ(Word(spot), "verlopen op 28-02-2025");
  spot.file = runtime::Presence::NotThere;
  EXPECT_EQ(Word(spot), "geluidsbestand ontbreekt");
  spot.aktief = false;
  EXPECT_EQ(Word(spot), "niet aktief");
}

TEST(ValidityRemark, AnEndBeforeTheStartIsReported) {
  SpotFacts spot = Running();
  spot.eindDatum = QDate(2025, 2, 28);
  spot.startDatum = QDate(2025, 2, 28);
  EXPECT_EQ(Word(spot), "verlopen op 28-02-2025");
  spot.startDatum = QDate(2025, 3, 1);
  EXPECT_EQ(Word(spot), "einddatum vóór startdatum");
  EXPECT_EQ(RemarkOn(spot, kNow).mark, LineMark::Cross);
  spot.startDatum = QDate(2025, 5, 1);
  spot.eindDatum = QDate(2025, 4, 1);
  EXPECT_EQ(Word(spot), "einddatum vóór startdatum");
  spot.aktief = false;
  EXPECT_EQ(Word(spot), "niet aktief");
}

TEST(ValidityRemark, EndingSoonCountsTheDays) {
  SpotFacts spot = Running();
  spot.eindDatum = QDate(2025, 3, 11);
  EXPECT_EQ(Word(spot), "verloopt vandaag");
  spot.eindDatum = QDate(2025, 3, 12);
  EXPECT_EQ(Word(spot), "verloopt morgen");
  spot.eindDatum = QDate(2025, 3, 18);
  EXPECT_EQ(Word(spot), "verloopt over 7 dagen");
  spot.eindDatum = QDate(2025, 3, 19);
  EXPECT_EQ(Word(spot), "loopt, nog 8 dagen");
}

TEST(ValidityRemark, StartingLaterCountsTheDays) {
  SpotFacts spot = Running();
  spot.startDatum = QDate(2025, 3, 31);
  EXPECT_EQ(Word(spot), "begint over 20 dagen");
  EXPECT_TRUE(RemarkOn(spot, kNow).wordInTone);
}

TEST(ValidityRemark, IncompleteEditorHasNoRemark) {
  SpotFacts spot = Running();
  spot.eindDatum.reset();
  EXPECT_EQ(Word(spot), "");
  EXPECT_EQ(RemarkOn(spot, kNow).mark, LineMark::None);
  spot = Running();
  spot.path.clear();
  EXPECT_EQ(Word(spot), "");
}

TEST(ValidityRemark, MissingFileIsReportedBeforeTheDatesAreKnown) {
  SpotFacts spot = Running();
  spot.eindDatum.reset();
  spot.file = runtime::Presence::NotThere;
  EXPECT_EQ(Word(spot), "geluidsbestand ontbreekt");
}

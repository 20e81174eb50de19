// SPDX-License-Identifier: MIT
#include "data/SpotState.h"

#include "platform/runtime/Clock.h"

#include <gtest/gtest.h>

#include <functional>
#include <optional>

using namespace Qt::StringLiterals;

namespace {

const QDate kStateDay(2025, 3, 11);

QDateTime At(int hour) {
  return {kStateDay, QTime(hour, 30)};
}

// An active spot whose file exists, in the middle of its validity.
SpotFacts Running() {
  SpotFacts spot;
  spot.path = u"Z:\\spot.wav"_s;
  spot.aktief = true;
  spot.startDatum = kStateDay.addDays(-10);
  spot.eindDatum = kStateDay.addDays(40);
  spot.startUur = 0;
  spot.eindUur = 23;
  spot.file = runtime::Presence::There;
  return spot;
}

SpotState StateWith(const std::function<void(SpotFacts&)>& change, int hour = 14) {
  SpotFacts spot = Running();
  change(spot);
  return StateOf(spot, At(hour));
}

}  // namespace

TEST(SpotState, RunsBetweenItsDates) {
  EXPECT_EQ(StateOf(Running(), At(14)), SpotState::Loopt);
  EXPECT_EQ(StateText(Running(), SpotState::Loopt), u"loopt t/m 20-04-2025"_s);
}

TEST(SpotState, FirstAndLastDayBelongToTheValidity) {
  EXPECT_EQ(StateWith([](auto& spot) { spot.startDatum = kStateDay; }), SpotState::Loopt);
  EXPECT_EQ(StateWith([](auto& spot) { spot.startDatum = kStateDay.addDays(1); }), SpotState::Begint);
  EXPECT_EQ(StateWith([](auto& spot) { spot.eindDatum = kStateDay; }), SpotState::Verloopt);
  EXPECT_EQ(StateWith([](auto& spot) { spot.eindDatum = kStateDay.addDays(-1); }), SpotState::Verlopen);
}

TEST(SpotState, EndsSoonFromSevenDaysBeforeTheLastDay) {
  EXPECT_EQ(StateWith([](auto& spot) { spot.eindDatum = kStateDay.addDays(7); }), SpotState::Verloopt);
  EXPECT_EQ(StateWith([](auto& spot) { spot.eindDatum = kStateDay.addDays(8); }), SpotState::Loopt);
}

TEST(SpotState, MissingDatesSetNoLimit) {
  const auto withoutDates = [](SpotFacts& spot) { spot.startDatum = spot.eindDatum = std::nullopt; };
  EXPECT_EQ(StateWith(withoutDates), SpotState::Loopt);
  SpotFacts spot = Running();
  withoutDates(spot);
  EXPECT_EQ(StateText(spot, SpotState::Loopt), u"loopt"_s);
}

TEST(SpotState, HoursApplyToEachDayAndAreInclusive) {
  const auto seven = [](SpotFacts& spot) { spot.startUur = 7, spot.eindUur = 18; };
  EXPECT_EQ(StateWith(seven, 6), SpotState::BuitenUren);
  EXPECT_EQ(StateWith(seven, 7), SpotState::Loopt);
  EXPECT_EQ(StateWith(seven, 18), SpotState::Loopt);
  EXPECT_EQ(StateWith(seven, 19), SpotState::BuitenUren);
}

TEST(SpotState, HoursMaySpanMidnight) {
  const auto night = [](SpotFacts& spot) { spot.startUur = 22, spot.eindUur = 5; };
  EXPECT_EQ(StateWith(night, 23), SpotState::Loopt);
  EXPECT_EQ(StateWith(night, 5), SpotState::Loopt);
  EXPECT_EQ(StateWith(night, 6), SpotState::BuitenUren);
}

TEST(SpotState, MissingHoursSetNoLimit) {
  EXPECT_EQ(StateWith([](auto& spot) { spot.startUur = spot.eindUur = std::nullopt; }, 0), SpotState::Loopt);
}

TEST(SpotState, OnlyAFileKnownToBeAbsentIsMissing) {
  EXPECT_EQ(StateWith([](auto& spot) { spot.file = runtime::Presence::NotThere; }), SpotState::BestandOntbreekt);
  EXPECT_EQ(StateWith([](auto& spot) { spot.file = runtime::Presence::NotReachable; }), SpotState::Loopt);
  EXPECT_EQ(StateWith([](auto& spot) { spot.file = runtime::Presence::Denied; }), SpotState::Loopt);
  EXPECT_EQ(StateWith([](auto& spot) { spot.file = std::nullopt; }), SpotState::Loopt);
  EXPECT_EQ(StateWith([](auto& spot) { spot.path.clear(); }), SpotState::BestandOntbreekt);
}

// Each change alone leads to its state; together the first of the list wins.
TEST(SpotState, FirstMatchingStateWins) {
  SpotFacts spot = Running();
  spot.startUur = spot.eindUur = 3;
  EXPECT_EQ(StateOf(spot, At(14)), SpotState::BuitenUren);
  spot.eindDatum = kStateDay.addDays(3);
  EXPECT_EQ(StateOf(spot, At(14)), SpotState::Verloopt);
  spot.startDatum = kStateDay.addDays(2);
  EXPECT_EQ(StateOf(spot, At(14)), SpotState::Begint);
  spot.eindDatum = kStateDay.addDays(-3);
  EXPECT_EQ(StateOf(spot, At(14)), SpotState::Verlopen);
  spot.file = runtime::Presence::NotThere;
  EXPECT_EQ(StateOf(spot, At(14)), SpotState::BestandOntbreekt);
  spot.aktief = false;
  EXPECT_EQ(StateOf(spot, At(14)), SpotState::NietAktief);
}

TEST(SpotState, TextContainsTheRelevantDate) {
  SpotFacts spot = Running();
  EXPECT_EQ(StateText(spot, SpotState::Begint), u"begint 01-03-2025"_s);
  EXPECT_EQ(StateText(spot, SpotState::Verloopt), u"verloopt 20-04-2025"_s);
  const runtime::ClockScope lastDay(QDateTime(QDate(2025, 4, 20), QTime(9, 0)));
  EXPECT_EQ(StateText(spot, SpotState::Verloopt), u"verloopt vandaag"_s);
  EXPECT_EQ(StateText(spot, SpotState::Verlopen), u"verlopen op 20-04-2025"_s);
  EXPECT_EQ(StateText(spot, SpotState::NietAktief), u"niet aktief"_s);
  EXPECT_EQ(StateText(spot, SpotState::BestandOntbreekt), u"geluidsbestand ontbreekt"_s);
  EXPECT_EQ(StateText(spot, SpotState::BuitenUren), u"nu buiten de uren"_s);
}

TEST(SpotCounts, TextOmitsZeroCounts) {
  SpotCounts counts;
  EXPECT_EQ(counts.Text(), QString());
  counts.Add(SpotState::Loopt);
  counts.Add(SpotState::Begint);
  EXPECT_EQ(counts.Text(), u"1 loopt, 1 begint later"_s);
}

TEST(SpotCounts, ThousandsAreMarked) {
  SpotCounts counts;
  for (int spot = 0; spot < 1200; ++spot)
    counts.Add(SpotState::Begint);
  EXPECT_EQ(counts.Text(), u"1.200 beginnen later"_s);
}

TEST(SpotCounts, EverySpotIsCountedOnce) {
  SpotCounts counts;
  for (int state = 0; state < kSpotStates; ++state) {
    counts.Add(static_cast<SpotState>(state));
    counts.Add(static_cast<SpotState>(state));
  }
  EXPECT_EQ(counts.Text(),
            u"6 lopen (2 verlopen binnen 7 dagen), 2 beginnen later, 4 voorbij of niet aktief, 2 zonder bestand"_s);
}

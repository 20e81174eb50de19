// SPDX-License-Identifier: MIT
#include "export/playout/DayPlans.h"

#include <gtest/gtest.h>

#include <set>

using namespace Qt::StringLiterals;

namespace {

const QDate kMonday(2025, 3, 10);

BlockSpot DaySpot(qint32 id, std::optional<QDate> from = {}, std::optional<QDate> to = {}) {
  BlockSpot spot;
  spot.id = id;
  spot.naam = u"Spot %1"_s.arg(id);
  spot.facts.path = u"D:\\%1.wav"_s.arg(id);
  spot.facts.aktief = true;
  spot.facts.startDatum = from;
  spot.facts.eindDatum = to;
  return spot;
}

Block DayBlock(qint32 id, std::vector<BlockSpot> spots) {
  Block block;
  block.id = id;
  block.spots = std::move(spots);
  return block;
}

LookUpFile AllThere() {
  return [](const QString&) { return std::nullopt; };
}

using DayIds = std::vector<qint32>;

}  // namespace

TEST(DayPlans, AnItemSpotRunsFromItsFirstToItsLastDay) {
  const std::vector<BlockSpot> spots{DaySpot(1, kMonday.addDays(1), kMonday.addDays(2)), DaySpot(2)};
  const auto days = PlanDays(spots, {}, kMonday, 4, AllThere());
  ASSERT_EQ(days.size(), 4U);
  EXPECT_EQ(days[3].date, kMonday.addDays(3));
  EXPECT_EQ(days[0].running, DayIds{2});
  EXPECT_EQ(days[1].running, (DayIds{1, 2}));
  EXPECT_EQ(days[1].begins, DayIds{1});
  EXPECT_EQ(days[1].ends, DayIds{});
  EXPECT_EQ(days[2].ends, DayIds{1});
  EXPECT_EQ(days[3].running, DayIds{2});
}

TEST(DayPlans, AnInactiveItemSpotNeitherRunsNorBegins) {
  BlockSpot spot = DaySpot(1, kMonday, kMonday);
  spot.facts.aktief = false;
  const auto days = PlanDays({spot}, {}, kMonday, 1, AllThere());
  EXPECT_EQ(days[0].running, DayIds{});
  EXPECT_EQ(days[0].begins, DayIds{});
  EXPECT_EQ(days[0].ends, DayIds{});
}

TEST(DayPlans, ABlockIsSilentOnTheDaysOnWhichNoneOfItsSpotsRuns) {
  const std::vector<Block> blocks{DayBlock(7, {DaySpot(1, {}, kMonday)}), DayBlock(8, {DaySpot(2)})};
  const auto days = PlanDays({}, blocks, kMonday, 2, AllThere());
  EXPECT_EQ(days[0].silent, DayIds{});
  EXPECT_EQ(days[1].silent, DayIds{7});
}

TEST(DayPlans, ABlockThatPlaysAtOneHourOnlyIsNotSilent) {
  BlockSpot early = DaySpot(1);
  early.facts.startUur = early.facts.eindUur = 6;
  const auto days = PlanDays({}, {DayBlock(7, {early})}, kMonday, 1, AllThere());
  EXPECT_EQ(days[0].silent, DayIds{});
}

TEST(DayPlans, ABlockWhoseFilesAreGoneIsSilent) {
  const LookUpFile none = [](const QString&) { return SoundFile{runtime::Presence::NotThere}; };
  const auto days = PlanDays({}, {DayBlock(7, {DaySpot(1)})}, kMonday, 1, none);
  EXPECT_EQ(days[0].silent, DayIds{7});
}

TEST(DayPlans, AnInactiveBlockIsNotCountedAsSilent) {
  Block block = DayBlock(7, {});
  block.aktief = false;
  EXPECT_EQ(PlanDays({}, {block}, kMonday, 1, AllThere())[0].silent, DayIds{});
}

TEST(DayPlans, TheFileOfADayToComeMayStillBeMade) {
  Block block = DayBlock(7, {});
  block.filling = Block::Filling::Files;
  block.pattern.directory = u"D:\\map"_s;
  block.pattern.fixedPart = u"blok"_s;
  block.pattern.variableCode = 1;
  block.pattern.format = u"d"_s;
  block.pattern.extension = u"wav"_s;
  const LookUpFile none = [](const QString&) { return SoundFile{runtime::Presence::NotThere}; };
  EXPECT_EQ(PlanDays({}, {block}, kMonday, 1, none)[0].silent, DayIds{});
}

// SPDX-License-Identifier: MIT
#include "tests/export/playout/PlanBlocks.h"

#include <QTimeZone>

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

using namespace Qt::StringLiterals;
using namespace plan_test;

TEST(BlockPlan, AnInactiveBlockIsSilent) {
  Block block = ListOf({Spot(1)});
  block.opener = Jingle(1);
  block.aktief = false;
  EXPECT_TRUE(Plan(block).IsSilent());
  EXPECT_EQ(Plan(block).silence, Silence::BlockNotActive);
}

TEST(BlockPlan, ABlockWithoutAKnownFillingIsSilent) {
  Block block = ListOf({Spot(1)});
  block.filling = Block::Filling::Unknown;
  EXPECT_EQ(Plan(block).silence, Silence::NotFilled);
}

TEST(BlockPlan, ABlockWithoutSpotsPlaysNoJinglesAlone) {
  Block block = ListOf({});
  block.opener = Jingle(1);
  block.closer = Jingle(2);
  const BlockPlan plan = Plan(block);
  EXPECT_TRUE(plan.IsSilent());
  EXPECT_EQ(plan.silence, Silence::NoSpots);
  EXPECT_TRUE(plan.IsShort());
  EXPECT_EQ(plan.LengthMs(), 0);
}

TEST(BlockPlan, EachReasonExcludesASpot) {
  std::vector<BlockSpot> spots;
  for (qint32 id = 1; id <= 7; ++id)
    spots.push_back(Spot(id));
  spots[0].facts.aktief = false;
  spots[1].facts.path.clear();
  spots[2].facts.eindDatum = kNoon.date().addDays(-1);
  spots[3].facts.startDatum = kNoon.date().addDays(1);
  spots[4].facts.startUur = 13;
  spots[5].facts.path = u"D:\\weg.wav"_s;
  const BlockPlan plan = Plan(ListOf(spots, 7), AllBut({u"D:\\weg.wav"_s}));
  EXPECT_EQ(Ids(plan), QList<qint32>{7});
  EXPECT_EQ(ReasonOf(plan, 1), LeftOut::NotActive);
  EXPECT_EQ(ReasonOf(plan, 2), LeftOut::NoFile);
  EXPECT_EQ(ReasonOf(plan, 3), LeftOut::Over);
  EXPECT_EQ(ReasonOf(plan, 4), LeftOut::NotBegun);
  EXPECT_EQ(ReasonOf(plan, 5), LeftOut::OutsideHours);
  EXPECT_EQ(ReasonOf(plan, 6), LeftOut::FileMissing);
  EXPECT_TRUE(plan.IsShort());
}

TEST(BlockPlan, AFileWithoutAudioExcludesItsSpot) {
  const auto damaged = [](const QString&) { return SoundFile{runtime::Presence::There, std::nullopt, false}; };
  EXPECT_EQ(ReasonOf(Plan(ListOf({Spot(1)}), damaged), 1), LeftOut::Unreadable);
}

TEST(BlockPlan, FirstAndLastDayAndHourAreInclusive) {
  BlockSpot spot = Spot(1);
  spot.facts.startDatum = QDate(2025, 3, 11);
  spot.facts.eindDatum = QDate(2025, 3, 12);
  spot.facts.startUur = 6;
  spot.facts.eindUur = 22;
  const auto plays = [&](int day, int hour, int minute) {
    return !Plan(ListOf({spot}), kAll, QDateTime(QDate(2025, 3, day), QTime(hour, minute))).IsSilent();
  };
  EXPECT_FALSE(plays(10, 12, 0));
  EXPECT_FALSE(plays(11, 5, 59));
  EXPECT_TRUE(plays(11, 6, 0));
  EXPECT_TRUE(plays(12, 22, 59));
  EXPECT_FALSE(plays(12, 23, 0));
  EXPECT_FALSE(plays(13, 12, 0));
}

TEST(BlockPlan, HoursAcrossMidnight) {
  BlockSpot spot = Spot(1);
  spot.facts.startUur = 22;
  spot.facts.eindUur = 5;
  const auto plays = [&](int hour) {
    return !Plan(ListOf({spot}), kAll, QDateTime(QDate(2025, 3, 11), QTime(hour, 0))).IsSilent();
  };
  EXPECT_TRUE(plays(23));
  EXPECT_TRUE(plays(5));
  EXPECT_FALSE(plays(6));
  EXPECT_FALSE(plays(21));
}

TEST(BlockPlan, NullsAreNoLimitsAndNoMixPoint) {
  BlockSpot spot;
  spot.id = 3;
  spot.facts.path = u"D:\\x.wav"_s;
  spot.facts.aktief = true;
  const BlockPlan plan = Plan(ListOf({spot}), {});
  ASSERT_EQ(plan.sounds.size(), 1U);
  EXPECT_EQ(plan.sounds[0].mixMs, 0);
  EXPECT_FALSE(plan.sounds[0].lengthMs);
  EXPECT_FALSE(plan.LengthMs());
}

TEST(BlockPlan, OneSpotIsTheOnePlayedLongestAgo) {
  std::vector<BlockSpot> spots{Spot(1), Spot(2), Spot(3), Spot(4)};
  spots[0].lastPlayed = kNoon.addDays(-1);
  spots[1].lastPlayed = kNoon.addDays(-3);
  spots[2].lastPlayed = kNoon.addDays(-2);
  spots[3].lastPlayed = kNoon.addDays(-2);
  EXPECT_EQ(Ids(Plan(ListOf(spots))), QList<qint32>{2});
  spots[3].lastPlayed = {};
  spots[3].playCount = 99;  // so that only the times decide
  EXPECT_EQ(Ids(Plan(ListOf(spots))), QList<qint32>{4});
  EXPECT_EQ(ReasonOf(Plan(ListOf(spots)), 1), LeftOut::NotItsTurn);
  EXPECT_FALSE(Plan(ListOf(spots)).IsShort());
}

TEST(BlockPlan, OneSpotOfEquallyOldOnesIsTheOnePlayedLeastThenTheFirst) {
  std::vector<BlockSpot> spots{Spot(1), Spot(2), Spot(3)};
  for (BlockSpot& spot : spots)
    spot.lastPlayed = kNoon.addDays(-1);
  spots[0].playCount = 5;
  spots[1].playCount = spots[2].playCount = 4;
  EXPECT_EQ(Ids(Plan(ListOf(spots))), QList<qint32>{2});
}

TEST(BlockPlan, SeveralSpotsPlayInListOrder) {
  std::vector<BlockSpot> spots{Spot(1), Spot(2), Spot(3), Spot(4)};
  EXPECT_EQ(Ids(Plan(ListOf(spots, 3))), (QList<qint32>{1, 2, 3}));
  spots[1].lastPlayed = kNoon.addSecs(-60);
  EXPECT_EQ(Ids(Plan(ListOf(spots, 3))), (QList<qint32>{1, 3, 4}));
}

TEST(BlockPlan, TheCountIsBetweenOneAndTheMaximum) {
  Block block = ListOf({Spot(1), Spot(2), Spot(3)}, 3);
  block.most = 2;
  EXPECT_EQ(Plan(block).spots, 2);
  block.most = 0;  // not filled in
  EXPECT_EQ(Plan(block).spots, 3);
  block.count = 0;
  EXPECT_EQ(Plan(block).spots, 1);
}

TEST(BlockPlan, TheSeedDecidesTheRandomOrder) {
  std::vector<BlockSpot> spots;
  for (qint32 id = 1; id <= 8; ++id)
    spots.push_back(Spot(id));
  Block block = ListOf(spots, 4);
  block.random = true;
  const auto ids = [&](quint32 seed) { return Ids(PlanBlock(block, kNoon, seed, kAll)); };
  EXPECT_EQ(ids(5), ids(5));
  std::set<QList<qint32>> orders;
  std::set<qint32> played;
  for (quint32 seed = 0; seed < 100; ++seed) {
    const QList<qint32> order = ids(seed);
    EXPECT_EQ(std::set<qint32>(order.begin(), order.end()).size(), 4U);
    orders.insert(order);
    played.insert(order.begin(), order.end());
  }
  EXPECT_GT(orders.size(), 90U);
  EXPECT_EQ(played.size(), 8U);
  // The same on every machine and in later versions: a block sounds as it did when it was listened to.
  EXPECT_EQ(ids(5), (QList<qint32>{8, 5, 7, 3}));
}

TEST(BlockPlan, OneSpotIsNeverRandom) {
  Block block = ListOf({Spot(1), Spot(2)});
  block.random = true;
  for (quint32 seed = 0; seed < 20; ++seed)
    EXPECT_EQ(Ids(PlanBlock(block, kNoon, seed, kAll)), QList<qint32>{1});
}

TEST(BlockPlan, JinglesAreBeforeBetweenAndAfterTheSpots) {
  Block block = ListOf({Spot(11), Spot(12), Spot(13)}, 3);
  block.opener = Jingle(1);
  block.middle = Jingle(2);
  block.closer = Jingle(3);
  const BlockPlan plan = Plan(block);
  EXPECT_EQ(Ids(plan), (QList<qint32>{1, 11, 2, 12, 2, 13, 3}));
  EXPECT_EQ(plan.sounds[0].kind, SoundKind::Opener);
  EXPECT_EQ(plan.sounds[2].kind, SoundKind::Middle);
  EXPECT_EQ(plan.sounds[6].kind, SoundKind::Closer);
  EXPECT_EQ(plan.sounds[2].mixMs, 200);
  EXPECT_EQ(plan.spots, 3);
}

TEST(BlockPlan, OneSpotHasNoMiddleJingle) {
  Block block = ListOf({Spot(11)});
  block.middle = Jingle(2);
  EXPECT_EQ(Ids(Plan(block)), QList<qint32>{11});
  EXPECT_TRUE(Plan(block).leftOut.empty());
}

TEST(BlockPlan, AJingleThatCannotPlayIsLeftOutAndTheBlockPlays) {
  Block block = ListOf({Spot(11), Spot(12)}, 2);
  block.opener = Jingle(1);
  block.opener->aktief = false;
  block.middle = Jingle(2);
  block.middle->exists = false;
  block.closer = Jingle(3);
  BlockPlan plan = Plan(block, AllBut({u"D:\\jingle3.wav"_s}));
  EXPECT_EQ(Ids(plan), (QList<qint32>{11, 12}));
  EXPECT_EQ(ReasonOf(plan, 1), LeftOut::NotActive);
  EXPECT_EQ(ReasonOf(plan, 2), LeftOut::JingleGone);
  EXPECT_EQ(ReasonOf(plan, 3), LeftOut::FileMissing);
  block.closer->path.clear();
  EXPECT_EQ(ReasonOf(Plan(block), 3), LeftOut::NoFile);
}

TEST(BlockPlan, TheNextSoundStartsAtTheMixPoint) {
  Block block = ListOf({Spot(1, 1250), Spot(2, 400), Spot(3, 2000)}, 3);
  const auto measured = [](const QString& path) {
    return SoundFile{runtime::Presence::There, path == u"D:\\1.wav"_s ? 8000 : 6000};
  };
  const BlockPlan plan = PlanBlock(block, kNoon, 1, measured);
  EXPECT_EQ(plan.sounds[0].startMs, 0);
  EXPECT_EQ(plan.sounds[1].startMs, 6750);
  EXPECT_EQ(plan.sounds[2].startMs, 12'350);
  EXPECT_EQ(plan.sounds[2].mixMs, 0) << "nothing follows";
  EXPECT_EQ(plan.LengthMs(), 18'350);
}

TEST(BlockPlan, WithoutAMeasuredLengthTheStoredSecondsCount) {
  const BlockPlan plan = Plan(ListOf({Spot(1, 500, 4), Spot(2)}, 2), {});
  EXPECT_EQ(plan.sounds[1].startMs, 3500);
}

TEST(BlockPlan, AfterAnUnknownLengthStartsAreUnknown) {
  Block block = ListOf({Spot(1), Spot(2), Spot(3)}, 3);
  block.spots[1].facts.lengteSec.reset();
  const BlockPlan plan = Plan(block, {});
  EXPECT_TRUE(plan.sounds[1].startMs);
  EXPECT_FALSE(plan.sounds[2].startMs);
  EXPECT_FALSE(plan.LengthMs());
}

// For every combination of long mix points at most two sounds overlap.
TEST(BlockPlan, AtMostTwoSoundsOverlap) {
  const QList<qint32> mixes{-5, 0, 400, 4000, 9999, 999'999};
  const QList<qint32> seconds{1, 5, 12};
  for (int a = 0; a < 18; ++a) {
    for (int b = 0; b < 18; ++b) {
      for (int c = 0; c < 18; ++c) {
        const auto spot = [&](qint32 id, int at) { return Spot(id, mixes[at % 6], seconds[at / 6]); };
        const BlockPlan plan = Plan(ListOf({spot(1, a), spot(2, b), spot(3, c), Spot(4)}, 4), {});
        for (std::size_t at = 0; at + 1 < plan.sounds.size(); ++at) {
          const PlannedSound& sound = plan.sounds[at];
          const PlannedSound& next = plan.sounds[at + 1];
          ASSERT_GE(*next.startMs, *sound.startMs);
          ASSERT_GE(sound.mixMs, 0);
          ASSERT_LE(sound.mixMs, std::max(0, sound.storedMixMs));
          if (at + 2 == plan.sounds.size()) continue;
          ASSERT_GE(*plan.sounds[at + 2].startMs, *sound.startMs + *sound.lengthMs);
        }
      }
    }
  }
}

TEST(BlockPlan, AMixPointThatFitsIsKept) {
  const BlockPlan plan = Plan(ListOf({Spot(1, 6000), Spot(2, 4000), Spot(3)}, 3));
  EXPECT_EQ(plan.sounds[0].mixMs, 6000);
  EXPECT_EQ(plan.sounds[1].mixMs, 4000);
  EXPECT_EQ(Plan(ListOf({Spot(1, 6001), Spot(2, 4000), Spot(3)}, 3)).sounds[0].mixMs, 6000);
}

TEST(BlockPlan, AnUnreachableFileCountsAsPresent) {
  for (const auto presence : {runtime::Presence::NotReachable, runtime::Presence::Denied}) {
    const BlockPlan plan = PlanBlock(ListOf({Spot(1)}), kNoon, 1, [&](const QString&) { return SoundFile{presence}; });
    ASSERT_EQ(plan.sounds.size(), 1U);
    EXPECT_FALSE(plan.sounds[0].reachable);
  }
  EXPECT_TRUE(PlanBlock(ListOf({Spot(1)}), kNoon, 1, {}).sounds[0].reachable);
}

// Local time decides, also in the hour that is skipped in spring and the hour that is repeated in autumn.
TEST(BlockPlan, DaysOnWhichTheClockChanges) {
  const QTimeZone zone("Europe/Brussels");
  ASSERT_TRUE(zone.isValid());
  BlockSpot night = Spot(1);
  night.facts.startUur = 3;
  night.facts.eindUur = 3;
  const auto at = [&](const QString& utc) { return QDateTime::fromString(utc, Qt::ISODate).toTimeZone(zone); };
  const auto plays = [&](const QString& utc) { return !Plan(ListOf({night}), kAll, at(utc)).IsSilent(); };
  EXPECT_FALSE(plays(u"2025-03-30T00:59:59Z"_s));  // 01:59:59, before the clock is set to 03:00
  EXPECT_TRUE(plays(u"2025-03-30T01:00:00Z"_s));
  EXPECT_FALSE(plays(u"2025-03-30T02:00:00Z"_s));
  night.facts.startUur = night.facts.eindUur = 2;
  EXPECT_TRUE(plays(u"2025-10-26T00:30:00Z"_s));
  EXPECT_TRUE(plays(u"2025-10-26T01:30:00Z"_s));  // 02:30 for the second time
  EXPECT_FALSE(plays(u"2025-10-26T02:30:00Z"_s));
  EXPECT_EQ(Paths(Plan(Files(2, u"ddmmyyyyhh"_s), kAll, at(u"2025-03-30T01:00:00Z"_s))),
            QStringList{u"D:\\map\\blok3003202503.wav"_s});
  EXPECT_EQ(Paths(Plan(Files(2, u"ddmmyyyyhh"_s), kAll, at(u"2025-10-26T01:30:00Z"_s))),
            QStringList{u"D:\\map\\blok2610202502.wav"_s});
}

TEST(BlockPlan, TheSeedIsTheSameWithinAnHourAndBlock) {
  const QDateTime begin(QDate(2025, 3, 11), QTime(14, 0));
  EXPECT_EQ(SeedOf(3, begin), SeedOf(3, begin.addSecs(3599)));
  EXPECT_NE(SeedOf(3, begin), SeedOf(3, begin.addSecs(3600)));
  EXPECT_NE(SeedOf(3, begin), SeedOf(4, begin));
}

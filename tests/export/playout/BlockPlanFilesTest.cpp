// SPDX-License-Identifier: MIT
#include "tests/export/playout/PlanBlocks.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace plan_test;

TEST(BlockPlanFiles, FilesAreFoundByEachNamePattern) {
  EXPECT_EQ(Paths(Plan(Files(1, u"ddmmyyyy"_s))), QStringList{u"D:\\map\\blok11032025.wav"_s});
  EXPECT_EQ(Paths(Plan(Files(2, u"ddmmyyyyhh"_s))), QStringList{u"D:\\map\\blok1103202512.wav"_s});
  EXPECT_EQ(Paths(Plan(Files(3, u"ww"_s))), QStringList{u"D:\\map\\blok11.wav"_s});
  EXPECT_EQ(Paths(Plan(Files(4, u"mm"_s))), QStringList{u"D:\\map\\blok03.wav"_s});
  EXPECT_EQ(Paths(Plan(Files(0, {}))), QStringList{u"D:\\map\\blok.wav"_s});
  EXPECT_EQ(Plan(Files(4, u"mm"_s)).sounds[0].storedMixMs, 500);
  EXPECT_EQ(Plan(Files(4, u"mm"_s)).sounds[0].naam, u"blok03.wav"_s);
}

TEST(BlockPlanFiles, SeveralFilesAreNumberedAndAMissingOneIsLeftOut) {
  for (const auto& [code, format, part] : {std::tuple{1, u"ddmmyyyy"_s, u"11032025"_s},
                                           {2, u"ddmmyyyyhh"_s, u"1103202512"_s},
                                           {3, u"ww"_s, u"11"_s},
                                           {4, u"mm"_s, u"03"_s}}) {
    const auto file = [&part = part](int number) { return u"D:\\map\\blok%1-%2.wav"_s.arg(part).arg(number); };
    const BlockPlan plan = Plan(Files(code, format, 3), AllBut({file(2)}));
    EXPECT_EQ(Paths(plan), (QStringList{file(1), file(3)}));
    ASSERT_EQ(plan.leftOut.size(), 1U);
    EXPECT_EQ(plan.leftOut[0].path, file(2));
    EXPECT_EQ(plan.leftOut[0].reason, LeftOut::FileMissing);
    EXPECT_TRUE(plan.IsShort());
  }
}

TEST(BlockPlanFiles, FilesInRandomOrderAreTheSameFiles) {
  Block block = Files(4, u"mm"_s, 6);
  block.random = true;
  QStringList paths = Paths(Plan(block));
  const QStringList drawn = paths;
  paths.sort();
  EXPECT_NE(drawn, paths);
  block.random = false;
  EXPECT_EQ(paths, Paths(Plan(block)));
}

TEST(BlockPlanFiles, APatternWithoutANameGivesOneReason) {
  Block block = Files(1, u"ddmmyyyy"_s, 5);
  block.pattern.directory.clear();
  const BlockPlan plan = Plan(block);
  EXPECT_EQ(plan.silence, Silence::NoSpots);
  ASSERT_EQ(plan.leftOut.size(), 1U);
  EXPECT_EQ(plan.leftOut[0].reason, LeftOut::NoFile);
}

TEST(BlockPlanFiles, AnAbsurdNumberOfFilesIsLimited) {
  int looks = 0;
  const BlockPlan plan = PlanBlock(Files(4, u"mm"_s, 2'000'000'000), kNoon, 1, [&](const QString&) {
    ++looks;
    return SoundFile{runtime::Presence::NotThere};
  });
  EXPECT_TRUE(plan.IsSilent());
  EXPECT_LT(looks, 1000);
}

TEST(BlockPlanFiles, TheYearsEndIsWeek53) {
  EXPECT_EQ(Paths(Plan(Files(3, u"ww"_s), kAll, QDateTime(QDate(2024, 12, 31), QTime(8, 0)))),
            QStringList{u"D:\\map\\blok53.wav"_s});
  EXPECT_EQ(Paths(Plan(Files(3, u"ww"_s), kAll, QDateTime(QDate(2025, 1, 1), QTime(8, 0)))),
            QStringList{u"D:\\map\\blok01.wav"_s});
}

// SPDX-License-Identifier: MIT
#include "export/playout/PlanTexts.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

TEST(PlanTexts, ABlockThatPlaysAllItsSpotsHasNoTrouble) {
  BlockPlan plan;
  plan.sounds.push_back({});
  plan.spots = plan.wanted = 1;
  plan.leftOut.push_back({SoundKind::Spot, 2, u"Bakker"_s, {}, LeftOut::NotItsTurn});
  EXPECT_EQ(TroubleText(plan), QString());
}

TEST(PlanTexts, ASilentBlockHasAReason) {
  BlockPlan plan;
  plan.wanted = 1;
  plan.silence = Silence::NoSpots;
  plan.leftOut.push_back({SoundKind::Spot, 2, u"Bakker"_s, {}, LeftOut::Over});
  EXPECT_EQ(TroubleText(plan), u"stil: geen enkele spot kan spelen (Bakker: verlopen)"_s);
}

TEST(PlanTexts, AShortBlockAndAMissingJingleAreDescribed) {
  BlockPlan plan;
  plan.sounds.push_back({});
  plan.spots = 1;
  plan.wanted = 2;
  plan.leftOut.push_back({SoundKind::File, 0, u"weer-2.wav"_s, {}, LeftOut::FileMissing});
  EXPECT_EQ(TroubleText(plan), u"1 van 2 spots (weer-2.wav: geluidsbestand ontbreekt)"_s);
  plan.wanted = 1;
  plan.leftOut = {{SoundKind::Closer, 9, {}, {}, LeftOut::JingleGone}};
  EXPECT_EQ(TroubleText(plan), u"sluiter nummer 9: jingle bestaat niet meer"_s);
}

TEST(PlanTexts, ADurationIsRoundedToSeconds) {
  EXPECT_EQ(DurationText(61'499), u"1:01"_s);
  EXPECT_EQ(DurationText(61'500), u"1:02"_s);
}

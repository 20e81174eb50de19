// SPDX-License-Identifier: MIT
#include "catalogue/SpotView.h"

#include <gtest/gtest.h>

TEST(SpotView, RunningTodayIncludesSpotsThatEndSoonOrAreOutsideTheirHours) {
  SpotCounts counts;
  for (int state = 0; state < kSpotStates; ++state)
    counts.Add(static_cast<SpotState>(state));
  EXPECT_EQ(CountIn(SpotView::Alle, counts), 7);
  EXPECT_EQ(CountIn(SpotView::LopenVandaag, counts), 3);
  EXPECT_EQ(CountIn(SpotView::VerlopenBinnenkort, counts), 1);
  EXPECT_EQ(CountIn(SpotView::ZonderBestand, counts), 1);
  EXPECT_EQ(CountIn(SpotView::BeginnenLater, counts), 1);
  EXPECT_EQ(CountIn(SpotView::VoorbijOfNietAktief, counts), 2);
  EXPECT_TRUE(Matches(SpotView::LopenVandaag, SpotState::Verloopt));
  EXPECT_FALSE(Matches(SpotView::LopenVandaag, SpotState::BestandOntbreekt));
}

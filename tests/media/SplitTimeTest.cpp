// SPDX-License-Identifier: MIT
#include "media/SplitTime.h"

#include <gtest/gtest.h>

TEST(SplitTime, PartsAddUp) {
  const SplitTime time = Split(((1 * 60 + 2) * 60 + 5) * 1000 + 678);
  EXPECT_EQ(time.hours, 1);
  EXPECT_EQ(time.minutes, 2);
  EXPECT_EQ(time.seconds, 5);
  EXPECT_EQ(time.milliseconds, 678);
}

TEST(SplitTime, SecondsDropMillisecondsAndHours) {
  EXPECT_EQ(SecondsWithinHour(Split(75'900)), 75);
  EXPECT_EQ(SecondsWithinHour(Split(3'725'000)), 125);
  EXPECT_EQ(SecondsWithinHour(Split(3'599'999)), 3599);
  EXPECT_EQ(SecondsWithinHour(Split(0)), 0);
}

TEST(SplitTime, LongestTimeFits) {
  const SplitTime time = Split(2'147'483'647);
  EXPECT_EQ(time.hours, 596);
  EXPECT_EQ(time.milliseconds, 647);
}

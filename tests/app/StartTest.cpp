// SPDX-License-Identifier: MIT
#include "app/Start.h"

#include "data/ProgramLock.h"
#include "platform/desktop/MessageBox.h"
#include "tests/support/Station.h"

#include <gtest/gtest.h>

#include <memory>

using namespace Qt::StringLiterals;
using desktop::MessageBoxScript;
using testing_support::Station;

TEST(TakeProgramLock, ASecondStartShowsAMessageAndEnds) {
  const Station station;
  const std::unique_ptr<ProgramLock> first = TakeProgramLock();
  ASSERT_NE(first, nullptr);
  const MessageBoxScript boxes;
  EXPECT_EQ(TakeProgramLock(), nullptr);
  ASSERT_EQ(boxes.Shown().size(), 1u);
  EXPECT_TRUE(boxes.Last().text.contains(u"draait al"_s));
  EXPECT_EQ(boxes.Last().style, 48);
}

TEST(TakeProgramLock, TheNextProgramMayStartAfterTheFirst) {
  const Station station;
  const MessageBoxScript boxes;
  EXPECT_NE(TakeProgramLock(), nullptr);
  EXPECT_NE(TakeProgramLock(), nullptr);
  EXPECT_TRUE(boxes.Shown().empty());
}

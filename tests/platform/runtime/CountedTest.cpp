// SPDX-License-Identifier: MIT
#include "platform/runtime/Counted.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

TEST(Counted, ThousandsHaveADutchMark) {
  EXPECT_EQ(runtime::DutchNumber(999), u"999"_s);
  EXPECT_EQ(runtime::DutchNumber(51200), u"51.200"_s);
}

TEST(Counted, OnlyOneIsSingular) {
  EXPECT_EQ(runtime::Counted(0, u"wijziging"_s, u"wijzigingen"_s), u"0 wijzigingen"_s);
  EXPECT_EQ(runtime::Counted(1, u"wijziging"_s, u"wijzigingen"_s), u"1 wijziging"_s);
  EXPECT_EQ(runtime::Counted(1234567, u"wijziging"_s, u"wijzigingen"_s), u"1.234.567 wijzigingen"_s);
}

// SPDX-License-Identifier: MIT
#include "data/Text.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

TEST(RemReservedChr, QuotesBecomeBlanksAndTheEndsAreTrimmed) {
  EXPECT_EQ(RemReservedChr(u"'test'"_s), u"test"_s);
  EXPECT_EQ(RemReservedChr(u"a''b"_s), u"a  b"_s);
  EXPECT_EQ(RemReservedChr(u"Jan's \"Spot\""_s), u"Jan s  Spot"_s);
  EXPECT_EQ(RemReservedChr(u"zonder"_s), u"zonder"_s);
}

TEST(RemReservedChr, OnlyBlanksAreTrimmed) {
  EXPECT_EQ(RemReservedChr(u"  'naam '  "_s), u"naam"_s);
  EXPECT_EQ(RemReservedChr(u" \tnaam\n "_s), u"\tnaam\n"_s);
}

TEST(IsKull, TrueForNullInvalidAndBlankValues) {
  EXPECT_TRUE(IsKull(u"   "_s));
  EXPECT_TRUE(IsKull(u""_s));
  EXPECT_TRUE(IsKull(QVariant()));
  EXPECT_FALSE(IsKull(0));
  EXPECT_FALSE(IsKull(u"0"_s));
  EXPECT_FALSE(IsKull(u"\t"_s));
}

TEST(GetFile, ReturnsThePartAfterTheLastBackslash) {
  EXPECT_EQ(GetFile(u"C:\\Audio\\spot1.wav"_s), u"spot1.wav"_s);
  EXPECT_EQ(GetFile(u"spot1.wav"_s), u"spot1.wav"_s);
  EXPECT_EQ(GetFile(u"C:\\Audio\\"_s), u""_s);
}

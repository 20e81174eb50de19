// SPDX-License-Identifier: MIT
#include "tools/Usage.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

TEST(Usage, WordsInBracketsAreOptional) {
  const Usage usage = Usage::Of(u"BESTAND [TABEL] [--password TEKST]"_s);
  EXPECT_FALSE(usage.Allows(0));
  EXPECT_TRUE(usage.Allows(1));
  EXPECT_TRUE(usage.Allows(2));
  EXPECT_FALSE(usage.Allows(3));
  EXPECT_EQ(usage.valuedOptions, QStringList{u"--password"_s});
  EXPECT_TRUE(usage.flags.isEmpty());
}

TEST(Usage, DotsMeanAnyNumberOfWords) {
  const Usage usage = Usage::Of(u"MAP ZOEKMAP... [--write] [--station N]"_s);
  EXPECT_FALSE(usage.Allows(1));
  EXPECT_TRUE(usage.Allows(2));
  EXPECT_TRUE(usage.Allows(200));
  EXPECT_EQ(usage.flags, QStringList{u"--write"_s});
  EXPECT_EQ(usage.valuedOptions, QStringList{u"--station"_s});
}

TEST(Usage, OptionsMayShareBrackets) {
  const Usage usage = Usage::Of(u"MAP [--station N --name NAAM]"_s);
  EXPECT_TRUE(usage.Allows(1));
  EXPECT_FALSE(usage.Allows(2));
  EXPECT_EQ(usage.valuedOptions, (QStringList{u"--station"_s, u"--name"_s}));
}

#include "platform/runtime/CodePage.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

TEST(CodePage, EveryByteSurvivesARoundTrip) {
  QByteArray bytes;
  for (int i = 0; i < 256; ++i)
    bytes.append(static_cast<char>(i));
  EXPECT_EQ(runtime::ToCodePage(runtime::FromCodePage(bytes)), bytes);
}

TEST(CodePage, EuroAndQuotesHaveTheirBytes) {
  EXPECT_EQ(runtime::ToCodePage(u"\u20AC \u2018\u2019 \u00E9 \u0178"_s), QByteArray("\x80 \x91\x92 \xE9 \x9F"));
  EXPECT_TRUE(runtime::FitsCodePage(u"caf\u00E9 \u20AC"_s));
}

TEST(CodePage, WhatDoesNotFitBecomesOneQuestionMark) {
  EXPECT_EQ(runtime::ToCodePage(u"a\u03A9b\U0001F600c"_s), QByteArray("a?b?c"));
  EXPECT_FALSE(runtime::FitsCodePage(u"\u03A9"_s));
}

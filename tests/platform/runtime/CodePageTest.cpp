// SPDX-License-Identifier: MIT
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
}

TEST(CodePage, AppendingReturnsWhetherAllCharactersFit) {
  QByteArray bytes = "a";
  EXPECT_TRUE(runtime::AppendCodePage(u"b\u00E9", bytes));
  EXPECT_TRUE(runtime::AppendCodePage(u"\u20AC", bytes));
  EXPECT_TRUE(runtime::AppendCodePage({}, bytes));
  EXPECT_EQ(bytes, QByteArray("ab\xE9\x80"));
  EXPECT_FALSE(runtime::AppendCodePage(u"c\u03A9d", bytes));
  EXPECT_EQ(bytes, QByteArray("ab\xE9\x80"
                              "c?d"));
}

TEST(CodePage, AnUnknownCharacterBecomesOneQuestionMark) {
  EXPECT_EQ(runtime::ToCodePage(u"a\u03A9b\U0001F600c"_s), QByteArray("a?b?c"));
}

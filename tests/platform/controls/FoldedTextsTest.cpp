// SPDX-License-Identifier: MIT
#include "platform/controls/FoldedTexts.h"

#include <gtest/gtest.h>

namespace {

using namespace Qt::StringLiterals;
using controls::FoldedTexts;

// Not QString::fromUcs4, which treats some characters as a byte order mark.
QString TextOf(char32_t code) {
  if (!QChar::requiresSurrogates(code)) return QChar(static_cast<char16_t>(code));
  return QString(QChar(QChar::highSurrogate(code))) + QChar(QChar::lowSurrogate(code));
}

TEST(FoldedTexts, EveryCharacterIsFoundAsByACaseInsensitiveSearch) {
  for (char32_t code = 1; code <= 0x10FFFF; ++code) {
    const QString text = TextOf(code);
    const QString upper = TextOf(QChar::toUpper(code));
    FoldedTexts texts;
    texts.Append(u"a"_s + text + u"b"_s);
    ASSERT_EQ(FoldedTexts::Folded(text).size(), text.size()) << static_cast<std::uint32_t>(code);
    ASSERT_TRUE(texts.Holds(0, FoldedTexts::Folded(u"A"_s + text + u"B"_s))) << static_cast<std::uint32_t>(code);
    ASSERT_EQ(texts.Holds(0, FoldedTexts::Folded(upper)), text.contains(upper, Qt::CaseInsensitive))
        << static_cast<std::uint32_t>(code);
  }
}

TEST(FoldedTexts, TextsAreSearchedSeparately) {
  FoldedTexts texts;
  texts.Append(u"Bier"_s);
  texts.Append({});
  texts.Append(u"COLA Straße"_s);
  EXPECT_EQ(texts.Count(), 3);
  EXPECT_TRUE(texts.Holds(0, FoldedTexts::Folded(u"IER"_s)));
  EXPECT_FALSE(texts.Holds(0, FoldedTexts::Folded(u"rc"_s)));
  EXPECT_FALSE(texts.Holds(1, FoldedTexts::Folded(u"b"_s)));
  EXPECT_TRUE(texts.Holds(1, {}));
  EXPECT_TRUE(texts.Holds(2, FoldedTexts::Folded(u"Cola s"_s)));
  EXPECT_FALSE(texts.Holds(2, FoldedTexts::Folded(u"strasse"_s)));
  texts.Clear();
  EXPECT_EQ(texts.Count(), 0);
}

TEST(FoldedTexts, UnpairedSurrogatesAreUnchanged) {
  const QString halves = u"x"_s + QChar(0xDC00) + QChar(0xD800);
  EXPECT_EQ(FoldedTexts::Folded(halves), halves);
}

}  // namespace

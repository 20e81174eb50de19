// SPDX-License-Identifier: MIT
#include "platform/jet/values/StoredText.h"

#include "platform/jet/values/Error.h"
#include "platform/jet/values/Utf8.h"

#include <gtest/gtest.h>

namespace {

using jet::Bytes;

const Bytes kCompressed = {0xFF, 0xFE, 0xE4, 0xE4, 0x6B, 0x6B, 0xF6, 0x73, 0x69, 0xE4};

TEST(StoredText, ReadsBothForms) {
  EXPECT_EQ(jet::DecodeText(kCompressed), u"ääkkösiä");
  EXPECT_EQ(jet::DecodeText(Bytes{0x41, 0x00, 0x1C, 0x04}), u"AМ");
  EXPECT_EQ(jet::DecodeText(Bytes{}), u"");
  EXPECT_EQ(jet::DecodeText(Bytes{0xFF, 0xFE}), u"");
  EXPECT_EQ(jet::DecodeText(Bytes{0x41}), u"") << "half a character";
}

TEST(StoredText, AZeroByteSwitchesBetweenTheForms) {
  EXPECT_EQ(jet::DecodeText(Bytes{0xFF, 0xFE, 'a', 0, 0x1C, 0x04, 0x38, 0x04, 0, 'b'}), u"aМиb");
  EXPECT_EQ(jet::DecodeText(Bytes{0xFF, 0xFE, 'a', 0, 0x1C}), u"a") << "cut in the middle of a character";
}

TEST(StoredText, CompressesAsTheOriginalDoes) {
  EXPECT_EQ(jet::EncodeText(u"ääkkösiä", true), kCompressed);
  EXPECT_EQ(jet::EncodeText(u"ab", true), (Bytes{'a', 0, 'b', 0})) << "two characters are too few";
  EXPECT_EQ(jet::EncodeText(u"abc", false).size(), 6u);
  EXPECT_EQ(jet::EncodeText(u"abМ", true).size(), 6u);
  EXPECT_EQ(jet::EncodeText(std::u16string(u"a\0bc", 4), true).size(), 8u);
}

TEST(StoredText, RoundTripsEveryCharacter) {
  for (char32_t unit = 1; unit < 0x10000; ++unit) {
    std::u16string text(3, static_cast<char16_t>(unit));
    ASSERT_EQ(jet::DecodeText(jet::EncodeText(text, true)), text) << static_cast<unsigned>(unit);
  }
}

TEST(StoredText, RefusesWhatWouldReadDifferently) {
  EXPECT_THROW(jet::EncodeText(u"\uFEFF\u0100", true), jet::Error);
  EXPECT_EQ(jet::DecodePlainText(jet::EncodePlainText(u"\uFEFF\u0100")), u"\uFEFF\u0100");
}

TEST(Utf8, JoinsSurrogates) {
  EXPECT_EQ(jet::ToUtf8(u"a\u00e9\u20ac\U0001F399z"), "aé€🎙z");
}

TEST(Utf8, ALoneSurrogateBecomesTheReplacement) {
  EXPECT_EQ(jet::ToUtf8(std::u16string{u'a', char16_t{0xD800}, u'z'}), "a\xEF\xBF\xBDz");
  EXPECT_EQ(jet::ToUtf8(std::u16string{u'a', char16_t{0xDC00}}), "a\xEF\xBF\xBD");
}

}  // namespace

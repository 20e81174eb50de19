// SPDX-License-Identifier: MIT
#include "platform/jet/values/TextOrder.h"

#include "platform/jet/values/Error.h"
#include "platform/jet/values/Utf8.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <optional>
#include <random>
#include <string>
#include <vector>

namespace jet {
namespace {

std::string KeyOf(std::u16string_view text) {
  Bytes key;
  TextOrder::Legacy().AppendKey(text, key);
  std::string hex;
  for (const std::uint8_t byte : key) {
    char digits[4];
    std::snprintf(digits, sizeof digits, "%02X ", byte);
    hex += digits;
  }
  hex.pop_back();
  return hex;
}

int Sign(int number) {
  return (number > 0) - (number < 0);
}

int Compare(std::u16string_view a, std::u16string_view b) {
  return TextOrder::Legacy().Compare(a, b);
}

TEST(TextOrder, BuildsTheKeysThatRealFilesHold) {
  EXPECT_EQ(KeyOf(u""), "01 00");
  EXPECT_EQ(KeyOf(u"  "), "01 00");
  EXPECT_EQ(KeyOf(u"Tables"), "6D 4A 4C 5E 51 6B 01 00");
  EXPECT_EQ(KeyOf(u"MSysACEs"), "60 6B 76 6B 4A 4D 51 6B 01 00");
  EXPECT_EQ(KeyOf(u"ümlaut"), "6F 60 5E 4A 6F 6D 01 13 00");
  EXPECT_EQ(KeyOf(u"ääkkösiä"), "4A 4A 5C 5C 64 6B 59 4A 01 13 13 02 02 13 02 02 13 00");
  EXPECT_EQ(KeyOf(u"Мир"), "79 43 79 3B 79 48 01 00");
}

TEST(TextOrder, CountsADoubleLetterTwice) {
  EXPECT_EQ(KeyOf(u"NuNuCa Nuß-Nougat-Creme"),
            "62 6F 62 6F 4D 4A 07 62 6F 6B 6B 62 64 6F 55 4A 6D 4D 69 51 60 51 01 01 01 01 80 33 06 82 80 4B 06 82 00");
  EXPECT_EQ(KeyOf(u"Plutzer Lebensmittelgroßmärkte AG"),
            "66 5E 6F 6D 78 51 69 07 5E 51 4C 51 62 6B 60 59 6D 6D 51 5E 55 69 64 6B 6B 60 4A 69 5C 6D 51 07 4A 55 01 "
            "02 02 02 02 02 02 02 02 02 02 02 02 02 02 02 02 02 02 02 02 02 02 02 02 02 02 13 00");
}

TEST(TextOrder, PutsSpecialsAfterEverythingElse) {
  EXPECT_EQ(KeyOf(u"3L9\u001D52\u0002_AB(¥\u0005!!V"),
            "3C 5E 48 40 3A 2B 03 4A 4C 14 34 A9 09 09 71 01 01 01 01 80 13 06 1A 80 1B 06 04 80 2F 06 07 00");
}

TEST(TextOrder, TakesTheFirst255CharactersForAKey) {
  const std::u16string longest(255, u'a');
  EXPECT_EQ(KeyOf(longest + u"b"), KeyOf(longest));
  EXPECT_NE(KeyOf(std::u16string(254, u'a')), KeyOf(longest));
}

TEST(TextOrder, NamesTheCharacterWhoseKeyIsNotKnown) {
  EXPECT_EQ(TextOrder::Legacy().FirstUnknown(u"Ærø Ýn"), std::nullopt);
  EXPECT_EQ(TextOrder::Legacy().FirstUnknown(u"abc\u4E2D\u6587"), U'\u4E2D');
  EXPECT_EQ(TextOrder::Legacy().FirstUnknown(u"\U0001F600"), U'\U0001F600');
  Bytes key;
  try {
    TextOrder::Legacy().AppendKey(u"\u4E2D", key);
    FAIL();
  } catch (const Error& error) {
    EXPECT_EQ(error.Code(), ErrorCode::UnknownCharacter);
    EXPECT_STREQ(error.what(), "De sorteervolgorde van het teken U+4E2D is niet bekend.");
  }
}

TEST(TextOrder, ComparesWithoutRegardToCaseAndTrailingSpaces) {
  EXPECT_EQ(Compare(u"Radio ÉÉN", u"radio één  "), 0);
  EXPECT_LT(Compare(u"een", u"één"), 0);
  EXPECT_LT(Compare(u"één", u"eens"), 0);
  EXPECT_LT(Compare(u"coop", u"co-op"), 0);
  EXPECT_LT(Compare(u"co-op", u"coops"), 0);
  EXPECT_LT(Compare(u"z", u"\u4E2D"), 0);
  EXPECT_LT(Compare(u"\u4E2D", u"\U0001F600"), 0);
  EXPECT_LT(Compare(u"\uFF00", u"\U0001F600"), 0);
}

TEST(TextOrder, SortsDutchAndFrenchNamesAsTheDatabaseDoes) {
  std::vector<std::u16string> names = {u"zèbre",         u"Ijsland",     u"élan", u"Elan", u"IJs",
                                       u"'s-Gravenhage", u"Ça va",       u"cafe", u"café", u"Œuvre",
                                       u"oever",         u"2 Unlimited", u"10cc"};
  std::sort(names.begin(), names.end(), [](const auto& a, const auto& b) { return Compare(a, b) < 0; });
  EXPECT_EQ(names, (std::vector<std::u16string>{u"10cc", u"2 Unlimited", u"Ça va", u"cafe", u"café", u"Elan", u"élan",
                                                u"IJs", u"Ijsland", u"Œuvre", u"oever", u"'s-Gravenhage", u"zèbre"}));
}

// Random texts of special cases: accents, double letters, ignored characters, hyphens, spaces, unknown characters.
class RandomTexts {
 public:
  explicit RandomTexts(bool known) : alphabet_(u"aAbcé\u00E8ßæÆsœ- '\u00AD\u0001z") {
    alphabet_ += u'\0';
    if (!known) alphabet_ += {u'\u4E2D', char16_t{0xD83D}, char16_t{0xDE00}, u'\uFF00'};
  }
  std::u16string Next() {
    std::u16string text(random_() % 7, u' ');
    for (char16_t& character : text)
      character = alphabet_[random_() % alphabet_.size()];
    return text;
  }

 private:
  std::u16string alphabet_;
  std::mt19937 random_{20};
};

TEST(TextOrder, ComparesAsTheKeysDo) {
  RandomTexts texts(true);
  for (int i = 0; i < 200000; ++i) {
    const std::u16string a = texts.Next();
    const std::u16string b = texts.Next();
    Bytes keyA;
    Bytes keyB;
    TextOrder::Legacy().AppendKey(a, keyA);
    TextOrder::Legacy().AppendKey(b, keyB);
    const int byKey = keyA < keyB ? -1 : static_cast<int>(keyB < keyA);
    ASSERT_EQ(Sign(Compare(a, b)), byKey) << ToUtf8(a) << '|' << ToUtf8(b);
  }
}

// UTF-8 has no lone surrogates; RandomTexts contains only these two.
std::u16string WithoutLoneSurrogates(std::u16string text) {
  constexpr char16_t kHigh = 0xD83D;
  constexpr char16_t kLow = 0xDE00;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == kHigh && i + 1 < text.size() && text[i + 1] == kLow) {
      ++i;
    } else if (text[i] == kHigh || text[i] == kLow) {
      text[i] = u'\uFFFD';
    }
  }
  return text;
}

TEST(TextOrder, ComparesUtf8AsUtf16) {
  RandomTexts texts(false);
  for (int i = 0; i < 100000; ++i) {
    const std::u16string a = WithoutLoneSurrogates(texts.Next());
    const std::u16string b = WithoutLoneSurrogates(texts.Next());
    ASSERT_EQ(Sign(TextOrder::Legacy().Compare(ToUtf8(a), ToUtf8(b))), Sign(Compare(a, b)))
        << ToUtf8(a) << '|' << ToUtf8(b);
  }
}

TEST(TextOrder, IsOneOrderForAllCharacters) {
  RandomTexts texts(false);
  for (int i = 0; i < 100000; ++i) {
    const std::u16string a = texts.Next();
    const std::u16string b = texts.Next();
    const std::u16string c = texts.Next();
    ASSERT_EQ(Sign(Compare(a, b)), -Sign(Compare(b, a)));
    if (Compare(a, b) > 0 || Compare(b, c) > 0) continue;
    ASSERT_LE(Compare(a, c), 0) << ToUtf8(a) << '|' << ToUtf8(b) << '|' << ToUtf8(c);
  }
}

TEST(TextOrder, SurvivesMalformedUtf8) {
  const std::string broken[] = {"\xC3", "\xE2\x82", "\xF0\x9F", "\x80", "\xFF\xFE", "a\xC3(", "\xED\xA0\x80"};
  for (const std::string& text : broken) {
    EXPECT_EQ(TextOrder::Legacy().Compare(text, text), 0);
    EXPECT_GT(TextOrder::Legacy().Compare(text + "x", text), 0);
  }
}

TEST(TextOrder, KnowsOnlyTheTwoGeneralOrders) {
  EXPECT_EQ(TextOrder::For({0x0409, 0}), &TextOrder::Legacy());
  ASSERT_NE(TextOrder::For({0x0409, 1}), nullptr);
  EXPECT_EQ(TextOrder::For({0x0415, 0}), nullptr);
  Bytes key;
  TextOrder::For({0x0409, 1})->AppendKey(u"aé-", key);
  EXPECT_EQ(key, (Bytes{0x0E, 0x02, 0x0E, 0x21, 0x01, 0x02, 0x0E, 0x01, 0x01, 0x01, 0x80, 0x0F, 0x06, 0x82, 0x00}));
}

}  // namespace
}  // namespace jet

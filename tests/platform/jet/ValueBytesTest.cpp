// SPDX-License-Identifier: MIT
// Numbers, names and texts in bytes, each against a plain calculation.
#include "platform/jet/index/EntryList.h"
#include "platform/jet/values/Codec.h"
#include "platform/jet/values/Damage.h"
#include "platform/jet/values/Error.h"
#include "platform/jet/values/Names.h"
#include "platform/jet/values/Utf8.h"
#include "platform/jet/values/ValueText.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <random>
#include <string>
#include <vector>

namespace {

using jet::Bytes;

TEST(Codec, NumbersAreLittleEndian) {
  const Bytes bytes = {0x01, 0x02, 0x03, 0x04, 0xFF};
  EXPECT_EQ(jet::U8(bytes, 4), 0xFF);
  EXPECT_EQ(jet::U16(bytes, 0), 0x0201);
  EXPECT_EQ(jet::U16(bytes, 3), 0xFF04);
  EXPECT_EQ(jet::U32(bytes, 1), 0xFF040302U);
  EXPECT_EQ(jet::LoadU24BigEndian(bytes.data()), 0x010203U);
  EXPECT_EQ(jet::LoadU32BigEndian(bytes.data()), 0x01020304U);
  Bytes stored(4);
  jet::Store(stored.data(), std::uint32_t{0x04030201});
  EXPECT_EQ(stored, (Bytes{1, 2, 3, 4}));
}

TEST(Codec, ReadingOutsideIsDamage) {
  const Bytes bytes(10);
  for (std::size_t at = 0; at < 14; ++at) {
    for (const std::size_t length : {std::size_t{0}, std::size_t{1}, std::size_t{4}, std::size_t{10}, SIZE_MAX}) {
      const bool isInside = at <= 10 && length <= 10 - std::min<std::size_t>(at, 10);
      try {
        EXPECT_EQ(jet::Part(bytes, at, length).size(), length);
        EXPECT_TRUE(isInside) << at << ' ' << length;
      } catch (const jet::Error& error) {
        EXPECT_EQ(error.Code(), jet::ErrorCode::Damaged);
        EXPECT_FALSE(isInside) << at << ' ' << length;
      }
    }
  }
  EXPECT_THROW(jet::U8(bytes, 10), jet::Error);
  EXPECT_THROW(jet::U16(bytes, 9), jet::Error);
  EXPECT_THROW(jet::U32(bytes, 7), jet::Error);
}

TEST(Damage, HasItsContexts) {
  const auto fail = [] { throw jet::DamageAt(12, "kapot"); };
  try {
    jet::InContext(std::string("tabel 't': "), [&] { jet::InContext([] { return std::string("rij 3: "); }, fail); });
    FAIL();
  } catch (const jet::Error& error) {
    EXPECT_EQ(error.Code(), jet::ErrorCode::Damaged);
    EXPECT_STREQ(error.what(), "tabel 't': rij 3: pagina 12: kapot");
  }
}

TEST(Damage, OtherErrorsKeepTheirText) {
  try {
    jet::InContext(std::string("tabel 't': "), [] { throw jet::Error(jet::ErrorCode::DiskFull, "vol"); });
    FAIL();
  } catch (const jet::Error& error) {
    EXPECT_STREQ(error.what(), "vol");
  }
  EXPECT_EQ(jet::InContext(std::string("x"), [] { return 7; }), 7);
}

// The definition of UTF-8.
std::string PlainUtf8(char32_t c) {
  const auto byte = [](char32_t bits) { return static_cast<char>(bits); };
  if (c < 0x80) return {byte(c)};
  if (c < 0x800) return {byte(0xC0 | c >> 6), byte(0x80 | (c & 0x3F))};
  if (c < 0x10000) return {byte(0xE0 | c >> 12), byte(0x80 | (c >> 6 & 0x3F)), byte(0x80 | (c & 0x3F))};
  return {byte(0xF0 | c >> 18), byte(0x80 | (c >> 12 & 0x3F)), byte(0x80 | (c >> 6 & 0x3F)), byte(0x80 | (c & 0x3F))};
}

TEST(Utf8, EveryCharacterIsEncoded) {
  for (char32_t c = 0; c < 0x110000; c += c < 0x3000 ? 1 : 37) {
    std::u16string text;
    if (c >= 0x10000) {
      text = {static_cast<char16_t>(0xD800 + ((c - 0x10000) >> 10)),
              static_cast<char16_t>(0xDC00 + ((c - 0x10000) & 0x3FF))};
    } else {
      text = {static_cast<char16_t>(c)};
    }
    const bool isSurrogate = jet::IsHighSurrogate(c) || jet::IsLowSurrogate(c);
    ASSERT_EQ(jet::ToUtf8(text), PlainUtf8(isSurrogate ? 0xFFFD : c)) << static_cast<unsigned>(c);
  }
}

TEST(Utf8, LoneSurrogatesAreReplacedOneByOne) {
  const std::string replaced = PlainUtf8(0xFFFD);
  EXPECT_EQ(jet::ToUtf8(std::u16string{u'a', char16_t{0xD83D}}), "a" + replaced);
  EXPECT_EQ(jet::ToUtf8(std::u16string{char16_t{0xD83D}, u'a'}), replaced + "a");
  EXPECT_EQ(jet::ToUtf8(std::u16string{char16_t{0xDE00}, char16_t{0xD83D}}), replaced + replaced);
  std::string out = "x";
  jet::AppendUtf8(out, u"\u00E9");
  EXPECT_EQ(out, "x\xC3\xA9");
}

TEST(Names, AreEqualWithoutCase) {
  EXPECT_TRUE(jet::SameName(u"tblSpots", u"TBLSPOTS"));
  EXPECT_TRUE(jet::SameName(u"Caf\u00C9", u"caf\u00E9"));
  EXPECT_FALSE(jet::SameName(u"tblSpots", u"tblSpot"));
  EXPECT_FALSE(jet::SameName(u"cafe", u"caf\u00E9"));
  EXPECT_TRUE(jet::SameName(u"", u""));
}

TEST(Names, TheirOrderIsStrictAndAgreesWithEquality) {
  const std::vector<std::u16string> names = {u"",    u"a",   u"A",    u"ab",    u"B",
                                             u"b c", u"b-c", u"tbl1", u"tbl10", u"\u00E9"};
  for (const std::u16string& left : names) {
    for (const std::u16string& right : names) {
      EXPECT_FALSE(jet::SameName(left, right) && (jet::NameLess(left, right) || jet::NameLess(right, left)));
      EXPECT_FALSE(jet::NameLess(left, right) && jet::NameLess(right, left));
    }
  }
  EXPECT_TRUE(jet::NameLess(u"appMessages", u"TblSpots"));
}

TEST(EntryLists, SortAsUnsignedBytes) {
  std::mt19937 random(4);
  jet::EntryList list;
  std::vector<Bytes> expected;
  for (int i = 0; i < 500; ++i) {
    Bytes entry(4 + random() % 12);
    for (std::uint8_t& byte : entry)
      byte = static_cast<std::uint8_t>(random() % 3 == 0 ? 0xFF : random());
    list.Add(entry);
    expected.push_back(entry);
  }
  list.Sort();
  std::sort(expected.begin(), expected.end());
  ASSERT_EQ(list.Count(), expected.size());
  for (std::size_t i = 0; i < expected.size(); ++i)
    ASSERT_TRUE(std::ranges::equal(list.At(i), expected[i])) << i;
  const jet::EntryList ends = list.LastBytes(4);
  for (std::size_t i = 0; i < expected.size(); ++i)
    ASSERT_TRUE(std::equal(ends.At(i).begin(), ends.At(i).end(), expected[i].end() - 4, expected[i].end()));
}

TEST(EntryLists, AShorterEntryIsLess) {
  EXPECT_TRUE(jet::EntryList::Less(Bytes{1}, Bytes{1, 0}));
  EXPECT_FALSE(jet::EntryList::Less(Bytes{1, 0}, Bytes{1}));
  EXPECT_TRUE(jet::EntryList::Less(Bytes{0x7F}, Bytes{0x80}));
  EXPECT_FALSE(jet::EntryList::Less(Bytes{}, Bytes{}));
}

TEST(ValueTexts, AGuidIsPrintedInItsMixedOrder) {
  jet::Guid guid;
  for (std::size_t i = 0; i < guid.bytes.size(); ++i)
    guid.bytes[i] = static_cast<std::uint8_t>(i * 17);
  EXPECT_EQ(jet::TextOf(guid), u"{33221100-5544-7766-8899-AABBCCDDEEFF}");
}

}  // namespace

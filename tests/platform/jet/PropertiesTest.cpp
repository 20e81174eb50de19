// SPDX-License-Identifier: MIT
#include "platform/jet/table/Properties.h"

#include "platform/jet/values/Error.h"
#include "tests/platform/jet/SpotsImage.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

using jet::Bytes;

const std::vector<jet::PropertySet> kSets = {
    {u"", {{u"Description", 10, false, Utf16("all spots")}}},
    {u"Naam",
     {{u"Required", 1, true, {1}}, {u"AllowZeroLength", 1, false, {0}}, {u"DefaultValue", 12, false, Utf16("\"x\"")}}},
};

TEST(Properties, ReadWhatWasBuilt) {
  const auto sets = jet::ParseProperties(jet::BuildProperties(kSets));
  ASSERT_EQ(sets.size(), 2u);
  EXPECT_EQ(sets[0].TextOf(u"Description"), u"all spots");
  EXPECT_EQ(sets[1].column, u"Naam");
  EXPECT_TRUE(sets[1].FlagOf(u"required", false));
  EXPECT_FALSE(sets[1].FlagOf(u"AllowZeroLength", true));
  EXPECT_TRUE(sets[1].FlagOf(u"Missing", true));
  EXPECT_EQ(sets[1].TextOf(u"DefaultValue"), u"\"x\"");
}

TEST(Properties, HaveTheirKnownBytes) {
  const Bytes block = jet::BuildProperties({{u"A", {{u"Required", 1, true, {1}}}}});
  const Bytes expected = Bytes{'M', 'R', '2', 0} + Le(24, 4) + Le(0x80, 2) + Le(16, 2) + Utf16("Required") + Le(23, 4) +
                         Le(1, 2) + Le(8, 4) + Le(2, 2) + Utf16("A") + Le(9, 2) + Bytes{1, 1} + Le(0, 2) + Le(1, 2) +
                         Bytes{1};
  EXPECT_EQ(block, expected);
}

TEST(Properties, EachTruncationIsAnErrorOrLess) {
  const Bytes block = jet::BuildProperties(kSets);
  for (std::size_t size = 0; size < block.size(); ++size) {
    try {
      EXPECT_LT(jet::ParseProperties(jet::ByteView(block).first(size)).size(), 2u) << size;
    } catch (const jet::Error& error) {
      EXPECT_EQ(error.Code(), jet::ErrorCode::Damaged);
    }
  }
}

}  // namespace

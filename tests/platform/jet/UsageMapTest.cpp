// SPDX-License-Identifier: MIT
#include "platform/jet/pages/UsageMap.h"

#include "platform/jet/values/Error.h"
#include "tests/platform/jet/SpotsImage.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

using Pages = std::vector<std::uint32_t>;

// Writes `row` to a new page and reads it as a map.
jet::UsageMap ReadMap(DatabaseImage& image, const jet::Bytes& row) {
  const auto holder = image.AddTable("Holder", {{"Id", 4, 3, 0, 0, 4}}).maps;
  const jet::RowId where = image.AddSlot(holder, row);
  return jet::UsageMap::Read(OpenBytes(image.File())->Source(), where);
}

TEST(UsageMap, ReadsABitmapFromItsFirstPageOn) {
  DatabaseImage image;
  for (int i = 0; i < 30; ++i)
    image.NewPage();
  EXPECT_EQ(ReadMap(image, jet::Bytes{0} + Le(8, 4) + jet::Bytes{0x05, 0x80}).Members(), (Pages{8, 10, 23}));
}

TEST(UsageMap, ReadsBitmapPages) {
  DatabaseImage image;
  const std::uint32_t bitmap = image.NewPage();
  image.At(bitmap) = {5, 1};
  image.At(bitmap)[4] = 0x0A;
  const jet::UsageMap map = ReadMap(image, jet::Bytes{1} + Le(bitmap, 4) + jet::Bytes(64, 0));
  EXPECT_EQ(map.Members(), (Pages{1, 3}));
  EXPECT_EQ(map.BitmapPages(), (Pages{bitmap}));
  EXPECT_EQ(map.End(), 17u * 32736);
}

TEST(UsageMap, PagesPastTheEndAreNoMembers) {
  DatabaseImage image;
  EXPECT_TRUE(ReadMap(image, jet::Bytes{0} + Le(800, 4) + jet::Bytes(64, 0xFF)).Members().empty());
}

TEST(UsageMap, RowIdZeroIsTheEmptyMap) {
  EXPECT_TRUE(jet::UsageMap::Read(OpenBytes(DatabaseImage().File())->Source(), 0).Members().empty());
}

TEST(UsageMap, DamageIsAnError) {
  for (const jet::Bytes& row : {jet::Bytes{}, jet::Bytes{0, 1, 2}, jet::Bytes{7, 0, 0, 0, 0}, jet::Bytes{1} + Le(2, 4),
                                jet::Bytes{0} + Le(0xFFFFFFF8, 4) + jet::Bytes(64, 0xFF)}) {
    DatabaseImage image;
    EXPECT_THROW(ReadMap(image, row), jet::Error);
  }
}

}  // namespace

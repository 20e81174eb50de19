// SPDX-License-Identifier: MIT
#include "platform/jet/rows/StoredTable.h"

#include "platform/files/MemoryFileSystem.h"
#include "platform/jet/pages/Files.h"
#include "platform/jet/values/Error.h"
#include "tests/platform/jet/SpotsImage.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace {

jet::StoredTable Read(const DatabaseImage& image, std::uint32_t page) {
  const auto database = OpenBytes(image.File());
  return jet::ReadStoredTable(database->Source(), page);
}

TEST(StoredTable, ReadsColumnsByNumber) {
  SpotsImage sample;
  const jet::StoredTable table = Read(sample.image, sample.spots.page);
  ASSERT_EQ(table.columns.size(), 5u);
  EXPECT_EQ(table.maxColumns, 5);
  EXPECT_EQ(table.variableColumns, 2);
  EXPECT_EQ(table.rowCount, 6u);
  EXPECT_TRUE(table.columns[0].IsAutonumber());
  EXPECT_EQ(table.columns[1].Type(), jet::ColumnType::Currency);
  EXPECT_EQ(table.columns[1].fixedOffset, 4);
  EXPECT_FALSE(table.columns[3].IsFixed());
  EXPECT_TRUE(table.columns[3].MayCompress());
  EXPECT_NE(table.columns[4].ownedMap, 0u);
  EXPECT_EQ(table.ColumnByNumber(9), nullptr);
  EXPECT_EQ(table.length, table.streamLength);
}

TEST(StoredTable, ReadsIndexesAndTheirNames) {
  SpotsImage sample;
  const jet::StoredTable table = Read(sample.image, sample.spots.page);
  ASSERT_EQ(table.realIndexes.size(), 2u);
  EXPECT_EQ(table.realIndexes[1].root, sample.root);
  ASSERT_EQ(table.realIndexes[1].fields.size(), 1u);
  EXPECT_TRUE(table.realIndexes[1].fields[0].ascending);
  EXPECT_EQ(table.logicalIndexes[1].name, u"PrimaryKey");
  EXPECT_EQ(table.logicalIndexes[1].role, jet::LogicalIndexDef::Role::PrimaryKey);
}

TEST(StoredTable, ContinuesOnFurtherPages) {
  DatabaseImage image;
  std::vector<DatabaseImage::Column> columns;
  for (std::uint16_t i = 0; i < 120; ++i) {
    columns.push_back({"Column" + std::to_string(i), 4, 3, i, static_cast<std::uint16_t>(4 * i), 4});
  }
  const auto table = image.AddTable("Wide", columns);
  const jet::StoredTable read = Read(image, table.page);
  EXPECT_EQ(read.pages.size(), 2u);
  ASSERT_EQ(read.columns.size(), 120u);
  EXPECT_EQ(read.columns[119].name, u"Column119");
}

// The number of a table in a damaged catalogue.
TEST(StoredTable, PageZeroIsNoDefinition) {
  SpotsImage sample;
  EXPECT_THROW(Read(sample.image, 0), jet::Error);
}

TEST(StoredTable, EachTruncationIsAnError) {
  SpotsImage sample;
  DatabaseImage::Page& page = sample.image.At(sample.spots.page);
  const DatabaseImage::Page whole = page;
  const std::size_t length = static_cast<std::size_t>(whole[8] | whole[9] << 8);
  // The stream ends at the end of a page: nothing after the cut is readable.
  for (std::size_t cut = 64; cut < length; cut += 7) {
    page = whole;
    std::copy_backward(whole.begin() + 63, whole.begin() + static_cast<std::ptrdiff_t>(cut), page.end());
    std::fill(page.begin() + 63, page.end() - static_cast<std::ptrdiff_t>(cut - 63), std::uint8_t{0xFF});
    EXPECT_THROW(Read(sample.image, sample.spots.page), jet::Error) << cut;
  }
}

TEST(StoredTable, ContradictionsAreErrors) {
  SpotsImage sample;
  DatabaseImage::Page& page = sample.image.At(sample.spots.page);
  const DatabaseImage::Page whole = page;
  const auto broken = [&](std::size_t at, std::uint8_t value) {
    page = whole;
    page[at] = value;
    EXPECT_THROW(Read(sample.image, sample.spots.page), jet::Error) << at;
  };
  broken(41, 2);                // fewer columns ever created than exist
  broken(43, 1);                // fewer variable columns
  broken(46, 1);                // 261 columns
  broken(49, 1);                // 65538 logical indexes
  broken(63 + 24 + 25 + 5, 0);  // two columns with number 0
}

}  // namespace

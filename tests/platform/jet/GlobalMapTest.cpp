// SPDX-License-Identifier: MIT
// The map of free pages as the file grows: first a longer row, then bitmap pages.
#include "platform/jet/pages/MapLayout.h"
#include "platform/jet/pages/UsageMap.h"
#include "platform/jet/table/TableWriter.h"
#include "tests/platform/jet/support/SampleTable.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

namespace jet {
namespace {

using test::Column;
using test::FreshDatabase;

constexpr std::size_t kPagesOfFreshMap = 512;
constexpr std::size_t kPagesOfLongestRow = 32'100;  // more bits than page 1 has room for
constexpr RowId kGlobalMap = MakeRowId(1, 0);
const std::u16string kBigTable = u"tblGroot";

class GlobalMap : public testing::Test {
 protected:
  void SetUp() override {
    TableDefinition table;
    table.name = kBigTable;
    table.columns = {Column(u"Inhoud", ColumnType::Ole)};
    database_.Create(table);
  }

  // Inserts long values until the file has `pages` pages.
  void GrowTo(std::size_t pages) {
    WriteTurn turn(*database_);
    const auto writer = database_->OpenWriter(kBigTable);
    const std::size_t mostPages = 250;
    while (database_->Source().PageCount() < pages) {
      const std::size_t missing = pages - database_->Source().PageCount();
      std::vector<Value> row = {Bytes(4072 * std::min(missing, mostPages), 0xA5)};
      writer->Insert(row);
    }
    turn.Commit();
  }

  void DeleteAll() {
    WriteTurn turn(*database_);
    database_->OpenWriter(kBigTable)->DeleteAll();
    turn.Commit();
  }

  // The number of bitmap pages of the map of free pages.
  std::size_t BitmapPages() { return UsageMap::Read(database_->Source(), kGlobalMap).BitmapPages().size(); }

  FreshDatabase database_;
};

TEST_F(GlobalMap, GrowsPageByPageAcrossItsFirstEnd) {
  GrowTo(kPagesOfFreshMap - 2);
  for (std::size_t pages = kPagesOfFreshMap - 1; pages < kPagesOfFreshMap + 40; ++pages) {
    GrowTo(pages);
    ASSERT_EQ(database_.Findings(), "") << pages << " pages";
  }
  EXPECT_EQ(BitmapPages(), 0U);
}

TEST_F(GlobalMap, BecomesBitmapPagesWhereARowIsTooShort) {
  GrowTo(kPagesOfLongestRow - 1000);
  EXPECT_EQ(BitmapPages(), 0U);
  GrowTo(kPagesOfLongestRow);
  EXPECT_EQ(BitmapPages(), 1U);
  EXPECT_EQ(database_.Findings(), "");
  GrowTo(MapLayout::kPagesPerBitmapPage + 2000);
  EXPECT_EQ(BitmapPages(), 2U);
  EXPECT_EQ(database_.Findings(), "");
  const std::uint32_t most = database_->Source().PageCount();
  DeleteAll();
  EXPECT_EQ(database_.Findings(), "");
  database_.Insert(kBigTable, {Bytes(1'000'000, 0x5A)});  // uses freed pages
  EXPECT_EQ(database_->Source().PageCount(), most);
}

}  // namespace
}  // namespace jet

// SPDX-License-Identifier: MIT
#include "platform/jet/table/TableShape.h"

#include "platform/jet/pages/Transaction.h"
#include "tests/platform/jet/support/SampleTable.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace jet {
namespace {

class TableShapeTest : public testing::Test {
 protected:
  TableShapeTest() { database_.Create(test::SpotsTable()); }

  Table Opened() { return database_->OpenTable(kName); }
  std::u16string SecondName() { return Opened().Definition().columns[1].name; }

  const std::u16string kName = test::SpotsTable().name;
  test::FreshDatabase database_;
};

TEST_F(TableShapeTest, IsKeptWhileOnlyRowsAndCountersChange) {
  Opened().Shape()->derived = std::make_shared<int>(7);
  database_.Insert(kName, test::Spot(u"Appel"));
  database_.Insert(kName, test::Spot(u"Bier"));
  const Table table = Opened();
  EXPECT_NE(table.Shape()->derived, nullptr);
  EXPECT_EQ(table.Def().rowCount, 2U);
  EXPECT_EQ(table.Def().lastAutonumber, 2U);
  const std::vector<StoredIndex>& indexes = table.Def().realIndexes;
  EXPECT_TRUE(std::ranges::all_of(indexes, [](const StoredIndex& index) { return index.distinctKeys == 2; }));
}

TEST_F(TableShapeTest, AnOpenTableKeepsItsOwnCounters) {
  const Table before = Opened();
  database_.Insert(kName, test::Spot(u"Appel"));
  EXPECT_EQ(Opened().Def().rowCount, 1U);
  EXPECT_EQ(before.Def().rowCount, 0U);
}

TEST_F(TableShapeTest, IsReadAgainWhenTheDefinitionChanged) {
  EXPECT_EQ(SecondName(), u"Naam");
  {
    const WriteTurn turn(*database_);
    const std::array<std::uint8_t, 8> name = {'N', 0, 'a', 0, 'a', 0, 'm', 0};
    PageBytes& page = database_->Shared().Changes().Change(Opened().Def().page);
    *std::search(page.begin(), page.end(), name.begin(), name.end()) = 'F';
    EXPECT_EQ(SecondName(), u"Faam");
  }
  EXPECT_EQ(SecondName(), u"Naam");  // rolled back
}

TEST_F(TableShapeTest, TwoTablesHaveTheirOwnShapes) {
  TableDefinition other = test::SpotsTable();
  other.name = u"tblAnders";
  other.columns[1].name = u"Titel";
  database_.Create(other);
  for (int round = 0; round < 2; ++round) {
    EXPECT_EQ(SecondName(), u"Naam");
    EXPECT_EQ(database_->OpenTable(u"tblAnders").Definition().columns[1].name, u"Titel");
  }
}

}  // namespace
}  // namespace jet

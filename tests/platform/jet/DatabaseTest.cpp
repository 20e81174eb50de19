// SPDX-License-Identifier: MIT
#include "platform/jet/database/Database.h"

#include "platform/jet/values/Error.h"
#include "tests/platform/jet/SpotsImage.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

namespace {

using jet::Value;

const jet::ColumnSet kAll = {0, 1, 2, 3, 4};

std::vector<std::int64_t> Ids(jet::Table& table, jet::KeyCursor cursor) {
  std::vector<std::int64_t> ids;
  while (cursor.Next())
    ids.push_back(std::get<std::int64_t>(table.Fetch(cursor.Id(), {0})->at(0)));
  return ids;
}

class SpotsDatabase : public testing::Test {
 protected:
  SpotsImage sample;
  std::unique_ptr<jet::Database> database = OpenBytes(sample.image.File());
  jet::Table spots = database->OpenTable(u"spots");
};

TEST_F(SpotsDatabase, ListsUserTablesOnly) {
  EXPECT_EQ(database->TableNames(), (std::vector<std::u16string>{u"Spots"}));
}

TEST_F(SpotsDatabase, FindsTablesInAnyCaseAndRefusesUnknownOnes) {
  EXPECT_TRUE(database->HasTable(u"SPOTS"));
  EXPECT_TRUE(database->HasTable(u"msysobjects"));
  EXPECT_FALSE(database->HasTable(u"Spot"));
  try {
    database->OpenTable(u"Spot");
    FAIL() << "an unknown table was opened";
  } catch (const jet::Error& error) {
    EXPECT_EQ(error.Code(), jet::ErrorCode::NotFound);
    EXPECT_STREQ(error.what(), "De tabel 'Spot' bestaat niet in het bestand 'test.mdb'.");
  }
}

TEST_F(SpotsDatabase, DescribesColumnsAndIndexes) {
  const jet::TableDefinition& definition = spots.Definition();
  ASSERT_EQ(definition.columns.size(), 5u);
  EXPECT_EQ(definition.columns[0].name, u"Id");
  EXPECT_TRUE(definition.columns[0].autonumber);
  EXPECT_EQ(definition.columns[3].type, jet::ColumnType::Text);
  EXPECT_EQ(definition.columns[3].size, 50);
  EXPECT_EQ(definition.FindColumn(u"NOTES"), 4u);
  ASSERT_EQ(definition.indexes.size(), 2u);
  EXPECT_TRUE(definition.indexes[1].primary);
  EXPECT_TRUE(definition.indexes[1].unique);
  EXPECT_EQ(definition.indexes[1].fields.at(0).column, 0u);
  EXPECT_FALSE(definition.indexes[0].unique);
  EXPECT_EQ(definition.FindIndex(u"nothing"), jet::TableDefinition::kNone);
}

TEST_F(SpotsDatabase, ScanReturnsEveryRowOnceWithItsRowId) {
  std::vector<std::int64_t> ids;
  jet::TableCursor rows = spots.Scan({0});
  while (rows.Next()) {
    ids.push_back(std::get<std::int64_t>(rows.Values().at(0)));
    EXPECT_EQ(rows.Id(), sample.rows.at(static_cast<std::size_t>(ids.back())));
  }
  EXPECT_EQ(ids, (std::vector<std::int64_t>{1, 2, 3, 4, 5, 6}));
  EXPECT_EQ(spots.CountRows(), 6u);
}

TEST_F(SpotsDatabase, DecodesEveryKindOfField) {
  const auto row = spots.Fetch(sample.rows[2], kAll);
  ASSERT_TRUE(row);
  EXPECT_EQ(*row, (std::vector<Value>{std::int64_t{2}, jet::Currency{25000}, true, u"b", u"in"}));
  EXPECT_EQ(spots.Fetch(sample.rows[1], kAll)->at(4), Value());
  EXPECT_EQ(spots.Fetch(sample.rows[1], kAll)->at(2), Value(false));
}

TEST_F(SpotsDatabase, ReadsLongValues) {
  EXPECT_EQ(spots.Fetch(sample.rows[4], {4})->at(0), Value(u"single"));
  EXPECT_EQ(spots.Fetch(sample.rows[5], {4})->at(0), Value(u"long chain"));
}

TEST_F(SpotsDatabase, FetchesRowsOnlyByTheirRowId) {
  EXPECT_EQ(spots.Fetch(sample.rows[3], {3})->at(0), Value(u"c"));
  EXPECT_FALSE(spots.Fetch(sample.rows[0], {3})) << "the target of a moved row is no row of its own";
  EXPECT_FALSE(spots.Fetch(jet::MakeRowId(jet::PageOf(sample.rows[1]), 4), {3})) << "deleted";
  EXPECT_FALSE(spots.Fetch(jet::MakeRowId(jet::PageOf(sample.rows[1]), 99), {3})) << "never there";
}

TEST_F(SpotsDatabase, ReturnsColumnsInTheGivenOrder) {
  const auto row = spots.Fetch(sample.rows[1], {3, 0});
  EXPECT_EQ(*row, (std::vector<Value>{u"a", std::int64_t{1}}));
}

TEST_F(SpotsDatabase, LooksUpByKey) {
  ASSERT_TRUE(spots.CanLookup(1));
  for (const std::int64_t id : {1, 3, 4, 6}) {
    EXPECT_EQ(Ids(spots, spots.Lookup(1, std::vector<Value>{id})), (std::vector<std::int64_t>{id}));
  }
  for (const std::int64_t id : {0, 7, -1})
    EXPECT_TRUE(Ids(spots, spots.Lookup(1, std::vector<Value>{id})).empty());
  EXPECT_EQ(Ids(spots, spots.Lookup(0, std::vector<Value>{u"D"})), (std::vector<std::int64_t>{4}));
}

TEST_F(SpotsDatabase, WalksAnIndexBothWays) {
  EXPECT_EQ(Ids(spots, spots.ScanByIndex(1, false)), (std::vector<std::int64_t>{1, 2, 3, 4, 5, 6}));
  EXPECT_EQ(Ids(spots, spots.ScanByIndex(1, true)), (std::vector<std::int64_t>{6, 5, 4, 3, 2, 1}));
}

TEST(DamagedDatabase, TheRestStaysReadableAndTheDamageIsNamed) {
  SpotsImage sample;
  const jet::RowId damaged = sample.rows[4];
  DatabaseImage::Page& page = sample.image.At(jet::PageOf(damaged));
  const std::size_t slot = 14 + 2 * jet::SlotOf(damaged);
  const std::size_t start = (page[slot] | page[slot + 1] << 8) & 0x1FFF;
  page[start] = 0xFF;  // column count: the null mask would be longer than the row
  page[start + 1] = 0xFF;
  auto database = OpenBytes(sample.image.File());
  jet::Table spots = database->OpenTable(u"Spots");
  jet::TableCursor rows = spots.Scan({0});
  std::vector<std::int64_t> ids;
  std::string messages;
  for (bool more = true; more;) {
    try {
      more = rows.Next();
      if (more) ids.push_back(std::get<std::int64_t>(rows.Values().at(0)));
    } catch (const jet::Error& error) {
      EXPECT_EQ(error.Code(), jet::ErrorCode::Damaged);
      messages += error.what();
    }
  }
  EXPECT_EQ(ids, (std::vector<std::int64_t>{1, 2, 3, 5, 6}));
  EXPECT_EQ(messages, "Het bestand 'test.mdb' is beschadigd: tabel 'Spots', pagina " +
                          std::to_string(jet::PageOf(damaged)) + ", rij " + std::to_string(jet::SlotOf(damaged)) +
                          ": de rij is te kort");
}

TEST(DamagedDatabase, ALoopInAnIndexEnds) {
  SpotsImage sample;
  sample.image.PutIndexPage(sample.leaves[1], sample.spots, {}, sample.leaves[0], sample.leaves[0]);
  auto database = OpenBytes(sample.image.File());
  jet::Table spots = database->OpenTable(u"Spots");
  jet::KeyCursor cursor = spots.ScanByIndex(1, false);
  EXPECT_THROW(while (cursor.Next()){}, jet::Error);
}

TEST(DamagedDatabase, ALoopOfLongValuePiecesEnds) {
  SpotsImage sample;
  DatabaseImage::Page& page = sample.image.At(sample.chainPages[1]);
  const std::size_t start = (page[14] | page[15] << 8) & 0x1FFF;
  const jet::Bytes back = Le(jet::MakeRowId(sample.chainPages[0], 0), 4);
  std::copy(back.begin(), back.end(), page.begin() + static_cast<std::ptrdiff_t>(start));
  auto database = OpenBytes(sample.image.File());
  const auto row = database->OpenTable(u"Spots").Fetch(sample.rows[5], {4});
  EXPECT_EQ(row->at(0), Value(u"long chain")) << "the length in the head ends it";
}

}  // namespace

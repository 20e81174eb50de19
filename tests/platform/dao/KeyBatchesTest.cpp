// SPDX-License-Identifier: MIT
// The look-ups that a join prefetches, on results that are made here; needs no server.
#include "platform/dao/postgres/KeyBatches.h"

#include "tests/platform/dao/Scratch.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace Qt::StringLiterals;
using dao::FieldType;
using scratch::Field;

namespace {

using Cells = std::vector<std::vector<const char*>>;

// Rows as a server returns them: the identity, then the given fields; nullptr for NULL.
std::shared_ptr<const dao::ServerRows> Reply(const std::vector<std::size_t>& fields, const Cells& cells) {
  dao::Result result(PQmakeEmptyPGresult(nullptr, PGRES_TUPLES_OK));
  std::vector<std::string> names;
  for (std::size_t i = 0; i <= fields.size(); ++i)
    names.push_back("c" + std::to_string(i));
  std::vector<PGresAttDesc> columns(names.size());
  for (std::size_t i = 0; i < names.size(); ++i)
    columns[i].name = names[i].data();
  PQsetResultAttrs(result.get(), static_cast<int>(columns.size()), columns.data());
  for (std::size_t row = 0; row < cells.size(); ++row) {
    for (std::size_t column = 0; column < cells[row].size(); ++column) {
      std::string text = cells[row][column] == nullptr ? "" : cells[row][column];
      PQsetvalue(result.get(), static_cast<int>(row), static_cast<int>(column),
                 cells[row][column] == nullptr ? nullptr : text.data(),
                 cells[row][column] == nullptr ? -1 : static_cast<int>(text.size()));
    }
  }
  return std::make_shared<dao::ServerRows>(dao::ServerRows{std::move(result), fields});
}

class Batches : public testing::Test {
 protected:
  const dao::TableDef links_{
      u"tblLinks"_s,
      {Field(u"ItemID"_s, FieldType::Long), Field(u"SpotID"_s, FieldType::Long), Field(u"Code"_s, FieldType::Text, 9)},
      {}};
  const dao::TableDef spots_{
      u"tblSpots"_s, {Field(u"ID"_s, FieldType::Long), Field(u"Naam"_s, FieldType::Text, 9)}, {}};
  // Three links of item 5 to the spots 30, 10 and 20, one without a spot, and one more to spot 10.
  const std::shared_ptr<const dao::ServerRows> reply_ =
      Reply({0, 1}, {{"1", "5", "30"}, {"2", "5", "10"}, {"3", "5", nullptr}, {"4", "5", "10"}, {"5", "5", "20"}});
  dao::KeyBatches batches_;
};

TEST_F(Batches, WithoutAReplyOnlyTheKeyItselfIsRequested) {
  EXPECT_EQ(batches_.KeysFrom(spots_, 30), std::vector<std::int64_t>{30});
}

TEST_F(Batches, TheKeysAfterTheFirstOccurrenceAreRequestedOnceEach) {
  batches_.Note(links_, reply_);
  EXPECT_EQ(batches_.KeysFrom(spots_, 30), (std::vector<std::int64_t>{30, 10, 20}));
  EXPECT_EQ(batches_.KeysFrom(spots_, 10), (std::vector<std::int64_t>{10, 20}));
  EXPECT_EQ(batches_.KeysFrom(spots_, 20), std::vector<std::int64_t>{20});
  EXPECT_EQ(batches_.KeysFrom(spots_, 99), std::vector<std::int64_t>{99});
}

TEST_F(Batches, RepliesOfTheSameTableAreNotUsed) {
  batches_.Note(spots_, Reply({0}, {{"1", "30"}, {"2", "10"}}));
  EXPECT_EQ(batches_.KeysFrom(spots_, 30), std::vector<std::int64_t>{30});
}

TEST_F(Batches, TheEarliestOccurrenceIsTheOrigin) {
  batches_.Note(links_, Reply({1}, {{"1", "7"}, {"2", "8"}, {"3", "10"}, {"4", "99"}}));
  dao::TableDef other = links_;
  other.name = u"tblAnder"_s;
  batches_.Note(other, Reply({1}, {{"1", "10"}, {"2", "77"}}));
  EXPECT_EQ(batches_.KeysFrom(spots_, 10), (std::vector<std::int64_t>{10, 77}));
}

TEST_F(Batches, ALongReplyIsRequestedInParts) {
  std::vector<std::string> numbers;
  numbers.reserve(1500);
  for (int i = 0; i < 1500; ++i)
    numbers.push_back(std::to_string(i));
  Cells cells;
  cells.reserve(numbers.size());
  for (const std::string& number : numbers)
    cells.push_back({number.c_str(), number.c_str()});
  batches_.Note(links_, Reply({1}, cells));
  EXPECT_EQ(batches_.KeysFrom(spots_, 0).size(), 1000U);
  EXPECT_EQ(batches_.KeysFrom(spots_, 1000).size(), 500U);
}

TEST_F(Batches, RowsOfABatchAreFoundByTheirKey) {
  const auto rows = Reply({0, 1}, {{"7", "10", "tien"}, {"8", "20", "twintig"}, {"9", "10", "nog eens"}});
  batches_.Keep(spots_, 0, {30, 10, 20}, rows);
  const auto ten = batches_.Find(spots_, 0, 10, dao::FieldMask().set(1));
  ASSERT_TRUE(ten);
  ASSERT_TRUE(ten->Next());
  EXPECT_EQ(ten->Id(), 7);
  EXPECT_EQ(dao::Owned(ten->Field(1)), dao::Value(std::u16string(u"tien")));
  ASSERT_TRUE(ten->Next());
  EXPECT_EQ(ten->Id(), 9);
  EXPECT_FALSE(ten->Next());
  const auto none = batches_.Find(spots_, 0, 30, dao::FieldMask());
  ASSERT_TRUE(none) << "requested, and there are no such rows";
  EXPECT_FALSE(none->Next());
  EXPECT_FALSE(batches_.Find(spots_, 0, 40, dao::FieldMask())) << "never requested";
  EXPECT_FALSE(batches_.Find(spots_, 1, 10, dao::FieldMask())) << "another field";
}

TEST_F(Batches, ABatchWithoutAWantedFieldIsNotUsed) {
  batches_.Keep(spots_, 0, {10}, Reply({0}, {{"7", "10"}}));
  EXPECT_TRUE(batches_.Find(spots_, 0, 10, dao::FieldMask().set(0)));
  EXPECT_FALSE(batches_.Find(spots_, 0, 10, dao::FieldMask().set(1)));
}

TEST_F(Batches, ACursorReadsNullAndAbsentFieldsAsNull) {
  dao::ServerCursor cursor(links_, reply_);
  int rows = 0;
  for (; cursor.Next(); ++rows) {
    EXPECT_EQ(cursor.Id(), rows + 1);
    EXPECT_EQ(dao::IsNull(dao::Owned(cursor.Field(1))), rows == 2);
    EXPECT_TRUE(dao::IsNull(dao::Owned(cursor.Field(2)))) << "not in the reply";
  }
  EXPECT_EQ(rows, 5);
}

TEST_F(Batches, ACursorReadsOnlyTheChosenRows) {
  dao::ServerCursor cursor(links_, reply_, {4, 0});
  ASSERT_TRUE(cursor.Next());
  EXPECT_EQ(cursor.Id(), 5);
  EXPECT_EQ(dao::Owned(cursor.Field(1)), dao::Value(std::int64_t{20}));
  ASSERT_TRUE(cursor.Next());
  EXPECT_EQ(cursor.Id(), 1);
  EXPECT_FALSE(cursor.Next());
}

}  // namespace

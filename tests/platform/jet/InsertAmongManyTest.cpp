// SPDX-License-Identifier: MIT
// Rows inserted as one of many, with their index entries written leaf by leaf, compared with rows inserted singly.
#include "platform/jet/table/TableWriter.h"
#include "platform/jet/values/Codec.h"
#include "tests/platform/jet/support/Places.h"
#include "tests/platform/jet/support/SampleTable.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

namespace jet {
namespace {

using test::Column;
using test::FreshDatabase;
using test::kTable;

constexpr std::size_t kIndexes = 4;

// A key, and indexes with long, repeated and missing keys.
TableDefinition ManySpots() {
  TableDefinition table;
  table.name = kTable;
  table.columns = {Column(u"Nr", ColumnType::Long), Column(u"Naam", ColumnType::Text, 255),
                   Column(u"Soort", ColumnType::Integer), Column(u"Dag", ColumnType::Date)};
  const auto add = [&](const char16_t* name, std::vector<IndexDefinition::Field> fields) -> IndexDefinition& {
    IndexDefinition index;
    index.name = name;
    index.fields = std::move(fields);
    return table.indexes.emplace_back(index);
  };
  add(u"PrimaryKey", {{0, false}}).primary = true;
  add(u"NaamSoort", {{1, false}, {2, true}});
  add(u"Dag", {{3, false}}).ignoreNulls = true;
  add(u"Soort", {{2, true}});
  return table;
}

class RandomSpots {
 public:
  explicit RandomSpots(unsigned seed) : random_(seed) {}

  std::size_t Below(std::size_t limit) { return random_() % limit; }
  std::vector<Value> Row() {
    return {number_ += 1 + static_cast<std::int64_t>(Below(3)), Name(), static_cast<std::int64_t>(Below(9)),
            Below(4) == 0 ? Value{} : Value{36526.0 + static_cast<double>(Below(200))}};
  }

 private:
  std::u16string Name() {
    std::u16string name(Below(5) == 0 ? 240 : Below(20), u'b');
    name += static_cast<char16_t>(u'a' + Below(26));
    name += static_cast<char16_t>(u'a' + Below(26));
    return name;
  }

  std::mt19937 random_;
  std::int64_t number_ = 0;
};

using NewRows = std::vector<std::vector<Value>>;

void InsertOneByOne(Database& database, NewRows rows) {
  WriteTurn turn(database);
  const auto writer = database.OpenWriter(kTable);
  for (std::vector<Value>& row : rows)
    writer->Insert(row);
  turn.Commit();
}

void InsertTogether(Database& database, NewRows rows) {
  WriteTurn turn(database);
  const auto writer = database.OpenWriter(kTable);
  for (std::vector<Value>& row : rows)
    writer->InsertAmongMany(row);
  writer->EndInserts();
  turn.Commit();
}

// What an index says about the rows, which are at other places after other insertions.
struct Indexed {
  NewRows keys;                       // the values of its fields, in its order
  std::vector<std::int64_t> numbers;  // sorted
  bool operator==(const Indexed&) const = default;
};

Indexed InOrderOf(Database& database, std::size_t index) {
  const ReadTurn reading(database);
  const Table table = database.OpenTable(kTable);
  ColumnSet fields;
  for (const IndexDefinition::Field& field : table.Definition().indexes[index].fields)
    fields.push_back(field.column);
  Indexed indexed;
  for (KeyCursor keys = table.ScanByIndex(index, false); keys.Next();) {
    indexed.keys.push_back(table.Fetch(keys.Id(), fields).value());
    indexed.numbers.push_back(std::get<std::int64_t>(table.Fetch(keys.Id(), {0}).value().front()));
  }
  std::sort(indexed.numbers.begin(), indexed.numbers.end());
  return indexed;
}

std::uint32_t KeysCounted(Database& database, std::size_t index) {
  const Table table = database.OpenTable(kTable);
  const StoredTable& def = table.Def();
  return Load<std::uint32_t>(database.Source().Read(def.page)->data() + def.realIndexes[index].distinctKeysAt);
}

void DeleteNumbers(Database& database, const std::vector<std::int64_t>& numbers) {
  WriteTurn turn(database);
  const Table table = database.OpenTable(kTable);
  const auto& indexes = table.Definition().indexes;
  const auto primary = std::ranges::find_if(indexes, &IndexDefinition::primary) - indexes.begin();
  std::vector<RowId> rows;
  for (const std::int64_t number : numbers) {
    const Value key = number;
    KeyCursor found = table.Lookup(static_cast<std::size_t>(primary), {&key, 1});
    ASSERT_TRUE(found.Next());
    rows.push_back(found.Id());
  }
  database.OpenWriter(kTable)->Delete(rows);
  turn.Commit();
}

class InsertAmongMany : public testing::TestWithParam<unsigned> {};

TEST_P(InsertAmongMany, MakesTheIndexesOfSingleInserts) {
  RandomSpots random(GetParam());
  FreshDatabase single;
  FreshDatabase together;
  single.Create(ManySpots());
  together.Create(ManySpots());
  for (std::size_t round = 0; round < 6; ++round) {
    NewRows rows(random.Below(round % 2 == 0 ? 800 : 8) + 1);
    for (std::vector<Value>& row : rows)
      row = random.Row();
    InsertOneByOne(*single, rows);
    InsertTogether(*together, rows);
    EXPECT_EQ(together.Findings(), "") << round;
    for (std::size_t index = 0; index < kIndexes; ++index) {
      EXPECT_TRUE(InOrderOf(*together, index) == InOrderOf(*single, index)) << round << ' ' << index;
      EXPECT_EQ(KeysCounted(*together, index), KeysCounted(*single, index)) << round << ' ' << index;
    }
    std::vector<std::int64_t> toDelete = InOrderOf(*single, round % kIndexes).numbers;
    std::erase_if(toDelete, [&](std::int64_t) { return random.Below(3) != 0; });
    DeleteNumbers(*single, toDelete);
    DeleteNumbers(*together, toDelete);
    EXPECT_EQ(together.Findings(), "") << round;
  }
}

INSTANTIATE_TEST_SUITE_P(Seeds, InsertAmongMany, testing::Range(1U, 9U));

}  // namespace
}  // namespace jet

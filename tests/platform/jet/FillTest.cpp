// SPDX-License-Identifier: MIT
// Copying stored rows of another table to an empty table: pages and indexes are filled completely.
#include "platform/jet/table/TableWriter.h"
#include "platform/jet/values/Codec.h"
#include "platform/jet/values/Utf8.h"
#include "tests/platform/jet/support/SampleTable.h"
#include "tests/platform/jet/support/TableText.h"
#include "tests/platform/jet/support/Witness.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace jet {
namespace {

using test::Column;
using test::FreshDatabase;
using test::MessageOf;

const std::u16string kSource = u"tblBron";
const std::u16string kTarget = u"tblDoel";

IndexDefinition Index(const std::u16string& name, std::vector<IndexDefinition::Field> fields) {
  IndexDefinition index;
  index.name = name;
  index.fields = std::move(fields);
  return index;
}

// Nr, Naam, Soort, Dag, and texts of the longest possible key.
TableDefinition Plain(const std::u16string& name) {
  TableDefinition table;
  table.name = name;
  table.columns = {Column(u"Nr", ColumnType::Long), Column(u"Naam", ColumnType::Text, 255),
                   Column(u"Soort", ColumnType::Integer), Column(u"Dag", ColumnType::Date)};
  return table;
}

TableDefinition WithIndexes(TableDefinition table) {
  IndexDefinition key = Index(u"PrimaryKey", {{0, false}});
  key.primary = true;
  IndexDefinition some = Index(u"Dag", {{3, false}});
  some.ignoreNulls = true;
  table.indexes = {key, Index(u"NaamSoort", {{1, false}, {2, true}}), some};
  return table;
}

std::vector<Value> Row(std::int64_t number, const std::u16string& name) {
  return {number, name, number % 7, number % 3 == 0 ? Value{} : Value{36526.0 + static_cast<double>(number % 50)}};
}

void Insert(Database& database, const std::u16string& table, std::vector<std::vector<Value>> rows) {
  WriteTurn turn(database);
  const auto writer = database.OpenWriter(table);
  for (std::vector<Value>& row : rows)
    writer->Insert(row);
  turn.Commit();
}

void Copy(Database& database) {
  WriteTurn turn(database);
  const Table source = database.OpenTable(kSource);
  const auto writer = database.OpenWriter(kTarget);
  ASSERT_TRUE(writer->CanCopyRowsFrom(source));
  writer->BeginCopy();
  TableCursor rows = source.Scan(writer->IndexedColumns());
  while (rows.Next())
    writer->CopyRow(rows.Row(), rows.Values());
  writer->EndCopy();
  turn.Commit();
}

witness::Cells CellsOf(Database& database, const std::u16string& table) {
  return witness::TextOf(database, table).rows;
}

// Long texts with different beginnings, so that few keys fit on a page.
std::u16string LongText(int i, std::size_t length) {
  std::u16string text{static_cast<char16_t>(u'\u0430' + i * 7 % 31), static_cast<char16_t>(u'\u0430' + i % 31),
                      static_cast<char16_t>(u'\u0430' + i / 31 % 31)};
  text.resize(length, u'\u0436');
  return text;
}

class Fill : public testing::Test {
 protected:
  void Make(const TableDefinition& source, const TableDefinition& target, std::vector<std::vector<Value>> rows) {
    database_.Create(source);
    database_.Create(target);
    Insert(*database_, kSource, std::move(rows));
  }
  void ExpectTheSameRows() {
    EXPECT_EQ(database_.Findings(), "");
    EXPECT_EQ(CellsOf(*database_, kTarget), CellsOf(*database_, kSource));
  }

  FreshDatabase database_;
};

std::vector<std::vector<Value>> MixedRows(int count) {
  std::vector<std::vector<Value>> rows;
  rows.reserve(static_cast<std::size_t>(count));
  for (int i = 0; i < count; ++i)
    rows.push_back(Row(i * 7919 % 10'007, LongText(i, static_cast<std::size_t>(i % 255) + 1)));
  return rows;
}

TEST_F(Fill, MakesSoundPagesAndIndexesOfEveryRow) {
  Make(Plain(kSource), WithIndexes(Plain(kTarget)), MixedRows(3000));
  Copy(*database_);
  ExpectTheSameRows();
  EXPECT_EQ(database_->OpenTable(kTarget).Def().rowCount, 3000U);
}

TEST_F(Fill, TheTableIsWritableAfterwards) {
  Make(Plain(kSource), WithIndexes(Plain(kTarget)), MixedRows(2000));
  Copy(*database_);
  {
    WriteTurn turn(*database_);
    const Table table = database_->OpenTable(kTarget);
    std::vector<RowId> toDelete;
    TableCursor rows = table.Scan({});
    for (int i = 0; rows.Next(); ++i) {
      if (i % 2 == 0 || i > 1500) toDelete.push_back(rows.Id());
    }
    const auto writer = database_->OpenWriter(kTarget);
    for (const RowId row : toDelete)
      writer->Delete(row);
    for (int i = 0; i < 500; ++i) {
      std::vector<Value> row = Row(20'000 - i * 13, LongText(i * 5, 40));
      writer->Insert(row);
    }
    turn.Commit();
  }
  EXPECT_EQ(database_.Findings(), "");
  EXPECT_EQ(database_.Rows(kTarget), 750U + 500U);
}

TEST_F(Fill, CountsKeysAsRowsThatComeOneByOneDo) {
  Make(Plain(kSource), WithIndexes(Plain(kTarget)), MixedRows(700));
  TableDefinition other = WithIndexes(Plain(u"tblRijen"));
  database_.Create(other);
  Insert(*database_, other.name, MixedRows(700));
  Copy(*database_);
  const Table filled = database_->OpenTable(kTarget);
  const Table inserted = database_->OpenTable(other.name);
  const auto keysOf = [&](const Table& table, std::size_t index) {
    const StoredTable& def = table.Def();
    const std::size_t at = def.realIndexes[index].distinctKeysAt;
    return Load<std::uint32_t>(database_->Source().Read(def.page)->data() + at);
  };
  for (std::size_t index = 0; index < 3; ++index)
    EXPECT_EQ(keysOf(filled, index), keysOf(inserted, index)) << index;
  EXPECT_EQ(keysOf(filled, 0), 700U);
}

TEST_F(Fill, OfNothingChangesNothing) {
  Make(Plain(kSource), WithIndexes(Plain(kTarget)), {});
  const Bytes before = database_.Files().Get(FreshDatabase::kPath);
  Copy(*database_);
  EXPECT_EQ(database_.Files().Get(FreshDatabase::kPath), before);
}

TEST_F(Fill, ATableThatHasRowsKeepsThem) {
  Make(Plain(kSource), WithIndexes(Plain(kTarget)), MixedRows(300));
  Insert(*database_, kTarget, {Row(50'000, u"al hier")});
  Copy(*database_);
  EXPECT_EQ(database_.Findings(), "");
  EXPECT_EQ(database_.Rows(kTarget), 301U);
}

// The error text is the same for filling an empty table and for inserting into one with rows.
TEST_F(Fill, RefusesADuplicateWithTheErrorOfASingleInsert) {
  TableDefinition target = Plain(kTarget);
  IndexDefinition byName = Index(u"Naam", {{1, false}});
  byName.unique = true;
  target.indexes = {byName, Index(u"Soort", {{2, false}})};
  std::vector<std::vector<Value>> rows;
  rows.reserve(200);
  for (int i = 0; i < 200; ++i)
    rows.push_back(Row(i, LongText(i, 5)));
  rows[60][1] = rows[70][1] = Value{};  // keys of only nulls are not duplicates
  rows[20][1] = rows[180][1] = u"aap";
  rows[150][1] = u"bij";
  rows[100][1] = u"BIJ";
  rows[110][1] = u"Bij";  // the first duplicate in the order of the rows
  Make(Plain(kSource), target, rows);
  const Bytes before = database_.Files().Get(FreshDatabase::kPath);
  const std::string filling = MessageOf([&] { Copy(*database_); });
  EXPECT_EQ(filling, "Tabel 'tblDoel': de waarde 'Bij' van veld 'Naam' bestaat al (index 'Naam').");
  EXPECT_EQ(database_.Files().Get(FreshDatabase::kPath), before);
  Insert(*database_, kTarget, {Row(900, u"een ander")});
  EXPECT_EQ(MessageOf([&] { Copy(*database_); }), filling);
}

TEST_F(Fill, RefusesARowWithoutAKey) {
  std::vector<std::vector<Value>> rows = MixedRows(20);
  rows[12][0] = Value{};
  Make(Plain(kSource), WithIndexes(Plain(kTarget)), rows);
  EXPECT_EQ(MessageOf([&] { Copy(*database_); }),
            "Tabel 'tblDoel': veld 'Nr' moet een waarde hebben: het is een sleutel.");
  EXPECT_EQ(database_.Rows(kTarget), 0U);
  EXPECT_EQ(database_.Findings(), "");
}

// Parameter: number of texts in a key. From a dozen keys on a page to a single one, so that trees become deep.
class FillOfLongKeys : public testing::TestWithParam<std::size_t> {};

TEST_P(FillOfLongKeys, MakesSoundTreesOfEverySize) {
  TableDefinition source;
  source.name = kSource;
  IndexDefinition index = Index(u"Alle", {});
  for (std::size_t i = 0; i < GetParam(); ++i) {
    const std::u16string name{static_cast<char16_t>(u'A' + i)};
    source.columns.push_back(Column(name.c_str(), ColumnType::Text, 255));
    index.fields.push_back({i, i % 2 == 1});
  }
  TableDefinition target = source;
  target.name = kTarget;
  target.indexes = {index};
  for (int count = 1; count < 60; count += count < 12 ? 1 : 7) {
    FreshDatabase database;
    database.Create(source);
    database.Create(target);
    std::vector<std::vector<Value>> rows;
    rows.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i)
      rows.emplace_back(GetParam(), Value{LongText(i, 255)});
    Insert(*database, kSource, rows);
    Copy(*database);
    EXPECT_EQ(database.Findings(), "") << count;
    EXPECT_EQ(CellsOf(*database, kTarget), CellsOf(*database, kSource)) << count;
    Insert(*database, kTarget, {std::vector<Value>(GetParam(), Value{LongText(500, 255)})});
    EXPECT_EQ(database.Findings(), "") << count;
  }
}

INSTANTIATE_TEST_SUITE_P(Texts, FillOfLongKeys, testing::Range(std::size_t{1}, std::size_t{6}));

class FillWitness : public testing::TestWithParam<witness::Reader> {};

INSTANTIATE_TEST_SUITE_P(Readers, FillWitness, testing::Values(witness::Reader::MdbTools, witness::Reader::MdbReader),
                         [](const auto& reader) { return witness::TestNameOf(reader.param); });

TEST_P(FillWitness, FindsTheSameRows) {
  if (const auto absent = witness::WhyAbsent(GetParam())) GTEST_SKIP() << *absent;
  FreshDatabase database;
  database.Create(Plain(kSource));
  database.Create(WithIndexes(Plain(kTarget)));
  Insert(*database, kSource, MixedRows(1500));
  Copy(*database);
  const std::filesystem::path path =
      std::filesystem::temp_directory_path() / ("jet-fill-" + std::to_string(::getpid()) + ".mdb");
  const Bytes content = database.Files().Get(FreshDatabase::kPath);
  std::ofstream(path, std::ios::binary)
      .write(reinterpret_cast<const char*>(content.data()), static_cast<std::streamsize>(content.size()));
  witness::Tables tables = witness::ReadWith(GetParam(), path.string());
  std::filesystem::remove(path);
  EXPECT_EQ(tables[ToUtf8(kTarget)].rows, CellsOf(*database, kSource));
}

}  // namespace
}  // namespace jet

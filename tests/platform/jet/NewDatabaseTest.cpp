// SPDX-License-Identifier: MIT
#include "platform/jet/database/NewDatabase.h"

#include "tests/platform/jet/support/SampleTable.h"
#include "tests/platform/jet/support/Samples.h"

#include <gtest/gtest.h>

#include <functional>
#include <set>
#include <vector>

namespace jet {
namespace {

using test::Column;
using test::FreshDatabase;
using test::MessageOf;
using test::SpotsTable;

TEST(NewDatabase, IsSoundAndEmpty) {
  FreshDatabase database;
  EXPECT_EQ(database.Findings(), "");
  EXPECT_TRUE(database->TableNames().empty());
  EXPECT_EQ(database.Files().Get(FreshDatabase::kPath).size(), 16 * kPageSize);
}

TEST(NewDatabase, IsByteForByteWhatTheOriginalEngineMakes) {
  if (!witness::SampleFolder()) GTEST_SKIP() << "SPOTROOSTER_MDB_SAMPLES is not set";
  const auto real = HostFileSystem().Open(*witness::SampleFolder() + "/adox_empty.mdb", OpenMode::Read);
  Bytes theirs(real->Size());
  real->ReadAt(0, theirs);
  const Bytes ours = NewDatabase(0);
  ASSERT_EQ(ours.size(), theirs.size());
  std::set<std::size_t> differing;
  for (std::size_t i = 0; i < ours.size(); ++i) {
    if (ours[i] != theirs[i]) differing.insert(i / kPageSize);
  }
  // Definitions: bytes that the engine does not initialise. Page 14: the dates of the catalogue's rows.
  EXPECT_EQ(differing, (std::set<std::size_t>{2, 3, 4, 14}));
  for (const std::size_t page : {2U, 3U, 4U}) {
    for (std::size_t i = page * kPageSize; i < (page + 1) * kPageSize; ++i)
      EXPECT_TRUE(ours[i] == theirs[i] || ours[i] == 0) << "page " << page << " byte " << i % kPageSize;
  }
}

TEST(NewDatabase, DoesNotOverwriteAFile) {
  FreshDatabase database;
  EXPECT_EQ(MessageOf([&] { Database::Create(FreshDatabase::kPath, database.Files()); }),
            "Kan het bestand '/data/new.mdb' niet aanmaken: het bestand bestaat al.");
}

TEST(NewTable, HasTheFieldsAndIndexesItWasMadeWith) {
  FreshDatabase database;
  TableDefinition table = SpotsTable();
  table.columns.push_back(Column(u"Bedrag", ColumnType::Currency));
  table.columns.push_back(Column(u"Factor", ColumnType::Decimal));
  table.columns.back().precision = 18;
  table.columns.back().scale = 3;
  table.columns.push_back(Column(u"Code", ColumnType::Binary, 20));
  table.columns.back().defaultValue = u"\"x\"";
  IndexDefinition both;
  both.name = u"DatumNaam";
  both.fields = {{2, true}, {1, false}};
  both.ignoreNulls = true;
  table.indexes.push_back(both);
  database.Create(table);
  EXPECT_EQ(database.Findings(), "");
  const TableDefinition read = database->OpenTable(u"TBLSPOTS").Definition();
  ASSERT_EQ(read.columns.size(), table.columns.size());
  for (std::size_t i = 0; i < table.columns.size(); ++i) {
    EXPECT_EQ(read.columns[i].name, table.columns[i].name);
    EXPECT_EQ(read.columns[i].type, table.columns[i].type);
    EXPECT_EQ(read.columns[i].required, table.columns[i].required);
    EXPECT_EQ(read.columns[i].allowZeroLength, table.columns[i].allowZeroLength);
    EXPECT_EQ(read.columns[i].autonumber, table.columns[i].autonumber);
    EXPECT_EQ(read.columns[i].defaultValue, table.columns[i].defaultValue);
    EXPECT_EQ(read.columns[i].scale, table.columns[i].scale);
  }
  EXPECT_EQ(read.columns[1].size, 50);
  ASSERT_EQ(read.indexes.size(), 3U);
  EXPECT_EQ(read.indexes[0].name, u"DatumNaam");
  EXPECT_TRUE(read.indexes[0].ignoreNulls);
  EXPECT_TRUE(read.indexes[0].fields[0].descending);
  EXPECT_FALSE(read.indexes[0].fields[1].descending);
  EXPECT_TRUE(read.indexes[2].primary && read.indexes[2].unique && read.indexes[2].required);
}

TEST(NewTable, WithTheMostFieldsSpansSeveralPages) {
  FreshDatabase database;
  TableDefinition table;
  table.name = u"tblBreed";
  for (int i = 0; i < 255; ++i) {
    ColumnDefinition column = Column(u"", i % 9 == 0 ? ColumnType::Memo : ColumnType::Integer);
    column.name = u"Een lange naam voor veld " + std::u16string(1, static_cast<char16_t>(u'a' + i % 26)) +
                  std::u16string(1, static_cast<char16_t>(u'a' + i / 26));
    table.columns.push_back(column);
  }
  database.Create(table);
  EXPECT_EQ(database.Findings(), "");
  EXPECT_EQ(database->OpenTable(u"tblBreed").Definition().columns.size(), 255U);
  EXPECT_GT(database->OpenTable(u"tblBreed").Def().pages.size(), 3U);
  std::vector<Value> row(255);
  row[0] = std::u16string(5000, u'm');
  row[254] = std::int64_t{7};
  database.Insert(u"tblBreed", row);
  EXPECT_EQ(database.Findings(), "");
}

TEST(NewTable, WithAnInvalidDefinitionIsRefused) {
  FreshDatabase database;
  const Bytes before = database.Files().Get(FreshDatabase::kPath);
  const auto refusal = [&](const std::function<void(TableDefinition&)>& spoil) {
    TableDefinition table = SpotsTable();
    spoil(table);
    return MessageOf([&] { database.Create(table); });
  };
  EXPECT_EQ(refusal([](TableDefinition& table) { table.name = u"a.b"; }), "Tabel 'a.b': 'a.b' kan geen naam zijn.");
  EXPECT_EQ(refusal([](TableDefinition& table) { table.columns[2].name = u"naam"; }),
            "Tabel 'tblSpots': de naam 'naam' komt twee keer voor.");
  EXPECT_EQ(refusal([](TableDefinition& table) { table.columns[1].size = 256; }),
            "Tabel 'tblSpots': het veld 'Naam' heeft een verkeerde grootte.");
  EXPECT_EQ(refusal([](TableDefinition& table) { table.indexes[1].fields[0].column = 4; }),
            "Tabel 'tblSpots': een OLE-veld kan niet in een index staan.");
  EXPECT_EQ(refusal([](TableDefinition& table) { table.columns.clear(); }),
            "Tabel 'tblSpots': een tabel heeft 1 tot 255 velden.");
  EXPECT_EQ(database.Files().Get(FreshDatabase::kPath), before);
  database.Create(SpotsTable());
  EXPECT_EQ(refusal([](TableDefinition& table) { table.name = u"TblSpots"; }),
            "De tabel 'TblSpots' bestaat al in het bestand '/data/new.mdb'.");
}

TEST(NewTable, IsDiscardedWhenTheTurnEndsWithoutCommit) {
  FreshDatabase database;
  {
    const WriteTurn turn(*database);
    database->CreateTable(SpotsTable());
    EXPECT_TRUE(database->HasTable(u"tblSpots"));
  }
  EXPECT_FALSE(database->HasTable(u"tblSpots"));
}

}  // namespace
}  // namespace jet

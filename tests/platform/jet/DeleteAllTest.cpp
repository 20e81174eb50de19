// SPDX-License-Identifier: MIT
// Emptying a table at once: its pages are freed through the maps, nothing else changes.
#include "platform/jet/check/Check.h"
#include "platform/jet/pages/UsageMap.h"
#include "platform/jet/table/TableWriter.h"
#include "platform/jet/values/Utf8.h"
#include "tests/platform/jet/support/Agreement.h"
#include "tests/platform/jet/support/Places.h"
#include "tests/platform/jet/support/SampleTable.h"
#include "tests/platform/jet/support/Samples.h"
#include "tests/platform/jet/support/TinyDatabase.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace jet {
namespace {

using test::FreshDatabase;
using test::MessageOf;
using test::Spot;

using test::kTable;

std::size_t DeleteAll(Database& database, const std::u16string& table) {
  WriteTurn turn(database);
  const std::size_t count = database.OpenWriter(table)->DeleteAll();
  turn.Commit();
  return count;
}

void Fill(Database& database, int rows) {
  WriteTurn turn(database);
  const auto writer = database.OpenWriter(kTable);
  for (int i = 0; i < rows; ++i) {
    const std::size_t length = i % 50 == 0 ? 9000 : static_cast<std::size_t>(i % 300);
    std::vector<Value> row =
        Spot(u"Naam " + std::u16string(1, static_cast<char16_t>(u'a' + i % 26)), std::u16string(length, u'\u0416'));
    writer->Insert(row);
  }
  turn.Commit();
}

class DeleteAllTest : public testing::Test {
 protected:
  void SetUp() override {
    database_.Create(test::SpotsTable());
    Fill(*database_, 3000);
  }

  FreshDatabase database_;
};

TEST_F(DeleteAllTest, FreesEveryPage) {
  const std::uint32_t most = database_->Source().PageCount();
  EXPECT_EQ(DeleteAll(*database_, kTable), 3000U);
  EXPECT_EQ(database_.Findings(), "");
  EXPECT_EQ(database_.Rows(kTable), 0U);
  const Table table = database_->OpenTable(kTable);
  EXPECT_EQ(table.Def().rowCount, 0U);
  EXPECT_EQ(UsageMap::Read(database_->Source(), table.Def().ownedMap).Members().size(), 0U);
  for (const StoredIndex& index : table.Def().realIndexes) {
    EXPECT_EQ(UsageMap::Read(database_->Source(), index.map).Members(), (std::vector<std::uint32_t>{index.root}));
  }
  Fill(*database_, 3000);
  EXPECT_EQ(database_->Source().PageCount(), most);
  EXPECT_EQ(database_.Findings(), "");
  EXPECT_EQ(database_.Rows(kTable), 3000U);
}

TEST_F(DeleteAllTest, AutonumbersContinue) {
  DeleteAll(*database_, kTable);
  std::vector<Value> row = Spot(u"Bakker");
  WriteTurn turn(*database_);
  database_->OpenWriter(kTable)->Insert(row);
  EXPECT_EQ(row[0], Value(std::int64_t{3001}));
}

TEST_F(DeleteAllTest, WritesOnlyTheMapsTheRootsAndTheCounters) {
  WriteTurn turn(*database_);
  database_->OpenWriter(kTable)->DeleteAll();
  EXPECT_LT(database_->Shared().Changes().ChangedPages().size(), 10U);
}

TEST_F(DeleteAllTest, RolledBackNothingChanged) {
  const Bytes before = database_.Files().Get(FreshDatabase::kPath);
  {
    WriteTurn turn(*database_);
    database_->OpenWriter(kTable)->DeleteAll();
  }
  EXPECT_EQ(database_.Files().Get(FreshDatabase::kPath), before);
  EXPECT_EQ(database_.Rows(kTable), 3000U);
}

TEST_F(DeleteAllTest, TheWriterIsUsableAfterwards) {
  WriteTurn turn(*database_);
  const auto writer = database_->OpenWriter(kTable);
  std::vector<Value> row = Spot(u"Bakker", std::u16string(3000, u'x'));
  writer->Insert(row);
  EXPECT_EQ(writer->DeleteAll(), 3001U);
  writer->Insert(row);
  EXPECT_EQ(writer->DeleteAll(), 1U);
  EXPECT_EQ(writer->DeleteAll(), 0U);
  row[0] = Value{};
  writer->Insert(row);
  turn.Commit();
  EXPECT_EQ(database_.Findings(), "");
  EXPECT_EQ(database_.Rows(kTable), 1U);
}

// Enough rows that the maps have bitmap pages, which are freed too.
TEST_F(DeleteAllTest, ShortensMapsThatHadGrown) {
  {
    WriteTurn turn(*database_);
    const auto writer = database_->OpenWriter(kTable);
    for (int i = 0; i < 1500; ++i) {
      std::vector<Value> row = Spot(u"Groot", std::u16string(3000, u'\u0416'));
      writer->Insert(row);
    }
    turn.Commit();
  }
  const Table before = database_->OpenTable(kTable);
  ASSERT_FALSE(UsageMap::Read(database_->Source(), before.Def().columns[3].ownedMap).BitmapPages().empty());
  EXPECT_EQ(DeleteAll(*database_, kTable), 4500U);
  EXPECT_EQ(database_.Findings(), "");
  const Table after = database_->OpenTable(kTable);
  EXPECT_TRUE(UsageMap::Read(database_->Source(), after.Def().columns[3].ownedMap).BitmapPages().empty());
  Fill(*database_, 100);
  EXPECT_EQ(database_.Findings(), "");
}

std::string Problems(Database& database) {
  std::string problems;
  for (const Finding& finding : CheckDatabase(database)) {
    if (!finding.remark) problems += finding.Line() + '\n';
  }
  return problems;
}

class DeleteAllSample : public testing::TestWithParam<const char*> {
 protected:
  void SetUp() override {
    if (!witness::SampleFolder()) GTEST_SKIP() << "SPOTROOSTER_MDB_SAMPLES is not set";
    files_.Put(kPath, witness::ContentOf(*witness::SampleFolder() + "/" + GetParam() + ".mdb"));
    OpenOptions options;
    options.writable = true;
    options.password = u"password";
    options.wait = test::NoSleep();
    database_ = Database::Open(kPath, options, files_);
  }

  static constexpr const char* kPath = "/data/file.mdb";
  files::MemoryFileSystem files_;
  std::unique_ptr<Database> database_;
};

INSTANTIATE_TEST_SUITE_P(RealFiles, DeleteAllSample,
                         testing::Values("alltypes_big", "many_columns", "composite_index", "relations",
                                         "overflow_rows", "deleted_rows", "unicode_text", "numeric", "index_flags",
                                         "encoded", "password"),
                         [](const auto& sample) { return sample.param; });

TEST_P(DeleteAllSample, EmptiesATableOrRefusesItUntouched) {
  int emptied = 0;
  for (const std::u16string& name : database_->TableNames()) {
    const std::size_t rows = database_->OpenTable(name).CountRows();
    const Bytes before = files_.Get(kPath);
    try {
      EXPECT_EQ(DeleteAll(*database_, name), rows) << ToUtf8(name);
    } catch (const Error& error) {
      const bool isRefusal = error.Code() == ErrorCode::Relation || error.Code() == ErrorCode::Unsupported;
      ASSERT_TRUE(isRefusal) << ToUtf8(name) << ": " << error.what();
      EXPECT_EQ(files_.Get(kPath), before);
      continue;
    }
    ++emptied;
    EXPECT_EQ(Problems(*database_), "") << ToUtf8(name);
    EXPECT_EQ(database_->OpenTable(name).CountRows(), 0U) << ToUtf8(name);
  }
  EXPECT_GT(emptied, 0);
  EXPECT_EQ(witness::Disagreements(*database_, files_.Get(kPath), witness::SamplePassword(GetParam())), "");
}

TEST(DeleteAllRelations, AReferencedTableIsNotEmptied) {
  if (!witness::SampleFolder()) GTEST_SKIP() << "SPOTROOSTER_MDB_SAMPLES is not set";
  files::MemoryFileSystem files;
  const std::string path = "/data/file.mdb";
  files.Put(path, witness::ContentOf(*witness::SampleFolder() + "/northwind.mdb"));
  OpenOptions options;
  options.writable = true;
  options.wait = test::NoSleep();
  const auto database = Database::Open(path, options, files);
  const Bytes before = files.Get(path);
  const std::string refusal = MessageOf([&] { DeleteAll(*database, u"Shippers"); });
  EXPECT_NE(refusal.find("Tabel 'Shippers': de relatie "), std::string::npos) << refusal;
  EXPECT_NE(refusal.find(" laat niet toe dat deze rij wordt verwijderd"), std::string::npos) << refusal;
  EXPECT_EQ(files.Get(path), before);
}

}  // namespace
}  // namespace jet

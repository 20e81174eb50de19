// SPDX-License-Identifier: MIT
#include "platform/jet/check/Compact.h"

#include "platform/files/TemporaryName.h"
#include "platform/jet/pages/Header.h"
#include "platform/jet/table/TableWriter.h"
#include "tests/platform/jet/support/FaultyFiles.h"
#include "tests/platform/jet/support/Places.h"
#include "tests/platform/jet/support/SampleTable.h"
#include "tests/platform/jet/support/TinyDatabase.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

namespace jet {
namespace {

using test::FreshDatabase;
using test::MessageOf;
using test::Spot;

using test::kTable;

// Inserts two hundred rows with long texts and keeps every tenth.
void FillAndThin(FreshDatabase& database) {
  database.Create(test::SpotsTable());
  WriteTurn turn(*database);
  const auto writer = database->OpenWriter(kTable);
  std::vector<RowId> rows;
  for (int i = 0; i < 200; ++i) {
    std::vector<Value> row = Spot(u"Spot " + std::u16string(static_cast<std::size_t>(i % 40), u'é'),
                                  std::u16string(static_cast<std::size_t>(i) * 50 + 1, u't'));
    rows.push_back(writer->Insert(row));
  }
  for (std::size_t i = 0; i < rows.size(); ++i) {
    if (i % 10 != 0) writer->Delete(rows[i]);
  }
  turn.Commit();
}

std::vector<std::vector<Value>> RowsOf(FileSystem& files, const std::filesystem::path& path) {
  const auto database = Database::Open(path, {}, files);
  const Table table = database->OpenTable(kTable);
  std::vector<std::vector<Value>> rows;
  KeyCursor keys = table.ScanByIndex(table.Definition().FindIndex(u"PrimaryKey"), false);
  while (keys.Next())
    rows.push_back(table.Fetch(keys.Id(), {0, 1, 2, 3, 4, 5}).value());
  return rows;
}

TEST(Compact, KeepsEveryRowAndTheNextNumberInLessSpace) {
  FreshDatabase database;
  FillAndThin(database);
  files::MemoryFileSystem& files = database.Files();
  const auto rows = RowsOf(files, FreshDatabase::kPath);
  const Bytes before = files.Get(FreshDatabase::kPath);
  Compact(FreshDatabase::kPath, {}, files);
  EXPECT_EQ(RowsOf(files, FreshDatabase::kPath), rows);
  EXPECT_LT(files.Get(FreshDatabase::kPath).size(), before.size() / 2);
  // The .bak is the old file.
  EXPECT_EQ(files.Get("/data/new.mdb.bak"), before);
  EXPECT_FALSE(files.Exists("/data/new.compact.mdb"));
  // A program that had the old file open continues with the new one.
  EXPECT_EQ(database.Findings(), "");
  std::vector<Value> row = Spot(u"Nieuw");
  const RowId id = database.Insert(kTable, row);
  EXPECT_EQ(database->OpenTable(kTable).Fetch(id, {0}).value()[0], Value(std::int64_t{201}));
  EXPECT_EQ(database->OpenTable(kTable).Definition().columns[1].required, true);
}

TEST(Compact, IsOldOrNewWhateverFails) {
  FreshDatabase model;
  FillAndThin(model);
  const Bytes content = model.Files().Get(FreshDatabase::kPath);
  const auto rows = RowsOf(model.Files(), FreshDatabase::kPath);
  bool reached = true;
  for (int call = 0; reached; call += 7) {
    files::MemoryFileSystem memory;
    memory.Put("/data/c.mdb", content);
    test::FaultyFiles files(memory);
    files.FailAt(call, test::Fault::DiskFull);
    const std::string message = MessageOf([&] {
      OpenOptions options;
      options.wait = test::NoSleep();
      Compact("/data/c.mdb", options, files);
    });
    reached = files.Failed();
    EXPECT_EQ(RowsOf(memory, "/data/c.mdb"), rows) << "call " << call << ": " << message;
  }
}

TEST(Compact, IntoAnotherFileLeavesTheOldOneAlone) {
  FreshDatabase database;
  FillAndThin(database);
  const Bytes before = database.Files().Get(FreshDatabase::kPath);
  CompactInto(FreshDatabase::kPath, "/data/small.mdb", {}, database.Files());
  EXPECT_EQ(database.Files().Get(FreshDatabase::kPath), before);
  EXPECT_EQ(RowsOf(database.Files(), "/data/small.mdb"), RowsOf(database.Files(), FreshDatabase::kPath));
  EXPECT_EQ(MessageOf([&] { CompactInto(FreshDatabase::kPath, "/data/small.mdb", {}, database.Files()); }),
            "Kan het bestand '/data/small.mdb' niet aanmaken: het bestand bestaat al.");
}

// A process is killed at each file call; then another one compacts again.
TEST(Compact, KilledAtAnyCallLeavesTheOldOrTheNewFileAndWorksWhenRunAgain) {
  FreshDatabase model;
  FillAndThin(model);
  const Bytes content = model.Files().Get(FreshDatabase::kPath);
  const auto rows = RowsOf(model.Files(), FreshDatabase::kPath);
  bool reached = true;
  int call = 0;
  for (; reached; ++call) {
    files::MemoryFileSystem memory;
    memory.Put("/data/c.mdb", content);
    test::FaultyFiles files(memory);
    files.FailAt(call, test::Fault::Dead);
    OpenOptions options;
    options.wait = test::NoSleep();
    MessageOf([&] { Compact("/data/c.mdb", options, files); });
    reached = files.Failed();
    EXPECT_EQ(RowsOf(memory, "/data/c.mdb"), rows) << "call " << call;
    EXPECT_EQ(MessageOf([&] { Compact("/data/c.mdb", options, memory); }), "") << "call " << call;
    EXPECT_EQ(RowsOf(memory, "/data/c.mdb"), rows) << "call " << call;
    for (const std::filesystem::path& name : memory.Names())
      EXPECT_FALSE(files::IsTemporaryName(name)) << "call " << call << ": " << name;
  }
  EXPECT_GT(call, 20);
}

TEST(Compact, KilledAtAnyCallLeavesACompleteNewFileOrNone) {
  FreshDatabase model;
  FillAndThin(model);
  const Bytes content = model.Files().Get(FreshDatabase::kPath);
  const auto rows = RowsOf(model.Files(), FreshDatabase::kPath);
  bool reached = true;
  for (int call = 0; reached; ++call) {
    files::MemoryFileSystem memory;
    memory.Put("/data/c.mdb", content);
    test::FaultyFiles files(memory);
    files.FailAt(call, test::Fault::Dead);
    OpenOptions options;
    options.wait = test::NoSleep();
    MessageOf([&] { CompactInto("/data/c.mdb", "/data/small.mdb", options, files); });
    reached = files.Failed();
    EXPECT_EQ(memory.Get("/data/c.mdb"), content) << "call " << call;
    if (!memory.Exists("/data/small.mdb")) {
      EXPECT_EQ(MessageOf([&] { CompactInto("/data/c.mdb", "/data/small.mdb", options, memory); }), "")
          << "call " << call;
    }
    EXPECT_EQ(RowsOf(memory, "/data/small.mdb"), rows) << "call " << call;
  }
}

// Otherwise a program that compares marks would not notice the replacement.
TEST(Compact, ACopyHasANewChangeMark) {
  FreshDatabase database;
  FillAndThin(database);
  files::MemoryFileSystem& files = database.Files();
  const auto markOf = [&](const char* path) {
    const Bytes content = files.Get(path);
    return Bytes(content.begin() + kChangeMark, content.begin() + kCommitCounters);
  };
  const Bytes mark = markOf(FreshDatabase::kPath);
  CompactInto(FreshDatabase::kPath, "/data/small.mdb", {}, files);
  EXPECT_NE(markOf("/data/small.mdb"), mark);
  Compact(FreshDatabase::kPath, {}, files);
  EXPECT_NE(markOf(FreshDatabase::kPath), mark);
  EXPECT_EQ(markOf("/data/new.mdb.bak"), mark);
}

TEST(Compact, LeavesOtherFilesInTheFolderAlone) {
  FreshDatabase database;
  FillAndThin(database);
  const Bytes own = {1, 2, 3};
  for (const char* name : {"/data/new.compact.mdb", "/data/new.mdb.1.tmp", "/data/new.mdb.tmp"})
    database.Files().Put(name, own);
  Compact(FreshDatabase::kPath, {}, database.Files());
  for (const char* name : {"/data/new.compact.mdb", "/data/new.mdb.1.tmp", "/data/new.mdb.tmp"})
    EXPECT_EQ(database.Files().Get(name), own) << name;
}

}  // namespace
}  // namespace jet

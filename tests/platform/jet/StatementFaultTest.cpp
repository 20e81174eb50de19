// SPDX-License-Identifier: MIT
// Every kind of writing statement, with each file call failing in turn, in every way.
#include "platform/jet/table/TableWriter.h"
#include "tests/fuzz/EditBases.h"
#include "tests/platform/jet/support/CopyTables.h"
#include "tests/platform/jet/support/FaultyFiles.h"
#include "tests/platform/jet/support/Places.h"
#include "tests/platform/jet/support/SampleTable.h"
#include "tests/platform/jet/support/TableText.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <tuple>
#include <vector>

namespace jet {
namespace {

using test::Fault;
using test::FaultyFiles;

using test::kPath;

struct Statement {
  const char* name;
  std::function<void(Database&)> work;
  const Bytes& (*base)() = fuzz::SmallBase;
};

RowId FirstSpot(Database& database) {
  const Table table = database.OpenTable(u"tblSpots");
  TableCursor cursor = table.Scan({});
  cursor.Next();
  return cursor.Id();
}

void Insert(Database& database, std::size_t textLength) {
  std::vector<Value> row = fuzz::SpotRow(Value{}, u"nieuw", std::u16string(textLength, u'\u20AC'));
  database.OpenWriter(u"tblSpots")->Insert(row);
}

// Fills an empty table with enough rows for indexes of two levels.
void FillATable(Database& database) {
  test::MakeCopyTables(database);
  test::CopyRows(database);
}

// The table's pages are freed and taken again, for other content: undoing the change needs the old one.
void ReplaceRows(Database& database) {
  test::EmptyCopy(database);
  Insert(database, 6000);
  test::CopyRows(database);
}

const Statement kStatements[] = {
    {"Insert", [](Database& database) { Insert(database, 10); }},
    {"InsertOfALongText", [](Database& database) { Insert(database, 6000); }},
    {"Update",
     [](Database& database) {
       const std::vector<Value> row = fuzz::SpotRow(Value{}, u"anders", std::u16string(3000, u'\u20AC'));
       database.OpenWriter(u"tblSpots")->Update(FirstSpot(database), row, {false, true, true, false});
     }},
    {"Delete", [](Database& database) { database.OpenWriter(u"tblSpots")->Delete(FirstSpot(database)); }},
    {"DeleteAll", [](Database& database) { database.OpenWriter(u"tblSpots")->DeleteAll(); }},
    {"SplitOfAnIndex",
     [](Database& database) {
       const auto writer = database.OpenWriter(u"tblSpots");
       for (char16_t i = 0; i < 80; ++i) {
         std::vector<Value> row =
             fuzz::SpotRow(Value{}, std::u16string(48, static_cast<char16_t>(u'a' + i % 26)), Value{});
         writer->Insert(row);
       }
     }},
    {"FillOfATable", FillATable},
    {"FillOfAnEmptiedTable", test::CopyRows, test::EmptiedCopy},
    {"ReplacementOfAllRows", ReplaceRows, test::FilledCopy},
    {"CreateTable", [](Database& database) {
       TableDefinition table = test::SpotsTable();
       table.name = u"tblNieuw";
       database.CreateTable(table);
     }}};

class StatementFault : public testing::TestWithParam<std::tuple<Statement, Fault>> {};

constexpr const char* kFaultNames[] = {"None", "Error", "DiskFull", "Interrupted", "ShortCount", "Dead"};

INSTANTIATE_TEST_SUITE_P(Every, StatementFault,
                         testing::Combine(testing::ValuesIn(kStatements),
                                          testing::Values(Fault::Error, Fault::DiskFull, Fault::Interrupted,
                                                          Fault::ShortCount, Fault::Dead)),
                         [](const auto& parameter) {
                           return std::string(std::get<0>(parameter.param).name) + "_" +
                                  kFaultNames[static_cast<std::size_t>(std::get<1>(parameter.param))];
                         });

TEST_P(StatementFault, OfAnyCallLeavesTheOldOrTheNewState) {
  const auto& [statement, fault] = GetParam();
  files::MemoryFileSystem memory;
  memory.Put(kPath, statement.base());
  const witness::Tables before = test::StateOf(memory);
  witness::Tables after;
  int call = 0;
  for (bool reached = true; reached; ++call) {
    memory.Put(kPath, statement.base());
    FaultyFiles files(memory);
    bool done = false;
    {
      const auto database = Database::Open(kPath, fuzz::ForEditing(), files);
      files.FailAt(call, fault);
      done = test::MessageOf([&database, &work = statement.work] {
               WriteTurn turn(*database);
               work(*database);
               turn.Commit();
             }).empty();
      reached = files.Failed();
    }
    const witness::Tables now = test::StateOf(memory);
    if (!reached) after = now;
    if (done) {
      EXPECT_NE(now, before) << "call " << call;
    }
    // The new state is only known after the last call: it is compared at the end.
    if (now != before) {
      if (after.empty()) after = now;
      EXPECT_EQ(now, after) << "call " << call;
    }
    for (const FileSystem::Path& name : memory.Names()) {
      if (name == kPath) continue;
      EXPECT_EQ(name.extension(), ".ldb") << name << " was left after call " << call;
      memory.Remove(name);
    }
  }
  EXPECT_NE(after, before);
  EXPECT_GT(call, 10);
}

TEST(ReadOnlyFile, IsReadAndNeverWrittenByAnyStatement) {
  for (const Statement& statement : kStatements) {
    files::MemoryFileSystem memory;
    memory.Put(kPath, statement.base());
    OpenOptions options = fuzz::ForEditing();
    options.writable = false;
    {
      const auto database = Database::Open(kPath, options, memory);
      EXPECT_EQ(database->OpenTable(u"tblItems").CountRows(), 3U);
      EXPECT_EQ(test::MessageOf([&] {
                  WriteTurn turn(*database);
                  statement.work(*database);
                  turn.Commit();
                }),
                "Het bestand '/data/station.mdb' is alleen-lezen.")
          << statement.name;
    }
    EXPECT_EQ(memory.Get(kPath), statement.base());
    EXPECT_EQ(memory.Names().size(), 1U);
  }
}

}  // namespace
}  // namespace jet

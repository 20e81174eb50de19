// SPDX-License-Identifier: MIT
// Several processes on one file, and processes that are killed.
#include "platform/jet/check/Check.h"
#include "platform/jet/table/TableWriter.h"
#include "platform/jet/values/Error.h"
#include "tests/platform/jet/support/Child.h"
#include "tests/platform/jet/support/Places.h"
#include "tests/platform/jet/support/SampleTable.h"
#include "tests/platform/jet/support/TinyDatabase.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace jet {
namespace {

using test::Child;

using test::kTable;

OpenOptions ForWriting() {
  OpenOptions options;
  options.writable = true;
  return options;
}

std::u16string NameOfSpot(int number) {
  return u"Spot " + std::u16string(static_cast<std::size_t>(number % 40), u'x');
}

class ProcessTest : public testing::Test {
 protected:
  void SetUp() override {
    folder_ = std::filesystem::temp_directory_path() / ("jet-processes-" + std::to_string(::getpid()));
    std::filesystem::create_directories(folder_);
    path_ = folder_ / "station.mdb";
    Database::Create(path_);
    const auto database = Database::Open(path_, ForWriting());
    WriteTurn turn(*database);
    database->CreateTable(test::SpotsTable());
    turn.Commit();
  }
  void TearDown() override { std::filesystem::remove_all(folder_); }

  std::map<std::int64_t, std::u16string> ReadRows() {
    const auto database = Database::Open(path_, ForWriting());
    std::string findings;
    for (const Finding& finding : CheckDatabase(*database))
      findings += finding.Line() + '\n';
    EXPECT_EQ(findings, "");
    std::map<std::int64_t, std::u16string> rows;
    const Table table = database->OpenTable(kTable);
    TableCursor cursor = table.Scan({0, 1});
    while (cursor.Next())
      rows[std::get<std::int64_t>(cursor.Values()[0])] = std::get<std::u16string>(cursor.Values()[1]);
    return rows;
  }

  std::filesystem::path folder_;
  std::filesystem::path path_;
};

// WriterStep n adds row n, renames row n - 3 and deletes row n - 6, all in one change.
void WriterStep(Database& database, int n) {
  WriteTurn turn(database);
  const auto writer = database.OpenWriter(kTable);
  std::vector<Value> row = test::Spot(NameOfSpot(n), std::u16string(static_cast<std::size_t>(n % 7 * 1000 + 1), u't'));
  row[0] = std::int64_t{n};
  writer->Insert(row);
  const auto find = [&](int number) {
    const Table table = database.OpenTable(kTable);
    const std::vector<Value> key = {std::int64_t{number}};
    KeyCursor cursor = table.Lookup(table.Definition().FindIndex(u"PrimaryKey"), key);
    return cursor.Next() ? cursor.Id() : 0;
  };
  if (n > 3) {
    std::vector<Value> values(6);
    values[1] = u"Nieuw " + NameOfSpot(n);
    writer->Update(find(n - 3), values, {false, true, false, false, false, false});
  }
  if (n > 6) writer->Delete(find(n - 6));
  turn.Commit();
}

TEST_F(ProcessTest, AKilledUserOfTheLockFileBlocksNoOne) {
  Child child([&](const Child::Acknowledge& acknowledge) {
    const auto database = Database::Open(path_, ForWriting());
    const WriteTurn turn(*database);
    acknowledge(1);
    ::pause();
  });
  std::int64_t number = 0;
  ASSERT_TRUE(child.Next(number));
  EXPECT_TRUE(std::filesystem::exists(folder_ / "station.ldb"));
  child.Kill();
  const auto database = Database::Open(path_, ForWriting());
  WriterStep(*database, 1);
  EXPECT_EQ(database->OpenTable(kTable).CountRows(), 1U);
}

TEST_F(ProcessTest, AFileWithoutWritePermissionIsReadAndNotWritten) {
  std::filesystem::permissions(folder_, std::filesystem::perms::all);
  std::filesystem::permissions(path_, std::filesystem::perms::owner_read | std::filesystem::perms::others_read);
  Child child([&](const Child::Acknowledge& acknowledge) {
    if (::geteuid() == 0 && (::setgid(65534) != 0 || ::setuid(65534) != 0)) ::_exit(3);
    const auto database = Database::Open(path_, ForWriting());
    acknowledge(static_cast<std::int64_t>(database->OpenTable(kTable).CountRows()));
    try {
      const WriteTurn turn(*database);
    } catch (const Error& error) {
      acknowledge(error.Code() == ErrorCode::AccessDenied ? 1 : 0);
    }
  });
  std::int64_t number = -1;
  ASSERT_TRUE(child.Next(number));
  EXPECT_EQ(number, 0);
  ASSERT_TRUE(child.Next(number));
  EXPECT_EQ(number, 1);
  EXPECT_EQ(child.Wait(), 0);
}

}  // namespace
}  // namespace jet

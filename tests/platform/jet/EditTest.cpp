// SPDX-License-Identifier: MIT
// Thousands of random changes of real files and of our own, compared with a model of the rows.
#include "platform/files/MemoryFileSystem.h"
#include "platform/jet/database/Database.h"
#include "platform/jet/pages/Files.h"
#include "platform/jet/pages/UsageMap.h"
#include "platform/jet/table/TableWriter.h"
#include "platform/jet/values/Error.h"
#include "platform/jet/values/Utf8.h"
#include "tests/platform/jet/support/Agreement.h"
#include "tests/platform/jet/support/RandomEditor.h"
#include "tests/platform/jet/support/Samples.h"
#include "tests/platform/jet/support/TinyDatabase.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

namespace jet {
namespace {

constexpr const char* kEditPath = "/data/file.mdb";

std::unique_ptr<Database> OpenForWriting(files::MemoryFileSystem& files, const std::u16string& password = u"") {
  OpenOptions options;
  options.writable = true;
  options.password = password;
  options.wait = test::NoSleep();
  return Database::Open(kEditPath, options, files);
}

// The pages that a change of the table may write: its own, those of its maps and free ones.
std::set<std::uint32_t> PagesThatMayChange(Database& database, const std::u16string& name) {
  const RowId globalMap = MakeRowId(1, 0);
  const Table table = database.OpenTable(name);
  std::vector<RowId> maps = {globalMap, table.Def().ownedMap, table.Def().freeMap};
  for (const StoredIndex& index : table.Def().realIndexes)
    maps.push_back(index.map);
  for (const StoredColumn& column : table.Def().columns) {
    maps.push_back(column.ownedMap);
    maps.push_back(column.freeMap);
  }
  std::set<std::uint32_t> pages = {0};
  pages.insert(table.Def().pages.begin(), table.Def().pages.end());
  for (const RowId where : maps) {
    if (where == 0) continue;
    const UsageMap map = UsageMap::Read(database.Source(), where);
    pages.insert(PageOf(where));
    pages.insert(map.BitmapPages().begin(), map.BitmapPages().end());
    for (const std::uint32_t page : map.Members())
      pages.insert(page);
  }
  return pages;
}

// The pages outside of `allowed` that differ.
std::vector<std::uint32_t> ChangedOutside(const std::set<std::uint32_t>& allowed, const Bytes& before,
                                          const Bytes& after) {
  std::vector<std::uint32_t> changed;
  for (std::uint32_t page = 0; (page + 1) * kPageSize <= before.size(); ++page) {
    const auto from = static_cast<std::ptrdiff_t>(page * kPageSize);
    if (!std::equal(before.begin() + from, before.begin() + from + static_cast<std::ptrdiff_t>(kPageSize),
                    after.begin() + from) &&
        !allowed.contains(page))
      changed.push_back(page);
  }
  return changed;
}

// False for tables with validation rules, which are refused with an error.
bool CanWrite(Database& database, const std::u16string& name) {
  const WriteTurn turn(database);
  try {
    database.OpenWriter(name);
    return true;
  } catch (const Error& error) {
    EXPECT_EQ(error.Code(), ErrorCode::Unsupported) << error.what();
    return false;
  }
}

class EditSample : public testing::TestWithParam<const char*> {};

INSTANTIATE_TEST_SUITE_P(RealFiles, EditSample,
                         testing::Values("alltypes_big", "many_columns", "composite_index", "relations",
                                         "overflow_rows", "deleted_rows", "unicode_text", "numeric", "index_flags",
                                         "northwind", "encoded", "password"),
                         [](const auto& sample) { return sample.param; });

// Checked after every hundred changes; the outside readers run each time in long tests, otherwise at the end.
TEST_P(EditSample, StaysSoundUnderRandomChanges) {
  if (!witness::SampleFolder()) GTEST_SKIP() << "SPOTROOSTER_MDB_SAMPLES is not set";
  files::MemoryFileSystem files;
  files.Put(kEditPath, witness::ContentOf(witness::SamplePath(GetParam())));
  const auto database = OpenForWriting(files, u"password");
  const auto disagreements = [&] {
    return witness::Disagreements(*database, files.Get(kEditPath), witness::SamplePassword(GetParam()));
  };
  for (const std::u16string& name : database->TableNames()) {
    if (!CanWrite(*database, name)) continue;
    const Bytes before = files.Get(kEditPath);
    const std::set<std::uint32_t> mayChange = PagesThatMayChange(*database, name);
    test::RandomEditor editor(*database, name, 11);
    for (int round = 0; round < 4 * test::LongTests(); ++round) {
      ASSERT_NO_FATAL_FAILURE(editor.Change(100)) << ToUtf8(name);
      ASSERT_EQ(test::Problems(*database), "") << ToUtf8(name) << " round " << round;
      ASSERT_NO_FATAL_FAILURE(editor.Verify());
      if (test::LongTests() == 1) continue;
      ASSERT_EQ(disagreements(), "") << ToUtf8(name) << " round " << round;
    }
    EXPECT_GT(editor.Done(), 20) << ToUtf8(name);
    EXPECT_EQ(ChangedOutside(mayChange, before, files.Get(kEditPath)), std::vector<std::uint32_t>{}) << ToUtf8(name);
  }
  EXPECT_EQ(disagreements(), "");
}

}  // namespace
}  // namespace jet

// Thousands of random changes to real files and to our own, against a model that knows what the rows must be.
#include "platform/jet/Check.h"
#include "platform/jet/Database.h"
#include "platform/jet/Error.h"
#include "platform/jet/MemoryFileSystem.h"
#include "platform/jet/UsageMap.h"
#include "platform/jet/Utf8.h"
#include "tests/platform/jet/support/Agreement.h"
#include "tests/platform/jet/support/RandomRows.h"
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

constexpr const char* kPath = "/data/file.mdb";

ColumnSet AllColumns(const TableDefinition& table) {
  ColumnSet columns(table.columns.size());
  for (std::size_t i = 0; i < columns.size(); ++i)
    columns[i] = i;
  return columns;
}

using Rows = std::map<RowId, std::vector<Value>>;

Rows ReadAll(const Table& table) {
  Rows rows;
  TableCursor cursor = table.Scan(AllColumns(table.Definition()));
  while (cursor.Next())
    rows[cursor.Id()] = cursor.Values();
  return rows;
}

std::string Problems(Database& database) {
  std::string problems;
  for (const Finding& finding : CheckDatabase(database)) {
    if (!finding.remark) problems += finding.Line() + '\n';
  }
  return problems;
}

/// Said before anything changes: of a value that the file does not want, a key that is not known, a cascade.
bool IsRefusal(ErrorCode code) {
  return code == ErrorCode::Duplicate || code == ErrorCode::Required || code == ErrorCode::Relation ||
         code == ErrorCode::TooLong || code == ErrorCode::UnknownCharacter || code == ErrorCode::Unsupported;
}

class Editor {
 public:
  Editor(Database& database, const std::u16string& table, unsigned seed)
      : database_(database), name_(table), random_(seed), model_(ReadAll(database.OpenTable(table))) {}

  void Change(int count) {
    WriteTurn turn(database_);
    const auto writer = database_.OpenWriter(name_);
    for (int i = 0; i < count; ++i) {
      try {
        ChangeOne(*writer);
      } catch (const Error& error) {
        if (!IsRefusal(error.Code())) throw;
      }
    }
    turn.Commit();
  }

  void Verify() {
    const Rows rows = ReadAll(database_.OpenTable(name_));
    ASSERT_EQ(rows.size(), model_.size());
    for (const auto& [id, values] : model_) {
      const auto found = rows.find(id);
      ASSERT_NE(found, rows.end()) << ToUtf8(name_) << " row " << id;
      ASSERT_EQ(found->second, values) << ToUtf8(name_) << " row " << id;
    }
  }

  int Done() const { return done_; }

 private:
  void ChangeOne(TableWriter& writer) {
    const std::size_t kind = random_.Below(growing_ ? 5 : 4);
    if (kind >= 3 || model_.empty()) {
      std::vector<Value> values = random_.Row(writer.Definition());
      const RowId row = writer.Insert(values);
      model_[row] = values;
    } else if (kind == 0) {
      const RowId row = AnyRow();
      writer.Delete(row);
      model_.erase(row);
    } else {
      UpdateOne(writer);
    }
    if (model_.size() > 400) growing_ = false;
    if (model_.size() < 10) growing_ = true;
    ++done_;
  }

  void UpdateOne(TableWriter& writer) {
    const RowId row = AnyRow();
    std::vector<Value> values = model_[row];
    std::vector<bool> changed(values.size());
    for (std::size_t i = 0; i < values.size(); ++i) {
      changed[i] = random_.Below(3) == 0 && !writer.Definition().columns[i].autonumber;
      if (changed[i]) values[i] = random_.For(writer.Definition().columns[i]);
    }
    writer.Update(row, values, changed);
    model_[row] = values;
  }

  RowId AnyRow() {
    const auto after = model_.lower_bound(static_cast<RowId>(random_.Below(model_.rbegin()->first + 1)));
    return after->first;
  }

  Database& database_;
  std::u16string name_;
  test::RandomRows random_;
  Rows model_;
  bool growing_ = true;
  int done_ = 0;
};

std::unique_ptr<Database> OpenForWriting(MemoryFileSystem& files, const std::u16string& password = u"") {
  OpenOptions options;
  options.writable = true;
  options.password = password;
  options.wait = test::NoSleep();
  return Database::Open(kPath, options, files);
}

Bytes ContentOf(const std::filesystem::path& path) {
  const auto file = HostFileSystem().Open(path, OpenMode::Read);
  Bytes content(file->Size());
  file->ReadAt(0, content);
  return content;
}

/// The pages that a change of the table may touch: its own, those of its maps, and what was free.
std::set<std::uint32_t> PagesThatMayChange(Database& database, const std::u16string& name) {
  const RowId globalMap = MakeRowId(1, 0);
  const Table table = database.OpenTable(name);
  std::vector<RowId> maps = {globalMap, table.Def().ownedMap, table.Def().freeMap};
  for (const RealIndexDef& index : table.Def().realIndexes)
    maps.push_back(index.map);
  for (const ColumnDef& column : table.Def().columns) {
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

/// The pages that differ although they must not.
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

/// Not tables with validation rules, which are refused by name.
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

/// After every hundred changes; the outside readers are asked each time when there is time for it, else at the end.
TEST_P(EditSample, StaysSoundUnderRandomChanges) {
  if (!witness::SampleFolder()) GTEST_SKIP() << "SPOTROOSTER_MDB_SAMPLES is not set";
  MemoryFileSystem files;
  files.Put(kPath, ContentOf(witness::SamplePath(GetParam())));
  const auto database = OpenForWriting(files, u"password");
  const auto disagreements = [&] {
    return witness::Disagreements(*database, files.Get(kPath), witness::SamplePassword(GetParam()));
  };
  for (const std::u16string& name : database->TableNames()) {
    if (!CanWrite(*database, name)) continue;
    const Bytes before = files.Get(kPath);
    const std::set<std::uint32_t> mayChange = PagesThatMayChange(*database, name);
    Editor editor(*database, name, 11);
    for (int round = 0; round < 4 * test::LongTests(); ++round) {
      ASSERT_NO_FATAL_FAILURE(editor.Change(100)) << ToUtf8(name);
      ASSERT_EQ(Problems(*database), "") << ToUtf8(name) << " round " << round;
      ASSERT_NO_FATAL_FAILURE(editor.Verify());
      if (test::LongTests() == 1) continue;
      ASSERT_EQ(disagreements(), "") << ToUtf8(name) << " round " << round;
    }
    EXPECT_GT(editor.Done(), 20) << ToUtf8(name);
    EXPECT_EQ(ChangedOutside(mayChange, before, files.Get(kPath)), std::vector<std::uint32_t>{}) << ToUtf8(name);
  }
  EXPECT_EQ(disagreements(), "");
}

}  // namespace
}  // namespace jet

// SPDX-License-Identifier: MIT
// Every key of every index of real files must equal the key that this library builds for the row.
#include "platform/jet/index/IndexKey.h"
#include "platform/jet/pages/DataPage.h"
#include "platform/jet/pages/Files.h"
#include "platform/jet/pages/Pages.h"
#include "platform/jet/pages/UsageMap.h"
#include "platform/jet/rows/RowView.h"
#include "platform/jet/rows/StoredTable.h"
#include "platform/jet/values/Codec.h"
#include "platform/jet/values/Error.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

namespace jet {
namespace {

constexpr std::size_t kMask = 27;
constexpr std::size_t kEntries = 480;
constexpr std::size_t kPointer = 4;

// An independent index reader: all entries of one leaf, with their prefix.
std::vector<Bytes> LeafEntries(const PageBytes& page) {
  std::vector<Bytes> entries;
  const std::size_t prefix = LoadU16(&page[24]);
  std::size_t start = kEntries;
  for (std::size_t bit = 0; bit < (kEntries - kMask) * 8; ++bit) {
    if ((page[kMask + bit / 8] >> (bit % 8) & 1) == 0) continue;
    Bytes entry;
    if (!entries.empty()) entry.assign(entries[0].begin(), entries[0].begin() + static_cast<std::ptrdiff_t>(prefix));
    entry.insert(entry.end(), page.begin() + start, page.begin() + kEntries + bit);
    entries.push_back(entry);
    start = kEntries + bit;
  }
  return entries;
}

// The number of keys in a file that cannot equal ours, and why.
struct Sample {
  const char* name;
  int unknownCharacters = 0;  // the row's text has characters without a known weight
  int otherWriters = 0;       // written by a library that stores one accent for both weights of AE, TH and SS
};

void PrintTo(const Sample& sample, std::ostream* out) {
  *out << sample.name;
}

class SampleKeys : public testing::TestWithParam<Sample> {
 protected:
  void CompareEntry(PageSource& pages, const StoredTable& table, const StoredIndex& index, const Bytes& entry) try {
    const std::uint8_t* pointer = entry.data() + entry.size() - kPointer;
    const auto row = FindRow(pages, MakeRowId(LoadU24BigEndian(pointer), pointer[3]), true);
    ASSERT_TRUE(row.has_value());
    const RowView view(row->bytes, table);
    std::vector<Value> values(index.fields.size());
    for (std::size_t i = 0; i < values.size(); ++i)
      ReadField(pages, view, *table.ColumnByNumber(index.fields[i].column), values[i]);
    const bool same = BuildKey(table, index, values) == Bytes(entry.begin(), entry.end() - kPointer);
    ++(same ? same_ : different_);
  } catch (const Error& error) {
    if (error.Code() != ErrorCode::UnknownCharacter) throw;
    ++unknown_;
  }

  void CompareTable(PageSource& pages, const StoredTable& table) {
    for (const StoredIndex& index : table.realIndexes) {
      for (const std::uint32_t number : UsageMap::Read(pages, index.map).Members()) {
        const PageRef page = pages.Read(number);
        if ((*page)[0] != static_cast<std::uint8_t>(PageType::IndexLeaf)) continue;
        for (const Bytes& entry : LeafEntries(*page))
          CompareEntry(pages, table, index, entry);
      }
    }
  }

  int same_ = 0;
  int different_ = 0;
  int unknown_ = 0;
};

INSTANTIATE_TEST_SUITE_P(RealFiles, SampleKeys,
                         testing::Values(Sample{"adox_empty"}, Sample{"access2000_empty"}, Sample{"alltypes_big"},
                                         Sample{"many_columns"}, Sample{"composite_index"}, Sample{"relations"},
                                         Sample{"overflow_rows"}, Sample{"deleted_rows"}, Sample{"unicode_text", 2, 1},
                                         Sample{"numeric"}, Sample{"index_flags"}, Sample{"northwind"},
                                         Sample{"encoded"}, Sample{"password"}),
                         [](const auto& sample) { return sample.param.name; });

TEST_P(SampleKeys, AreRebuiltFromTheRows) {
  const char* folder = std::getenv("SPOTROOSTER_MDB_SAMPLES");
  if (folder == nullptr) GTEST_SKIP() << "SPOTROOSTER_MDB_SAMPLES is not set";
  const auto path = std::filesystem::path(folder) / (std::string(GetParam().name) + ".mdb");
  const auto file = HostFileSystem().Open(path, OpenMode::Read);
  Pages pages(*file);
  for (std::uint32_t number = 2; number < pages.PageCount(); ++number) {
    if ((*pages.Read(number))[0] != static_cast<std::uint8_t>(PageType::Definition)) continue;
    try {
      CompareTable(pages, ReadStoredTable(pages, number));
    } catch (const Error& error) {
      // A later page of a long definition looks like a first page, but does not parse.
      ASSERT_EQ(error.Code(), ErrorCode::Damaged) << error.what();
    }
  }
  RecordProperty("keys", same_);
  EXPECT_GT(same_, 20);
  EXPECT_EQ(different_, GetParam().otherWriters);
  EXPECT_EQ(unknown_, GetParam().unknownCharacters);
}

}  // namespace
}  // namespace jet

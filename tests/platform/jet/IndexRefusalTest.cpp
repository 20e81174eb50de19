// SPDX-License-Identifier: MIT
// Writing to a table with an index that cannot be updated is refused, naming the index, before any byte changes.
#include "platform/jet/table/TableWriter.h"
#include "platform/jet/values/Codec.h"
#include "tests/platform/jet/support/SampleTable.h"
#include "tests/platform/jet/support/TinyDatabase.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace jet {
namespace {

using test::FreshDatabase;
using test::MessageOf;

constexpr std::size_t kName = 1;  // positions in the columns of tblSpots
constexpr std::size_t kPhoto = 4;
const ColumnSet kEveryColumn = {0, 1, 2, 3, 4, 5};
// A definition: head, 12 bytes per index, 25 per column, column names, 52 per index.
constexpr std::size_t kHeadBytes = 63;
constexpr std::size_t kCountBytes = 12;
constexpr std::size_t kColumnBytes = 25;
constexpr std::size_t kIndexBytes = 52;

class IndexRefusal : public testing::Test {
 protected:
  void SetUp() override {
    fresh_.Create(test::SpotsTable());
    row_ = fresh_.Insert(kTable, test::Spot(u"Bakker"));
    def_ = fresh_->OpenTable(kTable).Def();
  }

  // Opens the file with one number of the table's definition replaced.
  void OpenWith(std::size_t place, std::uint16_t number) {
    Bytes content = fresh_.Files().Get(FreshDatabase::kPath);
    Store(&content[def_.page * kPageSize + place], number);
    files_.Put(FreshDatabase::kPath, content);
    OpenOptions options;
    options.writable = true;
    options.wait = test::NoSleep();
    database_ = Database::Open(FreshDatabase::kPath, options, files_);
    before_ = files_.Get(FreshDatabase::kPath);
  }

  std::size_t PlaceOfColumn(std::size_t column) const {
    return kHeadBytes + kCountBytes * def_.realIndexes.size() + kColumnBytes * column;
  }
  // The offset of the first field of the index on `column`.
  std::size_t PlaceOfIndexField(std::size_t column) const {
    std::size_t place = PlaceOfColumn(def_.columns.size());
    for (const StoredColumn& named : def_.columns)
      place += 2 + 2 * named.name.size();
    std::size_t index = 0;
    while (def_.realIndexes[index].fields.front().column != column)
      ++index;
    return place + kIndexBytes * index + 4;
  }

  void ExpectEveryWriteRefused(const std::string& why) {
    using Change = std::function<void(TableWriter&)>;
    std::vector<Value> row = test::Spot(u"Slager");
    const Change changes[] = {
        [&](TableWriter& writer) { writer.Insert(row); },
        [&](TableWriter& writer) { writer.Update(row_, row, std::vector<bool>(row.size(), true)); },
        [&](TableWriter& writer) { writer.Delete(row_); }, [&](TableWriter& writer) { writer.DeleteAll(); }};
    for (const Change& change : changes) {
      EXPECT_EQ(MessageOf([&] {
                  WriteTurn turn(*database_);
                  change(*database_->OpenWriter(kTable));
                  turn.Commit();
                }),
                why);
    }
    EXPECT_EQ(files_.Get(FreshDatabase::kPath), before_);
  }

  const std::u16string kTable = u"tblSpots";
  FreshDatabase fresh_;
  RowId row_ = 0;
  StoredTable def_;
  files::MemoryFileSystem files_;
  std::unique_ptr<Database> database_;
  Bytes before_;
};

TEST_F(IndexRefusal, OfAnUnknownSortOrderIsByNameAndChangesNothing) {
  constexpr std::uint16_t kJapanese = 0x0411;
  OpenWith(PlaceOfColumn(kName) + 11, kJapanese);
  EXPECT_EQ(database_->OpenTable(kTable).Fetch(row_, {kName}),
            std::optional(std::vector<Value>{std::u16string(u"Bakker")}));
  ExpectEveryWriteRefused(
      "Tabel 'tblSpots': index 'Naam' kan niet worden bijgehouden: veld 'Naam' heeft een sorteervolgorde die niet "
      "bekend is. Er wordt niet in de tabel geschreven.");
}

TEST_F(IndexRefusal, OfAnOleFieldIsByNameAndChangesNothing) {
  OpenWith(PlaceOfIndexField(kName), kPhoto);
  EXPECT_EQ(database_->OpenTable(kTable).Fetch(row_, kEveryColumn)->at(kPhoto), Value{});
  ExpectEveryWriteRefused(
      "Tabel 'tblSpots': index 'Naam' kan niet worden bijgehouden: veld 'Foto' is van een soort die hier niet in een "
      "index kan staan. Er wordt niet in de tabel geschreven.");
}

// The unchanged file is writable.
TEST_F(IndexRefusal, IsOnlyOfWhatCannotBeKept) {
  OpenWith(PlaceOfIndexField(kName), kName);
  WriteTurn turn(*database_);
  database_->OpenWriter(kTable)->Delete(row_);
  turn.Commit();
  EXPECT_EQ(database_->OpenTable(kTable).CountRows(), 0U);
}

}  // namespace
}  // namespace jet

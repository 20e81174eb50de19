// SPDX-License-Identifier: MIT
// A short run of the fuzz target "open, check, edit, save", and the kinds of damage with which it found bugs in the
// writer.
#include "tests/fuzz/EditDamaged.h"

#include "platform/jet/check/Check.h"
#include "platform/jet/pages/UsageMap.h"
#include "platform/jet/rows/RowBuilder.h"
#include "platform/jet/table/Catalog.h"
#include "platform/jet/table/PageClaims.h"
#include "platform/jet/table/TableWriter.h"
#include "platform/jet/values/Codec.h"
#include "tests/fuzz/EditBases.h"
#include "tests/platform/jet/support/FreeMapImage.h"
#include "tests/platform/jet/support/Rounds.h"
#include "tests/platform/jet/support/SampleTable.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <functional>
#include <memory>
#include <random>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

namespace jet {
namespace {

TEST(EditingDamagedFiles, MakesNothingWorse) {
  const int inputs = test::Rounds("SPOTROOSTER_EDITS", 500);
  std::mt19937 random(static_cast<unsigned>(test::Rounds("SPOTROOSTER_SEED", 1)));
  int damaged = 0;
  int committed = 0;
  int refused = 0;
  for (int i = 0; i < inputs; ++i) {
    std::vector<std::uint8_t> input(5 + random() % 55);
    for (std::uint8_t& byte : input)
      byte = static_cast<std::uint8_t>(random());
    try {
      const fuzz::EditOutcome outcome = fuzz::EditDamaged(input);
      damaged += outcome.damaged ? 1 : 0;
      committed += outcome.committed;
      refused += outcome.refused;
    } catch (const std::exception& broken) {
      ADD_FAILURE() << "input " << i << ": " << broken.what();
    }
  }
  std::printf("%d inputs, %d damaged files, %d statements carried out, %d refused\n", inputs, damaged, committed,
              refused);
  EXPECT_GT(damaged, inputs / 4);
  EXPECT_GT(committed, inputs / 4);
  EXPECT_GT(refused, inputs / 20);
}

// A memo column that a damaged definition makes a yes/no column: a null in it is stored as no.
TEST(EditingDamagedFiles, AColumnOfAnotherTypeKeepsWhatWasWritten) {
  const std::vector<std::uint8_t> input = {
      0x7F, 0xFF, 0x06, 0x51, 0x5E, 0x82, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0x01, 0xFF, 0xFF, 0xFF,
      0xFE, 0x51, 0x5E, 0x4A, 0x6D, 0x59, 0x64, 0xFF, 0xFF, 0xF9, 0xFF, 0xFF, 0x2D, 0xFF, 0xFF, 0x7F, 0xFF, 0xFF,
      0x00, 0x00, 0x00, 0x23, 0x23, 0x23, 0x23, 0x80, 0x00, 0x4C, 0x32, 0x00, 0x1C, 0x20, 0x14, 0x00, 0x00, 0x00,
      0x00, 0x00, 0x00, 0x00, 0x32, 0x32, 0x32, 0x32, 0x32, 0x32, 0x32, 0x32, 0x00, 0x1C, 0x20, 0x14, 0x07};
  EXPECT_GT(fuzz::EditDamaged(input).committed, 0);
}

// A map of free pages with one free page and used pages past the end of the file, as long as it reaches.
TEST(EditingDamagedFiles, UsingTheLastFreePageKeepsTheFileSound) {
  const std::vector<std::uint8_t> input = {
      0xF7, 0x80, 0x7F, 0x80, 0x00, 0x00, 0x3C, 0x00, 0x00, 0x1C, 0x06, 0x7E, 0x00, 0x00, 0x00, 0x1C, 0x1D, 0x2B,
      0x6D, 0x69, 0x4D, 0x53, 0x49, 0x53, 0x41, 0x4D, 0x20, 0x44, 0x61, 0x74, 0x34, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF,
      0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x28, 0x80,
      0x00, 0x02, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x22,
      0x1F, 0x1F, 0x06, 0x51, 0x64, 0x4A, 0x6D, 0x59, 0x64, 0x22, 0xB4, 0x00, 0x00, 0x1A};
  EXPECT_TRUE(fuzz::EditDamaged(input).damaged);
}

// A map that begins past the end of the file and has no free page: the file grew until its first page.
TEST(EditingDamagedFiles, AMapOfUsedPagesPastTheEndDoesNotEndTheGrowth) {
  const std::vector<std::uint8_t> input = {
      0xF7, 0xAF, 0xAF, 0x80, 0xAF, 0xAF, 0xAF, 0xAF, 0xAF, 0xAF, 0xAF, 0xAF, 0xAF, 0xAF, 0xAF, 0xAF, 0xAF, 0xAF, 0xAF,
      0xAF, 0xAF, 0x7F, 0x80, 0x00, 0x00, 0x05, 0x04, 0x00, 0x7F, 0x80, 0x00, 0xFB, 0xDA, 0xA9, 0x00, 0x0E, 0x61, 0x20,
      0x31, 0x39, 0x3A, 0x20, 0x73, 0x6F, 0x6F, 0xAF, 0xAF, 0xAF, 0xAF, 0xAF, 0xAF, 0xAF, 0xAF, 0xAF, 0xAF, 0xAF, 0xDF,
      0x7F, 0x4C, 0x4C, 0x4C, 0xF9, 0x01, 0x00, 0x1B, 0x07, 0x7A, 0xDF, 0x7F, 0x4C, 0x67, 0x67, 0x67, 0xB5, 0xB5, 0xB5,
      0x15, 0x15, 0x15, 0x15, 0x15, 0x15, 0x15, 0x15, 0x15, 0x15, 0x15, 0x15, 0x15, 0x15, 0x15, 0xAF, 0xAF, 0xAF, 0xAF,
      0xAF, 0xAF, 0xAF, 0xAF, 0xAF, 0xAF, 0x72, 0x74, 0xAB, 0x3F, 0x33, 0xFF, 0xFF, 0xC4, 0xC4, 0xC4, 0xC4, 0x5E, 0x4A,
      0x7F, 0x8F, 0x01, 0x7E, 0x60, 0x6B, 0x76, 0x6B, 0x79, 0xAF, 0x25, 0x0A, 0x00, 0x63, 0x4A, 0x66, 0x75, 0x7A, 0x7A,
      0x2E, 0x6D, 0x64, 0x62, 0x0F, 0x6D, 0x59, 0x00, 0x7F, 0x80, 0x00, 0x02, 0x56, 0xC4, 0xC4, 0xC4, 0xC4, 0x7F, 0x80,
      0x30, 0x30, 0x30, 0x30, 0x35, 0x35, 0x36, 0x33, 0x34, 0x31, 0x32, 0x33, 0x31, 0x41, 0x0A, 0x00, 0x0A};
  EXPECT_TRUE(fuzz::EditDamaged(input).damaged);
}

// One name has a character without a sort key, and another name does not match its key. As long as the first row
// exists, the check can only remark on the index; after its deletion the second is a problem that no edit caused.
TEST(EditingDamagedFiles, AnIndexThatIsHalfCheckedCountsAsDamaged) {
  constexpr std::uint8_t kLargerBase = 3;
  constexpr std::uint8_t kTwoDamages = 2 * 4;
  constexpr std::uint8_t kSetByte = 1;
  constexpr std::uint8_t kDeleteTwelve = 5;
  const std::vector<std::uint8_t> input = {kLargerBase + kTwoDamages,
                                           28,
                                           0x8C,
                                           0x7F,
                                           kSetByte,
                                           0xFF,
                                           34,
                                           0x8C,
                                           0x00,
                                           kSetByte,
                                           u'p',
                                           kDeleteTwelve,
                                           0,
                                           0,
                                           0,
                                           0,
                                           0,
                                           0,
                                           0,
                                           0,
                                           0,
                                           0,
                                           0,
                                           0};
  const fuzz::EditOutcome outcome = fuzz::EditDamaged(input);
  EXPECT_TRUE(outcome.damaged);
  EXPECT_EQ(outcome.committed, 1);
}

class DamagedBase : public testing::Test {
 protected:
  void SetUp() override {
    files_.Put(kPath, fuzz::SmallBase());
    const auto database = Open();
    spots_ = database->OpenTable(u"tblSpots").Def();
    items_ = database->OpenTable(u"tblItems").Def();
    itemPages_ = UsageMap::Read(database->Source(), items_.ownedMap).Members();
  }

  std::unique_ptr<Database> Open() { return Database::Open(kPath, fuzz::ForEditing(), files_); }

  // The offset of a map's row in the file.
  std::size_t PlaceOf(RowId map) {
    const std::size_t page = std::size_t{PageOf(map)} * kPageSize;
    return page + (LoadU16(&file_[page + kDataPageHead + 2 * SlotOf(map)]) & 0x1FFF);
  }
  void SetBit(RowId map, std::uint32_t page) {
    file_[PlaceOf(map) + 5 + page / 8] |= static_cast<std::uint8_t>(1U << (page % 8));
  }

  // Marks all pages that the map of free pages has a bit for as used, also those past the end of the file.
  void MarkAllUsed() {
    const std::size_t bits = PlaceOf(kGlobalMap) + 5;
    std::fill_n(file_.begin() + static_cast<std::ptrdiff_t>(bits), kMappedPages / 8, std::uint8_t{0});
  }

  std::string MessageOfEmptying() {
    files_.Put(kPath, file_);
    const auto database = Open();
    return test::MessageOf([&] {
      WriteTurn turn(*database);
      database->OpenWriter(u"tblSpots")->DeleteAll();
      turn.Commit();
    });
  }

  // The error of a change that needs a new page; checks that a refused change leaves the file as it was.
  std::string MessageOfGrowing() {
    files_.Put(kPath, file_);
    const auto database = Open();
    std::string message = test::MessageOf([&] {
      WriteTurn turn(*database);
      const auto writer = database->OpenWriter(u"tblSpots");
      std::vector<Value> row = fuzz::SpotRow(Value{}, u"nieuw", std::u16string(9000, u'\u20AC'));
      writer->Insert(row);
      turn.Commit();
    });
    if (!message.empty()) {
      EXPECT_EQ(files_.Get(kPath), file_);
    }
    return message;
  }

  static constexpr const char* kPath = "base.mdb";
  static constexpr RowId kGlobalMap = MakeRowId(1, 0);
  static constexpr std::size_t kMappedPages = 512;  // that the map of free pages of the base has a bit for
  files::MemoryFileSystem files_;
  Bytes file_ = fuzz::SmallBase();
  StoredTable spots_;
  StoredTable items_;
  std::vector<std::uint32_t> itemPages_;
};

TEST_F(DamagedBase, AUsedPageThatIsMarkedFreeIsNotAllocated) {
  SetBit(kGlobalMap, itemPages_.front());
  EXPECT_EQ(MessageOfGrowing(), "Tabel 'tblSpots': pagina " + std::to_string(itemPages_.front()) +
                                    ": is in gebruik, maar is als vrij gemarkeerd");
}

TEST_F(DamagedBase, APagePastTheEndInAMapIsReportedAndNotAllocated) {
  const auto next = static_cast<std::uint32_t>(file_.size() / kPageSize);
  SetBit(items_.ownedMap, next);
  EXPECT_NE(MessageOfGrowing(), "");
  EXPECT_TRUE(HasProblem(CheckDatabase(*Open())));
}

TEST_F(DamagedBase, AFreePageFarPastTheEndDoesNotMakeTheFileHuge) {
  MarkAllUsed();
  SetBit(kGlobalMap, 500);
  EXPECT_NE(MessageOfGrowing().find("voorbij het einde van het bestand"), std::string::npos);
}

// The only free page is inside the file; behind it the map has more used pages than a file may grow by.
TEST_F(DamagedBase, AMapWithoutAFreePagePastTheEndIsAProblemBeforeTheLastFreePageIsUsed) {
  const auto last = static_cast<std::uint32_t>(file_.size() / kPageSize);
  file_.resize(file_.size() + kPageSize);
  MarkAllUsed();
  SetBit(kGlobalMap, last);
  EXPECT_NE(MessageOfGrowing().find("voorbij het einde van het bestand"), std::string::npos);
  EXPECT_TRUE(HasProblem(CheckDatabase(*Open())));
}

TEST_F(DamagedBase, TheFileGrowsPastAFewPagesThatTheMapMarksAsUsed) {
  file_.resize((kMappedPages - 32) * kPageSize);
  MarkAllUsed();
  for (int row = 0; row < 10; ++row) {
    ASSERT_EQ(MessageOfGrowing(), "");
    file_ = files_.Get(kPath);
    ASSERT_FALSE(HasProblem(CheckDatabase(*Open())));
  }
  EXPECT_GT(file_.size(), kMappedPages * kPageSize);
}

TEST_F(DamagedBase, AMapThatIsTooShortForThePageIsDamage) {
  file_[PlaceOf(spots_.ownedMap)] = 1;  // a map by reference without bitmap pages
  EXPECT_NE(MessageOfGrowing(), "");
}

// An impossible map of free pages, and how to make it.
struct WrongFreeMap {
  const char* name;
  std::function<void(Bytes& file, std::size_t row)> make;
};

void PutBitmapPages(Bytes& file) {
  test::FreeMapImage(file).PutBitmapPages();
}

// The present place of the first row of page 1.
std::uint8_t* FreeMapRow(Bytes& file) {
  return &file[kPageSize + (LoadU16(&file[kPageSize + kDataPageHead]) & 0x1FFF)];
}

const WrongFreeMap kWrongFreeMaps[] = {
    {"begins at the last page number", [](Bytes& file, std::size_t row) { Store(&file[row + 1], ~0U); }},
    {"begins so that its end is page 2^32", [](Bytes& file, std::size_t row) { Store(&file[row + 1], 0xFFFFFE00U); }},
    {"begins past the largest file", [](Bytes& file, std::size_t row) { Store(&file[row + 1], 1U << 19); }},
    {"begins far past the end of the file", [](Bytes& file, std::size_t row) { Store(&file[row + 1], 4096U); }},
    {"marks its own page as free",
     [](Bytes& file, std::size_t) {
       PutBitmapPages(file);
       const auto own = static_cast<std::uint32_t>(file.size() / kPageSize - 1);
       std::uint8_t* bits = &file[own * kPageSize + 4];
       std::fill_n(bits, own / 8, std::uint8_t{0});
       bits[own / 8] |= static_cast<std::uint8_t>(1U << (own % 8));
     }},
    {"has a last bitmap page past 2^32 bytes",
     [](Bytes& file, std::size_t) {
       PutBitmapPages(file);
       Store(FreeMapRow(file) + 1 + 4 * 16, ~0U);
     }},
    {"names its bitmap page twice",
     [](Bytes& file, std::size_t) {
       PutBitmapPages(file);
       Store(FreeMapRow(file) + 5, LoadU32(FreeMapRow(file) + 1));
     }},
    {"calls every page taken that it has a bit for",
     [](Bytes& file, std::size_t) {
       PutBitmapPages(file);
       std::fill_n(&file[file.size() - kPageSize + 4], kPageSize - 4, std::uint8_t{0});
     }},
};

TEST_F(DamagedBase, AnImpossibleFreeMapIsAProblemAndNothingIsWritten) {
  const Bytes sound = file_;
  for (const WrongFreeMap& wrong : kWrongFreeMaps) {
    SCOPED_TRACE(wrong.name);
    file_ = sound;
    wrong.make(file_, PlaceOf(kGlobalMap));
    EXPECT_NE(MessageOfGrowing(), "");
    EXPECT_TRUE(HasProblem(CheckDatabase(*Open())));
  }
}

// Counts the rows of tblSpots and requires that the check finds no problem.
std::size_t CountSoundly(Database& database) {
  EXPECT_FALSE(HasProblem(CheckDatabase(database)));
  return database.OpenTable(u"tblSpots").CountRows();
}

TEST_F(DamagedBase, AnEmptiedIndexPageThatIsStillInItsMapIsRemovedFromIt) {
  const auto page = static_cast<std::uint32_t>(file_.size() / kPageSize);
  file_.resize(file_.size() + kPageSize);  // a page of zeros, which the map of free pages marks as free
  const RowId map = spots_.realIndexes[0].map;
  SetBit(map, page);
  files_.Put(kPath, file_);
  EXPECT_EQ(CountSoundly(*Open()), 4U);
  EXPECT_EQ(MessageOfGrowing(), "");
  EXPECT_EQ(CountSoundly(*Open()), 5U);
  EXPECT_FALSE(UsageMap::Read(Open()->Source(), map).Contains(page));
}

TEST_F(DamagedBase, AnEmptiedIndexPageThatIsStillInItsMapDoesNotPreventEmptyingTheTable) {
  const auto page = static_cast<std::uint32_t>(file_.size() / kPageSize);
  file_.resize(file_.size() + kPageSize);
  SetBit(spots_.realIndexes[0].map, page);
  EXPECT_EQ(MessageOfEmptying(), "");
  EXPECT_EQ(CountSoundly(*Open()), 0U);
}

TEST_F(DamagedBase, AnIndexWhoseRootIsNoIndexPageIsNotEmptied) {
  const StoredIndex& index = spots_.realIndexes[0];
  Bytes references(8);
  Store(&references[0], index.map);
  Store(&references[4], index.root);
  const auto begin = file_.begin() + static_cast<std::ptrdiff_t>(spots_.page * kPageSize);
  const auto end = begin + static_cast<std::ptrdiff_t>(kPageSize);
  const auto place = std::search(begin, end, references.begin(), references.end());
  ASSERT_NE(place, end);
  for (const std::uint32_t other : {kObjectsTable, items_.page, itemPages_.front(), items_.realIndexes[0].root}) {
    Store(&*place + 4, other);
    EXPECT_NE(MessageOfEmptying(), "") << other;
    EXPECT_EQ(files_.Get(kPath), file_) << other;
  }
}

TEST_F(DamagedBase, AnAutonumberOfAnotherKindIsNoAutonumber) {
  const std::size_t columns = 63 + 12 * spots_.realIndexes.size();
  file_[std::size_t{spots_.page} * kPageSize + columns] = static_cast<std::uint8_t>(ColumnType::Single);
  EXPECT_NE(MessageOfGrowing(), "");
}

TEST_F(DamagedBase, AnOverlappingFieldIsNotWritten) {
  StoredTable overlapping = spots_;
  overlapping.columns[2].flags |= column_flag::kFixed;
  EXPECT_THROW(RowBuilder{overlapping}, Error);
  StoredTable shared = spots_;
  shared.columns[2].variableIndex = shared.columns[1].variableIndex;
  EXPECT_THROW(RowBuilder{shared}, Error);
  EXPECT_NO_THROW(RowBuilder{spots_});
}

TEST_F(DamagedBase, WhenADefinitionIsUnreadableOnlyBlankPagesAreAllocated) {
  file_[std::size_t{items_.page} * kPageSize] = 7;
  SetBit(kGlobalMap, itemPages_.front());
  files_.Put(kPath, file_);
  const auto database = Open();
  EXPECT_EQ(FindDoubtfulFreePages(database->Source()).inUse, std::set<std::uint32_t>{itemPages_.front()});
}

TEST_F(DamagedBase, ALongValueOfAnotherTableIsNotFreed) {
  // The memo of the last spot references a long value of tblItems.
  const RowId foreign = MakeRowId(UsageMap::Read(Open()->Source(), items_.columns[1].ownedMap).Members().front(), 0);
  const auto page = UsageMap::Read(Open()->Source(), spots_.ownedMap).Members().front();
  const auto begin = file_.begin() + static_cast<std::ptrdiff_t>(page * kPageSize);
  const Bytes length = {0x10, 0x27, 0, 0};  // 10000 bytes in several pieces
  const auto head = std::search(begin, begin + kPageSize, length.begin(), length.end());
  ASSERT_NE(head, begin + kPageSize);
  Store(&*head, std::uint32_t{100} | 0x40000000);
  Store(&*head + 4, foreign);
  files_.Put(kPath, file_);
  const auto database = Open();
  const Table spots = database->OpenTable(u"tblSpots");
  TableCursor cursor = spots.Scan({});
  RowId last = 0;
  while (cursor.Next())
    last = cursor.Id();
  EXPECT_NE(test::MessageOf([&] {
              WriteTurn turn(*database);
              database->OpenWriter(u"tblSpots")->Delete(last);
              turn.Commit();
            }),
            "");
  EXPECT_EQ(files_.Get(kPath), file_);
}

}  // namespace
}  // namespace jet

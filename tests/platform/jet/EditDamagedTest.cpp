// A short run of the fuzz target "open, check, edit, save", and the damages that it once found the writer to fall for.
#include "fuzz/EditDamaged.h"

#include "fuzz/EditBases.h"
#include "platform/jet/Check.h"
#include "platform/jet/Codec.h"
#include "platform/jet/PageClaims.h"
#include "platform/jet/RowBuilder.h"
#include "platform/jet/UsageMap.h"
#include "tests/platform/jet/support/Rounds.h"
#include "tests/platform/jet/support/SampleTable.h"

#include <gtest/gtest.h>

#include <cstdio>
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
    } catch (const std::logic_error& broken) {
      ADD_FAILURE() << "input " << i << ": " << broken.what();
    }
  }
  std::printf("%d inputs, %d damaged files, %d statements carried out, %d refused\n", inputs, damaged, committed,
              refused);
  EXPECT_GT(damaged, inputs / 4);
  EXPECT_GT(committed, inputs / 4);
  EXPECT_GT(refused, inputs / 20);
}

// One name has a character without a sort key, another name is not what its key says. While the first row is there, the
// check can only remark on the index; once it is deleted, the second is a finding that no edit brought about.
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

  /// Where the bytes of a map's row lie in the file.
  std::size_t PlaceOf(RowId map) {
    const std::size_t page = std::size_t{PageOf(map)} * kPageSize;
    return page + (LoadU16(&file_[page + kDataPageHead + 2 * SlotOf(map)]) & 0x1FFF);
  }
  void SetBit(RowId map, std::uint32_t page) {
    file_[PlaceOf(map) + 5 + page / 8] |= static_cast<std::uint8_t>(1U << (page % 8));
  }

  /// What becomes of a change that needs a new page. The file is as it was when that is refused.
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
  MemoryFileSystem files_;
  Bytes file_ = fuzz::SmallBase();
  TableDef spots_;
  TableDef items_;
  std::vector<std::uint32_t> itemPages_;
};

TEST_F(DamagedBase, AUsedPageThatIsCalledFreeIsNotTaken) {
  SetBit(kGlobalMap, itemPages_.front());
  EXPECT_EQ(MessageOfGrowing(), "Tabel 'tblSpots': pagina " + std::to_string(itemPages_.front()) +
                                    ": is in gebruik, maar staat als vrij te boek");
}

TEST_F(DamagedBase, APageThatAMapNamesPastTheEndIsToldAndNotTaken) {
  const auto next = static_cast<std::uint32_t>(file_.size() / kPageSize);
  SetBit(items_.ownedMap, next);
  EXPECT_NE(MessageOfGrowing(), "");
  EXPECT_TRUE(HasProblem(CheckDatabase(*Open())));
}

TEST_F(DamagedBase, AFreePageFarPastTheEndDoesNotMakeTheFileHuge) {
  const std::size_t bits = PlaceOf(kGlobalMap) + 5;
  std::fill_n(file_.begin() + static_cast<std::ptrdiff_t>(bits), 60, std::uint8_t{0});
  EXPECT_EQ(MessageOfGrowing(), "Tabel 'tblSpots': pagina 1: de kaart van vrije pagina's is niet in orde");
}

TEST_F(DamagedBase, AMapThatIsTooShortForThePageIsDamage) {
  file_[PlaceOf(spots_.ownedMap)] = 1;  // names bitmap pages now, and none of them
  EXPECT_NE(MessageOfGrowing(), "");
}

TEST_F(DamagedBase, AFieldThatLiesInAnotherIsNotWritten) {
  TableDef overlapping = spots_;
  overlapping.columns[2].flags |= column_flag::kFixed;
  EXPECT_THROW(RowBuilder{overlapping}, Error);
  TableDef shared = spots_;
  shared.columns[2].variableIndex = shared.columns[1].variableIndex;
  EXPECT_THROW(RowBuilder{shared}, Error);
  EXPECT_NO_THROW(RowBuilder{spots_});
}

TEST_F(DamagedBase, WhenADefinitionCannotBeReadNoFreePageThatHoldsSomethingIsTaken) {
  file_[std::size_t{items_.page} * kPageSize] = 7;
  SetBit(kGlobalMap, itemPages_.front());
  files_.Put(kPath, file_);
  const auto database = Open();
  EXPECT_EQ(FindWronglyFreePages(database->Source()), std::set<std::uint32_t>{itemPages_.front()});
}

TEST_F(DamagedBase, ALongValueOfAnotherTableIsNotReleased) {
  // The memo of the last spot points to a long value of the items.
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

// SPDX-License-Identifier: MIT
// Only a journal that a writer of this file can have left is trusted.
#include "platform/files/MemoryFileSystem.h"
#include "platform/jet/pages/Files.h"
#include "platform/jet/values/Codec.h"
#include "platform/jet/values/Error.h"
#include "tests/platform/jet/support/Places.h"
#include "tests/platform/jet/support/SampleTable.h"
#include "tests/platform/jet/support/TinyDatabase.h"
#include "tests/platform/jet/support/Wreck.h"

#include <gtest/gtest.h>

#include <cstring>
#include <functional>
#include <string>
#include <vector>

namespace jet {
namespace {

using test::PagesAfterReopening;
using Values = std::vector<std::uint32_t>;

using test::kJournal;
using test::kPath;
constexpr const char* kKept = "/data/station.mdb-journal-1";
constexpr std::size_t kHead = 40;
constexpr std::size_t kRecord = 4232;

struct Forgery {
  const char* name;
  std::function<void(Bytes&)> change;
};

void PrintTo(const Forgery& forgery, std::ostream* out) {
  *out << forgery.name;
}

// A complete journal with the right checksum that this library cannot have written.
class ForgedJournal : public testing::TestWithParam<Forgery> {
 protected:
  void SetUp() override {
    const test::Wreck wreck = test::CrashMidway();
    database_ = wreck.database;
    Bytes journal = wreck.journal;
    GetParam().change(journal);
    journal_ = test::WithSum(journal);
    memory_.Put(kPath, database_);
    memory_.Put(kJournal, journal_);
  }

  Bytes database_;
  Bytes journal_;
  files::MemoryFileSystem memory_;
};

std::uint8_t* RecordOf(Bytes& journal, std::size_t i) {
  return &journal[kHead + i * kRecord];
}

void KeepRecords(Bytes& journal, std::size_t first, std::size_t count) {
  const Bytes kept(journal.begin() + static_cast<std::ptrdiff_t>(kHead + first * kRecord),
                   journal.begin() + static_cast<std::ptrdiff_t>(kHead + (first + count) * kRecord));
  journal.resize(kHead);
  journal.insert(journal.end(), kept.begin(), kept.end());
  Store(&journal[8], static_cast<std::uint32_t>(count));
}

INSTANTIATE_TEST_SUITE_P(
    Of, ForgedJournal,
    testing::Values(
        Forgery{"Nothing",
                [](Bytes& journal) {
                  KeepRecords(journal, 0, 0);
                  Store(&journal[16], std::uint64_t{0});
                }},
        Forgery{"NoFirstPage", [](Bytes& journal) { KeepRecords(journal, 1, 2); }},
        Forgery{"APageTwice", [](Bytes& journal) { std::memcpy(RecordOf(journal, 2), RecordOf(journal, 1), kRecord); }},
        Forgery{"APagePastTheEnd", [](Bytes& journal) { Store(RecordOf(journal, 2), std::uint32_t{4}); }},
        Forgery{"HalfAPage", [](Bytes& journal) { Store(&journal[16], std::uint64_t{4 * kPageSize - 512}); }},
        Forgery{"AnEndBeforeItsBeginning", [](Bytes& journal) { Store(&journal[24], std::uint64_t{kPageSize}); }},
        Forgery{"AnEndTooFar", [](Bytes& journal) { Store(&journal[24], std::uint64_t{1} << 40); }}),
    [](const testing::TestParamInfo<Forgery>& one) { return std::string(one.param.name); });

TEST_P(ForgedJournal, ChangesNoByteAndIsKeptUnderAnotherName) {
  EXPECT_NE(test::MessageOf([&] { PagesAfterReopening(memory_, kPath); }).find(kKept), std::string::npos);
  EXPECT_EQ(memory_.Get(kPath), database_);
  EXPECT_EQ(memory_.Get(kKept), journal_);
  EXPECT_EQ(test::MessageOf([&] { PagesAfterReopening(memory_, kPath); }), "");
  EXPECT_EQ(memory_.Get(kPath), database_);
}

TEST_P(ForgedJournal, IsNotUsedForAReadOnlyFile) {
  EXPECT_NE(test::MessageOf([&] { Storage(kPath, test::TestOptions(true), memory_); }).find(kJournal),
            std::string::npos);
  EXPECT_EQ(memory_.Get(kJournal), journal_);
}

// The permissions of the database and the owner of the journal; the database belongs to user 1001 and group 2000.
struct JournalWriter {
  const char* name;
  unsigned permissions;
  std::uint32_t owner;
  std::uint32_t group;
  bool mayWrite;
};

void PrintTo(const JournalWriter& writer, std::ostream* out) {
  *out << writer.name;
}

class JournalOf : public testing::TestWithParam<JournalWriter> {};

INSTANTIATE_TEST_SUITE_P(A, JournalOf,
                         testing::Values(JournalWriter{"TheOwner", 0644, 1001, 3000, true},
                                         JournalWriter{"Root", 0600, 0, 0, true},
                                         JournalWriter{"AMemberOfTheGroup", 0660, 1002, 2000, true},
                                         JournalWriter{"AMemberWhoMayOnlyRead", 0640, 1002, 2000, false},
                                         JournalWriter{"AnotherWhereAllMayWrite", 0666, 1003, 3000, true},
                                         JournalWriter{"AnotherWhereTheGroupMayWrite", 0664, 1003, 3000, false}),
                         [](const testing::TestParamInfo<JournalWriter>& one) { return std::string(one.param.name); });

TEST_P(JournalOf, IsTrustedWhenThatUserMayWriteTheDatabase) {
  const test::Wreck wreck = test::CrashMidway();
  files::MemoryFileSystem memory;
  memory.Put(kPath, wreck.database);
  memory.Put(kJournal, wreck.journal);
  const auto database = memory.Open(kPath, OpenMode::Write);
  database->RawSetOwner(1001, 2000);
  database->RawSetPermissions(GetParam().permissions);
  memory.Open(kJournal, OpenMode::Write)->RawSetOwner(GetParam().owner, GetParam().group);
  for (const bool readOnly : {true, false}) {
    const std::string message =
        test::MessageOf([&] { EXPECT_EQ(Storage(kPath, test::TestOptions(readOnly), memory).IsReadOnly(), readOnly); });
    EXPECT_EQ(message.empty(), GetParam().mayWrite) << message;
  }
  if (GetParam().mayWrite) {
    EXPECT_EQ(PagesAfterReopening(memory, kPath), test::PagesBefore());
  } else {
    EXPECT_EQ(memory.Get(kPath), wreck.database);
    EXPECT_EQ(memory.Get(kJournal), wreck.journal);
  }
}

class StaleJournal : public testing::Test {
 protected:
  // An older copy is restored over the file, but the journal remains.
  void SetUp() override {
    memory_.Put(kPath, test::TinyDatabase({7, 8, 9, 10, 11}));
    memory_.Put(kJournal, test::CrashMidway().journal);
  }

  files::MemoryFileSystem memory_;
};

TEST_F(StaleJournal, IsNotUsedForARestoredCopy) {
  const std::string message = test::MessageOf([&] {
    Storage reader(kPath, test::TestOptions(true), memory_);
    const ReadTurn reading(reader);
    EXPECT_EQ(test::PagesOf(reader.Source()), (Values{7, 8, 9, 10, 11}));
  });
  EXPECT_NE(message.find(kJournal), std::string::npos) << message;
}

TEST_F(StaleJournal, IsRenamedByTheFirstWriter) {
  EXPECT_NE(test::MessageOf([&] { PagesAfterReopening(memory_, kPath); }).find(kKept), std::string::npos);
  EXPECT_EQ(PagesAfterReopening(memory_, kPath), (Values{7, 8, 9, 10, 11}));
  Storage reader(kPath, test::TestOptions(true), memory_);
  EXPECT_EQ(test::PagesOf(reader.Source()), (Values{7, 8, 9, 10, 11}));
}

// As after a power cut before the journal was synced: the file has not been changed yet.
TEST(Journal, WithAPageThatWasNotWrittenCompletelyIsDiscarded) {
  const Bytes before = test::TinyDatabase(test::PagesBefore());
  Bytes journal = test::CrashMidway(before).journal;
  RecordOf(journal, 1)[136 + 1000] ^= 1;
  files::MemoryFileSystem memory;
  memory.Put(kPath, before);
  memory.Put(kJournal, journal);
  EXPECT_EQ(PagesAfterReopening(memory, kPath), test::PagesBefore());
  EXPECT_EQ(memory.Get(kPath), before);
  EXPECT_FALSE(memory.Exists(kJournal));
}

// Left by an earlier version of the program that was killed.
TEST(Journal, OfTheFirstFormUndoesTheChange) {
  const Bytes before = test::TinyDatabase(test::PagesBefore());
  const test::Wreck wreck = test::CrashMidway(before);
  files::MemoryFileSystem memory;
  memory.Put(kPath, wreck.database);
  memory.Put(kJournal, test::InFirstForm(wreck.journal));
  EXPECT_EQ(PagesAfterReopening(memory, kPath), test::PagesBefore());
  EXPECT_EQ(memory.Get(kPath), before);
  EXPECT_FALSE(memory.Exists(kJournal));
}

TEST(Journal, OfTheFirstFormThatWasNotWrittenCompletelyIsDiscarded) {
  const Bytes before = test::TinyDatabase(test::PagesBefore());
  Bytes journal = test::InFirstForm(test::CrashMidway(before).journal);
  RecordOf(journal, 1)[136 + 1000] ^= 1;
  files::MemoryFileSystem memory;
  memory.Put(kPath, before);
  memory.Put(kJournal, journal);
  EXPECT_EQ(PagesAfterReopening(memory, kPath), test::PagesBefore());
  EXPECT_FALSE(memory.Exists(kJournal));
}

TEST(Journal, AnUnrelatedFileOfThatNameIsKept) {
  const std::string text = "Notulen van de redactie, niet weggooien: dit bestand heet toevallig zo.";
  files::MemoryFileSystem memory;
  memory.Put(kPath, test::TinyDatabase({1}));
  memory.Put(kJournal, Bytes(text.begin(), text.end()));
  EXPECT_NE(test::MessageOf([&] { PagesAfterReopening(memory, kPath); }).find(kKept), std::string::npos);
  EXPECT_EQ(memory.Get(kKept), Bytes(text.begin(), text.end()));
  EXPECT_EQ(PagesAfterReopening(memory, kPath), Values{1});
}

}  // namespace
}  // namespace jet

// SPDX-License-Identifier: MIT
// The journal of a change that takes free pages has no old content of these, and the change can be undone all the same.
#include "platform/jet/pages/ReusedPages.h"

#include "platform/jet/pages/FreePages.h"
#include "platform/jet/pages/UsageMap.h"
#include "platform/jet/values/Codec.h"
#include "platform/jet/values/Error.h"
#include "tests/fuzz/EditBases.h"
#include "tests/platform/jet/support/CopyTables.h"
#include "tests/platform/jet/support/FaultyFiles.h"
#include "tests/platform/jet/support/Places.h"
#include "tests/platform/jet/support/PowerCut.h"
#include "tests/platform/jet/support/Rounds.h"
#include "tests/platform/jet/support/TableText.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <random>
#include <set>
#include <vector>

namespace jet {
namespace {

using test::FaultyFiles;
using test::kJournal;
using test::kPath;
using Change = FaultyFiles::Change;
using Numbers = std::vector<std::uint32_t>;
using Work = std::function<void(Database&)>;

void Do(
    FileSystem& files, const std::vector<Work>& works, const std::function<void()>& after = [] {}) {
  const auto database = Database::Open(kPath, fuzz::ForEditing(), files);
  for (const Work& work : works) {
    WriteTurn turn(*database);
    work(*database);
    turn.Commit();
    after();
  }
}

std::vector<Change> ChangesOf(const Bytes& base, const Work& work) {
  files::MemoryFileSystem memory;
  memory.Put(kPath, base);
  FaultyFiles files(memory);
  std::vector<Change> changes;
  files.Record(&changes);
  Do(files, {work});
  return changes;
}

std::set<std::uint32_t> FreeIn(const Bytes& base) {
  files::MemoryFileSystem memory;
  memory.Put(kPath, base);
  const auto database = Database::Open(kPath, {}, memory);
  const ReadTurn turn(*database);
  const Numbers members = UsageMap::Read(database->Source(), kFreePagesMap).Members();
  return {members.begin(), members.end()};
}

Numbers PagesWritten(const std::vector<Change>& changes) {
  Numbers pages;
  for (const Change& change : changes) {
    if (change.kind != Change::Write || change.path != kPath) continue;
    for (std::uint64_t at = 0; at < change.bytes.size(); at += kPageSize)
      pages.push_back(static_cast<std::uint32_t>((change.offset + at) / kPageSize));
  }
  return pages;
}

// The pages with an image in the journal.
Numbers PagesJournalled(const std::vector<Change>& changes) {
  Numbers pages;
  for (const Change& change : changes) {
    if (change.kind != Change::Write || change.path != kJournal) continue;
    for (std::size_t at = 40; at < change.bytes.size(); at += 4232)
      pages.push_back(LoadU32(&change.bytes[at]));
  }
  return pages;
}

Numbers Among(const Numbers& pages, const std::set<std::uint32_t>& wanted) {
  Numbers found;
  std::ranges::copy_if(pages, std::back_inserter(found), [&](std::uint32_t page) { return wanted.contains(page); });
  return found;
}

TEST(ReusedPages, OnlyTheLowestIsInTheJournal) {
  const std::set<std::uint32_t> free = FreeIn(test::EmptiedCopy());
  const std::vector<Change> changes = ChangesOf(test::EmptiedCopy(), test::CopyRows);
  Numbers taken = Among(PagesWritten(changes), free);
  std::sort(taken.begin(), taken.end());
  ASSERT_GT(taken.size(), 5U);
  EXPECT_EQ(Among(PagesJournalled(changes), free), Numbers{taken.front()});
}

TEST(ReusedPages, ThoseThatTheSameChangeFreedAreInTheJournal) {
  const auto replace = [](Database& database) {
    test::EmptyCopy(database);
    test::CopyRows(database);
  };
  const std::vector<Change> changes = ChangesOf(test::FilledCopy(), replace);
  const std::set<std::uint32_t> used = FreeIn(test::EmptiedCopy());
  Numbers written = PagesWritten(changes);
  Numbers journalled = PagesJournalled(changes);
  std::sort(written.begin(), written.end());
  EXPECT_GT(Among(written, used).size(), 5U);
  EXPECT_EQ(journalled, written);
}

// Such a page is sound only as long as it is blank.
TEST(ReusedPages, OneThatAnIndexStillListsIsInTheJournal) {
  files::MemoryFileSystem memory;
  memory.Put(kPath, test::EmptiedCopy());
  const auto database = Database::Open(kPath, {}, memory);
  const ReadTurn turn(*database);
  const std::set<std::uint32_t> free = FreeIn(test::EmptiedCopy());
  static std::uint32_t listed = 0;
  listed = *free.begin();
  const std::uint32_t other = *std::next(free.begin());
  DoubtfulFreePagesOfFile doubtful{[](PageSource&) {
                                     DoubtfulFreePages found;
                                     found.stillInIndexMap.emplace(listed, MakeRowId(2, 0));
                                     return found;
                                   },
                                   {}};
  Transaction change(database->Source(), &doubtful);
  change.Renew(listed);
  change.Renew(other);
  change.Renew(change.Append());
  EXPECT_EQ(ReusedPages(change), Numbers{other});
}

// The cache may have a free page as it was before a change that another program undid.
TEST(ReusedPages, TheOldContentInTheJournalIsThatOfTheFile) {
  const std::uint32_t lowest = *FreeIn(test::EmptiedCopy()).begin();
  files::MemoryFileSystem memory;
  memory.Put(kPath, test::EmptiedCopy());
  int reads = 0;
  files::HookedFileSystem files(memory, [&](files::FileCall& call, const files::HookedFileSystem::Make& make) {
    if (call.kind == files::FileCall::Read && call.path == kPath && call.offset == std::uint64_t{lowest} * kPageSize)
      ++reads;
    return make();
  });
  const auto database = Database::Open(kPath, fuzz::ForEditing(), files);
  WriteTurn turn(*database);
  database->Source().Read(lowest);
  EXPECT_EQ(reads, 1);
  test::CopyRows(*database);
  turn.Commit();
  EXPECT_EQ(reads, 2);
}

TEST(ReusedPages, AProgramThatTookTheSameOnesAfterACrashIsRecognised) {
  for (int call = 0;; ++call) {
    files::MemoryFileSystem memory;
    memory.Put(kPath, test::EmptiedCopy());
    FaultyFiles files(memory);
    files.FailAt(call, test::Fault::Dead);
    EXPECT_THROW(Do(files, {test::CopyRows}), Error);
    if (memory.Get(kPath) == test::EmptiedCopy()) continue;
    Bytes foreign = memory.Get(kPath);
    foreign[std::size_t{*FreeIn(test::EmptiedCopy()).begin()} * kPageSize + 700] ^= 1;
    memory.Put(kPath, foreign);
    EXPECT_THROW(Database::Open(kPath, fuzz::ForEditing(), memory), Error);
    EXPECT_EQ(memory.Get(kPath), foreign);
    return;
  }
}

TEST(PowerCut, WhileFreePagesAreFilledLeavesTheOldOrTheNewRows) {
  files::MemoryFileSystem memory;
  memory.Put(kPath, test::EmptiedCopy());
  FaultyFiles files(memory);
  std::vector<Change> changes;
  std::vector<std::size_t> acknowledged;
  std::vector<witness::Tables> states = {test::StateOf(memory)};
  files.Record(&changes);
  const auto insert = [](Database& database) {
    test::EmptyCopy(database);
    std::vector<Value> row = fuzz::SpotRow(Value{}, u"nieuw", std::u16string(6000, u'\u20AC'));
    database.OpenWriter(u"tblSpots")->Insert(row);
    test::CopyRows(database);
  };
  Do(files, {test::CopyRows, insert, test::EmptyCopy, test::CopyRows}, [&] {
    acknowledged.push_back(changes.size());
    files::MemoryFileSystem now;
    now.Put(kPath, memory.Get(kPath));
    states.push_back(test::StateOf(now));
  });
  std::mt19937 random(static_cast<unsigned>(test::Rounds("SPOTROOSTER_SEED", 7)));
  const int rounds = std::max(100, test::Rounds("SPOTROOSTER_POWER_CUTS", 3000) / 10);
  int rolledBack = 0;
  for (int i = 0; i < rounds; ++i) {
    const std::size_t cut = random() % (changes.size() + 1);
    files::MemoryFileSystem disk;
    test::ReplayUntil(changes, cut, {{kPath, test::EmptiedCopy()}}, random, disk);
    rolledBack += disk.Exists(kJournal) ? 1 : 0;
    const witness::Tables after = test::StateOf(disk);
    const auto done = static_cast<std::size_t>(
        std::count_if(acknowledged.begin(), acknowledged.end(), [&](std::size_t end) { return end <= cut; }));
    const bool isNext = done + 1 < states.size() && after == states[done + 1];
    ASSERT_TRUE(after == states[done] || isNext) << "cut at " << cut << ", round " << i;
  }
  EXPECT_GT(rolledBack, rounds / 10);
  std::printf("%d power cuts while free pages are filled, %d with a journal\n", rounds, rolledBack);
}

}  // namespace
}  // namespace jet

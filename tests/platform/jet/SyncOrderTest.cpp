// SPDX-License-Identifier: MIT
// The order in which a change is written to the disk. The power may be cut between any two steps.
#include "platform/jet/values/Error.h"
#include "tests/platform/jet/support/FaultyFiles.h"
#include "tests/platform/jet/support/Places.h"
#include "tests/platform/jet/support/TinyDatabase.h"
#include "tests/platform/jet/support/Wreck.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace jet {
namespace {

using test::FaultyFiles;
using Change = FaultyFiles::Change;
using Steps = std::vector<std::string>;

using test::kJournal;
using test::kPath;

void ChangePages(FileSystem& files) {
  Storage storage(kPath, test::TestOptions(), files);
  WriteTurn writing(storage);
  test::Fill(storage, 1, 10);
  test::Fill(storage, 3, 30);
  test::Fill(storage, 4, 40);
  writing.Commit();
}

std::string NameOf(const Change& change) {
  if (change.path == kPath) return "database";
  if (change.path == kJournal) return "journal";
  return change.path.string();
}

std::string StepOf(const Change& change) {
  constexpr const char* kVerbs[] = {"write ", "truncate ", "sync ", "create ", "remove ", "rename ", "sync "};
  return kVerbs[change.kind] + NameOf(change);
}

// The file calls of the work, consecutive page writes as one. The lock file is left out: it need not be durable.
template <class Work>
Steps StepsOf(files::MemoryFileSystem& memory, Work work) {
  FaultyFiles files(memory);
  std::vector<Change> changes;
  files.Record(&changes);
  work(files);
  Steps steps;
  for (const Change& change : changes) {
    if (change.path.extension() == ".ldb") continue;
    const std::string step = StepOf(change);
    if (steps.empty() || steps.back() != step) steps.push_back(step);
  }
  return steps;
}

TEST(SyncOrder, TheFolderIsSyncedBeforeTheFirstOverwriteAndAfterTheJournalIsGone) {
  files::MemoryFileSystem memory;
  memory.Put(kPath, test::TinyDatabase({1, 2, 3}));
  EXPECT_EQ(StepsOf(memory, ChangePages), (Steps{"create journal", "write journal", "sync journal", "sync /data",
                                                 "write database", "sync database", "remove journal", "sync /data"}));
}

// On a full disk this fails before a page is overwritten.
TEST(SyncOrder, TheNewEndOfTheFileIsWrittenFirstAndNeighboursTogether) {
  files::MemoryFileSystem memory;
  memory.Put(kPath, test::TinyDatabase({1, 2, 3}));
  FaultyFiles files(memory);
  std::vector<Change> changes;
  files.Record(&changes);
  {
    Storage storage(kPath, test::TestOptions(), files);
    test::ChangePages(storage);
  }
  Steps writes;
  for (const Change& change : changes) {
    if (change.kind != Change::Write || change.path != kPath) continue;
    writes.push_back(std::to_string(change.bytes.size() / kPageSize) + " from " +
                     std::to_string(change.offset / kPageSize));
  }
  EXPECT_EQ(writes, (Steps{"2 from 4", "2 from 0", "1 from 3"}));
}

TEST(SyncOrder, ARecoveryIsSyncedBeforeTheJournalGoesAndTheFolderAfterIt) {
  const Bytes old = test::TinyDatabase({1, 2, 3});
  files::MemoryFileSystem memory;
  memory.Put(kPath, old);
  // Killed one call later each time, until it was overwriting pages.
  for (int call = 0; memory.Get(kPath) == old; ++call) {
    memory.Put(kPath, old);
    if (memory.Exists(kJournal)) memory.Remove(kJournal);
    FaultyFiles files(memory);
    files.FailAt(call, test::Fault::Dead);
    EXPECT_THROW(ChangePages(files), Error);
  }
  EXPECT_EQ(StepsOf(memory, [](FileSystem& files) { test::PagesAfterReopening(files, kPath); }),
            (Steps{"write database", "truncate database", "sync database", "remove journal", "sync /data"}));
  EXPECT_EQ(memory.Get(kPath), old);
}

}  // namespace
}  // namespace jet

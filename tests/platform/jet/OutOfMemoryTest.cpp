// SPDX-License-Identifier: MIT
// A change or a read that runs out of memory changes nothing, and the same program and others continue afterwards.
#include "platform/jet/values/Error.h"
#include "tests/platform/jet/support/FailingMemory.h"
#include "tests/platform/jet/support/Places.h"
#include "tests/platform/jet/support/SampleTable.h"
#include "tests/platform/jet/support/TinyDatabase.h"
#include "tests/platform/jet/support/Wreck.h"

#include <gtest/gtest.h>

#include <functional>
#include <new>
#include <vector>

namespace jet {
namespace {

enum class Outcome { Done, Failed, NotReached };

// Runs `work` with one failing allocation. NotReached: it needs fewer allocations, and is done.
Outcome RunShortOfMemory(int allocation, const std::function<void()>& work) {
  const test::FailingMemory failing(allocation);
  bool done = true;
  try {
    work();
  } catch (const std::bad_alloc&) {
    done = false;
  } catch (const Error& error) {
    done = error.Code() == ErrorCode::NotYetDurable;
  }
  if (!failing.HasFailed()) return Outcome::NotReached;
  return done ? Outcome::Done : Outcome::Failed;
}

void ExpectBothCanWrite(Storage& storage, files::MemoryFileSystem& memory, int allocation) {
  EXPECT_FALSE(storage.IsWriting()) << "allocation " << allocation;
  EXPECT_EQ(test::MessageOf([&] {
              Storage other(test::kPath, test::TestOptions(), memory);
              test::ChangePages(other);
            }),
            "")
      << "allocation " << allocation;
  EXPECT_EQ(test::MessageOf([&] { test::ChangePages(storage); }), "") << "allocation " << allocation;
}

TEST(OutOfMemory, AtAnyAllocationOfAChangeLeavesTheOldOrTheNewStateAndNoLock) {
  Outcome outcome = Outcome::Failed;
  int allocation = 0;
  for (; outcome != Outcome::NotReached; ++allocation) {
    files::MemoryFileSystem memory;
    memory.Put(test::kPath, test::TinyDatabase(test::PagesBefore()));
    {
      Storage storage(test::kPath, test::TestOptions(), memory);
      outcome = RunShortOfMemory(allocation, [&] { test::ChangePages(storage); });
      const auto expected = outcome == Outcome::Failed ? test::PagesBefore() : test::PagesAfter();
      {
        const ReadTurn reading(storage);
        EXPECT_EQ(test::PagesOf(storage.Source()), expected) << "allocation " << allocation;
      }
      EXPECT_EQ(test::PagesAfterReopening(memory, test::kPath), expected) << "allocation " << allocation;
      EXPECT_FALSE(memory.Exists(test::kJournal)) << "allocation " << allocation;
      ExpectBothCanWrite(storage, memory, allocation);
    }
    EXPECT_EQ(test::PagesAfterReopening(memory, test::kPath), test::PagesAfter()) << "allocation " << allocation;
  }
  EXPECT_GT(allocation, 20);
}

TEST(OutOfMemory, AtAnyAllocationOfARecoveryLeavesItToTheNextReader) {
  const test::Wreck wreck = test::CrashMidway();
  Outcome outcome = Outcome::Failed;
  int allocation = 0;
  for (; outcome != Outcome::NotReached; ++allocation) {
    files::MemoryFileSystem memory;
    memory.Put(test::kPath, test::TinyDatabase(test::PagesBefore()));
    Storage storage(test::kPath, test::TestOptions(), memory);
    // The storage is open when another program is killed during its change.
    test::CopyInto(memory, test::kPath, wreck.database);
    memory.Put(test::kJournal, wreck.journal);
    outcome = RunShortOfMemory(allocation, [&] { const ReadTurn reading(storage); });
    {
      const ReadTurn reading(storage);
      EXPECT_EQ(test::PagesOf(storage.Source()), test::PagesBefore()) << "allocation " << allocation;
    }
    EXPECT_FALSE(memory.Exists(test::kJournal)) << "allocation " << allocation;
    ExpectBothCanWrite(storage, memory, allocation);
  }
  EXPECT_GT(allocation, 2);
}

}  // namespace
}  // namespace jet

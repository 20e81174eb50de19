// SPDX-License-Identifier: MIT
// A change is atomic, whatever fails and whenever the power is cut.
#include "platform/jet/values/Error.h"
#include "tests/platform/jet/support/FaultyFiles.h"
#include "tests/platform/jet/support/Places.h"
#include "tests/platform/jet/support/PowerCut.h"
#include "tests/platform/jet/support/Rounds.h"
#include "tests/platform/jet/support/TinyDatabase.h"
#include "tests/platform/jet/support/Wreck.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <optional>
#include <random>
#include <string>
#include <vector>

namespace jet {
namespace {

using test::Fault;
using test::FaultyFiles;
using test::PagesAfterReopening;
using Values = std::vector<std::uint32_t>;

using test::kJournal;
using test::kPath;
const Values kOld = test::PagesBefore();
const Values kNew = test::PagesAfter();

// The code of the Error that the call throws; nothing when it succeeds.
std::optional<ErrorCode> FailureOf(const std::function<void()>& call) {
  try {
    call();
    return std::nullopt;
  } catch (const Error& error) {
    return error.Code();
  }
}

bool Succeeds(const std::function<void()>& call) {
  return !FailureOf(call);
}

class EveryFault : public testing::TestWithParam<Fault> {};

INSTANTIATE_TEST_SUITE_P(Kinds, EveryFault,
                         testing::Values(Fault::Error, Fault::DiskFull, Fault::Interrupted, Fault::ShortCount,
                                         Fault::Dead));

TEST_P(EveryFault, OfAnyCallLeavesTheOldOrTheNewState) {
  int call = 0;
  for (bool reached = true; reached; ++call) {
    files::MemoryFileSystem memory;
    memory.Put(kPath, test::TinyDatabase(kOld));
    FaultyFiles files(memory);
    bool done = false;
    {
      Storage storage(kPath, test::TestOptions(), files);
      files.FailAt(call, GetParam());
      const auto failure = FailureOf([&] { test::ChangePages(storage); });
      done = !failure || failure == ErrorCode::NotYetDurable;
      reached = files.Failed();
      if (GetParam() != Fault::Dead) {
        // The same Storage works again after the failure.
        files.FailNever();
        const ReadTurn reading(storage);
        const Values now = test::PagesOf(storage.Source());
        EXPECT_TRUE(now == kNew || (!done && now == kOld)) << "call " << call;
      }
    }
    const Values after = PagesAfterReopening(memory, kPath);
    EXPECT_TRUE(after == kNew || (!done && after == kOld)) << "call " << call;
    EXPECT_TRUE(GetParam() == Fault::Dead || done == (after == kNew)) << "said what is not so, call " << call;
    EXPECT_TRUE(Succeeds([&] {
      Storage storage(kPath, test::TestOptions(), memory);
      test::ChangePages(storage);
    })) << "call "
        << call;
    EXPECT_EQ(PagesAfterReopening(memory, kPath), kNew);
  }
  EXPECT_GT(call, 20);
}

TEST_P(EveryFault, DuringRecoveryIsRepairedByTheNextRecovery) {
  const test::Wreck wreck = test::CrashMidway();
  ASSERT_FALSE(wreck.journal.empty());
  bool reached = true;
  for (int call = 0; reached; ++call) {
    files::MemoryFileSystem memory;
    memory.Put(kPath, wreck.database);
    memory.Put(kJournal, wreck.journal);
    FaultyFiles files(memory);
    files.FailAt(call, GetParam());
    Succeeds([&] { PagesAfterReopening(files, kPath); });
    reached = files.Failed();
    EXPECT_EQ(PagesAfterReopening(memory, kPath), kOld) << "call " << call;
    EXPECT_FALSE(memory.Exists(kJournal));
  }
}

TEST(PowerCut, AtAnyMomentLeavesTheOldOrTheNewState) {
  files::MemoryFileSystem memory;
  memory.Put(kPath, test::TinyDatabase(kOld));
  FaultyFiles files(memory);
  std::vector<FaultyFiles::Change> changes;
  files.Record(&changes);
  std::vector<std::size_t> acknowledged;
  std::vector<Values> states = {kOld};
  {
    Storage storage(kPath, test::TestOptions(), files);
    for (std::uint32_t round = 1; round <= 3; ++round) {
      WriteTurn writing(storage);
      for (std::uint32_t page = 1; page <= 3 + round; ++page)
        test::Fill(storage, page, 100 * round + page);
      writing.Commit();
      acknowledged.push_back(changes.size());
      states.push_back(test::PagesOf(storage.Source()));
    }
  }
  std::mt19937 random(static_cast<unsigned>(test::Rounds("SPOTROOSTER_SEED", 7)));
  const int rounds = test::Rounds("SPOTROOSTER_POWER_CUTS", 3000);
  int rolledBack = 0;
  for (int i = 0; i < rounds; ++i) {
    const std::size_t cut = random() % (changes.size() + 1);
    files::MemoryFileSystem disk;
    test::ReplayUntil(changes, cut, {{kPath, test::TinyDatabase(kOld)}}, random, disk);
    rolledBack += disk.Exists(kJournal) ? 1 : 0;
    const Values after = PagesAfterReopening(disk, kPath);
    const auto done = static_cast<std::size_t>(
        std::count_if(acknowledged.begin(), acknowledged.end(), [&](std::size_t end) { return end <= cut; }));
    const bool isNext = done + 1 < states.size() && after == states[done + 1];
    ASSERT_TRUE(after == states[done] || isNext) << "cut at " << cut << ", round " << i;
  }
  EXPECT_GT(rolledBack, rounds / 10);
  std::printf("%d power cuts, %d with a journal\n", rounds, rolledBack);
}

TEST(Recovery, KeepsBothWhenAnotherProgramWrote) {
  const test::Wreck wreck = test::CrashMidway();
  files::MemoryFileSystem memory;
  memory.Put(kJournal, wreck.journal);
  Bytes foreign = wreck.database;
  foreign[3 * kPageSize + 700] ^= 1;
  memory.Put(kPath, foreign);
  try {
    PagesAfterReopening(memory, kPath);
    FAIL();
  } catch (const Error& error) {
    EXPECT_EQ(error.Code(), ErrorCode::ForeignWrite);
    EXPECT_NE(std::string(error.what()).find("/data/station.mdb-journal-1"), std::string::npos) << error.what();
  }
  EXPECT_EQ(memory.Get(kPath), foreign);
  EXPECT_EQ(memory.Get("/data/station.mdb-journal-1"), wreck.journal);
  EXPECT_TRUE(Succeeds([&] { PagesAfterReopening(memory, kPath); }));
}

TEST(Recovery, ShowsTheOldPagesOfAReadOnlyFile) {
  const test::Wreck wreck = test::CrashMidway();
  files::MemoryFileSystem memory;
  memory.Put(kPath, wreck.database);
  memory.Put(kJournal, wreck.journal);
  Storage reader(kPath, test::TestOptions(true), memory);
  const ReadTurn reading(reader);
  EXPECT_EQ(test::PagesOf(reader.Source()), kOld);
  EXPECT_EQ(memory.Get(kPath), wreck.database);
  EXPECT_TRUE(memory.Exists(kJournal));
}

}  // namespace
}  // namespace jet

// SPDX-License-Identifier: MIT
// A program that is killed at any moment loses no acknowledged change.
#include "platform/jet/table/TableWriter.h"
#include "tests/platform/jet/support/Child.h"
#include "tests/platform/jet/support/ProofFile.h"
#include "tests/platform/jet/support/Rounds.h"
#include "tests/platform/jet/support/Witness.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <random>
#include <vector>

namespace jet {
namespace {

using test::Child;
using test::ProofFile;
using Rows = ProofFile::Rows;

// Steps before a row is renamed and deleted: enough for several leaves of the index on Naam.
constexpr int kUntilRenamed = 80;
constexpr int kUntilDeleted = 160;

ProofFile::Row Fresh(int n) {
  const std::size_t length = n % 16 == 0 ? 9000 : n % 4 == 0 ? 700 : 20;  // several pieces, one piece, inline
  return {u"Spot " + std::u16string(20 + static_cast<std::size_t>(n % 20), static_cast<char16_t>(u'a' + n * 7 % 26)),
          std::u16string(length, static_cast<char16_t>(u'A' + n % 26))};
}

ProofFile::Row Renamed(int n) {
  const std::size_t length = n % 8 == 0 ? 4000 : 30;
  return {u"Nieuw " + Fresh(n + 3).name, std::u16string(length, u'n')};
}

// One statement; inserts, updates and deletes in equal numbers, so that each is killed equally often.
void Step(Database& database, int step) {
  const int n = step / 3 + 1;
  WriteTurn turn(database);
  if (step % 3 == 0) test::InsertSpot(database, n, Fresh(n));
  if (step % 3 == 1 && n > kUntilRenamed) {
    const ProofFile::Row row = Renamed(n - kUntilRenamed);
    std::vector<Value> values(6);
    values[1] = row.name;
    values[3] = row.text;
    const auto writer = database.OpenWriter(u"tblSpots");
    writer->Update(test::FindSpot(database, n - kUntilRenamed), values, {false, true, false, true, false, false});
  }
  if (step % 3 == 2 && n > kUntilDeleted)
    database.OpenWriter(u"tblSpots")->Delete(test::FindSpot(database, n - kUntilDeleted));
  turn.Commit();
}

// The rows of the table after `steps` steps.
Rows RowsAfter(int steps) {
  Rows rows;
  const int inserted = (steps + 2) / 3;
  const int renamed = (steps + 1) / 3 - kUntilRenamed;
  const int deleted = steps / 3 - kUntilDeleted;
  for (int n = std::max(1, deleted + 1); n <= inserted; ++n)
    rows[n] = n <= renamed ? Renamed(n) : Fresh(n);
  return rows;
}

TEST(KilledWriter, LosesNothingThatWasAcknowledged) {
  const int kills = test::Rounds("SPOTROOSTER_KILLS", 200);
  constexpr int kWitnessEvery = 100;
  const bool hasWitness = witness::Has("mdb-export");
  const ProofFile file;
  std::mt19937 random(static_cast<unsigned>(test::Rounds("SPOTROOSTER_SEED", 3)));
  int done = 0;
  int unfinished = 0;
  int unacknowledged = 0;
  {
    const auto database = file.Open();
    while (done < 3 * kUntilDeleted + 1)
      Step(*database, done++);
  }
  for (int kill = 1; kill <= kills; ++kill) {
    Child child([&](const Child::Acknowledge& acknowledge) {
      const auto database = file.Open();
      for (int step = done;; ++step) {
        Step(*database, step);
        acknowledge(step + 1);
      }
    });
    std::int64_t acknowledged = done;
    for (std::size_t wait = random() % 4; wait > 0; --wait)
      ASSERT_TRUE(child.Next(acknowledged));
    ::usleep(static_cast<useconds_t>(random() % 3000));
    child.Kill();
    while (child.Next(acknowledged)) {
    }
    unfinished += file.HasJournal() ? 1 : 0;
    ASSERT_EQ(file.Findings(), "") << "kill " << kill;
    const Rows rows = file.Read();
    done = static_cast<int>(acknowledged);
    // One more may be committed whose acknowledgement was lost.
    if (rows != RowsAfter(done)) {
      ++done;
      ++unacknowledged;
    }
    ASSERT_TRUE(rows == RowsAfter(done)) << "kill " << kill << ", after step " << done;
    if (hasWitness && kill % kWitnessEvery == 0) {
      ASSERT_EQ(file.RowsForWitness(), rows.size()) << "kill " << kill;
    }
  }
  std::printf("%d kills, %d changes, %d unfinished changes taken back, %d done but not acknowledged\n", kills, done,
              unfinished, unacknowledged);
}

}  // namespace
}  // namespace jet

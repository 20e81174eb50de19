// SPDX-License-Identifier: MIT
// Several programs write to one file at the same time, and one of them is killed.
#include "platform/jet/table/TableWriter.h"
#include "platform/jet/values/Error.h"
#include "tests/platform/jet/support/Child.h"
#include "tests/platform/jet/support/ProofFile.h"
#include "tests/platform/jet/support/Rounds.h"

#include <gtest/gtest.h>
#include <poll.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <deque>
#include <filesystem>
#include <map>
#include <memory>
#include <random>
#include <vector>

namespace jet {
namespace {

using test::Child;
using test::ProofFile;
using Clock = std::chrono::steady_clock;

enum class WriterEvent : std::int64_t {
  Inserted = 1,
  Renamed = 2,
  Deleted = 3,
  LongestWait = 4,
  Refused = 5,
  Duplicates = 6
};

// The message of a child: a change and the row's ID, or a count at its end.
std::int64_t Message(WriterEvent change, std::int64_t number) {
  return number * 8 + static_cast<std::int64_t>(change);
}

ProofFile::Row RowOf(std::int64_t id, bool renamed) {
  const std::u16string name = (renamed ? u"Nieuw " : u"Spot ") + std::u16string(10 + static_cast<std::size_t>(id % 30),
                                                                                static_cast<char16_t>(u'a' + id % 26));
  return {name, std::u16string(id % 10 == 0 ? 500 : 12, static_cast<char16_t>(u'A' + id % 26))};
}

// One program: inserts rows, renames one now and then and deletes its oldest.
class Writer {
 public:
  Writer(Database& database, const Child::Acknowledge& acknowledge, unsigned seed)
      : database_(database), acknowledge_(acknowledge), random_(seed) {}

  void Run(int changes) {
    for (int done = 0; done < changes;) {
      const auto begun = Clock::now();
      try {
        ChangeOne();
        ++done;
      } catch (const Error& error) {
        if (error.Code() == ErrorCode::Duplicate) {
          ++duplicates_;
        } else if (error.Code() == ErrorCode::Locked) {
          ++refused_;
        } else {
          throw;
        }
      }
      const auto took = std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now() - begun);
      longest_ = std::max(longest_, static_cast<std::int64_t>(took.count()));
    }
    acknowledge_(Message(WriterEvent::LongestWait, longest_));
    acknowledge_(Message(WriterEvent::Refused, refused_));
    acknowledge_(Message(WriterEvent::Duplicates, duplicates_));
  }

 private:
  static constexpr std::size_t kRowsKept = 12;

  void ChangeOne() {
    if (mine_.size() > kRowsKept) return DeleteOldest();
    if (!mine_.empty() && random_() % 4 == 0) return Rename(mine_[random_() % mine_.size()]);
    Insert();
  }

  // The next number is read in one statement and used in another: another program may have used it meanwhile.
  void Insert() {
    const std::int64_t id = LargestId() + 1;
    WriteTurn turn(database_);
    test::InsertSpot(database_, id, RowOf(id, false));
    turn.Commit();
    acknowledge_(Message(WriterEvent::Inserted, id));
    mine_.push_back(id);
  }

  void Rename(std::int64_t id) {
    WriteTurn turn(database_);
    std::vector<Value> values(6);
    values[1] = RowOf(id, true).name;
    const auto writer = database_.OpenWriter(u"tblSpots");
    writer->Update(test::FindSpot(database_, id), values, {false, true, false, false, false, false});
    turn.Commit();
    acknowledge_(Message(WriterEvent::Renamed, id));
  }

  void DeleteOldest() {
    WriteTurn turn(database_);
    database_.OpenWriter(u"tblSpots")->Delete(test::FindSpot(database_, mine_.front()));
    turn.Commit();
    acknowledge_(Message(WriterEvent::Deleted, mine_.front()));
    mine_.pop_front();
  }

  std::int64_t LargestId() {
    const ReadTurn turn(database_);
    const Table table = database_.OpenTable(u"tblSpots");
    KeyCursor cursor = table.ScanByIndex(table.Definition().FindIndex(u"PrimaryKey"), true);
    if (!cursor.Next()) return 0;
    return std::get<std::int64_t>(table.Fetch(cursor.Id(), {0})->at(0));
  }

  Database& database_;
  const Child::Acknowledge& acknowledge_;
  std::mt19937 random_;
  std::deque<std::int64_t> mine_;
  std::int64_t longest_ = 0;
  std::int64_t refused_ = 0;
  std::int64_t duplicates_ = 0;
};

// The acknowledged changes of all children.
struct Account {
  std::map<int, std::map<std::int64_t, bool>> rows;  // by child and ID: renamed or not
  std::int64_t changes = 0;
  std::int64_t longestWait = 0;
  std::int64_t refused = 0;
  std::int64_t duplicates = 0;

  void Note(int child, std::int64_t told) {
    const std::int64_t number = told / 8;
    switch (static_cast<WriterEvent>(told % 8)) {
      case WriterEvent::Inserted:
        rows[child][number] = false;
        ++changes;
        break;
      case WriterEvent::Renamed:
        rows[child].at(number) = true;
        ++changes;
        break;
      case WriterEvent::Deleted:
        rows[child].erase(number);
        ++changes;
        break;
      case WriterEvent::LongestWait:
        longestWait = std::max(longestWait, number);
        break;
      case WriterEvent::Refused:
        refused += number;
        break;
      case WriterEvent::Duplicates:
        duplicates += number;
        break;
    }
  }
};

// Reads the children's messages until all have ended; kills the first after `killAfter` of its changes.
void Collect(std::vector<std::unique_ptr<Child>>& children, int killAfter, Account& account) {
  std::vector<::pollfd> open;
  open.reserve(children.size());
  for (const auto& child : children)
    open.push_back({child->Handle(), POLLIN, 0});
  const int first = children.front()->Handle();
  int ofFirst = 0;
  while (!open.empty()) {
    ::poll(open.data(), open.size(), -1);
    std::erase_if(open, [&](const ::pollfd& handle) {
      if (handle.revents == 0) return false;
      const auto child =
          std::find_if(children.begin(), children.end(), [&](const auto& each) { return each->Handle() == handle.fd; });
      std::int64_t told = 0;
      if (!(*child)->Next(told)) return true;
      account.Note(handle.fd, told);
      if (handle.fd == first && ++ofFirst == killAfter) (*child)->Kill();
      return false;
    });
  }
}

// A number may be used again after its row was deleted, but not by two rows at the same time.
std::map<std::int64_t, bool> RowsOfAll(const Account& account) {
  std::map<std::int64_t, bool> all;
  for (const auto& [child, rows] : account.rows) {
    for (const auto& [id, renamed] : rows)
      EXPECT_TRUE(all.emplace(id, renamed).second) << id << " was given to two";
  }
  return all;
}

// The killed one may have made one change more than it reported.
int Differences(const Account& account, const ProofFile::Rows& rows) {
  int differences = 0;
  const std::map<std::int64_t, bool> told = RowsOfAll(account);
  for (const auto& [id, renamed] : told) {
    const auto found = rows.find(id);
    if (found == rows.end() || found->second != ProofFile::Row{RowOf(id, renamed).name, RowOf(id, false).text})
      ++differences;
  }
  for (const auto& [id, row] : rows)
    differences += told.count(id) == 0 ? 1 : 0;
  return differences;
}

// On a machine so busy that the others hold the file for the whole time an opening may wait, it is opened again.
auto OpenWhenFree(const ProofFile& file) {
  for (;;) {
    try {
      return file.Open();
    } catch (const Error& error) {
      if (error.Code() != ErrorCode::Locked) throw;
    }
  }
}

class Writers : public testing::TestWithParam<int> {};

INSTANTIATE_TEST_SUITE_P(Processes, Writers, testing::Values(2, 4, 8), testing::PrintToStringParamName());

TEST_P(Writers, LoseNoAcknowledgedRowAlsoWhenOneIsKilled) {
  const int changes = test::Rounds("SPOTROOSTER_CHANGES", 20);
  const ProofFile file;
  Account account;
  {
    std::vector<std::unique_ptr<Child>> children;
    children.reserve(static_cast<std::size_t>(GetParam()));
    for (int i = 0; i < GetParam(); ++i) {
      children.push_back(std::make_unique<Child>([&](const Child::Acknowledge& acknowledge) {
        const auto database = OpenWhenFree(file);
        Writer(*database, acknowledge, static_cast<unsigned>(i)).Run(changes);
      }));
    }
    Collect(children, changes / 2, account);
    for (std::size_t i = 1; i < children.size(); ++i)
      EXPECT_EQ(children[i]->Wait(), 0);
  }
  EXPECT_EQ(file.Findings(), "");
  EXPECT_LE(Differences(account, file.Read()), 1);
  EXPECT_GE(account.changes, (GetParam() - 1) * changes + changes / 2);
  EXPECT_FALSE(std::filesystem::exists(file.Folder() / "station.ldb"));
  std::printf("%d processes: %lld changes, longest wait %lld ms, %lld told that the file is in use, %lld duplicates\n",
              GetParam(), static_cast<long long>(account.changes), static_cast<long long>(account.longestWait),
              static_cast<long long>(account.refused), static_cast<long long>(account.duplicates));
}

}  // namespace
}  // namespace jet

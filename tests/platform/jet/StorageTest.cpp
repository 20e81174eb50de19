// SPDX-License-Identifier: MIT
#include "platform/jet/storage/Storage.h"

#include "platform/jet/pages/Header.h"
#include "platform/jet/storage/Lock.h"
#include "platform/jet/storage/LockFile.h"
#include "platform/jet/values/Error.h"
#include "tests/platform/jet/support/Places.h"
#include "tests/platform/jet/support/TinyDatabase.h"

#include <gtest/gtest.h>

#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace jet {
namespace {

using test::Fill;
using test::PagesAfterReopening;
using test::PagesOf;
using test::TestOptions;
using Values = std::vector<std::uint32_t>;

using test::kPath;
constexpr std::uint64_t kUserBytes = 0x10000000;

class StorageTest : public testing::Test {
 protected:
  void SetUp() override { files_.Put(kPath, test::TinyDatabase({1, 2, 3})); }

  std::unique_ptr<Storage> Open(bool readOnly = false) {
    return std::make_unique<Storage>(kPath, TestOptions(readOnly), files_);
  }

  static std::string MessageOf(const std::function<void()>& call) {
    try {
      call();
    } catch (const Error& error) {
      return error.what();
    }
    return "no error";
  }

  files::MemoryFileSystem files_;
};

TEST_F(StorageTest, ACommittedChangeIsThereAndNothingElseIsLeft) {
  auto storage = Open();
  {
    WriteTurn writing(*storage);
    Fill(*storage, 2, 20);
    Fill(*storage, 4, 40);
    EXPECT_EQ(PagesOf(storage->Source()), (Values{1, 20, 3, 40}));
    writing.Commit();
  }
  EXPECT_EQ(PagesOf(storage->Source()), (Values{1, 20, 3, 40}));
  storage.reset();
  EXPECT_EQ(files_.Names(), std::vector<FileSystem::Path>{kPath});
  EXPECT_EQ(PagesAfterReopening(files_, kPath), (Values{1, 20, 3, 40}));
}

TEST_F(StorageTest, WithoutCommitNothingChanges) {
  const Bytes before = files_.Get(kPath);
  const auto storage = Open();
  {
    const WriteTurn writing(*storage);
    Fill(*storage, 2, 20);
    Fill(*storage, 4, 40);
  }
  EXPECT_EQ(PagesOf(storage->Source()), (Values{1, 2, 3}));
  EXPECT_EQ(files_.Get(kPath), before);
}

TEST_F(StorageTest, AChangeIsCommittedOnce) {
  const auto storage = Open();
  const auto codeOf = [](WriteTurn& writing) {
    try {
      writing.Commit();
    } catch (const Error& error) {
      return error.Code();
    }
    return ErrorCode::Io;
  };
  auto first = std::make_unique<WriteTurn>(*storage);
  Fill(*storage, 2, 20);
  first->Commit();
  EXPECT_EQ(codeOf(*first), ErrorCode::Misuse);
  EXPECT_THROW(storage->Commit(), Error);
  EXPECT_THROW(storage->Changes(), Error);
  // The first guard must not commit or roll back the second change.
  WriteTurn second(*storage);
  Fill(*storage, 3, 30);
  EXPECT_EQ(codeOf(*first), ErrorCode::Misuse);
  first.reset();
  second.Commit();
  EXPECT_EQ(PagesAfterReopening(files_, kPath), (Values{1, 20, 30}));
}

TEST_F(StorageTest, CountsItsCommitsInTheHeader) {
  const auto storage = Open();
  for (int i = 0; i < 3; ++i) {
    WriteTurn writing(*storage);
    Fill(*storage, 1, 10);
    writing.Commit();
  }
  const Bytes file = files_.Get(kPath);
  EXPECT_EQ(file[kCommitCounters], 3);
  EXPECT_EQ(file[kCommitCounters + 1], 1);
  EXPECT_EQ(file[kCommitCounters + 2], 0);
}

TEST_F(StorageTest, OthersSeeAChangeWhenItIsCommittedAndNotBefore) {
  const auto writer = Open();
  const auto reader = Open();
  WriteTurn writing(*writer);
  Fill(*writer, 1, 10);
  {
    const ReadTurn reading(*reader);
    EXPECT_EQ(PagesOf(reader->Source()), (Values{1, 2, 3}));
  }
  writing.Commit();
  const ReadTurn reading(*reader);
  EXPECT_EQ(PagesOf(reader->Source()), (Values{10, 2, 3}));
}

TEST_F(StorageTest, ASecondWriterGetsTheNameOfTheFirst) {
  const auto one = Open();
  const auto other = Open();
  const WriteTurn writing(*one);
  const LockFileUser user = ThisUser();
  EXPECT_EQ(MessageOf([&] { other->BeginWrite(); }), "Het bestand '" + std::string(kPath) + "' is in gebruik door " +
                                                         user.name + " op " + user.machine +
                                                         ". Probeer het straks opnieuw.");
}

TEST_F(StorageTest, AWriterThatGaveUpLeavesNoLockBehind) {
  const auto one = Open();
  const auto other = Open();
  {
    const WriteTurn writing(*one);
    EXPECT_THROW(other->BeginWrite(), Error);
  }
  WriteTurn writing(*other);
  Fill(*other, 1, 10);
  writing.Commit();
  EXPECT_EQ(PagesAfterReopening(files_, kPath), (Values{10, 2, 3}));
}

TEST_F(StorageTest, TheLongestWaitingWriterIsNext) {
  const auto open = [this] { return files_.Open(kPath, OpenMode::Write); };
  const auto first = open(), second = open(), third = open();
  Lock holder(*first);
  Lock early(*second);
  Lock late(*third);
  ASSERT_TRUE(holder.TryReserveInTurn());
  EXPECT_FALSE(early.TryReserveInTurn());
  EXPECT_FALSE(late.TryReserveInTurn());
  holder.EndReserve();
  EXPECT_FALSE(holder.TryReserveInTurn());
  EXPECT_FALSE(late.TryReserveInTurn());
  EXPECT_TRUE(early.TryReserveInTurn());
  early.EndReserve();
  EXPECT_FALSE(holder.TryReserveInTurn());
  late.LeaveQueue();
  EXPECT_TRUE(holder.TryReserveInTurn());
}

TEST_F(StorageTest, AKilledProgramInTheQueueDelaysNoOne) {
  auto dying = files_.Open(kPath, OpenMode::Write);
  const auto living = files_.Open(kPath, OpenMode::Write);
  const auto holding = files_.Open(kPath, OpenMode::Write);
  Lock holder(*holding);
  Lock other(*living);
  ASSERT_TRUE(holder.TryReserveInTurn());
  EXPECT_FALSE(Lock(*dying).TryReserveInTurn());
  EXPECT_FALSE(other.TryReserveInTurn());
  holder.EndReserve();
  dying.reset();
  EXPECT_TRUE(other.TryReserveInTurn());
}

TEST_F(StorageTest, AllWaitsOfOneStatementShareOneLimit) {
  const auto busy = Open();
  auto options = TestOptions();
  auto waited = std::chrono::milliseconds{0};
  options.wait = {std::chrono::milliseconds{50}, [&](std::chrono::milliseconds pause) { waited += pause; }};
  Storage patient(kPath, options, files_);
  const WriteTurn writing(*busy);
  EXPECT_THROW(patient.BeginWrite(), Error);
  EXPECT_GE(waited, options.wait.limit);
  EXPECT_LE(waited, 2 * options.wait.limit);
}

TEST_F(StorageTest, AReaderIsNotOverwrittenWhileItReads) {
  const auto writer = Open();
  const auto reader = Open();
  {
    const ReadTurn reading(*reader);
    WriteTurn writing(*writer);
    Fill(*writer, 1, 10);
    EXPECT_THROW(writing.Commit(), Error);
    EXPECT_EQ(PagesOf(reader->Source()), (Values{1, 2, 3}));
  }
  EXPECT_EQ(PagesAfterReopening(files_, kPath), (Values{1, 2, 3}));
  WriteTurn writing(*writer);
  Fill(*writer, 1, 10);
  writing.Commit();
  EXPECT_EQ(PagesAfterReopening(files_, kPath), (Values{10, 2, 3}));
}

TEST_F(StorageTest, FollowsAFileThatWasReplaced) {
  const auto storage = Open();
  files_.Put("/data/new.mdb", test::TinyDatabase({7, 8}));
  files_.Rename("/data/new.mdb", kPath);
  WriteTurn writing(*storage);
  Fill(*storage, 1, 70);
  writing.Commit();
  EXPECT_EQ(PagesAfterReopening(files_, kPath), (Values{70, 8}));
}

TEST_F(StorageTest, ReadsButDoesNotWriteWhatIsReadOnly) {
  const auto storage = Open(true);
  EXPECT_EQ(PagesOf(storage->Source()), (Values{1, 2, 3}));
  EXPECT_EQ(MessageOf([&] { storage->BeginWrite(); }), "Het bestand '/data/station.mdb' is alleen-lezen.");
  EXPECT_EQ(files_.Names().size(), 1U);
}

TEST_F(StorageTest, EntersTheLockFileAndRemovesItAfterTheLastUser) {
  auto one = Open();
  auto other = Open();
  const Bytes entries = files_.Get("/data/station.ldb");
  ASSERT_EQ(entries.size(), 128U);
  const std::string machine(entries.begin(), entries.begin() + static_cast<std::ptrdiff_t>(ThisUser().machine.size()));
  EXPECT_EQ(machine, ThisUser().machine);
  one.reset();
  EXPECT_TRUE(files_.Exists("/data/station.ldb"));
  other.reset();
  EXPECT_FALSE(files_.Exists("/data/station.ldb"));
}

TEST_F(StorageTest, DoesNotWriteWhileAnotherJetProgramHasTheFileOpen) {
  const auto storage = Open();
  auto foreign = files_.Open("/data/station.ldb", OpenMode::OpenOrCreate);
  foreign->WriteAt(64, Bytes{'P', 'C', '7'});
  foreign->WriteAt(64 + 32, Bytes{'A', 'n', 0});
  ASSERT_TRUE(foreign->TryLock({kUserBytes + 2, 1}, LockKind::Exclusive));
  EXPECT_EQ(MessageOf([&] { storage->BeginWrite(); }),
            "Het bestand '/data/station.mdb' is geopend met een ander databaseprogramma (An op PC7). Zolang dat zo is, "
            "wordt er niet in geschreven.");
  EXPECT_EQ(PagesOf(storage->Source()), (Values{1, 2, 3}));
  foreign.reset();
  WriteTurn writing(*storage);
  Fill(*storage, 1, 10);
  writing.Commit();
}

TEST_F(StorageTest, AnotherJetProgramThatLeftNoNameIsReportedWithoutOne) {
  const auto storage = Open();
  const auto foreign = files_.Open("/data/station.ldb", OpenMode::OpenOrCreate);
  ASSERT_TRUE(foreign->TryLock({kUserBytes + 2, 1}, LockKind::Exclusive));
  EXPECT_EQ(MessageOf([&] { storage->BeginWrite(); }),
            "Het bestand '/data/station.mdb' is geopend met een ander databaseprogramma. Zolang dat zo is, wordt er "
            "niet in geschreven.");
}

TEST_F(StorageTest, AFileReplacedByAnotherProgramDuringAChangeIsLeftAsItIs) {
  const auto storage = Open();
  WriteTurn writing(*storage);
  Fill(*storage, 1, 10);
  files_.Remove(kPath);
  files_.Put(kPath, test::TinyDatabase({7, 8, 9}));
  EXPECT_EQ(MessageOf([&] { writing.Commit(); }),
            "Het bestand '/data/station.mdb' is tijdens een wijziging door een ander programma vervangen. De wijziging "
            "is niet gedaan. Probeer het opnieuw.");
  EXPECT_EQ(files_.Get(kPath), test::TinyDatabase({7, 8, 9}));
}

TEST_F(StorageTest, OneThreadHasOneStorageOfAFile) {
  const auto one = Storage::Open(kPath, TestOptions(), files_);
  EXPECT_EQ(Storage::Open(kPath, TestOptions(), files_), one);
  files_.Put("/data/other.mdb", test::TinyDatabase({1}));
  EXPECT_NE(Storage::Open("/data/other.mdb", TestOptions(), files_), one);
}

TEST_F(StorageTest, AHeldPageDoesNotChange) {
  const auto storage = Open();
  const WriteTurn writing(*storage);
  Fill(*storage, 1, 10);
  const PageRef held = storage->Source().Read(1);
  Fill(*storage, 1, 11);
  EXPECT_EQ((*held)[0], 10);
  EXPECT_EQ((*storage->Source().Read(1))[0], 11);
}

}  // namespace
}  // namespace jet

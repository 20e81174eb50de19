// SPDX-License-Identifier: MIT
// Files that are replaced while programs have them open.
#include "platform/files/HookedFileSystem.h"
#include "platform/files/MemoryFileSystem.h"
#include "platform/jet/database/Database.h"
#include "platform/jet/pages/Files.h"
#include "platform/jet/storage/Lock.h"
#include "platform/jet/values/Error.h"
#include "tests/platform/jet/support/FaultyFiles.h"
#include "tests/platform/jet/support/Places.h"
#include "tests/platform/jet/support/SampleTable.h"
#include "tests/platform/jet/support/TinyDatabase.h"
#include "tests/platform/jet/support/Wreck.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace jet {
namespace {

using test::FaultyFiles;
using test::Fill;
using test::PagesAfterReopening;
using test::PagesOf;
using test::TestOptions;
using Values = std::vector<std::uint32_t>;

using test::kPath;
constexpr const char* kNewPath = "/data/new.mdb";
using test::kJournal;

class ReplacedFile : public testing::Test {
 protected:
  void SetUp() override { files_.Put(kPath, test::TinyDatabase({1, 2, 3})); }

  std::unique_ptr<Storage> Open(const char* path = kPath) {
    return std::make_unique<Storage>(path, TestOptions(), files_);
  }
  static void Change(Storage& storage, std::uint32_t page, std::uint32_t value) {
    WriteTurn writing(storage);
    Fill(storage, page, value);
    writing.Commit();
  }
  static Values Read(Storage& storage) {
    const ReadTurn reading(storage);
    return PagesOf(storage.Source());
  }
  // Replaces the file, as `mv` does.
  void MoveOver(const Values& pages) {
    files_.Put(kNewPath, test::TinyDatabase(pages));
    files_.Rename(kNewPath, kPath);
  }

  files::MemoryFileSystem files_;
};

TEST_F(ReplacedFile, ABackupCopiedOverItAndChangedAsOftenIsNoticed) {
  const Bytes backup = files_.Get(kPath);
  const auto patient = Open();
  Change(*patient, 1, 10);
  test::CopyInto(files_, kPath, backup);
  Change(*Open(), 2, 20);
  EXPECT_EQ(Read(*patient), (Values{1, 20, 3}));
  Change(*patient, 3, 30);
  EXPECT_EQ(PagesAfterReopening(files_, kPath), (Values{1, 20, 30}));
}

TEST_F(ReplacedFile, AsManyChangesAsTheCounterHoldsAreNoticed) {
  const auto patient = Open();
  Change(*patient, 1, 10);
  EXPECT_EQ(Read(*patient), (Values{10, 2, 3}));
  const Bytes counted = files_.Get(kPath);
  Change(*Open(), 2, 20);
  const auto file = files_.Open(kPath, OpenMode::Write);
  file->WriteAt(kCommitCounters, ByteView(counted).subspan(kCommitCounters, 2));  // as after 65,280 changes
  EXPECT_EQ(Read(*patient), (Values{10, 20, 3}));
}

TEST_F(ReplacedFile, NoTwoNewDatabasesHaveTheSameFirstPage) {
  const auto firstPage = [&](const char* path) {
    Database::Create(path, files_);
    Bytes content = files_.Get(path);
    content.resize(kPageSize);
    return content;
  };
  EXPECT_NE(firstPage("/data/one.mdb"), firstPage("/data/two.mdb"));
}

TEST_F(ReplacedFile, AnIdleProgramThatHasTheOldOneOpenBlocksNoOne) {
  const auto idle = Open();
  MoveOver({7, 8});
  const auto writer = Open();
  EXPECT_EQ(test::MessageOf([&] { Change(*writer, 1, 70); }), "");
  EXPECT_EQ(Read(*idle), (Values{70, 8}));
}

TEST_F(ReplacedFile, AFileOfAnotherExtensionWithTheSameLockFileBlocksNoOne) {
  files_.Put("/data/station.old", test::TinyDatabase({1}));
  const auto idle = Open("/data/station.old");
  EXPECT_EQ(test::MessageOf([&] { Change(*Open(), 1, 10); }), "");
}

// The waiting writer gets the lock of the old file; it must then lock the new one.
TEST_F(ReplacedFile, AWriterThatWaitedMeanwhileHasExclusiveAccess) {
  auto compacting = Open();
  compacting->BeginWrite();
  auto options = TestOptions();
  options.wait.sleep = [&](std::chrono::milliseconds) {
    if (compacting == nullptr) return;
    MoveOver({7, 8});
    compacting->Rollback();
    compacting.reset();
  };
  Storage waiting(kPath, options, files_);
  WriteTurn writing(waiting);
  EXPECT_EQ(PagesOf(waiting.Source()), (Values{7, 8}));
  const auto other = Open();
  EXPECT_THROW(other->BeginWrite(), Error);
  Fill(waiting, 1, 70);
  writing.Commit();
  EXPECT_EQ(PagesAfterReopening(files_, kPath), (Values{70, 8}));
}

TEST_F(ReplacedFile, AChangeOfAFileThatNoLongerExistsIsNotReportedAsDone) {
  const auto storage = Open();
  WriteTurn writing(*storage);
  Fill(*storage, 1, 10);
  MoveOver({7, 8});
  EXPECT_NE(test::MessageOf([&] { writing.Commit(); }).find("vervangen"), std::string::npos);
  EXPECT_EQ(PagesAfterReopening(files_, kPath), (Values{7, 8}));
  EXPECT_FALSE(files_.Exists(kJournal));
}

TEST_F(ReplacedFile, AChangeOfAFileThatWasWrittenMeanwhileIsNotMade) {
  const auto storage = Open();
  WriteTurn writing(*storage);
  Fill(*storage, 1, 10);
  Bytes other = test::TinyDatabase({1, 20, 3});
  other[kCommitCounters] += 1;
  test::CopyInto(files_, kPath, other);
  EXPECT_NE(test::MessageOf([&] { writing.Commit(); }), "");
  EXPECT_EQ(PagesAfterReopening(files_, kPath), (Values{1, 20, 3}));
}

// Whatever fails while the new file is opened, the program can continue afterwards.
TEST_F(ReplacedFile, IsUsableAfterAFailureWhileOpeningTheNewFile) {
  bool reached = true;
  for (int call = 0; reached; ++call) {
    files_.Put(kPath, test::TinyDatabase({1, 2, 3}));
    FaultyFiles faulty(files_);
    Storage storage(kPath, TestOptions(), faulty);
    MoveOver({7, 8});
    faulty.FailAt(call, test::Fault::Error);
    test::MessageOf([&] { Read(storage); });
    reached = faulty.Failed();
    faulty.FailNever();
    EXPECT_EQ(Read(storage), (Values{7, 8})) << "call " << call;
  }
}

// Between finding the journal of a killed writer and undoing its change, another program may undo it, replace the file
// and begin to write.
TEST_F(ReplacedFile, TheJournalOfARunningWriterOfTheNewFileIsNotTouched) {
  const test::Wreck wreck = test::CrashMidway();
  const test::Wreck living = test::CrashMidway(test::TinyDatabase({7, 8, 9}));
  int interrupted = 0;
  bool reached = true;
  for (int moment = 0; reached; ++moment) {
    files::MemoryFileSystem memory;
    memory.Put(kPath, test::TinyDatabase({1, 2, 3}));
    int call = -1;
    std::function<void()> meanwhile;
    files::HookedFileSystem hooked(memory, [&](files::FileCall&, const files::HookedFileSystem::Make& make) {
      if (meanwhile && call++ == moment) std::exchange(meanwhile, nullptr)();
      return make();
    });
    Storage finder(kPath, TestOptions(), hooked);
    test::CopyInto(memory, kPath, wreck.database);
    memory.Put(kJournal, wreck.journal);
    std::unique_ptr<File> writer;
    reached = false;
    meanwhile = [&] {
      reached = true;
      try {
        Storage other(kPath, TestOptions(), memory);
        const WriteTurn turn(other);
        memory.Put(kNewPath, living.database);
        memory.Rename(kNewPath, kPath);
      } catch (const Error&) {
        return;  // the recovering program has its locks now
      }
      memory.Put(kJournal, living.journal);
      writer = memory.Open(kPath, OpenMode::Write);
      Lock lock(*writer);
      lock.TryReserve();
      lock.TryExclude();
      ++interrupted;
    };
    test::MessageOf([&] { Read(finder); });
    meanwhile = nullptr;  // not when `finder` is destroyed
    if (writer == nullptr) continue;
    EXPECT_EQ(memory.Get(kJournal), living.journal) << "moment " << moment;
    EXPECT_EQ(memory.Get(kPath), living.database) << "moment " << moment;
    writer.reset();
    EXPECT_EQ(PagesAfterReopening(memory, kPath), (Values{7, 8, 9})) << "moment " << moment;
  }
  EXPECT_GT(interrupted, 2);
}

}  // namespace
}  // namespace jet

// SPDX-License-Identifier: MIT
// The separate steps of an atomic write.
#include "platform/files/AtomicFile.h"
#include "platform/files/Error.h"
#include "platform/files/HookedFileSystem.h"
#include "platform/files/MemoryFileSystem.h"
#include "platform/files/TemporaryName.h"
#include "tests/platform/files/support/TestFolder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cerrno>
#include <string>
#include <vector>

namespace files {
namespace {

using Kinds = std::vector<FileCall::Kind>;

std::string TextIn(MemoryFileSystem& memory, const char* path) {
  const Bytes bytes = memory.Get(path);
  return {bytes.begin(), bytes.end()};
}

// A file system in memory that records the calls that change it.
class AtomicSteps : public testing::Test {
 protected:
  AtomicSteps()
      : files_(memory_, [this](const FileCall& call, const HookedFileSystem::Make& make) -> std::int64_t {
          if (call.kind == failing_) return -EIO;
          const bool changes = call.kind == FileCall::Write || call.kind == FileCall::Sync ||
                               call.kind == FileCall::Rename || call.kind == FileCall::RenameNew ||
                               call.kind == FileCall::SyncFolder || call.kind == FileCall::Remove;
          if (changes) calls_.push_back(call.kind);
          return make();
        }) {}

  MemoryFileSystem memory_;
  Kinds calls_;
  int failing_ = -1;
  HookedFileSystem files_;
};

TEST_F(AtomicSteps, CommitSyncsTheContentBeforeAndTheFolderAfterTheRename) {
  AtomicFile file("/a", files_);
  file.Write("one ");
  file.Write("two");
  file.Commit();
  EXPECT_EQ(calls_, (Kinds{FileCall::Write, FileCall::Write, FileCall::Sync, FileCall::Rename, FileCall::SyncFolder}));
  EXPECT_EQ(TextIn(memory_, "/a"), "one two");
}

TEST_F(AtomicSteps, ContentThatIsSyncedAlreadyIsNotSyncedAgain) {
  AtomicFile file("/a", files_);
  file.Write("x");
  file.Sync();
  file.Sync();
  file.Commit();
  EXPECT_EQ(calls_, (Kinds{FileCall::Write, FileCall::Sync, FileCall::Rename, FileCall::SyncFolder}));
}

TEST_F(AtomicSteps, AWriteAfterASyncIsSyncedToo) {
  AtomicFile file("/a", files_);
  file.Write("x");
  file.Sync();
  file.Write("y");
  file.Commit();
  EXPECT_EQ(calls_, (Kinds{FileCall::Write, FileCall::Sync, FileCall::Write, FileCall::Sync, FileCall::Rename,
                           FileCall::SyncFolder}));
}

TEST_F(AtomicSteps, ReplaceDoesNotWaitForTheDisk) {
  memory_.Put("/a", {'o'});
  AtomicFile file("/a", files_);
  file.Write("new");
  file.Replace();
  EXPECT_EQ(calls_, (Kinds{FileCall::Write, FileCall::Rename}));
  EXPECT_EQ(TextIn(memory_, "/a"), "new");
}

TEST_F(AtomicSteps, SyncNameSyncsTheFolderOfTheTemporaryFile) {
  AtomicFile file("/a", files_);
  file.SyncName();
  EXPECT_EQ(calls_, Kinds{FileCall::SyncFolder});
}

TEST_F(AtomicSteps, KeepLeavesTheTemporaryFile) {
  FileSystem::Path temporary;
  {
    AtomicFile file("/a", files_);
    file.Write("kept");
    file.Keep();
    temporary = file.TemporaryPath();
  }
  EXPECT_TRUE(IsTemporaryName(temporary));
  EXPECT_EQ(TextIn(memory_, temporary.c_str()), "kept");
  EXPECT_EQ(memory_.Names(), std::vector<FileSystem::Path>{temporary});
}

TEST_F(AtomicSteps, AFailedFolderSyncIsNotYetDurable) {
  memory_.Put("/a", {'o'});
  failing_ = FileCall::SyncFolder;
  try {
    WriteFile("/a", "new", files_);
    FAIL() << "no error";
  } catch (const Error& error) {
    EXPECT_EQ(error.Code(), ErrorCode::NotYetDurable);
    EXPECT_EQ(error.ErrorNumber(), EIO);
    EXPECT_NE(std::string(error.what()).find("'/a' is geschreven"), std::string::npos) << error.what();
  }
  EXPECT_EQ(TextIn(memory_, "/a"), "new");
  EXPECT_EQ(memory_.Names().size(), 1U);
}

TEST_F(AtomicSteps, ErrorsHaveTheNameOfTheFinalFile) {
  for (const FileCall::Kind kind : {FileCall::Open, FileCall::Write, FileCall::Sync, FileCall::Rename}) {
    failing_ = kind;
    try {
      WriteFile("/dir/final", "new", files_);
      ADD_FAILURE() << "no error for " << kind;
    } catch (const Error& error) {
      const std::string text = error.what();
      EXPECT_EQ(text, "Kan het bestand '/dir/final' niet schrijven: lees- of schrijffout op de schijf.");
    }
    failing_ = -1;
    EXPECT_TRUE(memory_.Names().empty()) << kind;
  }
}

TEST_F(AtomicSteps, ManyTakenTemporaryNamesAreAnError) {
  int tried = 0;
  HookedFileSystem busy(memory_, [&](const FileCall& call, const HookedFileSystem::Make& make) -> std::int64_t {
    if (call.kind != FileCall::LockWhole) return make();
    ++tried;
    return -EAGAIN;
  });
  EXPECT_THROW(AtomicFile("/a", busy), Error);
  EXPECT_EQ(tried, 1000);
}

class AtomicOnDisk : public test::TestFolder {};

TEST_F(AtomicOnDisk, ACopyReplacesALinkItselfAndHasThePermissionsOfTheOriginal) {
  Put("original", "content");
  Put("victim", "precious");
  ASSERT_EQ(::chmod(At("original").c_str(), 0640), 0);
  std::filesystem::create_symlink(At("victim"), At("copy"));
  {
    AtomicFile copy(At("copy"), *HostFileSystem().Status(At("original")), HostFileSystem());
    copy.Write("content");
    copy.Commit();
  }
  EXPECT_FALSE(std::filesystem::is_symlink(At("copy")));
  EXPECT_EQ(Get("copy"), "content");
  EXPECT_EQ(Get("victim"), "precious");
  EXPECT_EQ(HostFileSystem().Status(At("copy"))->permissions, 0640U);
}

TEST_F(AtomicOnDisk, AFolderOrAPipeIsNotReplaced) {
  std::filesystem::create_directory(At("folder"));
  ASSERT_EQ(::mkfifo(At("pipe").c_str(), 0666), 0);
  for (const char* name : {"folder", "pipe"}) {
    EXPECT_THROW(WriteFile(At(name), "x", HostFileSystem()), Error) << name;
    EXPECT_EQ(Count(), 2);
  }
}

TEST_F(AtomicOnDisk, AnEmptyFileIsWritten) {
  Put("a", "old");
  WriteFile(At("a"), "", HostFileSystem());
  EXPECT_EQ(Get("a"), "");
  EXPECT_EQ(Count(), 1);
}

}  // namespace
}  // namespace files

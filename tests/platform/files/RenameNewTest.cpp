// SPDX-License-Identifier: MIT
// Claiming a free file name in one step.
#include "platform/files/AtomicFile.h"
#include "platform/files/Error.h"
#include "platform/files/HookedFileSystem.h"
#include "platform/files/MemoryFileSystem.h"
#include "tests/platform/files/support/FaultyFiles.h"
#include "tests/platform/files/support/TestFolder.h"

#include <cerrno>
#include <set>
#include <string>
#include <thread>
#include <vector>

namespace files {
namespace {

using Make = HookedFileSystem::Make;

// The disk without renameat2(RENAME_NOREPLACE); link() fails too unless `linkResult` is 0.
HookedFileSystem WithoutRenameNew(int linkResult) {
  return {HostFileSystem(), [linkResult](const FileCall& call, const Make& make) -> std::int64_t {
            if (call.kind == FileCall::RenameNew) return -EINVAL;
            return call.kind == FileCall::Link && linkResult != 0 ? linkResult : make();
          }};
}

class RenameNew : public test::TestFolder {
 protected:
  void ExpectTakesOnlyFreeNames(FileSystem& files) const {
    Put("mine", "mine");
    Put("theirs", "theirs");
    EXPECT_FALSE(files.RenameNew(At("mine"), At("theirs")));
    EXPECT_EQ(Get("theirs"), "theirs");
    EXPECT_EQ(Get("mine"), "mine");
    EXPECT_TRUE(files.RenameNew(At("mine"), At("free")));
    EXPECT_EQ(Get("free"), "mine");
    EXPECT_EQ(Count(), 2);
  }
};

TEST_F(RenameNew, TakesOnlyFreeNames) {
  ExpectTakesOnlyFreeNames(HostFileSystem());
}

TEST_F(RenameNew, LinksWhereTheFileSystemCannotRenameWithoutReplacing) {
  HookedFileSystem files = WithoutRenameNew(0);
  ExpectTakesOnlyFreeNames(files);
}

TEST_F(RenameNew, IsRefusedWhereTheFileSystemCannotLinkEither) {
  for (const int result : {-EPERM, -ENOTSUP, -ENOSYS, -EINVAL}) {
    HookedFileSystem files = WithoutRenameNew(result);
    Put("mine", "mine");
    try {
      EXPECT_FALSE(files.RenameNew(At("mine"), At("free")));
      FAIL();
    } catch (const Error& error) {
      EXPECT_EQ(error.Code(), ErrorCode::Unsupported);
      EXPECT_NE(std::string(error.what()).find(At("free").string()), std::string::npos) << error.what();
    }
    EXPECT_EQ(Get("mine"), "mine");
    EXPECT_EQ(Count(), 1);
  }
}

// The server made the link, but its reply was lost: the repeated call finds the name taken by this same file.
TEST_F(RenameNew, ARepeatedLinkAfterALostReplySucceeds) {
  HookedFileSystem files(HostFileSystem(), [](const FileCall& call, const Make& make) -> std::int64_t {
    if (call.kind == FileCall::RenameNew) return -EINVAL;
    if (call.kind != FileCall::Link) return make();
    make();
    return -EEXIST;
  });
  Put("mine", "mine");
  EXPECT_TRUE(files.RenameNew(At("mine"), At("free")));
  EXPECT_EQ(Get("free"), "mine");
  EXPECT_EQ(Count(), 1);
}

TEST_F(RenameNew, OnlyOneOfManyThreadsGetsAName) {
  constexpr int kWriters = 8;
  constexpr int kNames = 50;
  std::vector<std::vector<int>> won(kWriters);
  std::vector<std::thread> writers;
  writers.reserve(kWriters);
  for (int writer = 0; writer < kWriters; ++writer) {
    writers.emplace_back([&, writer] {
      for (int name = 0; name < kNames; ++name) {
        AtomicFile file(At("mine" + std::to_string(writer)), HostFileSystem());
        file.Write(std::to_string(writer));
        if (file.CommitNew(At(std::to_string(name)))) won[static_cast<std::size_t>(writer)].push_back(name);
      }
    });
  }
  for (std::thread& writer : writers)
    writer.join();
  std::multiset<int> taken;
  for (int writer = 0; writer < kWriters; ++writer) {
    for (const int name : won[static_cast<std::size_t>(writer)]) {
      EXPECT_EQ(Get(std::to_string(name)), std::to_string(writer));
      taken.insert(name);
    }
  }
  EXPECT_EQ(taken.size(), static_cast<std::size_t>(kNames));
  EXPECT_EQ(Count(), kNames);
}

TEST(CommitNew, IsAtomicWhicheverCallFails) {
  using test::Fault;
  for (const Fault fault : {Fault::Error, Fault::DiskFull, Fault::Interrupted, Fault::ShortCount, Fault::Dead}) {
    int call = 0;
    for (bool reached = true; reached; ++call) {
      files::MemoryFileSystem memory;
      memory.Put("/a/other", {'o'});
      test::FaultyFiles files(memory);
      files.FailAt(call, fault);
      bool failed = false;
      try {
        AtomicFile file("/a/new", files);
        file.Write("content");
        EXPECT_FALSE(file.CommitNew("/a/other"));
        EXPECT_TRUE(file.CommitNew("/a/new"));
      } catch (const Error&) {
        failed = true;
      }
      reached = files.Failed();
      const Bytes content = memory.Get("/a/new");
      const std::string text(content.begin(), content.end());
      EXPECT_TRUE(text == "content" || (failed && text.empty())) << call;
      EXPECT_EQ(memory.Get("/a/other"), Bytes{'o'});
      const bool harmless = fault == Fault::Interrupted || fault == Fault::ShortCount;
      EXPECT_FALSE(harmless && failed) << call;
    }
    EXPECT_GT(call, 6);
  }
}

}  // namespace
}  // namespace files

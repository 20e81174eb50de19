// SPDX-License-Identifier: MIT
#include "platform/files/HookedFileSystem.h"

#include "platform/files/MemoryFileSystem.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <optional>
#include <string>
#include <vector>

namespace files {
namespace {

struct SeenCall {
  FileCall::Kind kind;
  std::string path;
  std::string other;
  std::uint64_t offset;
  std::size_t size;
  bool operator==(const SeenCall&) const = default;
};

class HookedFiles : public testing::Test {
 protected:
  HookedFiles()
      : hooked_(memory_, [this](FileCall& call, const HookedFileSystem::Make& make) { return Hook(call, make); }) {
    memory_.Put("/dir/a", {1, 2, 3});
  }

  std::int64_t Hook(const FileCall& call, const HookedFileSystem::Make& make) {
    seen_.push_back(
        {call.kind, call.path.string(), call.other == nullptr ? "" : call.other->string(), call.offset, call.size});
    if (call.kind == FileCall::Write) written_ = Bytes(call.bytes.begin(), call.bytes.end());
    if (call.kind == FileCall::Open) opened_ = call.request->mode;
    return instead_ ? *instead_ : make();
  }

  MemoryFileSystem memory_;
  std::vector<SeenCall> seen_;
  std::optional<Bytes> written_;
  std::optional<OpenMode> opened_;
  std::optional<std::int64_t> instead_;
  HookedFileSystem hooked_;
};

TEST_F(HookedFiles, TheHookSeesEveryCallOfAFile) {
  const auto file = hooked_.Open("/dir/a", OpenMode::Write);
  EXPECT_EQ(opened_, OpenMode::Write);
  seen_.clear();
  Bytes bytes(2);
  std::uint64_t where = 0;
  bool found = false;
  FileStatus status;
  file->RawRead(1, bytes);
  file->RawWrite(7, Bytes{9, 8});
  file->RawTruncate(5);
  file->RawSync();
  file->RawLock({0, 1}, LockKind::Exclusive);
  file->RawFindLock({0, 1}, LockKind::Exclusive, &found, &where);
  file->RawUnlock({0, 1});
  file->RawLockWhole();
  file->RawStatus(&status);
  file->RawSetOwner(1, 2);
  file->RawSetPermissions(0600);
  const std::string path = "/dir/a";
  EXPECT_EQ(seen_, (std::vector<SeenCall>{{FileCall::Read, path, "", 1, 2},
                                          {FileCall::Write, path, "", 7, 2},
                                          {FileCall::Truncate, path, "", 5, 0},
                                          {FileCall::Sync, path, "", 0, 0},
                                          {FileCall::Lock, path, "", 0, 0},
                                          {FileCall::FindLock, path, "", 0, 0},
                                          {FileCall::Unlock, path, "", 0, 0},
                                          {FileCall::LockWhole, path, "", 0, 0},
                                          {FileCall::Status, path, "", 0, 0},
                                          {FileCall::SetOwner, path, "", 0, 0},
                                          {FileCall::SetPermissions, path, "", 0, 0}}));
  EXPECT_EQ(written_, (Bytes{9, 8}));
  EXPECT_EQ(bytes, (Bytes{2, 3}));
  EXPECT_EQ(memory_.Get("/dir/a"), (Bytes{1, 2, 3, 0, 0}));
  EXPECT_EQ(status.size, 5U);
  EXPECT_EQ(memory_.Status("/dir/a")->owner, 1U);
}

TEST_F(HookedFiles, TheHookSeesEveryCallOfAFileSystem) {
  FileStatus status;
  FileSystem::Path real;
  std::vector<FileSystem::Path> names;
  hooked_.RawStatus("/dir/a", &status);
  hooked_.RawRealPath("/dir/a", &real);
  hooked_.RawRename("/dir/a", "/dir/b");
  hooked_.RawRenameNew("/dir/b", "/dir/c");
  hooked_.RawLink("/dir/c", "/dir/d");
  hooked_.RawRemove("/dir/c");
  hooked_.RawSyncFolder("/dir");
  hooked_.RawList("/dir", &names);
  EXPECT_EQ(seen_, (std::vector<SeenCall>{{FileCall::Status, "/dir/a", "", 0, 0},
                                          {FileCall::RealPath, "/dir/a", "", 0, 0},
                                          {FileCall::Rename, "/dir/a", "/dir/b", 0, 0},
                                          {FileCall::RenameNew, "/dir/b", "/dir/c", 0, 0},
                                          {FileCall::Link, "/dir/c", "/dir/d", 0, 0},
                                          {FileCall::Remove, "/dir/c", "", 0, 0},
                                          {FileCall::SyncFolder, "/dir", "", 0, 0},
                                          {FileCall::List, "/dir", "", 0, 0}}));
  EXPECT_EQ(real, "/dir/a");
  EXPECT_EQ(names, std::vector<FileSystem::Path>{"d"});
  EXPECT_EQ(memory_.Get("/dir/d"), (Bytes{1, 2, 3}));
}

TEST_F(HookedFiles, AnErrorOfTheHookReplacesTheCall) {
  const auto file = hooked_.Open("/dir/a", OpenMode::Write);
  instead_ = -EIO;
  Bytes bytes(1);
  EXPECT_EQ(file->RawRead(0, bytes), -EIO);
  EXPECT_EQ(file->RawWrite(0, Bytes{7}), -EIO);
  EXPECT_EQ(file->RawTruncate(0), -EIO);
  EXPECT_EQ(hooked_.RawRemove("/dir/a"), -EIO);
  EXPECT_EQ(hooked_.RawRename("/dir/a", "/dir/b"), -EIO);
  std::unique_ptr<File> none;
  EXPECT_EQ(hooked_.RawOpen("/dir/a", {OpenMode::Read}, &none), -EIO);
  EXPECT_EQ(none, nullptr);
  EXPECT_EQ(memory_.Get("/dir/a"), (Bytes{1, 2, 3}));
}

TEST_F(HookedFiles, AFileKeepsItsNameAndWorksAfterItsFileSystemIsGone) {
  std::unique_ptr<File> file;
  int calls = 0;
  {
    HookedFileSystem hooked(memory_, [&](FileCall&, const HookedFileSystem::Make& make) {
      ++calls;
      return make();
    });
    file = hooked.Open("/dir/a", OpenMode::Read);
  }
  EXPECT_EQ(file->Name(), "/dir/a");
  EXPECT_EQ(file->Size(), 3U);
  EXPECT_EQ(calls, 2);
}

}  // namespace
}  // namespace files

// SPDX-License-Identifier: MIT
// The file system of a thread, and operations on paths.
#include "platform/files/AtomicFile.h"
#include "platform/files/Error.h"
#include "platform/files/FileLock.h"
#include "platform/files/HookedFileSystem.h"
#include "platform/files/MemoryFileSystem.h"
#include "tests/platform/files/support/TestFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <thread>
#include <vector>

namespace files {
namespace {

TEST(FileSystemScopes, NestAndRestoreThePreviousOne) {
  EXPECT_EQ(&CurrentFileSystem(), &HostFileSystem());
  MemoryFileSystem outer;
  MemoryFileSystem inner;
  {
    const FileSystemScope outerScope(outer);
    {
      const FileSystemScope innerScope(inner);
      EXPECT_EQ(&CurrentFileSystem(), &inner);
    }
    EXPECT_EQ(&CurrentFileSystem(), &outer);
  }
  EXPECT_EQ(&CurrentFileSystem(), &HostFileSystem());
}

TEST(FileSystemScopes, ApplyToTheirOwnThreadOnly) {
  MemoryFileSystem memory;
  const FileSystemScope scope(memory);
  FileSystem* other = nullptr;
  std::thread([&other] { other = &CurrentFileSystem(); }).join();
  EXPECT_EQ(other, &HostFileSystem());
}

TEST(FileSystemScopes, AreUsedByAtomicFilesAndLocks) {
  MemoryFileSystem memory;
  const FileSystemScope scope(memory);
  WriteFile("/a", "content");
  const FileLock lock("/a.lock");
  EXPECT_EQ(lock.What(), FileLock::State::Held);
  EXPECT_EQ(FileLock("/a.lock").What(), FileLock::State::HeldByOther);
  EXPECT_EQ(memory.Names(), (std::vector<FileSystem::Path>{"/a", "/a.lock"}));
}

TEST(FileLocksInMemory, WithoutLocksInTheFileSystemItIsNotPossible) {
  MemoryFileSystem memory;
  HookedFileSystem files(memory, [](const FileCall& call, const HookedFileSystem::Make& make) {
    return call.kind == FileCall::LockWhole ? -ENOLCK : make();
  });
  EXPECT_EQ(FileLock("/a.lock", files).What(), FileLock::State::NotPossible);
}

class Paths : public test::TestFolder {
 protected:
  static FileSystem& Host() { return HostFileSystem(); }
};

TEST_F(Paths, NamesInListsHiddenFilesButNotTheFolderItself) {
  for (const char* name : {"a", ".b", "c d"})
    Put(name, "x");
  std::vector<FileSystem::Path> names = Host().NamesIn(At(""));
  std::sort(names.begin(), names.end());
  EXPECT_EQ(names, (std::vector<FileSystem::Path>{".b", "a", "c d"}));
  EXPECT_THROW(Host().NamesIn(At("none")), Error);
}

TEST_F(Paths, CopyPermissionsSetsThoseOfTheModel) {
  Put("model", "x");
  Put("copy", "x");
  ASSERT_EQ(::chmod(At("model").c_str(), 0640), 0);
  Host().CopyPermissions(At("model"), At("copy"));
  EXPECT_EQ(Host().Status(At("copy"))->permissions, 0640U);
  EXPECT_THROW(Host().CopyPermissions(At("none"), At("copy")), Error);
}

TEST_F(Paths, AFileWithinAFileDoesNotExist) {
  Put("a", "x");
  EXPECT_FALSE(Host().Exists(At("a/b")));
  EXPECT_EQ(Host().OpenIfThere(At("a/b"), OpenMode::Read), nullptr);
  EXPECT_EQ(Host().Identity(At("none")), std::nullopt);
}

TEST_F(Paths, TheStatusOfAFolderOrDeviceHasItsKind) {
  EXPECT_EQ(Host().Status(At(""))->kind, FileKind::Folder);
  EXPECT_EQ(Host().Status("/dev/null")->kind, FileKind::Other);
  Put("a", "four");
  const FileStatus status = *Host().Status(At("a"));
  EXPECT_EQ(status.kind, FileKind::Regular);
  EXPECT_EQ(status.size, 4U);
  EXPECT_GT(status.modifiedNs, std::int64_t{1'600'000'000} * 1'000'000'000);
}

TEST_F(Paths, ALinkIsRenamedAndRemovedItself) {
  Put("target", "x");
  std::filesystem::create_symlink(At("target"), At("link"));
  Host().Rename(At("link"), At("moved"));
  EXPECT_TRUE(std::filesystem::is_symlink(At("moved")));
  Host().Remove(At("moved"));
  EXPECT_EQ(Get("target"), "x");
  EXPECT_EQ(Count(), 1);
}

TEST_F(Paths, TheFolderOfANameWithoutFolderIsTheCurrentOne) {
  std::vector<FileSystem::Path> synced;
  HookedFileSystem files(Host(), [&](const FileCall& call, const HookedFileSystem::Make& make) {
    if (call.kind == FileCall::SyncFolder) synced.push_back(call.path);
    return make();
  });
  files.SyncFolderOf("name");
  files.SyncFolderOf(At("name"));
  EXPECT_EQ(synced, (std::vector<FileSystem::Path>{".", At("").parent_path()}));
}

}  // namespace
}  // namespace files

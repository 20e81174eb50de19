// SPDX-License-Identifier: MIT
// A copy is never accessible to more users than its original.
#include "platform/files/AtomicFile.h"
#include "platform/files/Error.h"
#include "platform/files/HookedFileSystem.h"
#include "platform/files/MemoryFileSystem.h"
#include "tests/platform/files/support/TestFolder.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <vector>

namespace files {
namespace {

using Make = HookedFileSystem::Make;

constexpr std::uint32_t kOwner = 1001;
constexpr std::uint32_t kGroup = 2000;

// Replaces "/a/file", which belongs to another user and group, and returns its status. The system permits changes of
// group and owner as the arguments say.
FileStatus Rewritten(unsigned permissions, bool groupAllowed, bool ownerAllowed) {
  files::MemoryFileSystem memory;
  const auto original = memory.Open("/a/file", OpenMode::Create);
  original->RawSetOwner(kOwner, kGroup);
  original->RawSetPermissions(permissions);
  bool isOwnerCall = false;
  HookedFileSystem files(memory, [&](const FileCall& call, const Make& make) -> std::int64_t {
    if (call.kind != FileCall::SetOwner) return make();
    const bool allowed = isOwnerCall ? ownerAllowed : groupAllowed;
    isOwnerCall = true;
    return allowed ? make() : -EPERM;
  });
  WriteFile("/a/file", "new", files);
  return *memory.Status("/a/file");
}

TEST(Access, OwnerGroupAndPermissionsOfTheOriginalAreKept) {
  for (const unsigned permissions : {0600U, 0640U, 0660U, 0664U, 0666U, 0755U}) {
    const FileStatus status = Rewritten(permissions, true, true);
    EXPECT_EQ(status.permissions, permissions);
    EXPECT_EQ(status.group, kGroup);
    EXPECT_EQ(status.owner, kOwner);
  }
}

TEST(Access, AMemberOfTheGroupKeepsTheGroup) {
  const FileStatus status = Rewritten(0660, true, false);
  EXPECT_EQ(status.permissions, 0660U);
  EXPECT_EQ(status.group, kGroup);
  EXPECT_EQ(status.owner, 0U);
}

TEST(Access, AnotherGroupGetsNoMoreThanOthers) {
  EXPECT_EQ(Rewritten(0660, false, false).permissions, 0600U);
  EXPECT_EQ(Rewritten(0664, false, false).permissions, 0644U);
  EXPECT_EQ(Rewritten(0604, false, false).permissions, 0604U);
}

TEST(Access, TheFileIsNotOpenToOthersWhileItIsWritten) {
  files::MemoryFileSystem memory;
  memory.Open("/a/file", {OpenMode::Create, true, 0600});
  bool written = false;
  HookedFileSystem files(memory, [&](const FileCall& call, const Make& make) {
    if (call.kind == FileCall::Write) {
      EXPECT_EQ(memory.Status(call.path)->permissions, 0600U);
      written = true;
    }
    if (call.kind == FileCall::Open && call.request->mode == OpenMode::Create) {
      EXPECT_EQ(call.request->permissions, 0600U);
      EXPECT_FALSE(call.request->followLink);
    }
    return make();
  });
  WriteFile("/a/file", "secret", files);
  EXPECT_TRUE(written);
}

TEST(Access, PermissionsAreNotSetWhereTheyAreRightAlready) {
  files::MemoryFileSystem memory;
  memory.Open("/a/file", {OpenMode::Create, true, 0755});
  HookedFileSystem files(memory, [&](const FileCall& call, const Make& make) -> std::int64_t {
    if (call.kind == FileCall::Open && call.request->mode == OpenMode::Create) {
      const std::int64_t result = make();
      memory.Open(call.path, OpenMode::Write)->RawSetPermissions(0755);
      return result;
    }
    return call.kind == FileCall::SetPermissions ? -EPERM : make();
  });
  EXPECT_NO_THROW(WriteFile("/a/file", "new", files));
}

TEST(Access, PermissionsThatCannotBeSetLeaveTheOldFileAndNoTemporaryFile) {
  files::MemoryFileSystem memory;
  memory.Put("/a/file", {'o'});
  memory.Open("/a/file", OpenMode::Write)->RawSetPermissions(0640);
  HookedFileSystem files(memory, [](const FileCall& call, const Make& make) {
    return call.kind == FileCall::SetPermissions ? -EPERM : make();
  });
  EXPECT_THROW(WriteFile("/a/file", "new", files), Error);
  EXPECT_EQ(memory.Get("/a/file"), Bytes{'o'});
  EXPECT_EQ(memory.Names().size(), 1U);
}

class AccessOnDisk : public test::TestFolder {};

TEST_F(AccessOnDisk, TheUmaskIsIgnored) {
  Put("file", "old");
  for (const mode_t umask : {mode_t{022}, mode_t{077}}) {
    const mode_t before = ::umask(umask);
    for (const mode_t permissions : {mode_t{0600}, mode_t{0660}, mode_t{0644}}) {
      ASSERT_EQ(::chmod(At("file").c_str(), permissions), 0);
      WriteFile(At("file"), "new", HostFileSystem());
      EXPECT_EQ(HostFileSystem().Status(At("file"))->permissions, permissions);
    }
    ::umask(before);
  }
}

TEST_F(AccessOnDisk, ALinkIsFollowedAndKept) {
  std::filesystem::create_directory(At("real"));
  Put("real/file", "old");
  std::filesystem::create_symlink("real/file", At("link"));
  WriteFile(At("link"), "new", HostFileSystem());
  EXPECT_TRUE(std::filesystem::is_symlink(At("link")));
  EXPECT_EQ(Get("real/file"), "new");
  EXPECT_EQ(Count(), 2);
}

TEST_F(AccessOnDisk, PermissionsAreSetOnTheFileItselfAndNotThroughALink) {
  Put("model", "x");
  Put("victim", "x");
  ASSERT_EQ(::chmod(At("model").c_str(), 0666), 0);
  ASSERT_EQ(::chmod(At("victim").c_str(), 0600), 0);
  std::filesystem::create_symlink(At("victim"), At("copy"));
  EXPECT_THROW(HostFileSystem().CopyPermissions(At("model"), At("copy")), Error);
  EXPECT_EQ(HostFileSystem().Status(At("victim"))->permissions, 0600U);
}

}  // namespace
}  // namespace files

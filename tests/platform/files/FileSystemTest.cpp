// SPDX-License-Identifier: MIT
#include "platform/files/FileSystem.h"

#include "platform/files/Error.h"
#include "platform/files/MemoryFileSystem.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <functional>
#include <string>

namespace files {
namespace {

ErrorCode CodeOf(const std::function<void()>& call) {
  try {
    call();
  } catch (const Error& error) {
    return error.Code();
  }
  ADD_FAILURE() << "no error";
  return ErrorCode::Misuse;
}

// The same behaviour on the disk and in memory.
class EveryFileSystem : public testing::TestWithParam<bool> {
 protected:
  void SetUp() override {
    if (!GetParam()) return;
    folder_ = std::filesystem::temp_directory_path() / ("jet-files-" + std::to_string(::getpid()));
    std::filesystem::create_directories(folder_);
  }
  void TearDown() override {
    if (GetParam()) std::filesystem::remove_all(folder_);
  }
  FileSystem& System() { return GetParam() ? HostFileSystem() : memory_; }
  FileSystem::Path At(const char* name) const { return folder_ / name; }

 private:
  files::MemoryFileSystem memory_;
  FileSystem::Path folder_ = "/somewhere";
};

INSTANTIATE_TEST_SUITE_P(DiskAndMemory, EveryFileSystem, testing::Bool());

TEST_P(EveryFileSystem, ReadsBackWhatWasWritten) {
  const Bytes content = {1, 2, 3, 4, 5};
  System().Open(At("a"), OpenMode::Create)->WriteAt(2, content);
  const auto file = System().Open(At("a"), OpenMode::Read);
  Bytes all(100);
  ASSERT_EQ(file->ReadAt(0, all), 7U);
  all.resize(7);
  EXPECT_EQ(all, (Bytes{0, 0, 1, 2, 3, 4, 5}));
  EXPECT_EQ(file->Size(), 7U);
}

TEST_P(EveryFileSystem, RefusesToWriteWhatWasOpenedForReading) {
  System().Open(At("a"), OpenMode::Create);
  const auto file = System().Open(At("a"), OpenMode::Read);
  EXPECT_EQ(CodeOf([&] { file->WriteAt(0, Bytes{1}); }), ErrorCode::AccessDenied);
  EXPECT_EQ(file->Size(), 0U);
}

TEST_P(EveryFileSystem, ReportsAMissingFileByName) {
  EXPECT_FALSE(System().Exists(At("none")));
  EXPECT_EQ(System().OpenIfThere(At("none"), OpenMode::Read), nullptr);
  try {
    System().Open(At("none"), OpenMode::Read);
    FAIL();
  } catch (const Error& error) {
    EXPECT_EQ(error.Code(), ErrorCode::NotFound);
    EXPECT_EQ(error.what(), "Het bestand '" + At("none").string() + "' bestaat niet.");
  }
}

TEST_P(EveryFileSystem, CreatesOnlyWhatIsNotThere) {
  System().Open(At("a"), OpenMode::Create);
  EXPECT_EQ(CodeOf([&] { System().Open(At("a"), OpenMode::Create); }), ErrorCode::Io);
}

TEST_P(EveryFileSystem, RenameReplacesAndKeepsTheIdentity) {
  System().Open(At("new"), OpenMode::Create)->WriteAt(0, Bytes{9});
  System().Open(At("old"), OpenMode::Create);
  const auto identity = System().Identity(At("new"));
  System().Rename(At("new"), At("old"));
  System().SyncFolderOf(At("old"));
  EXPECT_FALSE(System().Exists(At("new")));
  EXPECT_EQ(System().Identity(At("old")), identity);
  EXPECT_EQ(System().Open(At("old"), OpenMode::Read)->Identity(), identity);
}

TEST_P(EveryFileSystem, LocksBelongToTheHandle) {
  constexpr ByteRange kRange = {0x80000000U, 4};
  const auto one = System().Open(At("a"), OpenMode::OpenOrCreate);
  auto other = System().Open(At("a"), OpenMode::OpenOrCreate);
  EXPECT_TRUE(one->TryLock(kRange, LockKind::Shared));
  EXPECT_TRUE(other->TryLock(kRange, LockKind::Shared));
  EXPECT_FALSE(one->TryLock(kRange, LockKind::Exclusive));
  other.reset();
  EXPECT_TRUE(one->TryLock(kRange, LockKind::Exclusive));
  other = System().Open(At("a"), OpenMode::OpenOrCreate);
  EXPECT_FALSE(other->TryLock({0x80000003U, 1}, LockKind::Shared));
  std::uint64_t where = 0;
  EXPECT_TRUE(other->IsLockedByOther({0, 0x90000000U}, LockKind::Shared, &where));
  EXPECT_EQ(where, kRange.start);
  one->Unlock({0x80000003U, 1});
  EXPECT_TRUE(other->TryLock({0x80000003U, 1}, LockKind::Shared));
  EXPECT_FALSE(other->TryLock({0x80000000U, 1}, LockKind::Shared));
}

TEST_P(EveryFileSystem, TruncateShortensAndRemoveLeavesOpenHandlesAlone) {
  const auto file = System().Open(At("a"), OpenMode::Create);
  file->WriteAt(0, Bytes{1, 2, 3});
  file->Truncate(2);
  System().Remove(At("a"));
  EXPECT_FALSE(System().Exists(At("a")));
  EXPECT_EQ(file->Size(), 2U);
}

TEST(FileErrors, ExclusiveUseByAnotherProgramIsReported) {
  // The refusal of a file server, in older and newer kernels.
  for (const int refusal : {EBUSY, ETXTBSY}) {
    const Error error = SystemError("openen", "S:/station.mdb", refusal);
    EXPECT_EQ(error.Code(), ErrorCode::Locked);
    EXPECT_STREQ(error.what(),
                 "Kan het bestand 'S:/station.mdb' niet openen: een ander programma heeft het exclusief geopend.");
  }
}

}  // namespace
}  // namespace files

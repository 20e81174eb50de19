// SPDX-License-Identifier: MIT
// Files in memory behave like files on the disk: random calls on both give the same results.
#include "platform/files/MemoryFileSystem.h"

#include "platform/files/Error.h"
#include "tests/platform/files/support/TestFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <memory>
#include <random>
#include <string>
#include <thread>
#include <vector>

namespace files {
namespace {

std::string TextOf(const Bytes& bytes) {
  return {bytes.begin(), bytes.end()};
}

// Makes one random call and returns its result as text. With equal seeds two objects make the same calls.
class RandomCalls {
 public:
  RandomCalls(FileSystem& files, FileSystem::Path folder, unsigned seed)
      : files_(files), folder_(std::move(folder)), random_(seed) {}

  std::string Next() {
    const std::size_t kind = Pick(10);
    const FileSystem::Path from = RandomName();
    const FileSystem::Path to = RandomName();
    std::unique_ptr<File>& file = handles_[Pick(handles_.size())];
    const std::uint64_t offset = Pick(64);
    const std::size_t length = 1 + Pick(16);
    const auto mode = std::array{OpenMode::Read, OpenMode::Write, OpenMode::Create, OpenMode::OpenOrCreate,
                                 OpenMode::ReadOrCreate}[Pick(5)];
    if (kind < 3) return "open " + std::to_string(files_.RawOpen(from, {mode}, &file));
    if (kind == 3) return from == to ? "same" : "rename " + std::to_string(files_.RawRename(from, to));
    if (kind == 4) return from == to ? "same" : "rename new " + std::to_string(files_.RawRenameNew(from, to));
    if (kind == 5) return "remove " + std::to_string(files_.RawRemove(from));
    if (!file) return "closed";
    if (kind == 6) return "truncate " + std::to_string(file->RawTruncate(offset));
    if (kind == 7) return "size " + std::to_string(file->Size());
    if (kind == 8)
      return "write " +
             std::to_string(file->RawWrite(offset, Bytes(length, static_cast<std::uint8_t>('a' + Pick(26)))));
    Bytes bytes(length);
    bytes.resize(file->ReadAt(offset, bytes));
    return "read " + TextOf(bytes);
  }

  // The names and the content of all files.
  std::string All() {
    std::vector<FileSystem::Path> names = files_.NamesIn(folder_);
    std::sort(names.begin(), names.end());
    std::string text;
    for (const FileSystem::Path& name : names) {
      Bytes bytes(200);
      bytes.resize(files_.Open(folder_ / name, OpenMode::Read)->ReadAt(0, bytes));
      text += name.string() + '=' + TextOf(bytes) + ';';
    }
    return text;
  }

 private:
  std::size_t Pick(std::size_t count) { return random_() % count; }
  FileSystem::Path RandomName() { return folder_ / std::array{"a", "b", "c", "d"}[Pick(4)]; }

  FileSystem& files_;
  FileSystem::Path folder_;
  std::mt19937 random_;
  std::array<std::unique_ptr<File>, 4> handles_;
};

class MemoryAndDisk : public test::TestFolder {};

TEST_F(MemoryAndDisk, RandomCallsHaveTheSameResults) {
  for (unsigned seed = 1; seed <= 20; ++seed) {
    MemoryFileSystem memory;
    const std::string folder = std::to_string(seed);
    std::filesystem::create_directory(At(folder));
    RandomCalls onDisk(HostFileSystem(), At(folder), seed);
    RandomCalls inMemory(memory, "/m", seed);
    for (int step = 0; step < 300; ++step)
      ASSERT_EQ(inMemory.Next(), onDisk.Next()) << "seed " << seed << " step " << step;
    EXPECT_EQ(inMemory.All(), onDisk.All()) << "seed " << seed;
  }
}

TEST_F(MemoryAndDisk, RandomLocksHaveTheSameResults) {
  Put("a", "x");
  for (unsigned seed = 1; seed <= 20; ++seed) {
    std::mt19937 random(seed);
    MemoryFileSystem memory;
    memory.Put("/a", {'x'});
    std::vector<std::unique_ptr<File>> disk(3);
    std::vector<std::unique_ptr<File>> inMemory(3);
    for (int step = 0; step < 400; ++step) {
      const std::size_t at = random() % disk.size();
      const ByteRange range = {random() % 32, 1 + random() % 8};
      const LockKind kind = random() % 2 == 0 ? LockKind::Shared : LockKind::Exclusive;
      const unsigned call = random() % 8;
      if (call == 0 || !disk[at]) {
        disk[at] = HostFileSystem().Open(At("a"), OpenMode::Write);
        inMemory[at] = memory.Open("/a", OpenMode::Write);
      } else if (call < 4) {
        ASSERT_EQ(inMemory[at]->TryLock(range, kind), disk[at]->TryLock(range, kind)) << seed << ' ' << step;
      } else if (call < 6) {
        inMemory[at]->Unlock(range);
        disk[at]->Unlock(range);
      } else if (call == 6) {
        ASSERT_EQ(inMemory[at]->TryLockWhole(), disk[at]->TryLockWhole()) << seed << ' ' << step;
      } else {
        ASSERT_EQ(inMemory[at]->IsLockedByOther(range, kind), disk[at]->IsLockedByOther(range, kind))
            << seed << ' ' << step;
      }
    }
  }
}

TEST(MemoryFiles, PutReplacesAFileAndKeepsOpenHandlesOnTheOldOne) {
  MemoryFileSystem memory;
  memory.Put("/a", {1});
  const auto old = memory.Open("/a", OpenMode::Read);
  memory.Put("/a", {2, 3});
  EXPECT_EQ(old->Size(), 1U);
  EXPECT_EQ(memory.Get("/a"), (Bytes{2, 3}));
  EXPECT_NE(old->Identity(), memory.Identity("/a"));
}

TEST(MemoryFiles, GetOfAMissingFileIsEmpty) {
  MemoryFileSystem memory;
  EXPECT_TRUE(memory.Get("/none").empty());
  EXPECT_TRUE(memory.Names().empty());
}

TEST(MemoryFiles, AppendIgnoresTheOffset) {
  MemoryFileSystem memory;
  memory.Put("/a", {1, 2});
  memory.Open("/a", OpenMode::Append)->WriteAt(0, Bytes{3});
  EXPECT_EQ(memory.Get("/a"), (Bytes{1, 2, 3}));
}

TEST(MemoryFiles, AnExclusiveLockNeedsAWritableFile) {
  MemoryFileSystem memory;
  memory.Put("/a", {1});
  const auto file = memory.Open("/a", OpenMode::Read);
  EXPECT_TRUE(file->TryLock({0, 1}, LockKind::Shared));
  EXPECT_THROW(file->TryLock({0, 1}, LockKind::Exclusive), Error);
}

TEST(MemoryFiles, CreatedFilesHaveTheRequestedPermissions) {
  MemoryFileSystem memory;
  memory.Open("/a", {OpenMode::Create, true, 0640});
  EXPECT_EQ(memory.Status("/a")->permissions, 0640U);
  memory.Open("/a", {OpenMode::OpenOrCreate, true, 0600});
  EXPECT_EQ(memory.Status("/a")->permissions, 0640U);
}

TEST(MemoryFiles, NamesInListsOneFolderOnly) {
  MemoryFileSystem memory;
  for (const char* path : {"/x/a", "/x/b", "/x/y/c", "/xz"})
    memory.Put(path, {});
  std::vector<FileSystem::Path> names = memory.NamesIn("/x");
  std::sort(names.begin(), names.end());
  EXPECT_EQ(names, (std::vector<FileSystem::Path>{"a", "b"}));
  EXPECT_EQ(memory.Names().size(), 4U);
}

TEST(MemoryFiles, ThreadsMayWriteDifferentParts) {
  MemoryFileSystem memory;
  memory.Put("/a", Bytes(4000));
  std::vector<std::thread> writers;
  for (std::uint8_t writer = 0; writer < 4; ++writer) {
    writers.emplace_back([&memory, writer] {
      const auto file = memory.Open("/a", OpenMode::Write);
      for (std::uint64_t at = 0; at < 1000; ++at)
        file->WriteAt(writer * std::uint64_t{1000} + at, Bytes{static_cast<std::uint8_t>(writer + 1)});
    });
  }
  for (std::thread& writer : writers)
    writer.join();
  const Bytes content = memory.Get("/a");
  for (std::size_t at = 0; at < content.size(); ++at)
    ASSERT_EQ(content[at], at / 1000 + 1);
}

}  // namespace
}  // namespace files

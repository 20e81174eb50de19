// SPDX-License-Identifier: MIT
// Reading, writing and locking with system calls that do less than requested.
#include "platform/files/Error.h"
#include "platform/files/HookedFileSystem.h"
#include "platform/files/MemoryFileSystem.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <memory>
#include <numeric>
#include <random>

namespace files {
namespace {

Bytes Counting(std::size_t size) {
  Bytes bytes(size);
  std::iota(bytes.begin(), bytes.end(), std::uint8_t{0});
  return bytes;
}

class FileTransfer : public testing::Test {
 protected:
  // At most so many bytes in one call, 0 for no limit; then `result` instead when it is not 0.
  std::unique_ptr<File> OpenWith(std::size_t most, FileCall::Kind kind = FileCall::Read, std::int64_t result = 0) {
    hooked_ = std::make_unique<HookedFileSystem>(
        memory_, [=, this](FileCall& call, const HookedFileSystem::Make& make) -> std::int64_t {
          ++calls_;
          if (call.kind == kind && result != 0) return result;
          if (most != 0) call.most = most;
          return make();
        });
    auto file = hooked_->Open("/a", OpenMode::OpenOrCreate);
    calls_ = 0;
    return file;
  }

  MemoryFileSystem memory_;
  std::unique_ptr<HookedFileSystem> hooked_;
  int calls_ = 0;
};

TEST_F(FileTransfer, ShortReadsAreContinued) {
  memory_.Put("/a", Counting(100));
  const auto file = OpenWith(7);
  Bytes read(50);
  EXPECT_EQ(file->ReadAt(30, read), 50U);
  EXPECT_EQ(calls_, 8);
  for (std::size_t i = 0; i < read.size(); ++i)
    EXPECT_EQ(read[i], 30 + i);
}

TEST_F(FileTransfer, ReadingStopsAtTheEnd) {
  memory_.Put("/a", Counting(10));
  const auto file = OpenWith(4);
  Bytes read(50);
  EXPECT_EQ(file->ReadAt(3, read), 7U);
  EXPECT_EQ(file->ReadAt(10, read), 0U);
  EXPECT_EQ(file->ReadAt(1000, read), 0U);
  EXPECT_EQ(file->ReadAt(0, ByteSpan()), 0U);
}

TEST_F(FileTransfer, ShortWritesAreContinued) {
  const auto file = OpenWith(3);
  file->WriteAt(5, Counting(20));
  EXPECT_EQ(calls_, 7);
  Bytes expected(5);
  for (const std::uint8_t byte : Counting(20))
    expected.push_back(byte);
  EXPECT_EQ(memory_.Get("/a"), expected);
}

TEST_F(FileTransfer, AnErrorAfterAShortWriteIsReported) {
  int writes = 0;
  HookedFileSystem hooked(memory_, [&](FileCall& call, const HookedFileSystem::Make& make) -> std::int64_t {
    if (call.kind != FileCall::Write) return make();
    call.most = 4;
    return ++writes == 3 ? -ENOSPC : make();
  });
  const auto file = hooked.Open("/a", OpenMode::Create);
  try {
    file->WriteAt(0, Counting(20));
    FAIL() << "no error";
  } catch (const Error& error) {
    EXPECT_EQ(error.Code(), ErrorCode::DiskFull);
  }
  EXPECT_EQ(memory_.Get("/a").size(), 8U);
}

// A write that never makes progress must not loop.
TEST_F(FileTransfer, AWriteOfNothingIsAnError) {
  HookedFileSystem hooked(memory_, [](FileCall& call, const HookedFileSystem::Make& make) -> std::int64_t {
    return call.kind == FileCall::Write ? 0 : make();
  });
  const auto file = hooked.Open("/a", OpenMode::Create);
  try {
    file->WriteAt(0, Counting(1));
    FAIL() << "no error";
  } catch (const Error& error) {
    EXPECT_EQ(error.ErrorNumber(), EIO);
  }
}

TEST_F(FileTransfer, ATakenLockIsNoError) {
  for (const int taken : {-EAGAIN, -EACCES})
    EXPECT_FALSE(OpenWith(0, FileCall::Lock, taken)->TryLock({0, 1}, LockKind::Exclusive)) << taken;
  EXPECT_FALSE(OpenWith(0, FileCall::LockWhole, -EAGAIN)->TryLockWhole());
}

TEST_F(FileTransfer, AFileSystemWithoutLocksIsUnsupported) {
  try {
    OpenWith(0, FileCall::Lock, -ENOLCK)->TryLock({0, 1}, LockKind::Shared);
    FAIL() << "no error";
  } catch (const Error& error) {
    EXPECT_EQ(error.Code(), ErrorCode::Unsupported);
  }
  try {
    OpenWith(0, FileCall::LockWhole, -ENOLCK)->TryLockWhole();
    FAIL() << "no error";
  } catch (const Error& error) {
    EXPECT_EQ(error.Code(), ErrorCode::Unsupported);
  }
}

TEST_F(FileTransfer, RandomTransfersInPiecesAreComplete) {
  std::mt19937 random(5);
  Bytes expected;
  HookedFileSystem hooked(memory_, [&](FileCall& call, const HookedFileSystem::Make& make) -> std::int64_t {
    if (random() % 5 == 0) return -EINTR;
    if (call.kind == FileCall::Read || call.kind == FileCall::Write) call.most = 1 + random() % 9;
    return make();
  });
  const auto file = hooked.Open("/a", OpenMode::Create);
  for (int step = 0; step < 500; ++step) {
    const std::size_t offset = random() % 300;
    Bytes bytes(random() % 40);
    for (std::uint8_t& byte : bytes)
      byte = static_cast<std::uint8_t>(random());
    if (step % 2 == 0) {
      file->WriteAt(offset, bytes);
      if (!bytes.empty() && expected.size() < offset + bytes.size()) expected.resize(offset + bytes.size());
      std::copy(bytes.begin(), bytes.end(), expected.begin() + static_cast<std::ptrdiff_t>(bytes.empty() ? 0 : offset));
    } else {
      const std::size_t count = file->ReadAt(offset, bytes);
      const std::size_t available = offset < expected.size() ? expected.size() - offset : 0;
      ASSERT_EQ(count, std::min(bytes.size(), available));
      for (std::size_t i = 0; i < count; ++i)
        ASSERT_EQ(bytes[i], expected[offset + i]);
    }
  }
  EXPECT_EQ(memory_.Get("/a"), expected);
}

}  // namespace
}  // namespace files

// SPDX-License-Identifier: MIT
// How long statements wait for each other, and in which order they run.
#include "platform/files/MemoryFileSystem.h"
#include "platform/jet/pages/Files.h"
#include "platform/jet/storage/Lock.h"
#include "platform/jet/storage/Storage.h"
#include "platform/jet/values/Error.h"
#include "tests/platform/jet/support/Places.h"
#include "tests/platform/jet/support/TinyDatabase.h"

#include <gtest/gtest.h>

#include <chrono>
#include <memory>

namespace jet {
namespace {

using std::chrono::milliseconds;

using test::kPath;

class Waiting : public testing::Test {
 protected:
  void SetUp() override { files_.Put(kPath, test::TinyDatabase({1, 2, 3})); }
  Storage Open(milliseconds limit, std::function<void(milliseconds)> sleep) {
    StorageOptions options;
    options.wait = {limit, std::move(sleep)};
    return Storage(kPath, options, files_);
  }

  files::MemoryFileSystem files_;
};

TEST_F(Waiting, ReadersGetInWhileAWriterWaitsForASlowOne) {
  Storage slow(kPath, test::TestOptions(), files_);
  const ReadTurn reading(slow);
  StorageOptions hurried;
  hurried.wait = {milliseconds{0}, [](milliseconds) {}};
  Storage reader(kPath, hurried, files_);
  milliseconds waited{0}, lastRead{0}, longest{0};
  Storage writer = Open(milliseconds{5000}, [&](milliseconds pause) {
    waited += pause;
    try {
      const ReadTurn turn(reader);
      longest = std::max(longest, waited - lastRead);
      lastRead = waited;
    } catch (const Error&) {
      // Blocked for now.
    }
  });
  WriteTurn writing(writer);
  test::Fill(writer, 1, 10);
  EXPECT_THROW(writing.Commit(), Error);
  EXPECT_GE(waited, milliseconds{4000});
  EXPECT_LE(longest, milliseconds{1000});
  EXPECT_LE(waited - lastRead, milliseconds{1000});
}

TEST_F(Waiting, AWriterGetsItsTurnAmongReadersThatFollowEachOther) {
  Storage one(kPath, test::TestOptions(), files_);
  Storage other(kPath, test::TestOptions(), files_);
  // Readers overlap as long as they get the lock.
  std::unique_ptr<ReadTurn> reading = std::make_unique<ReadTurn>(one);
  Storage* next = &other;
  Storage writer = Open(milliseconds{5000}, [&](milliseconds) {
    std::unique_ptr<ReadTurn> following;
    try {
      following = std::make_unique<ReadTurn>(*next);
    } catch (const Error&) {
      // Blocked.
    }
    next = next == &one ? &other : &one;
    reading = std::move(following);
  });
  WriteTurn writing(writer);
  test::Fill(writer, 1, 10);
  EXPECT_NO_THROW(writing.Commit());
}

TEST_F(Waiting, ForAReaderAndForAWriterTogetherIsNotLongerThanTheLimit) {
  const auto file = files_.Open(kPath, OpenMode::Write);
  Lock lock(*file);
  milliseconds waited{0};
  Storage patient = Open(milliseconds{50}, [&](milliseconds pause) {
    waited += pause;
    if (waited >= milliseconds{40}) lock.EndExclude();
  });
  ASSERT_TRUE(lock.TryReserve());
  ASSERT_TRUE(lock.TryExclude());
  EXPECT_THROW(patient.BeginWrite(), Error);
  EXPECT_GE(waited, milliseconds{50});
  EXPECT_LE(waited, milliseconds{60});
}

}  // namespace
}  // namespace jet

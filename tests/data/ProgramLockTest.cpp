// SPDX-License-Identifier: MIT
#include "data/ProgramLock.h"

#include "platform/runtime/Error.h"
#include "tests/support/Fork.h"
#include "tests/support/Hindrance.h"

#include <QDir>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <cstdlib>

using namespace Qt::StringLiterals;

namespace {

class ProgramLocks : public testing::Test {
 protected:
  bool IsFree() const {
    try {
      const ProgramLock lock(folder_.path());
      return true;
    } catch (const runtime::Error&) {
      return false;
    }
  }
  QTemporaryDir folder_;
};

}  // namespace

TEST_F(ProgramLocks, SecondProgramIsRefusedWithTheFoldersName) {
  const ProgramLock first(folder_.path());
  try {
    const ProgramLock second(folder_.path());
    FAIL() << "let in";
  } catch (const runtime::Error& error) {
    EXPECT_TRUE(error.Description().contains(folder_.path())) << error.what();
  }
}

TEST_F(ProgramLocks, LockIsReleasedByTheDestructor) {
  { const ProgramLock first(folder_.path()); }
  EXPECT_TRUE(IsFree());
}

TEST_F(ProgramLocks, OtherFoldersAreNotLocked) {
  const QTemporaryDir other;
  const ProgramLock first(folder_.path());
  EXPECT_NO_THROW(ProgramLock(other.path()));
}

TEST_F(ProgramLocks, KilledProgramReleasesTheLock) {
  std::array<int, 2> pipe{};
  ASSERT_EQ(::pipe(pipe.data()), 0);
  const pid_t child = testing_support::Fork();
  if (child == 0) {
    const ProgramLock lock(folder_.path());
    if (::write(pipe[1], "x", 1) != 1) ::_exit(1);
    ::pause();
    ::_exit(0);
  }
  char held = 0;
  ASSERT_EQ(::read(pipe[0], &held, 1), 1);
  EXPECT_FALSE(IsFree());
  ::kill(child, SIGKILL);
  testing_support::WaitFor(child);
  ::close(pipe[0]);
  ::close(pipe[1]);
  EXPECT_TRUE(IsFree());
}

TEST_F(ProgramLocks, MissingFolderDoesNotPreventTheStart) {
  EXPECT_NO_THROW(ProgramLock(folder_.path() + u"/weg"_s));
}

// In a child process without root's rights, because permissions do not restrict root.
TEST(ProgramLocksDeathTest, ReadOnlyFolderDoesNotPreventTheStart) {
  const QTemporaryDir folder;
  ::chmod(folder.path().toUtf8().constData(), 0555);
  const auto lockThere = [&] {
    testing_support::BecomeNobody();
    const ProgramLock lock(folder.path());
    std::_Exit(QDir(folder.path()).isEmpty() ? 0 : 1);
  };
  EXPECT_EXIT(lockThere(), testing::ExitedWithCode(0), "");
}

// The first user of a shared folder created the file; the second may only read it.
TEST(ProgramLocksDeathTest, LockHoldsForAnotherUser) {
  const QTemporaryDir folder;
  ::chmod(folder.path().toUtf8().constData(), 0755);
  const ProgramLock lock(folder.path());
  const auto lockThere = [&] {
    testing_support::BecomeNobody();
    try {
      const ProgramLock second(folder.path());
    } catch (const runtime::Error&) {
      std::_Exit(0);
    }
    std::_Exit(1);
  };
  EXPECT_EXIT(lockThere(), testing::ExitedWithCode(0), "");
}

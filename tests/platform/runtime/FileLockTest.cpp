// SPDX-License-Identifier: MIT
#include "platform/runtime/FileLock.h"

#include "platform/runtime/Error.h"
#include "platform/runtime/HostPath.h"
#include "tests/support/Fork.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace Qt::StringLiterals;
using runtime::FileLock;

namespace {

class FileLocks : public testing::Test {
 protected:
  FileLocks() { runtime::SetDrives({{u"E"_s, folder_.path()}}); }
  ~FileLocks() override { runtime::SetDrives({}); }
  QTemporaryDir folder_;
};

TEST_F(FileLocks, OnlyOneHolderAtATime) {
  {
    const FileLock first(u"E:\\x.lock"_s);
    EXPECT_EQ(first.What(), FileLock::State::Held);
    EXPECT_EQ(FileLock(u"E:\\X.LOCK"_s).What(), FileLock::State::HeldByOther);
  }
  EXPECT_EQ(FileLock(u"E:\\x.lock"_s).What(), FileLock::State::Held);
  EXPECT_TRUE(QFile::exists(folder_.filePath(u"x.lock"_s)));
}

TEST_F(FileLocks, ALockOfAnotherProcessIsSeenAndEndsWithIt) {
  int ready[2];
  int finish[2];
  ASSERT_EQ(::pipe(ready), 0);
  ASSERT_EQ(::pipe(finish), 0);
  const pid_t child = testing_support::Fork();
  char byte = 0;
  if (child == 0) {
    const FileLock lock(u"E:\\x.lock"_s);
    byte = lock.What() == FileLock::State::Held ? 'h' : 'n';
    if (::write(ready[1], &byte, 1) != 1) ::_exit(1);
    static_cast<void>(::read(finish[0], &byte, 1));
    ::_exit(0);
  }
  ASSERT_EQ(::read(ready[0], &byte, 1), 1);
  EXPECT_EQ(byte, 'h');
  EXPECT_EQ(FileLock(u"E:\\x.lock"_s).What(), FileLock::State::HeldByOther);
  ASSERT_EQ(::write(finish[1], &byte, 1), 1);
  testing_support::WaitFor(child);
  EXPECT_EQ(FileLock(u"E:\\x.lock"_s).What(), FileLock::State::Held);
  for (const int end : {ready[0], ready[1], finish[0], finish[1]})
    ::close(end);
}

TEST_F(FileLocks, WithoutAFolderOrAMappingItIsNotPossible) {
  EXPECT_EQ(FileLock(u"E:\\weg\\x.lock"_s).What(), FileLock::State::NotPossible);
  EXPECT_EQ(FileLock(u"Q:\\x.lock"_s).What(), FileLock::State::NotPossible);
}

TEST_F(FileLocks, AFolderOfThatNameIsAnError) {
  QDir(folder_.path()).mkdir(u"x.lock"_s);
  try {
    const FileLock lock(u"E:\\x.lock"_s);
    FAIL() << "a folder was locked";
  } catch (const runtime::Error& error) {
    EXPECT_TRUE(error.Description().contains(u"het is een map"_s)) << error.what();
  }
}

}  // namespace

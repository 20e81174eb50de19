// SPDX-License-Identifier: MIT
#include "platform/files/TemporaryName.h"

#include "platform/files/AtomicFile.h"
#include "platform/files/Error.h"
#include "platform/files/HookedFileSystem.h"
#include "tests/platform/files/support/TestFolder.h"

#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <string>
#include <string_view>

namespace files {
namespace {

using std::filesystem::path;

TEST(TemporaryName, IsHiddenUniqueAndInTheSameFolder) {
  const path one = TemporaryName("/data/OvalistoLocal.mdb");
  const path other = TemporaryName("/data/OvalistoLocal.mdb");
  EXPECT_EQ(one.parent_path(), "/data");
  EXPECT_EQ(one.filename().string().rfind(".OvalistoLocal.mdb.", 0), 0U) << one;
  EXPECT_NE(one, other);
  EXPECT_TRUE(IsTemporaryName(one));
}

TEST(TemporaryName, OtherNamesAreNotRecognised) {
  for (const char* name : {"S.compact.mdb", "a.tmp", ".a.tmp", ".a.1.spotrooster-tmp", ".spotrooster-tmp", "",
                           ".0123456789abcdef.spotrooster-tmp", "a.mdb.0123456789abcdef.spotrooster-tmp",
                           ".a.mdb.0123456789abcdeX.spotrooster-tmp", ".a.mdb-0123456789abcdef.spotrooster-tmp",
                           ".a.mdb.0123456789abcdef.spotrooster-tmp~"}) {
    EXPECT_FALSE(IsTemporaryName(name)) << name;
  }
  EXPECT_TRUE(IsTemporaryName("/x/.a.mdb.0123456789abcdef.spotrooster-tmp"));
}

TEST(TemporaryName, FitsForTheLongestNames) {
  std::string name;
  while (name.size() + 2 <= 254)
    name += "\u00EB";
  const std::string temporary = TemporaryName("/data/" + name).filename().string();
  EXPECT_LE(temporary.size(), 255U);
  EXPECT_TRUE(IsTemporaryName(temporary));
  const std::string beginning = temporary.substr(1, temporary.find('.', 1) - 1);
  EXPECT_EQ(name.rfind(beginning, 0), 0U);
  EXPECT_EQ(beginning.size() % 2, 0U) << "a character was cut";
}

class Leftovers : public test::TestFolder {
 protected:
  // Simulates a program that is killed while it writes `name`.
  void WriteAndDie(const std::string& name, std::string_view owner = {}) const {
    const pid_t child = ::fork();
    if (child == 0) {
      AtomicFile file(At(name), owner, HostFileSystem());
      file.Write("half");
      ::_exit(0);
    }
    ::waitpid(child, nullptr, 0);
  }
};

TEST_F(Leftovers, OnlyThoseOfAKilledProgramAreRemoved) {
  Put("a.mdb", "old");
  AtomicFile underWay(At("a.mdb"), HostFileSystem());
  WriteAndDie("a.mdb");
  WriteAndDie("a.mdb.bak");
  Put(".a.mdb.tmp", "another program's");
  underWay.Write("new");
  ASSERT_EQ(Count(), 5);
  RemoveLeftovers(At("a.mdb"), HostFileSystem());
  EXPECT_EQ(Count(), 4);
  underWay.Commit();
  EXPECT_EQ(Get("a.mdb"), "new");
  RemoveLeftovers(At("a.mdb.bak"), HostFileSystem());
  EXPECT_EQ(Count(), 2);
  EXPECT_EQ(Get(".a.mdb.tmp"), "another program's");
}

TEST_F(Leftovers, AreRemovedByTheNextWritingOfTheFile) {
  WriteAndDie("a.ini");
  WriteAndDie("b.ini");
  ASSERT_EQ(Count(), 2);
  WriteFile(At("a.ini"), "new", HostFileSystem());
  EXPECT_EQ(Count(), 2);
  WriteFile(At("b.ini"), "new", HostFileSystem());
  EXPECT_EQ(Count(), 2);
  EXPECT_EQ(Get("a.ini") + Get("b.ini"), "newnew");
}

// Another owner in the same folder may still need its temporary file, also one for a file of the same name.
TEST_F(Leftovers, OfAnOwnerAreRemovedWhateverTheyWereFor) {
  WriteAndDie("at-ten.tql");
  WriteAndDie("at-ten.tql", "one");
  WriteAndDie("at-ten.tql", "another");
  ASSERT_EQ(Count(), 3);
  AtomicFile(At("at-eleven.tql"), "one", HostFileSystem()).Commit();
  EXPECT_EQ(Count(), 3);
  EXPECT_EQ(Get("at-eleven.tql"), "");
  AtomicFile(At("at-ten.tql"), "another", HostFileSystem()).Commit();
  EXPECT_EQ(Count(), 3);
}

TEST_F(Leftovers, StayWhereTheFileSystemHasNoLocks) {
  WriteAndDie("a.mdb");
  HookedFileSystem files(HostFileSystem(), [](const FileCall& call, const HookedFileSystem::Make& make) {
    return call.kind == FileCall::LockWhole ? -ENOLCK : make();
  });
  RemoveLeftovers(At("a.mdb"), files);
  EXPECT_EQ(Count(), 1);
  WriteFile(At("a.mdb"), "new", files);
  EXPECT_EQ(Get("a.mdb"), "new");
}

// Another program may remove a temporary file as a leftover between its creation and its lock.
TEST_F(Leftovers, ATemporaryFileRemovedBeforeItsLockIsCreatedAgain) {
  bool taken = false;
  HookedFileSystem files(HostFileSystem(), [&](const FileCall& call, const HookedFileSystem::Make& make) {
    if (call.kind == FileCall::LockWhole && !taken) {
      taken = true;
      RemoveLeftovers(At("a.mdb"), HostFileSystem());
    }
    return make();
  });
  WriteFile(At("a.mdb"), "new", files);
  EXPECT_TRUE(taken);
  EXPECT_EQ(Get("a.mdb"), "new");
  EXPECT_EQ(Count(), 1);
}

}  // namespace
}  // namespace files

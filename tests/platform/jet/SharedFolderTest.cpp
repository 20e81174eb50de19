// SPDX-License-Identifier: MIT
// Links, other kinds of files, and the permissions of several users, on a real disk.
#include "platform/jet/database/Database.h"
#include "platform/jet/storage/Storage.h"
#include "platform/jet/values/Codec.h"
#include "platform/jet/values/Error.h"
#include "tests/platform/jet/support/Child.h"
#include "tests/platform/jet/support/FaultyFiles.h"
#include "tests/platform/jet/support/SampleTable.h"
#include "tests/platform/jet/support/TinyDatabase.h"
#include "tests/platform/jet/support/Wreck.h"

#include <grp.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace jet {
namespace {

namespace fs = std::filesystem;
using test::Child;
using test::FaultyFiles;
using Values = std::vector<std::uint32_t>;

constexpr ::uid_t kNobody = 65534;

class SharedFolder : public testing::Test {
 protected:
  void SetUp() override {
    std::string pattern = (fs::temp_directory_path() / "jet-folder-XXXXXX").string();
    folder_ = ::mkdtemp(pattern.data());
    fs::permissions(folder_, fs::perms::all);
    path_ = folder_ / "station.mdb";
    Write(path_, test::TinyDatabase({1, 2, 3}));
  }
  void TearDown() override { fs::remove_all(folder_); }

  static void Write(const fs::path& path, const Bytes& content) {
    std::ofstream(path, std::ios::binary)
        .write(reinterpret_cast<const char*>(content.data()), static_cast<std::streamsize>(content.size()));
  }
  static Bytes Content(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }
  static std::string Change(const fs::path& path, std::uint32_t value = 10) {
    return test::MessageOf([&] {
      Storage storage(path, test::TestOptions(), HostFileSystem());
      WriteTurn writing(storage);
      test::Fill(storage, 1, value);
      writing.Commit();
    });
  }
  static Values Read(const fs::path& path, bool readOnly = false) {
    Storage storage(path, test::TestOptions(readOnly), HostFileSystem());
    const ReadTurn reading(storage);
    return test::PagesOf(storage.Source());
  }
  fs::path Companion(const char* ending) const { return folder_ / (std::string("station") + ending); }
  static unsigned ModeOf(const fs::path& path) {
    return static_cast<unsigned>(fs::status(path).permissions() & fs::perms::mask);
  }
  struct User {
    ::uid_t user;  // also the primary group
    std::vector<::gid_t> groups;
    ::mode_t mask;
  };
  // Runs `work` as that user and returns the failure. Without root, all users are the one running the test.
  static std::string As(const User& user, const std::function<void()>& work) {
    Child child([&](const Child::Acknowledge& acknowledge) {
      ::umask(user.mask);
      if (::geteuid() == 0 && (::setgroups(user.groups.size(), user.groups.data()) != 0 || ::setgid(user.user) != 0 ||
                               ::setuid(user.user) != 0))
        ::_exit(3);
      for (const char each : test::MessageOf(work))
        acknowledge(each);
    });
    std::string message;
    for (std::int64_t each = 0; child.Next(each);)
      message.push_back(static_cast<char>(each));
    EXPECT_EQ(child.Wait(), 0);
    return message;
  }

  // As an unprivileged user.
  static std::string AsAnother(const std::function<void()>& work) { return As({kNobody, {}, 022}, work); }
  // Is killed at that file call of a change.
  void KilledAt(int call) const {
    FaultyFiles files(HostFileSystem());
    Storage dying(path_, test::TestOptions(), files);
    files.FailAt(call, test::Fault::Dead);
    test::ChangePages(dying);
  }

  fs::path folder_;
  fs::path path_;
};

bool Names(const std::string& message, const fs::path& path) {
  return message.find("'" + path.string() + "'") != std::string::npos;
}

TEST_F(SharedFolder, AChangeThroughALinkIsRolledBackThroughTheRealName) {
  fs::create_directory(folder_ / "links");
  const fs::path link = folder_ / "links" / "anders.mdb";
  fs::create_symlink(path_, link);
  const Bytes before = Content(path_);
  for (int call = 0; Content(path_) == before; ++call) {
    FaultyFiles files(HostFileSystem());
    Storage storage(link, test::TestOptions(), files);
    EXPECT_TRUE(fs::exists(Companion(".ldb")));
    files.FailAt(call, test::Fault::Dead);
    test::MessageOf([&] { test::ChangePages(storage); });
  }
  EXPECT_EQ(Read(path_), test::PagesBefore());
  EXPECT_TRUE(fs::is_empty(folder_ / "links") || std::distance(fs::directory_iterator(link.parent_path()), {}) == 1);
}

TEST_F(SharedFolder, ARedirectedLinkIsFollowed) {
  const fs::path link = folder_ / "actueel.mdb";
  fs::create_symlink(path_, link);
  Storage storage(link, test::TestOptions(), HostFileSystem());
  Write(folder_ / "nieuw.mdb", test::TinyDatabase({7, 8}));
  fs::remove(link);
  fs::create_symlink(folder_ / "nieuw.mdb", link);
  {
    WriteTurn writing(storage);
    test::Fill(storage, 1, 70);
    writing.Commit();
  }
  EXPECT_EQ(Read(folder_ / "nieuw.mdb"), (Values{70, 8}));
  EXPECT_EQ(Read(path_), (Values{1, 2, 3}));
}

TEST_F(SharedFolder, AFileWithTwoNamesIsReadAndNotWritten) {
  fs::create_hard_link(path_, folder_ / "tweede.mdb");
  EXPECT_TRUE(Names(Change(path_), path_));
  EXPECT_EQ(Read(path_), (Values{1, 2, 3}));
  fs::remove(folder_ / "tweede.mdb");
  EXPECT_EQ(Change(path_), "");
}

TEST_F(SharedFolder, AnotherTimeOfTheFileMeansAnotherFile) {
  Storage storage(path_, test::TestOptions(), HostFileSystem());
  {
    const ReadTurn reading(storage);
    EXPECT_EQ(test::PagesOf(storage.Source()), (Values{1, 2, 3}));
  }
  const auto time = fs::last_write_time(path_);
  test::CopyInto(HostFileSystem(), path_, test::TinyDatabase({1, 20, 3}));
  fs::last_write_time(path_, time + std::chrono::seconds(1));
  const ReadTurn reading(storage);
  EXPECT_EQ(test::PagesOf(storage.Source()), (Values{1, 20, 3}));
}

TEST_F(SharedFolder, ALinkInPlaceOfTheLockFileIsNotFollowed) {
  const Bytes text(100, 'x');
  Write(folder_ / "brief.txt", text);
  fs::create_symlink(folder_ / "brief.txt", Companion(".ldb"));
  EXPECT_TRUE(Names(Change(path_), Companion(".ldb")));
  EXPECT_EQ(Content(folder_ / "brief.txt"), text);
  EXPECT_EQ(Read(path_), (Values{1, 2, 3}));
}

TEST_F(SharedFolder, AFileOfTheLockFilesNameIsNotOverwritten) {
  for (const Bytes& own : {Bytes(11, 'x'), Bytes(64, 'x'), Bytes(70, 'x'), test::TinyDatabase({1, 2, 3, 4, 5})}) {
    Write(Companion(".ldb"), own);
    EXPECT_TRUE(Names(Change(path_), Companion(".ldb")));
    EXPECT_EQ(Content(Companion(".ldb")), own);
  }
}

TEST_F(SharedFolder, ADatabaseOfTheLockFilesNameIsNeitherWrittenNorMade) {
  const fs::path path = folder_ / "oud.LDB";
  Write(path, test::TinyDatabase({1, 2, 3}));
  EXPECT_TRUE(Names(Change(path), path));
  EXPECT_EQ(Content(path), test::TinyDatabase({1, 2, 3}));
  EXPECT_EQ(Read(path, true), (Values{1, 2, 3}));
  const std::string refusal = test::MessageOf([&] { Database::Create(folder_ / "nieuw.ldb"); });
  EXPECT_TRUE(Names(refusal, folder_ / "nieuw.ldb"));
  EXPECT_TRUE(refusal.ends_with("Geef de database een naam die op .mdb eindigt.")) << refusal;
}

TEST_F(SharedFolder, AProgramThatCannotUseTheLockFileDoesNotWrite) {
  Write(Companion(".ldb"), {});
  fs::permissions(Companion(".ldb"), fs::perms::owner_read | fs::perms::others_read);
  fs::permissions(path_,
                  fs::perms::owner_read | fs::perms::owner_write | fs::perms::others_read | fs::perms::others_write);
  const std::string message = AsAnother([&] {
    EXPECT_EQ(Read(path_), (Values{1, 2, 3}));
    Storage storage(path_, test::TestOptions(), HostFileSystem());
    const WriteTurn writing(storage);
  });
  EXPECT_TRUE(Names(message, Companion(".ldb"))) << message;
}

TEST_F(SharedFolder, TheLockFileAndTheJournalHaveTheRightsOfTheDatabase) {
  const ::mode_t umaskBefore = ::umask(0);
  for (const unsigned mask : {0022U, 0077U, 0U}) {
    for (const unsigned mode : {0660U, 0600U, 0664U}) {
      ::umask(mask);
      fs::permissions(path_, static_cast<fs::perms>(mode));
      Storage storage(path_, test::TestOptions(), HostFileSystem());
      EXPECT_EQ(ModeOf(Companion(".ldb")), mode);
      // A killed writer leaves its journal.
      const Bytes before = Content(path_);
      for (int call = 0; Content(path_) == before; ++call)
        test::MessageOf([&] { KilledAt(call); });
      EXPECT_EQ(ModeOf(Companion(".mdb-journal")), mode);
      EXPECT_EQ(Read(path_), test::PagesBefore());
    }
  }
  ::umask(umaskBefore);
}

class OtherKinds : public SharedFolder, public testing::WithParamInterface<const char*> {
 protected:
  void Put(const fs::path& path) {
    fs::remove(path);
    const std::string kind = GetParam();
    if (kind == "Pipe") {
      ASSERT_EQ(::mkfifo(path.c_str(), 0666), 0);
    }
    if (kind == "Folder") fs::create_directory(path);
    if (kind == "LinkToNothing") fs::create_symlink(folder_ / "nergens", path);
  }
};

INSTANTIATE_TEST_SUITE_P(Of, OtherKinds, testing::Values("Pipe", "Folder", "LinkToNothing"),
                         [](const testing::TestParamInfo<const char*>& one) { return std::string(one.param); });

TEST_P(OtherKinds, AreNoDatabase) {
  Put(path_);
  EXPECT_TRUE(Names(test::MessageOf([&] { Read(path_, true); }), path_));
  EXPECT_TRUE(Names(Change(path_), path_));
}

TEST_P(OtherKinds, AreNoLockFile) {
  Put(Companion(".ldb"));
  EXPECT_TRUE(Names(Change(path_), Companion(".ldb")));
  EXPECT_EQ(Read(path_), (Values{1, 2, 3}));
}

TEST_P(OtherKinds, AreNoJournal) {
  Put(Companion(".mdb-journal"));
  const std::string message = Change(path_);
  EXPECT_TRUE(Names(message, Companion(".mdb-journal"))) << message;
  EXPECT_EQ(message.find("bestaat al"), std::string::npos) << message;
  EXPECT_EQ(Content(path_), test::TinyDatabase({1, 2, 3}));
}

// Sparse journals of 40 GB that claim 256 pages, and as many pages as they have room for.
TEST_F(SharedFolder, AHugeJournalIsRenamed) {
  constexpr std::uint64_t kLength = std::uint64_t{40} << 30;
  for (const std::uint64_t pages : {std::uint64_t{256}, kLength / 4232}) {
    Bytes head(40);
    std::copy_n("SPRJRNL2", 8, head.begin());
    Store(&head[8], static_cast<std::uint32_t>(pages));
    Store(&head[16], pages * kPageSize);
    Store(&head[24], pages * kPageSize);
    Write(Companion(".mdb-journal"), head);
    fs::resize_file(Companion(".mdb-journal"), kLength);
    EXPECT_TRUE(Names(test::MessageOf([&] { Read(path_); }), Companion(".mdb-journal-1"))) << pages;
    EXPECT_EQ(Read(path_), (Values{1, 2, 3}));
    fs::remove(Companion(".mdb-journal-1"));
  }
}

// Two members of a group, each with another primary group, write in turn, whatever the umask of either. One is killed
// midway, and the other rolls its change back.
TEST_F(SharedFolder, TwoUsersOfAGroupWriteInTurn) {
  constexpr ::uid_t kFirstUser = 1001;
  constexpr ::gid_t kSharedGroup = 2000;
  for (const auto& [firstMask, secondMask] : {std::pair{022U, 077U}, std::pair{077U, 022U}, std::pair{077U, 077U}}) {
    for (const unsigned folderMode : {0770U, 02770U}) {
      if (::geteuid() == 0) {
        ASSERT_EQ(::chown(folder_.c_str(), kFirstUser, kSharedGroup), 0);
        ASSERT_EQ(::chown(path_.c_str(), kFirstUser, kSharedGroup), 0);
      }
      ASSERT_EQ(::chmod(folder_.c_str(), folderMode), 0);
      ASSERT_EQ(::chmod(path_.c_str(), 0660), 0);
      fs::remove(Companion(".ldb"));
      const User first{kFirstUser, {kSharedGroup}, firstMask};
      const User second{kFirstUser + 1, {kSharedGroup}, secondMask};
      const auto changedBy = [&](const User& user, std::uint32_t value) {
        return As(user, [&] {
          Storage storage(path_, test::TestOptions(), HostFileSystem());
          WriteTurn writing(storage);
          test::Fill(storage, 1, value);
          writing.Commit();
        });
      };
      for (std::uint32_t value = 20; value < 24; ++value)
        EXPECT_EQ(changedBy(value % 2 == 0 ? first : second, value), "");
      EXPECT_EQ(Read(path_), (Values{23, 2, 3}));
      const Bytes before = Content(path_);
      for (int call = 0; Content(path_) == before; ++call)
        As(first, [&] { KilledAt(call); });
      EXPECT_TRUE(fs::exists(Companion(".mdb-journal")));
      EXPECT_EQ(changedBy(second, 30), "");
      EXPECT_FALSE(fs::exists(Companion(".mdb-journal")));
      EXPECT_EQ(Read(path_), (Values{30, 2, 3}));
    }
  }
}

}  // namespace
}  // namespace jet

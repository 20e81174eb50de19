// SPDX-License-Identifier: MIT
// The permissions of the files that compacting writes, in a folder that several users share, on a real disk.
#include "platform/files/HookedFileSystem.h"
#include "platform/jet/check/Compact.h"
#include "tests/platform/jet/support/Child.h"
#include "tests/platform/jet/support/SampleTable.h"

#include <grp.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <string>

namespace jet {
namespace {

namespace fs = std::filesystem;
using files::FileCall;
using test::Child;
using test::MessageOf;
using Make = files::HookedFileSystem::Make;

constexpr ::uid_t kFirst = 1001;
constexpr ::uid_t kSecond = 1002;
constexpr ::gid_t kGroup = 2000;

// A database of the first user in a folder that is writable for the group.
class CompactRights : public testing::Test {
 protected:
  void SetUp() override {
    std::string pattern = (fs::temp_directory_path() / "jet-rights-XXXXXX").string();
    folder_ = ::mkdtemp(pattern.data());
    path_ = folder_ / "station.mdb";
    Database::Create(path_);
    Give(folder_, 0770);
    Give(path_, 0660);
  }
  void TearDown() override { fs::remove_all(folder_); }

  // Gives the file to the first user and the group. Without root, one user plays all of them.
  static void Give(const fs::path& path, ::mode_t mode) {
    if (::geteuid() == 0) {
      ASSERT_EQ(::chown(path.c_str(), kFirst, kGroup), 0);
    }
    ASSERT_EQ(::chmod(path.c_str(), mode), 0);
  }
  static files::FileStatus StatusOf(const fs::path& path) { return *HostFileSystem().Status(path); }
  static unsigned ModeOf(const fs::path& path) { return StatusOf(path).permissions; }
  static ::gid_t GroupOf(const fs::path& path) { return StatusOf(path).group; }
  static ::gid_t Group() { return ::geteuid() == 0 ? kGroup : ::getegid(); }
  static void Write(const fs::path& path, const std::string& text) { std::ofstream(path) << text; }
  static std::string Content(const fs::path& path) {
    std::ifstream file(path);
    return {std::istreambuf_iterator<char>(file), {}};
  }

  // Runs `work` as a user of the group and returns the failure.
  static std::string As(::uid_t user, ::mode_t mask, const std::function<void()>& work) {
    Child child([&](const Child::Acknowledge& acknowledge) {
      ::umask(mask);
      if (::geteuid() == 0 && (::setgroups(1, &kGroup) != 0 || ::setgid(user) != 0 || ::setuid(user) != 0)) ::_exit(3);
      for (const char each : MessageOf(work))
        acknowledge(each);
    });
    std::string message;
    for (std::int64_t each = 0; child.Next(each);)
      message.push_back(static_cast<char>(each));
    EXPECT_EQ(child.Wait(), 0);
    return message;
  }

  fs::path folder_;
  fs::path path_;
};

void AddTable(const fs::path& path) {
  OpenOptions options;
  options.writable = true;
  const auto database = Database::Open(path, options);
  WriteTurn turn(*database);
  TableDefinition table = test::SpotsTable();
  table.name += static_cast<char16_t>(u'A' + database->TableNames().size());
  database->CreateTable(table);
  turn.Commit();
}

TEST_F(CompactRights, OneMemberOfTheGroupDoesNotLockOutAnother) {
  for (const ::mode_t mask : {022U, 077U}) {
    for (const ::uid_t user : {kSecond, kFirst}) {
      EXPECT_EQ(As(user, mask, [&] { Compact(path_); }), "");
      for (const fs::path& each : {path_, folder_ / "station.mdb.bak"}) {
        EXPECT_EQ(ModeOf(each), 0660U) << each;
        EXPECT_EQ(GroupOf(each), Group()) << each;
      }
      EXPECT_EQ(As(kFirst, mask, [&] { AddTable(path_); }), "");
      EXPECT_EQ(As(kSecond, mask, [&] { AddTable(path_); }), "");
    }
  }
}

TEST_F(CompactRights, ACopyIsNeverOpenToMoreUsers) {
  Give(path_, 0600);
  for (const ::mode_t mask : {022U, 077U}) {
    const fs::path target = folder_ / ("kopie" + std::to_string(mask) + ".mdb");
    EXPECT_EQ(As(kFirst, mask, [&] { CompactInto(path_, target); }), "");
    EXPECT_EQ(As(kFirst, mask, [&] { Compact(path_); }), "");
    for (const fs::path& each : {target, path_, folder_ / "station.mdb.bak"})
      EXPECT_EQ(ModeOf(each), 0600U) << each;
  }
}

TEST_F(CompactRights, ACopyBelongsToTheGroupToo) {
  for (const ::mode_t mask : {022U, 077U}) {
    const fs::path target = folder_ / ("kopie" + std::to_string(mask) + ".mdb");
    EXPECT_EQ(As(kSecond, mask, [&] { CompactInto(path_, target); }), "");
    EXPECT_EQ(ModeOf(target), 0660U);
    EXPECT_EQ(GroupOf(target), Group());
    EXPECT_EQ(As(kFirst, mask, [&] { AddTable(target); }), "");
  }
}

TEST_F(CompactRights, NothingOfTheCopyIsWrittenWhileOthersMayOpenIt) {
  Give(path_, 0600);
  int written = 0;
  files::HookedFileSystem files(HostFileSystem(), [&](const FileCall& call, const Make& make) {
    const bool isNew = call.path.filename().string().ends_with("-tmp");
    if (call.kind == FileCall::Write && isNew) {
      EXPECT_EQ(ModeOf(call.path), 0600U) << call.path;
      ++written;
    }
    return make();
  });
  CompactInto(path_, folder_ / "kopie.mdb", {}, files);
  Compact(path_, {}, files);
  EXPECT_GE(written, 3);
}

TEST_F(CompactRights, ALinkInPlaceOfTheOldFileIsReplacedAndNotFollowed) {
  const fs::path letter = folder_ / "brief.txt";
  Write(letter, "brief");
  fs::create_symlink(letter, folder_ / "station.mdb.bak");
  Compact(path_);
  EXPECT_EQ(Content(letter), "brief");
  EXPECT_FALSE(fs::is_symlink(folder_ / "station.mdb.bak"));
  EXPECT_EQ(ModeOf(folder_ / "station.mdb.bak"), 0660U);
}

// At each file call of compacting by root, a member of the group replaces the database by a link.
TEST_F(CompactRights, AFileThatALinkLeadsToMeanwhileIsLeftAsItIs) {
  const fs::path letter = folder_ / "brief.txt";
  Write(letter, "brief");
  ASSERT_EQ(::chmod(letter.c_str(), 0600), 0);
  const files::FileStatus before = StatusOf(letter);
  const std::string content = Content(path_);
  bool reached = true;
  for (int at = 0; reached; ++at) {
    reached = false;
    int call = 0;
    files::HookedFileSystem files(HostFileSystem(), [&](const FileCall&, const Make& make) {
      if (call++ == at) {
        reached = true;
        fs::remove(path_);
        fs::create_symlink(letter, path_);
      }
      return make();
    });
    MessageOf([&] { Compact(path_, {}, files); });
    const files::FileStatus after = StatusOf(letter);
    EXPECT_EQ(Content(letter), "brief") << "call " << at;
    EXPECT_EQ(after.permissions, before.permissions) << "call " << at;
    EXPECT_EQ(after.owner, before.owner) << "call " << at;
    EXPECT_EQ(after.group, before.group) << "call " << at;
    for (const auto& each : fs::directory_iterator(folder_)) {
      if (each.path() != letter) fs::remove(each.path());
    }
    Write(path_, content);
    Give(path_, 0660);
  }
}

TEST_F(CompactRights, AFileThatTookTheNameMeanwhileIsNotReplaced) {
  const fs::path target = folder_ / "kopie.mdb";
  files::HookedFileSystem files(HostFileSystem(), [&](const FileCall& call, const Make& make) {
    if (call.kind == FileCall::Rename || call.kind == FileCall::RenameNew) Write(target, "een ander");
    return make();
  });
  EXPECT_EQ(MessageOf([&] { CompactInto(path_, target, {}, files); }),
            "Kan het bestand '" + target.string() + "' niet aanmaken: het bestand bestaat al.");
  EXPECT_EQ(Content(target), "een ander");
}

TEST_F(CompactRights, TheOldFileIsKeptNextToTheRealOne) {
  fs::create_directory(folder_ / "links");
  fs::create_symlink(path_, folder_ / "links" / "anders.mdb");
  Compact(folder_ / "links" / "anders.mdb");
  EXPECT_TRUE(fs::is_symlink(folder_ / "links" / "anders.mdb"));
  EXPECT_TRUE(fs::exists(folder_ / "station.mdb.bak"));
  EXPECT_EQ(std::distance(fs::directory_iterator(folder_ / "links"), {}), 1);
}

}  // namespace
}  // namespace jet

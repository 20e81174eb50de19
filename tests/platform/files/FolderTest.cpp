// SPDX-License-Identifier: MIT
#include "platform/files/Folder.h"

#include "platform/files/Error.h"
#include "tests/platform/files/support/TestFolder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <string>

namespace files {
namespace {

class Folders : public test::TestFolder {
 protected:
  unsigned PermissionsOf(const std::string& name) const { return HostFileSystem().Status(At(name))->permissions; }
  static FileStatus FileWith(unsigned permissions) {
    FileStatus status;
    status.permissions = permissions;
    status.owner = ::geteuid();
    status.group = ::getegid();
    return status;
  }
};

TEST_F(Folders, UsersOfTheFileMayUseTheFolderInTheSameWay) {
  const std::pair<unsigned, unsigned> cases[] = {{0600, 0700}, {0640, 0750}, {0660, 0770}, {0664, 0775},
                                                 {0666, 0777}, {0604, 0705}, {0444, 0755}, {0755, 0755}};
  for (const mode_t umask : {mode_t{0}, mode_t{077}}) {
    const mode_t before = ::umask(umask);
    for (const auto& [file, folder] : cases) {
      const std::string name = std::to_string(umask) + '-' + std::to_string(file);
      MakeFolder(At(name), FileWith(file));
      EXPECT_EQ(PermissionsOf(name), folder) << std::oct << file << " umask " << umask;
    }
    ::umask(before);
  }
}

TEST_F(Folders, AnExistingFolderOrALinkToOneIsLeftAsItIs) {
  std::filesystem::create_directory(At("there"));
  ASSERT_EQ(::chmod(At("there").c_str(), 0711), 0);
  std::filesystem::create_directory_symlink(At("there"), At("link"));
  MakeFolder(At("there"), FileWith(0666));
  MakeFolder(At("link"), FileWith(0666));
  EXPECT_EQ(PermissionsOf("there"), 0711U);
  EXPECT_TRUE(std::filesystem::is_symlink(At("link")));
}

TEST_F(Folders, TheGroupOfTheParentFolderIsInheritedByItsFiles) {
  ASSERT_EQ(::chmod(At("").c_str(), 02755), 0);
  MakeFolder(At("copies"), FileWith(0640));
  EXPECT_EQ(PermissionsOf("copies"), 02750U);
}

TEST_F(Folders, AFileOrAMissingParentIsAnErrorWithTheName) {
  Put("file", "x");
  for (const char* name : {"file", "none/sub"}) {
    try {
      MakeFolder(At(name), FileWith(0600));
      ADD_FAILURE() << "created " << name;
    } catch (const Error& error) {
      EXPECT_EQ(std::string(error.what()).find("Kan de map '" + At(name).string() + "' niet maken: "), 0U)
          << error.what();
    }
  }
  EXPECT_EQ(Get("file"), "x");
}

}  // namespace
}  // namespace files

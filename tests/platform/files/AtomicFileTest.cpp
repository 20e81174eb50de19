// SPDX-License-Identifier: MIT
#include "platform/files/AtomicFile.h"

#include "platform/files/Error.h"
#include "platform/files/MemoryFileSystem.h"
#include "tests/platform/files/support/FaultyFiles.h"
#include "tests/platform/files/support/TestFolder.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>

namespace files {
namespace {

using test::Fault;

std::string ContentOf(files::MemoryFileSystem& files, const char* path) {
  const Bytes content = files.Get(path);
  return {content.begin(), content.end()};
}

TEST(AtomicFile, ReplacesTheOldFileAndLeavesNothingElse) {
  files::MemoryFileSystem files;
  WriteFile("/a/planning.txt", "old", files);
  WriteFile("/a/planning.txt", "new and longer", files);
  EXPECT_EQ(ContentOf(files, "/a/planning.txt"), "new and longer");
  EXPECT_EQ(files.Names().size(), 1U);
}

TEST(AtomicFile, WithoutCommitNothingIsChanged) {
  files::MemoryFileSystem files;
  WriteFile("/a/planning.txt", "old", files);
  {
    AtomicFile file("/a/planning.txt", files);
    file.Write("new");
    EXPECT_TRUE(files.Exists(file.TemporaryPath()));
  }
  EXPECT_EQ(ContentOf(files, "/a/planning.txt"), "old");
  EXPECT_EQ(files.Names().size(), 1U);
}

// Runs `change` once for each of its calls and each way in which that call can fail; `expect` checks the result.
void FailEveryCall(const std::function<void(FileSystem&)>& change,
                   const std::function<void(files::MemoryFileSystem&, bool failed)>& expect) {
  for (const Fault fault : {Fault::Error, Fault::DiskFull, Fault::Interrupted, Fault::ShortCount}) {
    int call = 0;
    for (bool reached = true; reached; ++call) {
      files::MemoryFileSystem memory;
      WriteFile("/a/file", "old\n", memory);
      test::FaultyFiles files(memory);
      files.FailAt(call, fault);
      bool failed = false;
      try {
        change(files);
      } catch (const Error&) {
        failed = true;
      }
      reached = files.Failed();
      const bool harmless = fault == Fault::Interrupted || fault == Fault::ShortCount;
      EXPECT_FALSE(harmless && failed) << call;
      expect(memory, failed);
    }
    EXPECT_GT(call, 4);
  }
}

TEST(AtomicFile, IsOldOrNewWhicheverCallFails) {
  FailEveryCall([](FileSystem& files) { WriteFile("/a/file", "new\n", files); },
                [](files::MemoryFileSystem& memory, bool failed) {
                  const std::string content = ContentOf(memory, "/a/file");
                  EXPECT_TRUE(content == "new\n" || (failed && content == "old\n")) << content;
                });
}

class AtomicFileOnDisk : public test::TestFolder {};

// Replacing it under one name would leave the old content under the other.
TEST_F(AtomicFileOnDisk, AFileWithSeveralHardLinksIsNotReplaced) {
  Put("settings.ini", "old");
  std::filesystem::create_hard_link(At("settings.ini"), At("other.ini"));
  try {
    WriteFile(At("settings.ini"), "new", HostFileSystem());
    FAIL();
  } catch (const Error& error) {
    EXPECT_EQ(error.Code(), ErrorCode::Unsupported);
    EXPECT_NE(std::string(error.what()).find(At("settings.ini").string() + "' heeft 2 namen"), std::string::npos);
  }
  EXPECT_EQ(Get("settings.ini") + Get("other.ini"), "oldold");
  EXPECT_EQ(Count(), 2);
  std::filesystem::remove(At("other.ini"));
  WriteFile(At("settings.ini"), "new", HostFileSystem());
  EXPECT_EQ(Get("settings.ini"), "new");
}

}  // namespace
}  // namespace files

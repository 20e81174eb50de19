// SPDX-License-Identifier: MIT
#include "platform/runtime/FileCalls.h"

#include "platform/files/HookedFileSystem.h"
#include "platform/files/MemoryFileSystem.h"
#include "platform/runtime/SystemReason.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <vector>

using namespace Qt::StringLiterals;
using files::FileCall;

namespace {

using MakeCall = files::HookedFileSystem::Make;

TEST(FileCalls, RemoveFileReturnsZeroOrTheErrno) {
  files::MemoryFileSystem memory;
  memory.Put("/a/b.wav", {1});
  const files::FileSystemScope scope(memory);
  EXPECT_EQ(runtime::RemoveFile(u"/a/b.wav"_s), 0);
  EXPECT_TRUE(memory.Names().empty());
  EXPECT_EQ(runtime::RemoveFile(u"/a/b.wav"_s), ENOENT);
}

TEST(FileCalls, RemoveFileRepeatsAnInterruptedCall) {
  files::MemoryFileSystem memory;
  memory.Put("/a", {1});
  int calls = 0;
  files::HookedFileSystem hooked(
      memory, [&](const FileCall&, const MakeCall& make) -> std::int64_t { return ++calls < 3 ? -EINTR : make(); });
  const files::FileSystemScope scope(hooked);
  EXPECT_EQ(runtime::RemoveFile(u"/a"_s), 0);
  EXPECT_EQ(calls, 3);
}

TEST(FileCalls, SyncFolderOfSyncsTheFolderOfTheFile) {
  files::MemoryFileSystem memory;
  std::vector<std::filesystem::path> synced;
  int result = 0;
  files::HookedFileSystem hooked(memory, [&](const FileCall& call, const MakeCall&) -> std::int64_t {
    EXPECT_EQ(call.kind, FileCall::SyncFolder);
    synced.push_back(call.path);
    return -result;
  });
  const files::FileSystemScope scope(hooked);
  EXPECT_EQ(runtime::SyncFolderOf(u"/data/caf\u00E9/a.txt"_s), 0);
  result = EIO;
  EXPECT_EQ(runtime::SyncFolderOf(u"/data/a.txt"_s), EIO);
  EXPECT_EQ(synced, (std::vector<std::filesystem::path>{"/data/caf\u00E9", "/data"}));
}

TEST(FileCalls, NativePathIsUtf8) {
  EXPECT_EQ(runtime::NativePath(u"/srv/\u00E9\u20AC.wav"_s).string(), "/srv/\xC3\xA9\xE2\x82\xAC.wav");
}

TEST(SystemReasons, KnownOnesAreDutchOthersHaveTheirNumber) {
  EXPECT_EQ(runtime::SystemReason(ENOSPC), u"de schijf is vol"_s);
  EXPECT_EQ(runtime::SystemReason(EACCES), u"toegang geweigerd"_s);
  EXPECT_TRUE(runtime::SystemReason(EXDEV).startsWith(u"systeemfout %1 ("_s.arg(EXDEV)));
}

}  // namespace

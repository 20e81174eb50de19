// SPDX-License-Identifier: MIT
// Error codes and their texts for the user.
#include "platform/files/Error.h"
#include "platform/files/FileSystem.h"
#include "platform/files/HookedFileSystem.h"
#include "platform/files/MemoryFileSystem.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <functional>
#include <set>
#include <string>
#include <vector>

namespace files {
namespace {

struct KnownError {
  int errorNumber;
  ErrorCode code;
};

const KnownError kKnownErrors[] = {
    {EACCES, ErrorCode::AccessDenied},
    {EPERM, ErrorCode::AccessDenied},
    {EROFS, ErrorCode::AccessDenied},
    {EBADF, ErrorCode::AccessDenied},
    {ENOENT, ErrorCode::NotFound},
    {ENOTDIR, ErrorCode::NotFound},
    {ENAMETOOLONG, ErrorCode::NotFound},
    {EEXIST, ErrorCode::Io},
    {EISDIR, ErrorCode::Io},
    {ENXIO, ErrorCode::Io},
    {ELOOP, ErrorCode::Io},
    {EIO, ErrorCode::Io},
    {EMFILE, ErrorCode::Io},
    {ENFILE, ErrorCode::Io},
    {ENOSPC, ErrorCode::DiskFull},
    {EDQUOT, ErrorCode::DiskFull},
    {EFBIG, ErrorCode::DiskFull},
    {ETXTBSY, ErrorCode::Locked},
    {EBUSY, ErrorCode::Locked},
    {ESTALE, ErrorCode::Unreachable},
    {ENOTCONN, ErrorCode::Unreachable},
    {EHOSTDOWN, ErrorCode::Unreachable},
    {EHOSTUNREACH, ErrorCode::Unreachable},
    {ENETUNREACH, ErrorCode::Unreachable},
    {ETIMEDOUT, ErrorCode::Unreachable},
    {ENOLCK, ErrorCode::Unsupported},
    {ENOSYS, ErrorCode::Unsupported},
    {ENOTSUP, ErrorCode::Unsupported},
};

TEST(FileErrorCodes, EachKnownErrnoHasItsCodeAndAReasonInWords) {
  for (const auto& [errorNumber, code] : kKnownErrors) {
    const Error error = SystemError("schrijven", "a.mdb", errorNumber);
    EXPECT_EQ(error.Code(), code) << errorNumber;
    EXPECT_EQ(error.ErrorNumber(), errorNumber);
    const std::string reason = SystemReason(errorNumber);
    EXPECT_EQ(reason.find("systeemfout"), std::string::npos) << reason;
    EXPECT_EQ(std::string(error.what()), "Kan het bestand 'a.mdb' niet schrijven: " + reason + ".");
  }
}

TEST(FileErrorCodes, AnotherErrnoIsReportedWithItsNumber) {
  const Error error = SystemError("lezen", "a.mdb", EXDEV);
  EXPECT_EQ(error.Code(), ErrorCode::Io);
  EXPECT_NE(std::string(error.what()).find("systeemfout " + std::to_string(EXDEV) + " ("), std::string::npos);
}

TEST(FileErrorCodes, AMissingFileThatIsReadIsReportedInOneSentence) {
  for (const char* verb : {"openen", "lezen"})
    EXPECT_STREQ(SystemError(verb, "a.mdb", ENOENT).what(), "Het bestand 'a.mdb' bestaat niet.");
}

// The verb that each call gives in its error.
struct FailingCall {
  FileCall::Kind kind;
  const char* verb;
  std::function<void(FileSystem&)> call;
};

std::vector<FailingCall> FailingCalls() {
  const auto open = [](FileSystem& files) { return files.Open("/a", OpenMode::Write); };
  return {{FileCall::Open, "openen", [=](FileSystem& files) { open(files); }},
          {FileCall::Open, "aanmaken", [](FileSystem& files) { files.Open("/new", OpenMode::Create); }},
          {FileCall::Open, "openen", [](FileSystem& files) { files.OpenIfThere("/a", OpenMode::Read); }},
          {FileCall::Read, "lezen",
           [=](FileSystem& files) {
             Bytes bytes(1);
             open(files)->ReadAt(0, bytes);
           }},
          {FileCall::Write, "schrijven", [=](FileSystem& files) { open(files)->WriteAt(0, Bytes{1}); }},
          {FileCall::Truncate, "inkorten", [=](FileSystem& files) { open(files)->Truncate(0); }},
          {FileCall::Sync, "veilig wegschrijven", [=](FileSystem& files) { open(files)->Sync(); }},
          {FileCall::Lock, "vergrendelen",
           [=](FileSystem& files) {
             open(files)->TryLock({0, 1}, LockKind::Exclusive);
           }},
          {FileCall::Unlock, "vrijgeven",
           [=](FileSystem& files) {
             open(files)->Unlock({0, 1});
           }},
          {FileCall::FindLock, "vergrendelen",
           [=](FileSystem& files) {
             open(files)->IsLockedByOther({0, 1}, LockKind::Shared);
           }},
          {FileCall::LockWhole, "vergrendelen", [=](FileSystem& files) { open(files)->TryLockWhole(); }},
          {FileCall::Status, "lezen", [=](FileSystem& files) { open(files)->Size(); }},
          {FileCall::Status, "vinden", [](FileSystem& files) { files.Status("/a"); }},
          {FileCall::RealPath, "vinden", [](FileSystem& files) { files.RealPath("/a"); }},
          {FileCall::Rename, "hernoemen", [](FileSystem& files) { files.Rename("/a", "/b"); }},
          {FileCall::RenameNew, "hernoemen", [](FileSystem& files) { static_cast<void>(files.RenameNew("/a", "/b")); }},
          {FileCall::Remove, "verwijderen", [](FileSystem& files) { files.Remove("/a"); }},
          {FileCall::SyncFolder, "veilig wegschrijven", [](FileSystem& files) { files.SyncFolderOf("/a"); }},
          {FileCall::List, "lezen", [](FileSystem& files) { files.NamesIn("/"); }}};
}

TEST(FileErrorCodes, EveryFailedCallNamesTheFileAndWhatWasTried) {
  for (const FailingCall& failing : FailingCalls()) {
    MemoryFileSystem memory;
    memory.Put("/a", {1, 2, 3});
    HookedFileSystem hooked(memory, [&](const FileCall& call, const HookedFileSystem::Make& make) -> std::int64_t {
      return call.kind == failing.kind ? -EIO : make();
    });
    try {
      failing.call(hooked);
      ADD_FAILURE() << "no error for call " << failing.kind;
    } catch (const Error& error) {
      EXPECT_EQ(error.ErrorNumber(), EIO);
      const std::string text = error.what();
      EXPECT_NE(text.find(std::string("niet ") + failing.verb + ": lees- of schrijffout"), std::string::npos) << text;
      EXPECT_NE(text.find("'/"), std::string::npos) << text;
    }
  }
}

TEST(FileErrorCodes, EveryCallIsRepeatedWhenASignalInterruptsIt) {
  std::set<FileCall::Kind> repeated;
  for (const FailingCall& interrupted : FailingCalls()) {
    MemoryFileSystem memory;
    memory.Put("/a", {1, 2, 3});
    int left = 2;
    HookedFileSystem hooked(memory, [&](const FileCall& call, const HookedFileSystem::Make& make) -> std::int64_t {
      if (call.kind != interrupted.kind || left == 0) return make();
      --left;
      return -EINTR;
    });
    EXPECT_NO_THROW(interrupted.call(hooked)) << interrupted.kind;
    EXPECT_EQ(left, 0) << interrupted.kind;
    repeated.insert(interrupted.kind);
  }
  EXPECT_EQ(repeated.size(), 16U);
}

}  // namespace
}  // namespace files

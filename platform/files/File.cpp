// SPDX-License-Identifier: MIT
#include "platform/files/File.h"

#include "platform/files/Error.h"
#include "platform/files/Uninterrupted.h"

#include <cerrno>

namespace files {
namespace {

// Turns the errno of a raw call into an Error.
template <typename Call>
auto Finish(const File& file, const char* doing, Call call) {
  const auto result = Uninterrupted(call);
  if (result < 0) throw SystemError(doing, file.Name(), static_cast<int>(-result));
  return result;
}

}  // namespace

std::size_t File::ReadAt(std::uint64_t offset, ByteSpan into) {
  std::size_t done = 0;
  while (done < into.size()) {
    const auto count = Finish(*this, "lezen", [&] { return RawRead(offset + done, into.subspan(done)); });
    if (count == 0) break;
    done += static_cast<std::size_t>(count);
  }
  return done;
}

void File::WriteAt(std::uint64_t offset, ByteView bytes) {
  std::size_t done = 0;
  while (done < bytes.size()) {
    const auto count = Finish(*this, "schrijven", [&] { return RawWrite(offset + done, bytes.subspan(done)); });
    if (count == 0) throw SystemError("schrijven", Name(), EIO);
    done += static_cast<std::size_t>(count);
  }
}

std::uint64_t File::Size() {
  return Status().size;
}

void File::Truncate(std::uint64_t size) {
  Finish(*this, "inkorten", [&] { return RawTruncate(size); });
}

void File::Sync() {
  Finish(*this, "veilig wegschrijven", [&] { return RawSync(); });
}

bool File::TryLock(ByteRange range, LockKind kind) {
  const int result = Uninterrupted([&] { return RawLock(range, kind); });
  if (result == -EAGAIN || result == -EACCES) return false;
  if (result < 0) throw SystemError("vergrendelen", Name(), -result);
  return true;
}

void File::Unlock(ByteRange range) {
  Finish(*this, "vrijgeven", [&] { return RawUnlock(range); });
}

bool File::IsLockedByOther(ByteRange range, LockKind kind, std::uint64_t* where) {
  bool found = false;
  std::uint64_t start = 0;
  Finish(*this, "vergrendelen", [&] { return RawFindLock(range, kind, &found, &start); });
  if (found && where != nullptr) *where = start;
  return found;
}

bool File::TryLockWhole() {
  const int result = Uninterrupted([&] { return RawLockWhole(); });
  if (result == -EAGAIN) return false;
  if (result < 0) throw SystemError("vergrendelen", Name(), -result);
  return true;
}

FileStatus File::Status() {
  FileStatus status;
  Finish(*this, "lezen", [&] { return RawStatus(&status); });
  return status;
}

void File::TakeAccessOf(const FileStatus& original) {
  const FileStatus own = Status();
  const bool isOthers = own.owner != original.owner || own.group != original.group;
  bool hasGroup = own.group == original.group;
  if (!hasGroup) hasGroup = Uninterrupted([&] { return RawSetOwner(kUnchanged, original.group); }) == 0;
  if (own.owner != original.owner) Uninterrupted([&] { return RawSetOwner(original.owner, kUnchanged); });
  const unsigned others = original.permissions & 07;
  const unsigned group = hasGroup ? original.permissions & 070 : original.permissions & 070 & others << 3;
  // The set-group-ID bit of a folder, by which new files inherit its group, is preserved.
  const unsigned special = own.kind == FileKind::Folder ? own.permissions & 07000 : 0;
  const unsigned permissions = (original.permissions & 0700) | group | others | special;
  // Some file systems give every file the same permissions and refuse chmod.
  if ((isOthers ? Status() : own).permissions == permissions) return;
  Finish(*this, "beveiligen", [&] { return RawSetPermissions(permissions); });
}

}  // namespace files

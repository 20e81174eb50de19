#include "platform/files/File.h"

#include "platform/files/Error.h"

#include <cerrno>

namespace files {
namespace {

/// Runs one raw call until it is not interrupted, and turns its errno into an Error.
template <typename Call>
auto Finish(const File& file, const char* doing, Call call) {
  auto result = call();
  while (result == -EINTR)
    result = call();
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
  return static_cast<std::uint64_t>(Finish(*this, "lezen", [&] { return RawSize(); }));
}

void File::Truncate(std::uint64_t size) {
  Finish(*this, "inkorten", [&] { return RawTruncate(size); });
}

void File::Sync() {
  Finish(*this, "veilig wegschrijven", [&] { return RawSync(); });
}

bool File::TryLock(ByteRange range, LockKind kind) {
  int result = RawLock(range, kind);
  while (result == -EINTR)
    result = RawLock(range, kind);
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

FileIdentity File::Identity() {
  FileIdentity identity;
  Finish(*this, "lezen", [&] { return RawIdentity(&identity); });
  return identity;
}

}  // namespace files

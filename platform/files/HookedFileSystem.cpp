// SPDX-License-Identifier: MIT
#include "platform/files/HookedFileSystem.h"

#include <algorithm>
#include <utility>

namespace files {
namespace {

class HookedFile final : public File {
 public:
  HookedFile(std::unique_ptr<File> real, FileSystem::Path path, HookedFileSystem::Hook hook)
      : File(real->Name()), real_(std::move(real)), path_(std::move(path)), hook_(std::move(hook)) {}

  std::int64_t RawRead(std::uint64_t offset, ByteSpan into) override {
    FileCall call{.kind = FileCall::Read, .path = path_, .offset = offset, .size = into.size()};
    return hook_(call, [&] { return real_->RawRead(offset, into.first(std::min(into.size(), call.most))); });
  }
  std::int64_t RawWrite(std::uint64_t offset, ByteView bytes) override {
    FileCall call{.kind = FileCall::Write, .path = path_, .offset = offset, .size = bytes.size(), .bytes = bytes};
    return hook_(call, [&] { return real_->RawWrite(offset, bytes.first(std::min(bytes.size(), call.most))); });
  }
  int RawTruncate(std::uint64_t size) override {
    FileCall call{.kind = FileCall::Truncate, .path = path_, .offset = size};
    return static_cast<int>(hook_(call, [&] { return real_->RawTruncate(size); }));
  }
  int RawSync() override {
    return Hooked(FileCall::Sync, [&] { return real_->RawSync(); });
  }
  int RawLock(ByteRange range, LockKind kind) override {
    return Hooked(FileCall::Lock, [&] { return real_->RawLock(range, kind); });
  }
  int RawUnlock(ByteRange range) override {
    return Hooked(FileCall::Unlock, [&] { return real_->RawUnlock(range); });
  }
  int RawFindLock(ByteRange range, LockKind kind, bool* found, std::uint64_t* where) override {
    return Hooked(FileCall::FindLock, [&] { return real_->RawFindLock(range, kind, found, where); });
  }
  int RawLockWhole() override {
    return Hooked(FileCall::LockWhole, [&] { return real_->RawLockWhole(); });
  }
  int RawStatus(FileStatus* status) override {
    return Hooked(FileCall::Status, [&] { return real_->RawStatus(status); });
  }
  int RawSetOwner(std::uint32_t owner, std::uint32_t group) override {
    return Hooked(FileCall::SetOwner, [&] { return real_->RawSetOwner(owner, group); });
  }
  int RawSetPermissions(unsigned permissions) override {
    return Hooked(FileCall::SetPermissions, [&] { return real_->RawSetPermissions(permissions); });
  }

 private:
  int Hooked(FileCall::Kind kind, const HookedFileSystem::Make& make) {
    FileCall call{.kind = kind, .path = path_};
    return static_cast<int>(hook_(call, make));
  }

  std::unique_ptr<File> real_;
  FileSystem::Path path_;
  HookedFileSystem::Hook hook_;
};

}  // namespace

int HookedFileSystem::RawOpen(const Path& path, const OpenRequest& request, std::unique_ptr<File>* file) {
  std::unique_ptr<File> real;
  const int result = Hooked({.kind = FileCall::Open, .path = path, .request = &request},
                            [&] { return real_.RawOpen(path, request, &real); });
  if (result == 0) *file = std::make_unique<HookedFile>(std::move(real), path, hook_);
  return result;
}

int HookedFileSystem::RawStatus(const Path& path, FileStatus* status) {
  return Hooked({.kind = FileCall::Status, .path = path}, [&] { return real_.RawStatus(path, status); });
}

int HookedFileSystem::RawRealPath(const Path& path, Path* real) {
  return Hooked({.kind = FileCall::RealPath, .path = path}, [&] { return real_.RawRealPath(path, real); });
}

int HookedFileSystem::RawRename(const Path& from, const Path& to) {
  return Hooked({.kind = FileCall::Rename, .path = from, .other = &to}, [&] { return real_.RawRename(from, to); });
}

int HookedFileSystem::RawRenameNew(const Path& from, const Path& to) {
  return Hooked({.kind = FileCall::RenameNew, .path = from, .other = &to},
                [&] { return real_.RawRenameNew(from, to); });
}

int HookedFileSystem::RawLink(const Path& from, const Path& to) {
  return Hooked({.kind = FileCall::Link, .path = from, .other = &to}, [&] { return real_.RawLink(from, to); });
}

int HookedFileSystem::RawRemove(const Path& path) {
  return Hooked({.kind = FileCall::Remove, .path = path}, [&] { return real_.RawRemove(path); });
}

int HookedFileSystem::RawSyncFolder(const Path& folder) {
  return Hooked({.kind = FileCall::SyncFolder, .path = folder}, [&] { return real_.RawSyncFolder(folder); });
}

int HookedFileSystem::RawList(const Path& folder, std::vector<Path>* names) {
  return Hooked({.kind = FileCall::List, .path = folder}, [&] { return real_.RawList(folder, names); });
}

}  // namespace files

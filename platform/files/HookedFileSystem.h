// SPDX-License-Identifier: MIT
#pragma once

#include "platform/files/FileSystem.h"

#include <cstddef>
#include <functional>
#include <limits>

namespace files {

// A raw call of a File or FileSystem, before it is made.
struct FileCall {
  enum Kind {
    Open,
    Read,
    Write,
    Truncate,
    Sync,
    Lock,
    Unlock,
    FindLock,
    LockWhole,
    Status,
    SetOwner,
    SetPermissions,
    RealPath,
    Rename,
    RenameNew,
    Link,
    Remove,
    SyncFolder,
    List
  };

  Kind kind;
  const FileSystem::Path& path;             // the file or folder; for Rename, RenameNew and Link the old name
  const FileSystem::Path* other = nullptr;  // Rename, RenameNew, Link: the new name
  std::uint64_t offset = 0;                 // Read, Write: the offset; Truncate: the new size
  std::size_t size = 0;                     // Read, Write: bytes requested
  ByteView bytes = {};                      // Write
  const OpenRequest* request = nullptr;     // Open
  // The maximum number of bytes that Read and Write transfer; the hook may lower it for a short count.
  std::size_t most = std::numeric_limits<std::size_t>::max();
};

// For tests and measurements: wraps a file system and calls a hook around every raw call. The hook returns the result:
// that of `make`, which makes the call, or a negative errno instead.
class HookedFileSystem : public FileSystem {
 public:
  using Make = std::function<std::int64_t()>;
  using Hook = std::function<std::int64_t(FileCall& call, const Make& make)>;

  // `real` must outlive this and all its files. Files keep a copy of the hook.
  HookedFileSystem(FileSystem& real, Hook hook) : real_(real), hook_(std::move(hook)) {}

  int RawOpen(const Path& path, const OpenRequest& request, std::unique_ptr<File>* file) final;
  int RawStatus(const Path& path, FileStatus* status) final;
  int RawRealPath(const Path& path, Path* real) final;
  int RawRename(const Path& from, const Path& to) final;
  int RawRenameNew(const Path& from, const Path& to) final;
  int RawLink(const Path& from, const Path& to) final;
  int RawRemove(const Path& path) final;
  int RawSyncFolder(const Path& folder) final;
  int RawList(const Path& folder, std::vector<Path>* names) final;

 private:
  int Hooked(FileCall call, const Make& make) { return static_cast<int>(hook_(call, make)); }

  FileSystem& real_;
  Hook hook_;
};

}  // namespace files

// SPDX-License-Identifier: MIT
#pragma once

#include "platform/files/FileSystem.h"

#include <cstddef>
#include <functional>
#include <limits>

namespace files {

// One raw call of a File or FileSystem that is about to be made.
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
  const FileSystem::Path& path;             // of the file or folder; the old name of one that is renamed
  const FileSystem::Path* other = nullptr;  // the new name
  std::uint64_t offset = 0;                 // of Read and Write; the size of Truncate
  std::size_t size = 0;                     // of Read and Write: how many bytes are asked for
  ByteView bytes = {};                      // of Write
  const OpenRequest* request = nullptr;     // of Open
  // The hook may lower it: Read and Write then do no more than that, as they may at any time.
  std::size_t most = std::numeric_limits<std::size_t>::max();
};

// For tests and measurements: another file system with a hook around every call. The hook returns the result of the
// call: what `make` returns, which makes it, or a negative errno of its own.
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

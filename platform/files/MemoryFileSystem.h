// SPDX-License-Identifier: MIT
#pragma once

#include "platform/files/FileSystem.h"

#include <map>
#include <memory>
#include <mutex>
#include <vector>

namespace files {

// Files that live in memory only: for tests, for fuzzing, and for looking into a database that came as bytes.
// Handles share their file's content and locks as on a disk, also after it was renamed or removed. There are no
// folders and links, and every file may be read and written. Thread-safe.
class MemoryFileSystem final : public FileSystem {
 public:
  // Makes or replaces a whole file.
  void Put(const Path& path, Bytes content);
  // The whole content; empty when there is no such file.
  Bytes Get(const Path& path);
  // The names that exist, in order.
  std::vector<Path> Names();

  int RawOpen(const Path& path, const OpenRequest& request, std::unique_ptr<File>* file) override;
  int RawStatus(const Path& path, FileStatus* status) override;
  int RawRealPath(const Path& path, Path* real) override;
  int RawRename(const Path& from, const Path& to) override;
  int RawRenameNew(const Path& from, const Path& to) override;
  int RawLink(const Path& from, const Path& to) override;
  int RawRemove(const Path& path) override;
  int RawSyncFolder(const Path& folder) override;
  int RawList(const Path& folder, std::vector<Path>* names) override;

  struct Node;

 private:
  std::shared_ptr<Node> Make();

  std::mutex mutex_;
  std::map<Path, std::shared_ptr<Node>> nodes_;
  std::uint64_t nextInode_ = 1;
};

}  // namespace files

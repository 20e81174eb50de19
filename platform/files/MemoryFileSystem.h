// SPDX-License-Identifier: MIT
#pragma once

#include "platform/files/FileSystem.h"

#include <map>
#include <memory>
#include <mutex>
#include <vector>

namespace files {

// A file system in memory: for tests, for fuzzing, and for reading a database from a byte array. Handles share the
// content and locks of a file as on a disk, also after it was renamed or removed. There are no folders or links, and
// permissions are stored but not enforced. Thread-safe.
class MemoryFileSystem final : public FileSystem {
 public:
  // Creates or replaces a file.
  void Put(const Path& path, Bytes content);
  // The complete content; empty when the file does not exist.
  Bytes Get(const Path& path);
  // The paths of all files, sorted.
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

// SPDX-License-Identifier: MIT
#pragma once

#include "platform/files/FileSystem.h"

namespace dao {

// As files::FileSystemScope, for a thread that uses databases: those that it opened before are closed when the scope
// begins, and those opened in it when it ends.
class FileSystemScope {
 public:
  // `files` outlives the scope and every database opened in it.
  explicit FileSystemScope(files::FileSystem& files);
  ~FileSystemScope();
  FileSystemScope(const FileSystemScope&) = delete;
  FileSystemScope& operator=(const FileSystemScope&) = delete;

 private:
  files::FileSystemScope files_;
};

}  // namespace dao

// SPDX-License-Identifier: MIT
#pragma once

#include "platform/files/FileSystem.h"

namespace dao {

// As files::FileSystemScope, for a thread that uses databases: also closes this thread's cached database files at the
// beginning and the end of the scope.
class FileSystemScope {
 public:
  // `files` must outlive the scope and every database opened in it.
  explicit FileSystemScope(files::FileSystem& files);
  ~FileSystemScope();
  FileSystemScope(const FileSystemScope&) = delete;
  FileSystemScope& operator=(const FileSystemScope&) = delete;

 private:
  files::FileSystemScope files_;
};

}  // namespace dao

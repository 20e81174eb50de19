// SPDX-License-Identifier: MIT
#pragma once

#include "platform/files/FileSystem.h"

#include <filesystem>
#include <memory>

namespace files {

// A lock on a file that is created for it and stays behind empty. It belongs to this object, not to the process: a
// second one in the same process is refused like any other. It ends with the object, or with the process.
class FileLock {
 public:
  enum class State {
    Held,
    HeldByOther,
    NotPossible,  // the file cannot be created, or its file system has no locks
  };

  // Never waits. To be allowed to read the file is enough, so that every user of a shared folder meets the lock. Error
  // when something else than a regular file has that name.
  explicit FileLock(const std::filesystem::path& path, FileSystem& files = CurrentFileSystem());

  State What() const { return state_; }

 private:
  std::unique_ptr<File> file_;
  State state_ = State::NotPossible;
};

}  // namespace files

// SPDX-License-Identifier: MIT
#pragma once

#include "platform/files/FileSystem.h"

#include <filesystem>
#include <memory>

namespace files {

// Locks a file that is created for this purpose and remains, empty. The lock belongs to this object, not to the
// process: a second object in the same process gets HeldByOther. It ends with the object or the process.
class FileLock {
 public:
  enum class State {
    Held,
    HeldByOther,
    NotPossible,  // the file cannot be created, or its file system has no locks
  };

  // Never waits. Needs read permission only, so that the lock works for every user of a shared folder. Throws Error
  // when the name is taken by something other than a regular file.
  explicit FileLock(const std::filesystem::path& path, FileSystem& files = CurrentFileSystem());

  State What() const { return state_; }

 private:
  std::unique_ptr<File> file_;
  State state_ = State::NotPossible;
};

}  // namespace files

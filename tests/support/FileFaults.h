// SPDX-License-Identifier: MIT
#pragma once

#include "platform/dao/FileSystemScope.h"
#include "platform/files/HookedFileSystem.h"

#include <functional>

namespace testing_support {

// While it exists, `hook` is called before each call of this thread on a file or folder, except on a database, its .ldb
// and its journal (syncing their folder counts): an errno other than 0 becomes the result instead of the call.
class FileFaults {
 public:
  explicit FileFaults(std::function<int(const files::FileCall& call)> hook);

 private:
  files::HookedFileSystem files_;
  dao::FileSystemScope scope_;
};

}  // namespace testing_support

// SPDX-License-Identifier: MIT
#include "platform/dao/FileSystemScope.h"

#include "platform/dao/OpenFiles.h"

namespace dao {

FileSystemScope::FileSystemScope(files::FileSystem& files) : files_(files) {
  CloseCachedFiles();
}

FileSystemScope::~FileSystemScope() {
  CloseCachedFiles();
}

}  // namespace dao

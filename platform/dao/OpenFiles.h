// SPDX-License-Identifier: MIT
#pragma once

#include "platform/dao/OpenOptions.h"

#include <QString>

#include <filesystem>
#include <memory>

namespace files {
class FileSystem;
}
namespace jet {
class Database;
}

namespace dao {

// Opens the file, or returns the open file from this thread's cache: the screens open their databases for each
// statement, and pages that were read remain valid until the file changes. Between statements an open file holds no
// lock that keeps others from reading or writing. Throws jet::Error.
std::shared_ptr<jet::Database> OpenFile(const QString& hostPath, const OpenOptions& options);

// The file system on which this thread opens databases: files::CurrentFileSystem.
files::FileSystem& Files();

// Empties this thread's cache of open files.
void CloseCachedFiles();

std::filesystem::path EncodedPath(const QString& hostPath);

}  // namespace dao

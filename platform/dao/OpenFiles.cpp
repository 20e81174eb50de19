// SPDX-License-Identifier: MIT
#include "platform/dao/OpenFiles.h"

#include "platform/dao/WriteWait.h"
#include "platform/jet/database/Database.h"

#include <QFile>

#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <list>

namespace dao {
namespace {

constexpr std::size_t kMaxCachedFiles = 4;  // a station has three

struct CachedFile {
  std::filesystem::path path;
  OpenOptions options;
  std::chrono::milliseconds wait;
  std::shared_ptr<jet::Database> database;

  bool IsFor(const std::filesystem::path& otherPath, const OpenOptions& otherOptions) const {
    return path == otherPath && options == otherOptions && wait == WriteWait();
  }
  // Whether the permissions of the file are still those with which it was opened.
  bool IsStillAllowed() const {
    const bool mayWrite = !options.readOnly && ::access(path.c_str(), W_OK) == 0;
    return ::access(path.c_str(), R_OK) == 0 && mayWrite == !database->IsReadOnly();
  }
};

// The most recently used first.
std::list<CachedFile>& Cache() {
  thread_local std::list<CachedFile> cache;
  return cache;
}

std::shared_ptr<jet::Database> OpenUncached(const std::filesystem::path& path, const OpenOptions& options) {
  jet::OpenOptions jetOptions;
  jetOptions.password = options.password.toStdU16String();
  jetOptions.writable = !options.readOnly;
  jetOptions.wait.limit = WriteWait();
  return jet::Database::Open(path, jetOptions, Files());
}

}  // namespace

std::shared_ptr<jet::Database> OpenFile(const QString& hostPath, const OpenOptions& options) {
  const std::filesystem::path path = EncodedPath(hostPath);
  std::list<CachedFile>& cache = Cache();
  const auto found =
      std::find_if(cache.begin(), cache.end(), [&](const CachedFile& file) { return file.IsFor(path, options); });
  if (found != cache.end() && found->IsStillAllowed()) {
    cache.splice(cache.begin(), cache, found);
    return found->database;
  }
  // With any options: every cached file of this path has the old permissions.
  cache.remove_if([&](const CachedFile& file) { return file.path == path; });
  cache.push_front({path, options, WriteWait(), OpenUncached(path, options)});
  if (cache.size() > kMaxCachedFiles) cache.pop_back();
  return cache.front().database;
}

files::FileSystem& Files() {
  return files::CurrentFileSystem();
}

void CloseCachedFiles() {
  Cache().clear();
}

std::filesystem::path EncodedPath(const QString& hostPath) {
  return QFile::encodeName(hostPath).toStdString();
}

}  // namespace dao

// SPDX-License-Identifier: MIT
#include "platform/dao/OpenFiles.h"

#include "platform/dao/WriteWait.h"

#include <QFile>

#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <list>

namespace dao {
namespace {

constexpr std::size_t kMostKept = 4;  // a station has three files

struct Opening {
  std::filesystem::path path;
  OpenOptions options;
  std::chrono::milliseconds wait;
  std::shared_ptr<jet::Database> database;

  bool IsFor(const std::filesystem::path& wanted, const OpenOptions& asked) const {
    return path == wanted && options == asked && wait == WriteWait();
  }
  // Whether an opening made now would be allowed the same.
  bool IsStillAllowed() const {
    const bool mayWrite = !options.readOnly && ::access(path.c_str(), W_OK) == 0;
    return ::access(path.c_str(), R_OK) == 0 && mayWrite == !database->IsReadOnly();
  }
};

// The latest first.
std::list<Opening>& Kept() {
  thread_local std::list<Opening> kept;
  return kept;
}

std::shared_ptr<jet::Database> OpenAnew(const std::filesystem::path& path, const OpenOptions& options) {
  jet::OpenOptions asked;
  asked.password = options.password.toStdU16String();
  asked.writable = !options.readOnly;
  asked.wait.limit = WriteWait();
  return jet::Database::Open(path, asked, Files());
}

}  // namespace

std::shared_ptr<jet::Database> OpenFile(const QString& hostPath, const OpenOptions& options) {
  const std::filesystem::path path = EncodedPath(hostPath);
  std::list<Opening>& kept = Kept();
  const auto found =
      std::find_if(kept.begin(), kept.end(), [&](const Opening& opening) { return opening.IsFor(path, options); });
  if (found != kept.end() && found->IsStillAllowed()) {
    kept.splice(kept.begin(), kept, found);
    return found->database;
  }
  // Not only this one: another opening of the file would bring back what it was allowed.
  kept.remove_if([&](const Opening& opening) { return opening.path == path; });
  kept.push_front({path, options, WriteWait(), OpenAnew(path, options)});
  if (kept.size() > kMostKept) kept.pop_back();
  return kept.front().database;
}

jet::FileSystem& Files() {
  return files::CurrentFileSystem();
}

void CloseKept() {
  Kept().clear();
}

std::filesystem::path EncodedPath(const QString& hostPath) {
  return QFile::encodeName(hostPath).toStdString();
}

}  // namespace dao

#include "platform/files/FileSystem.h"

#include "platform/files/Error.h"

#include <cerrno>

namespace files {
namespace {

template <typename Call>
int Uninterrupted(Call call) {
  int result = call();
  while (result == -EINTR)
    result = call();
  return result;
}

void Require(int result, const char* doing, const FileSystem::Path& path) {
  if (result < 0) throw SystemError(doing, path.string(), -result);
}

bool IsAbsent(int result) {
  return result == -ENOENT || result == -ENOTDIR;
}

}  // namespace

std::unique_ptr<File> FileSystem::Open(const Path& path, OpenMode mode) {
  std::unique_ptr<File> file;
  const int result = Uninterrupted([&] { return RawOpen(path, mode, &file); });
  Require(result, mode == OpenMode::Create ? "aanmaken" : "openen", path);
  return file;
}

std::unique_ptr<File> FileSystem::OpenIfThere(const Path& path, OpenMode mode) {
  std::unique_ptr<File> file;
  const int result = Uninterrupted([&] { return RawOpen(path, mode, &file); });
  if (IsAbsent(result)) return nullptr;
  Require(result, "openen", path);
  return file;
}

bool FileSystem::Exists(const Path& path) {
  return Identity(path).has_value();
}

std::optional<FileIdentity> FileSystem::Identity(const Path& path) {
  FileIdentity identity;
  const int result = Uninterrupted([&] { return RawIdentity(path, &identity); });
  if (IsAbsent(result)) return std::nullopt;
  Require(result, "vinden", path);
  return identity;
}

void FileSystem::Rename(const Path& from, const Path& to) {
  Require(Uninterrupted([&] { return RawRename(from, to); }), "hernoemen", from);
}

void FileSystem::Remove(const Path& path) {
  Require(Uninterrupted([&] { return RawRemove(path); }), "verwijderen", path);
}

void FileSystem::SyncFolderOf(const Path& path) {
  const Path folder = path.has_parent_path() ? path.parent_path() : Path(".");
  Require(Uninterrupted([&] { return RawSyncFolder(folder); }), "veilig wegschrijven", folder);
}

void FileSystem::CopyPermissions(const Path& model, const Path& path) {
  Uninterrupted([&] { return RawCopyPermissions(model, path); });
}

}  // namespace files

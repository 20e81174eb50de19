// SPDX-License-Identifier: MIT
#include "platform/files/FileSystem.h"

#include "platform/files/Error.h"
#include "platform/files/Uninterrupted.h"

#include <cerrno>
#include <utility>

namespace files {
namespace {

void Require(int result, const char* doing, const FileSystem::Path& path) {
  if (result < 0) throw SystemError(doing, path.string(), -result);
}

bool IsAbsent(int result) {
  return result == -ENOENT || result == -ENOTDIR;
}

bool IsUnknownHere(int result) {
  return result == -EINVAL || result == -ENOSYS || result == -ENOTSUP;
}

FileSystem::Path FolderOf(const FileSystem::Path& path) {
  return path.has_parent_path() ? path.parent_path() : FileSystem::Path(".");
}

FileSystem*& Current() {
  thread_local FileSystem* files = &HostFileSystem();
  return files;
}

}  // namespace

std::unique_ptr<File> FileSystem::Open(const Path& path, const OpenRequest& request) {
  std::unique_ptr<File> file;
  const int result = Uninterrupted([&] { return RawOpen(path, request, &file); });
  Require(result, request.mode == OpenMode::Create ? "aanmaken" : "openen", path);
  return file;
}

std::unique_ptr<File> FileSystem::OpenIfThere(const Path& path, const OpenRequest& request) {
  std::unique_ptr<File> file;
  const int result = Uninterrupted([&] { return RawOpen(path, request, &file); });
  if (IsAbsent(result)) return nullptr;
  Require(result, "openen", path);
  return file;
}

std::optional<FileStatus> FileSystem::Status(const Path& path) {
  FileStatus status;
  const int result = Uninterrupted([&] { return RawStatus(path, &status); });
  if (IsAbsent(result)) return std::nullopt;
  Require(result, "vinden", path);
  return status;
}

std::optional<FileIdentity> FileSystem::Identity(const Path& path) {
  const std::optional<FileStatus> status = Status(path);
  return status ? std::optional(status->identity) : std::nullopt;
}

FileSystem::Path FileSystem::RealPath(const Path& path) {
  Path real;
  int result = Uninterrupted([&] { return RawRealPath(path, &real); });
  if (result == 0) return real;
  if (result == -ENOENT) {
    result = Uninterrupted([&] { return RawRealPath(FolderOf(path), &real); });
    if (result == 0) return real / path.filename();
  }
  throw SystemError("vinden", path.string(), -result);
}

void FileSystem::Rename(const Path& from, const Path& to) {
  Require(Uninterrupted([&] { return RawRename(from, to); }), "hernoemen", from);
}

bool FileSystem::RenameNew(const Path& from, const Path& to) {
  int result = Uninterrupted([&] { return RawRenameNew(from, to); });
  if (IsUnknownHere(result)) {
    // link() never replaces a file either. When the old name then cannot be removed, the file has two names.
    result = Uninterrupted([&] { return RawLink(from, to); });
    // A server that repeats a call after a lost reply finds the link that it made itself.
    if (result == -EEXIST && Identity(from) == Identity(to)) result = 0;
    if (result == 0) Uninterrupted([&] { return RawRemove(from); });
    if (IsUnknownHere(result) || result == -EPERM) {
      throw Error(ErrorCode::Unsupported,
                  "Kan het bestand '" + to.string() +
                      "' niet plaatsen: deze schijf of netwerkmap kan niet voorkomen dat een ander bestand van die "
                      "naam wordt vervangen. Kies een map op een andere schijf.",
                  -result);
    }
  }
  if (result == -EEXIST) return false;
  Require(result, "hernoemen", from);
  return true;
}

void FileSystem::Remove(const Path& path) {
  Require(Uninterrupted([&] { return RawRemove(path); }), "verwijderen", path);
}

void FileSystem::SyncFolderOf(const Path& path) {
  const Path folder = FolderOf(path);
  Require(Uninterrupted([&] { return RawSyncFolder(folder); }), "veilig wegschrijven", folder);
}

std::vector<FileSystem::Path> FileSystem::NamesIn(const Path& folder) {
  std::vector<Path> names;
  Require(Uninterrupted([&] { return RawList(folder, &names); }), "lezen", folder);
  return names;
}

void FileSystem::CopyPermissions(const Path& model, const Path& path) {
  const auto from = Open(model, OpenMode::Read);
  Open(path, {OpenMode::Write, false})->TakeAccessOf(from->Status());
}

FileSystem& CurrentFileSystem() {
  return *Current();
}

FileSystemScope::FileSystemScope(FileSystem& files) : previous_(std::exchange(Current(), &files)) {}

FileSystemScope::~FileSystemScope() {
  Current() = previous_;
}

}  // namespace files

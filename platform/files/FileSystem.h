// SPDX-License-Identifier: MIT
#pragma once

#include "platform/files/File.h"

#include <filesystem>
#include <memory>
#include <optional>
#include <vector>

namespace files {

enum class OpenMode {
  Read,          // an existing file, for reading only
  Write,         // an existing file, for reading and writing
  Create,        // a new file; an existing one is an error
  OpenOrCreate,  // for reading and writing, created when it does not exist
  ReadOrCreate,  // for reading only, created empty when it does not exist
  Append,        // for writing only, created when it does not exist; every write appends to the end
};

struct OpenRequest {
  OpenMode mode = OpenMode::Read;
  bool followLink = true;       // false: a symbolic link at the path is an error
  unsigned permissions = 0666;  // of a created file; reduced by the umask of the process
};

// Operations on files by path. As in File, the Raw calls are one system call each and return 0 or a negative errno;
// tests make them fail. The other calls repeat interrupted system calls and throw files::Error.
//
// Only regular files are opened: a folder, device, pipe or socket is an error at once, never a wait.
class FileSystem {
 public:
  using Path = std::filesystem::path;

  FileSystem() = default;
  virtual ~FileSystem() = default;
  FileSystem(const FileSystem&) = delete;
  FileSystem& operator=(const FileSystem&) = delete;

  std::unique_ptr<File> Open(const Path& path, const OpenRequest& request);
  std::unique_ptr<File> Open(const Path& path, OpenMode mode) { return Open(path, OpenRequest{mode}); }
  // As Open, for OpenMode::Read and Write, but null when the file does not exist.
  std::unique_ptr<File> OpenIfThere(const Path& path, const OpenRequest& request);
  std::unique_ptr<File> OpenIfThere(const Path& path, OpenMode mode) { return OpenIfThere(path, OpenRequest{mode}); }
  // The attributes of the file at the path, links followed; nothing when it does not exist.
  std::optional<FileStatus> Status(const Path& path);
  std::optional<FileIdentity> Identity(const Path& path);
  bool Exists(const Path& path) { return Status(path).has_value(); }
  // The absolute path without links. The file itself need not exist, its folder must. Companion files (lock, journal,
  // temporary file) are placed next to the real path, so that all users of the file share them. Open the real path with
  // `followLink` false, so that a link created meanwhile is not followed.
  Path RealPath(const Path& path);

  // Replaces `to` in one step.
  void Rename(const Path& from, const Path& to);
  // Renames in one step, and only when `to` does not exist: false when it does. Error Unsupported, with nothing
  // changed, on a file system that has no such operation. After a crash both names may exist.
  [[nodiscard]] bool RenameNew(const Path& from, const Path& to);
  void Remove(const Path& path);
  // Syncs the folder of `path`: on return its directory entries survive a power cut.
  void SyncFolderOf(const Path& path);
  // The names in a folder, unordered, without "." and "..".
  std::vector<Path> NamesIn(const Path& folder);
  // File::TakeAccessOf for two paths.
  void CopyPermissions(const Path& model, const Path& path);

  virtual int RawOpen(const Path& path, const OpenRequest& request, std::unique_ptr<File>* file) = 0;
  virtual int RawStatus(const Path& path, FileStatus* status) = 0;
  virtual int RawRealPath(const Path& path, Path* real) = 0;
  virtual int RawRename(const Path& from, const Path& to) = 0;
  virtual int RawRenameNew(const Path& from, const Path& to) = 0;
  virtual int RawLink(const Path& from, const Path& to) = 0;
  virtual int RawRemove(const Path& path) = 0;
  virtual int RawSyncFolder(const Path& folder) = 0;
  virtual int RawList(const Path& folder, std::vector<Path>* names) = 0;
};

// The file system of this computer. Exists for the lifetime of the program.
FileSystem& HostFileSystem();

// The file system that this thread uses: that of the innermost FileSystemScope, else HostFileSystem().
FileSystem& CurrentFileSystem();

// For tests: replaces the file system of this thread for its lifetime.
class FileSystemScope {
 public:
  // `files` must outlive the scope and everything opened in it.
  explicit FileSystemScope(FileSystem& files);
  ~FileSystemScope();
  FileSystemScope(const FileSystemScope&) = delete;
  FileSystemScope& operator=(const FileSystemScope&) = delete;

 private:
  FileSystem* previous_;
};

}  // namespace files

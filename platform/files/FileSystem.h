// SPDX-License-Identifier: MIT
#pragma once

#include "platform/files/File.h"

#include <filesystem>
#include <memory>
#include <optional>
#include <vector>

namespace files {

enum class OpenMode {
  Read,          // an existing file, never written
  Write,         // an existing file, for reading and writing
  Create,        // a new file; one of that name is an error
  OpenOrCreate,  // for reading and writing, created when it does not exist
  ReadOrCreate,  // never written, created empty when it does not exist
  Append,        // for writing only, created when it does not exist; every write adds to the end
};

struct OpenRequest {
  OpenMode mode = OpenMode::Read;
  bool followLink = true;       // false: a symbolic link under that name is an error
  unsigned permissions = 0666;  // of a file that is created; the umask of the process takes some away
};

// What can be done to files by name. As in File, the Raw calls are one system call each, return 0 or a negative errno,
// and are what tests make fail; the others repeat what was interrupted and throw files::Error.
//
// Only regular files are opened: a folder, device, pipe or socket is refused at once, by name.
class FileSystem {
 public:
  using Path = std::filesystem::path;

  FileSystem() = default;
  virtual ~FileSystem() = default;
  FileSystem(const FileSystem&) = delete;
  FileSystem& operator=(const FileSystem&) = delete;

  std::unique_ptr<File> Open(const Path& path, const OpenRequest& request);
  std::unique_ptr<File> Open(const Path& path, OpenMode mode) { return Open(path, OpenRequest{mode}); }
  // Like Open, but a file that does not exist is no error. `OpenMode::Read` or `Write`.
  std::unique_ptr<File> OpenIfThere(const Path& path, const OpenRequest& request);
  std::unique_ptr<File> OpenIfThere(const Path& path, OpenMode mode) { return OpenIfThere(path, OpenRequest{mode}); }
  // What the path names now, links followed; nothing when there is none.
  std::optional<FileStatus> Status(const Path& path);
  std::optional<FileIdentity> Identity(const Path& path);
  bool Exists(const Path& path) { return Status(path).has_value(); }
  // The path without links, absolute. The file itself need not exist, its folder must. What stands beside a file
  // (lock, journal, temporary file) stands beside its real path, so that all users of the file meet there. To be sure
  // that a link does not come in between, open the real path with `followLink` false.
  Path RealPath(const Path& path);

  // Replaces `to` in one step.
  void Rename(const Path& from, const Path& to);
  // Renames in one step, and only when `to` does not exist: false when it does. Error (Unsupported) on a file system
  // that offers no such step, and nothing has happened. After a crash both names may exist.
  [[nodiscard]] bool RenameNew(const Path& from, const Path& to);
  void Remove(const Path& path);
  // Returns when the names in the folder that holds `path` will survive a power cut.
  void SyncFolderOf(const Path& path);
  // The names in a folder, in no order.
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

// The file system of this computer. Lives as long as the program.
FileSystem& HostFileSystem();

// What this thread works on: the file system of this computer, or that of the innermost FileSystemScope.
FileSystem& CurrentFileSystem();

// For tests: while it lives, this thread works on another file system.
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

#pragma once

#include "platform/files/File.h"

#include <filesystem>
#include <memory>
#include <optional>

namespace files {

enum class OpenMode {
  Read,          ///< an existing file, never written
  Write,         ///< an existing file, for reading and writing
  Create,        ///< a new file; one of that name is an error
  OpenOrCreate,  ///< for reading and writing, made when it is not there
};

/// What can be done to files by name. Like File: Raw calls are one system call each and answer 0 or a negative errno,
/// the others repeat what was interrupted and throw files::Error.
class FileSystem {
 public:
  using Path = std::filesystem::path;

  FileSystem() = default;
  virtual ~FileSystem() = default;
  FileSystem(const FileSystem&) = delete;
  FileSystem& operator=(const FileSystem&) = delete;

  std::unique_ptr<File> Open(const Path& path, OpenMode mode);
  /// Like Open, but a file that is not there is no error. `OpenMode::Read` or `Write`.
  std::unique_ptr<File> OpenIfThere(const Path& path, OpenMode mode);
  bool Exists(const Path& path);
  /// Which file the path names now; nothing when there is none.
  std::optional<FileIdentity> Identity(const Path& path);
  /// Replaces `to` in one step.
  void Rename(const Path& from, const Path& to);
  void Remove(const Path& path);
  /// Returns when the names in the folder that holds `path` will survive a power cut.
  void SyncFolderOf(const Path& path);
  /// Gives `path` the permissions of `model`; without effect where that is not allowed.
  void CopyPermissions(const Path& model, const Path& path);

  virtual int RawOpen(const Path& path, OpenMode mode, std::unique_ptr<File>* file) = 0;
  virtual int RawIdentity(const Path& path, FileIdentity* identity) = 0;
  virtual int RawRename(const Path& from, const Path& to) = 0;
  virtual int RawRemove(const Path& path) = 0;
  virtual int RawSyncFolder(const Path& folder) = 0;
  virtual int RawCopyPermissions(const Path& model, const Path& path) = 0;
};

/// The file system of this computer. Lives as long as the program.
FileSystem& HostFileSystem();

}  // namespace files

// SPDX-License-Identifier: MIT
#pragma once

#include "platform/files/FileSystem.h"

#include <filesystem>
#include <memory>
#include <string_view>

namespace files {

// Writes a file atomically, also when the power fails: the content is written to a temporary file in the same folder,
// and only Commit replaces the old file. Without Commit the destructor removes the temporary file.
//
// A symbolic link is followed. The new file gets the permissions, group and owner of the file that it replaces, as far
// as this user may set them, and is never accessible to more users. Replacing a read-only file, anything but a regular
// file, or a file with several hard links is an error: its other names would keep the old content.
//
// Temporary files of the same target that a killed program left are removed first.
class AtomicFile {
 public:
  explicit AtomicFile(const std::filesystem::path& path, FileSystem& files = CurrentFileSystem());
  // For a file whose name is chosen at the end (CommitNew): removes the leftovers of this owner (see TemporaryName)
  // in the folder instead of those of the target.
  AtomicFile(const std::filesystem::path& path, std::string_view owner, FileSystem& files = CurrentFileSystem());
  // For a copy of another file: the new file gets the permissions, group and owner of `original`. A link at `path` is
  // not followed: Commit replaces the link itself.
  AtomicFile(const std::filesystem::path& path, const FileStatus& original, FileSystem& files = CurrentFileSystem());
  ~AtomicFile();
  AtomicFile(const AtomicFile&) = delete;
  AtomicFile& operator=(const AtomicFile&) = delete;

  void Write(std::string_view content);
  // Writes these bytes again where the temporary file, as written so far, has others.
  void Rewrite(std::uint64_t offset, std::string_view content);
  // Ends the content there; `size` is at most the number of bytes written.
  void Truncate(std::uint64_t size);
  // Syncs the content to the disk under the temporary name. Commit includes this.
  void Sync();
  // Makes the directory entry of the temporary file durable.
  void SyncName();
  // Replaces the old file; the new one is durable on return. After an error the old file is unchanged, except for the
  // code NotYetDurable: then the new one is in place, but may not survive a power cut.
  void Commit();
  // As Commit, but under `path`, a name in the same folder; false, with nothing changed, when that name exists. The
  // name is claimed in one step, so only one of several programs can get it.
  [[nodiscard]] bool CommitNew(const std::filesystem::path& path);
  // Replaces the old file without waiting for the disk: after a power cut the new one may be incomplete.
  void Replace();
  // Keeps the temporary file after destruction.
  void Keep() { removesTemporary_ = false; }

  const std::filesystem::path& TemporaryPath() const { return temporary_; }

 private:
  void CreateForReplacing(std::string_view owner);
  void CreateTemporary(const FileStatus* original, std::string_view owner);
  void RemoveTemporary();
  void SyncPlace(const std::filesystem::path& path);

  FileSystem& files_;
  std::filesystem::path path_;
  std::filesystem::path temporary_;
  std::unique_ptr<File> file_;
  std::uint64_t written_ = 0;
  bool isDurable_ = false;
  bool removesTemporary_ = true;
};

// Writes `content` to `path` atomically.
void WriteFile(const std::filesystem::path& path, std::string_view content, FileSystem& files = CurrentFileSystem());

}  // namespace files

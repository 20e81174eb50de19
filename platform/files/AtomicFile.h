// SPDX-License-Identifier: MIT
#pragma once

#include "platform/files/FileSystem.h"

#include <filesystem>
#include <memory>
#include <string_view>

namespace files {

// A file that appears whole or not at all, also when the power fails: its content goes to a temporary file in the same
// folder, and only Commit puts it in place of what was there. Without Commit the destructor removes the temporary
// file.
//
// A path that is a link means the file it leads to. A file that is replaced passes on its permissions, group and owner
// as far as this user may set them; the copy is never open to more users than the original. Replacing a file that may
// not be written, or anything but a regular file, is an error.
class AtomicFile {
 public:
  explicit AtomicFile(const std::filesystem::path& path, FileSystem& files = CurrentFileSystem());
  // A copy of another file, which is given the permissions, group and owner of `original` as far as this user may set
  // them, and is never open to more users. A link of that name is not followed: Commit replaces the link itself.
  AtomicFile(const std::filesystem::path& path, const FileStatus& original, FileSystem& files = CurrentFileSystem());
  ~AtomicFile();
  AtomicFile(const AtomicFile&) = delete;
  AtomicFile& operator=(const AtomicFile&) = delete;

  void Write(std::string_view content);
  // Makes the content durable under the temporary name. Commit does so too.
  void Sync();
  // Makes the temporary name durable.
  void SyncName();
  // Puts the file in its place; when this returns it is there to stay. After an error the old file is untouched; after
  // one of the code NotYetDurable the new one is there, but not yet safe from a power cut.
  void Commit();
  // As Commit, but under `path`, a name in the same folder that does not exist: false, and nothing has happened, when
  // it does. Taking the name is one step, so that of several programs only one gets it.
  [[nodiscard]] bool CommitNew(const std::filesystem::path& path);
  // Puts the file in its place without waiting for the disk: after a power cut it may be incomplete.
  void Replace();
  // Leaves the temporary file where it is.
  void Keep() { removes_ = false; }

  const std::filesystem::path& TemporaryPath() const { return temporary_; }

 private:
  void BeginInPlace();
  void Begin(const FileStatus* original);
  void RemoveTemporary();
  void SyncPlace(const std::filesystem::path& path);

  FileSystem& files_;
  std::filesystem::path path_;
  std::filesystem::path temporary_;
  std::unique_ptr<File> file_;
  std::uint64_t written_ = 0;
  bool isDurable_ = false;
  bool removes_ = true;
};

// Writes `content` to `path`, whole or not at all.
void WriteFile(const std::filesystem::path& path, std::string_view content, FileSystem& files = CurrentFileSystem());

}  // namespace files

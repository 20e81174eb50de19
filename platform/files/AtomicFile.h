#pragma once

#include "platform/files/FileSystem.h"

#include <filesystem>
#include <memory>
#include <string_view>

namespace files {

/// A file that appears whole or not at all, also when the power fails: its content goes to a temporary file in the same
/// folder, and only Commit puts it in place of what was there. Without Commit the destructor removes the temporary
/// file.
class AtomicFile {
 public:
  /// The temporary file gets a free name: `path` with a number and ".tmp" behind it.
  explicit AtomicFile(const std::filesystem::path& path, FileSystem& files = HostFileSystem());
  /// The temporary file is `temporary`, which must not exist.
  AtomicFile(const std::filesystem::path& path, const std::filesystem::path& temporary,
             FileSystem& files = HostFileSystem());
  ~AtomicFile();
  AtomicFile(const AtomicFile&) = delete;
  AtomicFile& operator=(const AtomicFile&) = delete;

  void Write(std::string_view content);
  /// Makes the content durable under the temporary name. Commit does so too.
  void Sync();
  /// Puts the file in its place; when this returns it is there to stay. After an error the old file is untouched, or
  /// (when only the last sync failed) the new one is there, but not yet safe from a power cut.
  void Commit();

  const std::filesystem::path& TemporaryPath() const { return temporary_; }

 private:
  FileSystem& files_;
  std::filesystem::path path_;
  std::filesystem::path temporary_;
  std::unique_ptr<File> file_;
  std::uint64_t written_ = 0;
  bool done_ = false;
};

/// Writes `content` to `path`, whole or not at all. A file that is replaced keeps its permissions.
void WriteFile(const std::filesystem::path& path, std::string_view content, FileSystem& files = HostFileSystem());

}  // namespace files

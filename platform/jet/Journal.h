#pragma once

#include "platform/jet/FileSystem.h"
#include "platform/jet/Header.h"
#include "platform/jet/Pages.h"

#include <filesystem>
#include <map>
#include <optional>
#include <span>

namespace jet {

/// One page of a change, as it lies on the disk before and after.
struct PageChange {
  std::uint32_t number = 0;
  const PageBytes* before = nullptr;  ///< null for a page past the old end of the file
  const PageBytes* after = nullptr;
};

/// Makes a change to several pages one change, also when the program or the power dies in the middle: before the first
/// page is overwritten, the old pages are safe in a file beside the database, named as it with "-journal" behind it.
/// While that file is there, the change did not happen. The caller holds the database's exclusive lock.
///
/// The journal file, numbers little-endian:
///    0  8  "SPRJRNL1"
///    8  u32 count of page records, u32 0
///   16  u64 length of the database before, u64 length after
///   32  u64 checksum of the whole file with these eight bytes zero
///   40  records of 4232 bytes: u32 page, u32 0, 8 x u64 checksum of each 512-byte sector before, 8 x u64 after, 4096
///   bytes
///       before
class Journal {
 public:
  enum class Recovery { Nothing, Discarded, RolledBack };
  /// What a journal on media that cannot be written says that the database really holds.
  struct Overlay {
    std::uint64_t length = 0;
    std::map<std::uint32_t, PageRef> pages;
  };

  Journal(FileSystem& files, const std::filesystem::path& database);

  const std::filesystem::path& Path() const { return path_; }
  bool Exists() { return files_.Exists(path_); }

  /// Makes the change. When it returns the change is there to stay; when it throws, the old state is there, or comes
  /// back with the next Recover.
  void Commit(File& database, std::span<const PageChange> changes, std::uint64_t oldLength, std::uint64_t newLength);

  /// Takes back a change that was not finished. An Error (ForeignWrite) when another program wrote to the database
  /// since: then nothing is overwritten, and the old pages are kept under another name that the Error tells.
  Recovery Recover(File& database);

  /// The old pages; nothing when there is no complete journal.
  std::optional<Overlay> ReadOverlay();

 private:
  struct Content;
  Content Read();
  void Write(std::span<const PageChange> changes, std::uint64_t oldLength, std::uint64_t newLength);
  void Remove();
  void RemoveQuietly() noexcept;
  bool WroteByOthers(File& database, const Content& content);
  [[noreturn]] void SetAside(const File& database);

  FileSystem& files_;
  std::filesystem::path path_;
};

}  // namespace jet

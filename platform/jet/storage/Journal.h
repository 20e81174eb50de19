// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/pages/Files.h"
#include "platform/jet/storage/JournalFormat.h"
#include "platform/jet/storage/JournalReader.h"

#include <filesystem>
#include <map>
#include <memory>
#include <span>
#include <string>

namespace jet {

// The pages before a change that was not finished, read from its journal when they are asked for.
class JournalImages {
 public:
  // `file` is a sound journal.
  explicit JournalImages(std::unique_ptr<File> file);

  // Bytes of the database before the change.
  std::uint64_t Length() const { return reader_.OldLength(); }
  // The page as it lies on the disk; null when the change left it alone.
  std::shared_ptr<PageBytes> Read(std::uint32_t page);

 private:
  std::unique_ptr<File> file_;
  JournalReader reader_;
  std::map<std::uint32_t, std::size_t> records_;
};

// Makes a change to several pages one change, also when the program or the power dies in the middle: before the first
// page is overwritten, the old pages are safe in a file beside the database, named as it with "-journal" behind it.
// While that file is there, the change did not happen. The caller holds the database's exclusive lock.
//
// A journal is believed when its owner may write the database, it is sound (JournalReader), and every sector of the
// database that it knows is as before or as after; page 0 is among them and differs from change to change and from
// file to file. All that is found out before a byte is changed.
class Journal {
 public:
  enum class Outcome {
    Durable,  // the change is there to stay
    Done,     // it is there, but a power cut may still take it back: the folder could not be synced at the end
  };
  enum class Recovery { Nothing, Discarded, RolledBack, Replaced };

  // `database` is its real path, without links.
  Journal(FileSystem& files, const std::filesystem::path& database);

  const std::filesystem::path& Path() const { return path_; }
  bool Exists() { return files_.Exists(path_); }

  // Makes the change. When it throws, the old state is there, or comes back with the next Recover.
  Outcome Commit(File& database, std::span<const PageChange> changes, std::uint64_t oldLength, std::uint64_t newLength);

  // Takes back a change that was not finished. An Error (ForeignWrite) when the journal is not believed: then nothing
  // is overwritten. One whose owner may not write the database stays where it is; any other is kept under another
  // name, which the Error gives. `Replaced`: the path no longer leads to `database`, and the journal was not touched.
  Recovery Recover(File& database);

  // What the database held before a change that was not finished, for media that cannot be written; null when there
  // was none. An Error (ForeignWrite) when the journal is not believed.
  std::unique_ptr<JournalImages> ReadImages(File& database);

 private:
  std::unique_ptr<File> OpenTrusted(File& database);
  void Write(File& database, std::span<const PageChange> changes, std::uint64_t oldLength, std::uint64_t newLength);
  void Remove();
  void RemoveQuietly() noexcept;
  bool IsReplaced(File& database);
  std::filesystem::path SetAside();

  FileSystem& files_;
  std::filesystem::path database_;
  std::filesystem::path path_;
};

}  // namespace jet

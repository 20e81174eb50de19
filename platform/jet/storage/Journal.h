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

// The old pages of an unfinished change, read from its journal on demand.
class JournalImages {
 public:
  // `file`: a journal whose kind is Sound.
  explicit JournalImages(std::unique_ptr<File> file);

  // Bytes of the database before the change.
  std::uint64_t Length() const { return reader_.OldLength(); }
  // The old page as stored (still encoded); null when the change did not touch it.
  std::shared_ptr<PageBytes> Read(std::uint32_t page);

 private:
  std::unique_ptr<File> file_;
  JournalReader reader_;
  std::map<std::uint32_t, std::size_t> records_;
};

// Makes a change of several pages atomic, also when the program is killed or the power fails: before the first page is
// overwritten, the old pages are synced to a file next to the database, with "-journal" appended to its name. As long
// as that file exists, the change did not happen. The caller holds the database's exclusive lock.
//
// A journal is trusted when its owner may write the database, it is sound (JournalReader), and every sector of the
// database that it covers is as before or as after the change; this includes page 0, which differs in every change and
// every file. All of it is checked before a byte is changed.
class Journal {
 public:
  enum class Outcome {
    Durable,  // the change is made and survives a power cut
    Done,     // it is made, but a power cut may still undo it: the final sync of the folder failed
  };
  enum class Recovery { Nothing, Discarded, RolledBack, Replaced };

  // `database`: the real path of the database, without links.
  Journal(FileSystem& files, const std::filesystem::path& database);

  const std::filesystem::path& Path() const { return path_; }
  bool Exists() { return files_.Exists(path_); }

  // Makes the change. `status`: of the database before. After an exception the old state is there, or the next Recover
  // restores it.
  Outcome Commit(File& database, const files::FileStatus& status, std::span<const PageChange> changes,
                 std::uint64_t newLength);

  // Undoes an unfinished change. Throws Error (ForeignWrite) when the journal is not trusted: then nothing is
  // overwritten. A journal whose owner may not write the database stays in place; any other is renamed, and the Error
  // has the new name. `Replaced`: the path no longer leads to `database`, and the journal was not touched.
  Recovery Recover(File& database);

  // The state before an unfinished change, for read-only media; null when there is none. Throws Error (ForeignWrite)
  // when the journal is not trusted.
  std::unique_ptr<JournalImages> ReadImages(File& database);

 private:
  std::unique_ptr<File> OpenTrusted(File& database);
  void Write(const files::FileStatus& status, std::span<const PageChange> changes, std::uint64_t newLength);
  void Remove();
  void RemoveQuietly() noexcept;
  bool IsReplaced(File& database);
  std::filesystem::path SetAside();

  FileSystem& files_;
  std::filesystem::path database_;
  std::filesystem::path path_;
};

}  // namespace jet

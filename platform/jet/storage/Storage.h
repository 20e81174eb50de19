// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/pages/Files.h"
#include "platform/jet/pages/Pages.h"
#include "platform/jet/pages/Transaction.h"
#include "platform/jet/storage/Journal.h"
#include "platform/jet/storage/Lock.h"
#include "platform/jet/storage/LockFile.h"

#include <chrono>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace jet {

class OverlaidPages;

struct StorageOptions {
  std::size_t cachedPages = 2048;  // most pages kept in memory, 4096 bytes each
  bool readOnly = false;           // never write a byte, whatever the permissions are
  WaitRule wait = WaitRule::Real();
};

// The pages of one database file, shared by everything that this thread has open of it: locks, journal, cache, and at
// most one statement that changes something.
//
// Reading happens between BeginRead and EndRead, which nest: in between, what is read does not change. A change begins
// with BeginWrite (before any BeginRead of the same statement), is made through Changes(), and ends with Commit or
// Rollback. Not thread-safe: each thread has its own Storage of a file.
class Storage {
 public:
  // The Storage of the file that `path` names; the same one for every opening by this thread that is still alive.
  static std::shared_ptr<Storage> Open(const std::filesystem::path& path, const StorageOptions& options = {},
                                       FileSystem& files = HostFileSystem());
  // A Storage of one's own, as another process would have it.
  Storage(const std::filesystem::path& path, const StorageOptions& options, FileSystem& files);
  ~Storage();
  Storage(const Storage&) = delete;
  Storage& operator=(const Storage&) = delete;

  const std::string& Name() const { return name_; }
  bool IsReadOnly() const { return readOnly_; }
  // Where the file is, without links. What belongs to it is beside it.
  const std::filesystem::path& Path() const { return path_; }
  // The file that is open, for copying it as it is: also when its path leads elsewhere by now. Only for reading, and
  // only until the end of the turn.
  File& OpenedFile() { return *file_; }
  // Which file is open: another one once somebody put a file in its place and it was looked at again.
  const FileIdentity& Identity() const { return status_.identity; }
  const Header& DatabaseHeader() const { return pages_->DatabaseHeader(); }
  // Bytes in the file when it was last looked at.
  std::uint64_t FileSize() const { return status_.size; }
  // What to read from: the file, or what the present statement makes of it. Lives as long as the Storage.
  PageSource& Source() { return source_; }

  // Waits for a writer to end; takes back what a crashed one left. An Error (Locked) after the wait's limit.
  void BeginRead();
  void EndRead() noexcept;

  // Waits for other writers. An Error when the file cannot be written, by us or because a program of another make has
  // it open.
  void BeginWrite();
  bool IsWriting() const { return transaction_ != nullptr; }
  // An Error (Misuse) when no change was begun, as Commit gives.
  Transaction& Changes();
  // Makes the change durable. After an Error nothing of it is there, but for one of the code NotYetDurable: then the
  // change is there, and only a power cut can still take it back.
  void Commit();
  void Rollback() noexcept;

 private:
  // Stays the same while what stands behind it changes.
  class CurrentPages final : public PageSource {
   public:
    explicit CurrentPages(Storage& store) : store_(store) {}
    std::uint32_t PageCount() override { return store_.Present().PageCount(); }
    PageRef Read(std::uint32_t number) override { return store_.Present().Read(number); }

   private:
    Storage& store_;
  };

  PageSource& Present();
  // One statement waits for others as long as the rule says, and not longer, whatever it waits for.
  bool Wait(const std::function<bool()>& attempt);
  bool WaitForReaders();
  void OpenFile();
  bool IsReplaced();
  bool TryBeginRead();
  bool RecoverOrOverlay();
  bool RecoverExclusively();
  void RefreshIfChanged();
  void ReserveFile();
  void Reserve();
  void RequireWritable();
  void RequireWriting() const;
  void CheckForeignUsers();
  void RequireUnchanged();
  [[noreturn]] void ThrowInUse();
  void MarkCommit();
  Journal::Outcome WriteChanges();
  void EndWrite() noexcept;

  FileSystem& files_;
  std::filesystem::path given_;  // as the caller calls the file
  std::filesystem::path path_;   // the same without links; what belongs to the file stands beside it
  std::string name_;
  StorageOptions options_;
  std::unique_ptr<Journal> journal_;
  CurrentPages source_;
  bool readOnly_ = false;
  std::unique_ptr<File> file_;
  std::unique_ptr<Lock> lock_;
  std::unique_ptr<LockFile> lockFile_;
  std::unique_ptr<Pages> pages_;
  std::unique_ptr<OverlaidPages> overlay_;
  Transaction::UsedButMarkedFree wronglyFree_;
  std::unique_ptr<Transaction> transaction_;
  files::FileStatus status_;  // when the pages were last known to be those of the file
  PageBytes lastHeader_{};
  bool mayHaveChanged_ = true;           // whatever the status says
  std::chrono::milliseconds waited_{0};  // by the present statement
  int readers_ = 0;
  bool changes_ = false;   // the present statement is one that writes
  bool reserved_ = false;  // the file that is open, by us
};

// Reads as long as it lives.
class ReadGuard {
 public:
  explicit ReadGuard(Storage& store) : store_(store) { store_.BeginRead(); }
  ~ReadGuard() { store_.EndRead(); }
  ReadGuard(const ReadGuard&) = delete;
  ReadGuard& operator=(const ReadGuard&) = delete;

 private:
  Storage& store_;
};

// A change that is rolled back unless it was committed. It ends with the first Commit, also with one that fails; every
// further one is an Error (Misuse).
class WriteGuard {
 public:
  explicit WriteGuard(Storage& store) : store_(store) { store_.BeginWrite(); }
  ~WriteGuard() {
    if (!ended_ && store_.IsWriting()) store_.Rollback();
  }
  WriteGuard(const WriteGuard&) = delete;
  WriteGuard& operator=(const WriteGuard&) = delete;
  void Commit();

 private:
  Storage& store_;
  bool ended_ = false;
};

}  // namespace jet

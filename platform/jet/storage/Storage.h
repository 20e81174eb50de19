// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/pages/Files.h"
#include "platform/jet/pages/Transaction.h"
#include "platform/jet/storage/WaitRule.h"

#include <chrono>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <string>

namespace jet {

class Journal;
class Lock;
class LockFile;
class OverlaidPages;
class Pages;
struct Header;

struct StorageOptions {
  std::size_t cachedPages = kCachedPages;  // cache size in pages of 4096 bytes
  bool readOnly = false;                   // never write a byte, whatever the permissions are
  WaitRule wait = WaitRule::Real();
  // Finds the free pages that need care; null: there are none.
  DoubtfulFreePages (*findDoubtfulFreePages)(PageSource& pages) = nullptr;
};

// The pages of one database file with its locks, journal and cache, shared by all openings of the file in one thread.
// At most one statement changes it at a time.
//
// Between BeginRead and EndRead, which nest, the content does not change. A change begins with BeginWrite (before any
// BeginRead of the same statement), is made through Changes(), and ends with Commit or Rollback. Not thread-safe: each
// thread has its own Storage of a file.
class Storage {
 public:
  // This thread's Storage of the file at `path`: the existing one while it is alive, otherwise a new one.
  static std::shared_ptr<Storage> Open(const std::filesystem::path& path, const StorageOptions& options = {},
                                       FileSystem& files = HostFileSystem());
  // A separate Storage, as another process would have.
  Storage(const std::filesystem::path& path, const StorageOptions& options, FileSystem& files);
  ~Storage();
  Storage(const Storage&) = delete;
  Storage& operator=(const Storage&) = delete;

  const std::string& Name() const { return name_; }
  bool IsReadOnly() const { return readOnly_; }
  // The real path, without links; journal and lock file are next to it.
  const std::filesystem::path& Path() const { return path_; }
  // The open file, for copying, even if its path now leads to another file. For reading only, valid until EndRead.
  File& OpenedFile() { return *file_; }
  // Identity of the open file; changes when the file was replaced and BeginRead noticed it.
  const FileIdentity& Identity() const { return status_.identity; }
  const Header& DatabaseHeader() const;
  // Size of the file in bytes as of the last BeginRead or Commit.
  std::uint64_t FileSize() const { return status_.size; }
  // The pages to read: the file with the changes of the current statement. Lives as long as the Storage.
  PageSource& Source() { return source_; }

  // Waits for a writer to end; undoes the change of a crashed one. Throws Error (Locked) when the limit of the wait is
  // reached.
  void BeginRead();
  void EndRead() noexcept;

  // Waits for other writers. Throws Error when the file cannot be written or another Jet program has it open.
  void BeginWrite();
  bool IsWriting() const { return transaction_ != nullptr; }
  // The current change. Throws Error (Misuse) without a BeginWrite; so does Commit.
  Transaction& Changes();
  // Makes the change durable. After an exception nothing was changed, except for an Error with the code NotYetDurable:
  // then the change is made, and only a power cut can still undo it.
  void Commit();
  void Rollback() noexcept;

 private:
  // A stable object for Source(), which forwards to the current pages.
  class CurrentPages final : public PageSource {
   public:
    explicit CurrentPages(Storage& store) : store_(store) {}
    std::uint32_t PageCount() override { return store_.Current().PageCount(); }
    PageRef Read(std::uint32_t number) override { return store_.Current().Read(number); }

   private:
    Storage& store_;
  };

  PageSource& Current();
  // All waits of one statement share the limit of the rule.
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
  PageRef ReadStored(std::uint32_t number);
  PageRef OldPage(std::uint32_t number, std::span<const std::uint32_t> reused);
  // False when the change is made, but a power cut may still undo it.
  [[nodiscard]] bool WriteChanges();
  void AcceptChanges(const std::map<std::uint32_t, PageRef>& changed) noexcept;
  // Ends the transaction, committed or not, with its locks.
  void EndChange() noexcept;
  // Releases the reserved lock, or the place in the queue for it.
  void EndReserve() noexcept;

  FileSystem& files_;
  std::filesystem::path given_;  // as passed to the constructor
  std::filesystem::path path_;   // the same without links
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
  DoubtfulFreePagesOfFile doubtfulFreePages_;
  std::unique_ptr<Transaction> transaction_;
  files::FileStatus status_;  // when the cache last matched the file
  PageBytes lastHeader_{};
  bool mayHaveChanged_ = true;           // even if the status is the same
  std::chrono::milliseconds waited_{0};  // time that the current statement has waited
  int readers_ = 0;
  bool isChanging_ = false;  // the current statement writes
  bool reserved_ = false;    // we have the reserved lock on the open file
};

// Reading within its lifetime is consistent. Turns may be nested.
class ReadTurn {
 public:
  explicit ReadTurn(Storage& store) : store_(store) { store_.BeginRead(); }
  // `owner`: a Database.
  template <class Owner>
  explicit ReadTurn(Owner& owner) : ReadTurn(owner.Shared()) {}
  ~ReadTurn() { store_.EndRead(); }
  ReadTurn(const ReadTurn&) = delete;
  ReadTurn& operator=(const ReadTurn&) = delete;

 private:
  Storage& store_;
};

// The turn of the single writer. Rolled back unless committed. The first Commit ends it, even if that fails; a further
// one is an Error (Misuse).
class WriteTurn {
 public:
  explicit WriteTurn(Storage& store) : store_(store) { store_.BeginWrite(); }
  // `owner`: a Database.
  template <class Owner>
  explicit WriteTurn(Owner& owner) : WriteTurn(owner.Shared()) {}
  ~WriteTurn() {
    if (!ended_ && store_.IsWriting()) store_.Rollback();
  }
  WriteTurn(const WriteTurn&) = delete;
  WriteTurn& operator=(const WriteTurn&) = delete;
  // As Storage::Commit.
  void Commit();

 private:
  Storage& store_;
  bool ended_ = false;
};

}  // namespace jet

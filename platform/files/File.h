// SPDX-License-Identifier: MIT
#pragma once

#include "platform/files/Bytes.h"

#include <cstddef>
#include <cstdint>
#include <string>

namespace files {

// Which file a handle really is, whatever path led to it.
struct FileIdentity {
  std::uint64_t device = 0;
  std::uint64_t inode = 0;
  auto operator<=>(const FileIdentity&) const = default;
};

enum class FileKind { Regular, Folder, Other };

// What a file system tells of a file.
struct FileStatus {
  FileKind kind = FileKind::Regular;
  FileIdentity identity;
  std::uint64_t size = 0;       // bytes
  std::int64_t modifiedNs = 0;  // nanoseconds since 1970
  std::uint64_t links = 1;      // how many names the file has; 0 when all were removed
  std::uint32_t owner = 0;      // user
  std::uint32_t group = 0;
  unsigned permissions = 0;  // the twelve bits of chmod
};

// Bytes from `start` on, `length` of them. They may lie past the end of the file.
struct ByteRange {
  std::uint64_t start = 0;
  std::uint64_t length = 1;
};

enum class LockKind { Shared, Exclusive };

// An owner or group that stays as it is.
constexpr std::uint32_t kUnchanged = 0xFFFFFFFF;

// One open file. All reading, writing and locking goes through here and through FileSystem, so that a test can make
// any single call fail.
//
// The Raw calls are one system call each, overridden by each kind of file: they return a count or 0, or a negative
// errno, and may do less than asked. The others are for everyday use: they finish what was begun, repeat an
// interrupted call, and throw files::Error with the file's name.
//
// Reading and writing take an offset, so that threads may share a handle. The destructor closes the file.
class File {
 public:
  explicit File(std::string name) : name_(std::move(name)) {}
  virtual ~File() = default;
  File(const File&) = delete;
  File& operator=(const File&) = delete;

  const std::string& Name() const { return name_; }

  // Fills `into` from `offset` on; returns how much there was (less than asked only at the end of the file).
  std::size_t ReadAt(std::uint64_t offset, ByteSpan into);
  void WriteAt(std::uint64_t offset, ByteView bytes);
  std::uint64_t Size();
  void Truncate(std::uint64_t size);
  // Returns when what was written will survive a power cut. After an error nothing is known about it.
  void Sync();
  // False when someone else holds a conflicting lock. Never waits. Locks belong to this handle, not to the process;
  // locking again what one holds changes its kind.
  bool TryLock(ByteRange range, LockKind kind);
  void Unlock(ByteRange range);
  // Whether another handle holds a lock that TryLock would meet, and where the first of those begins.
  bool IsLockedByOther(ByteRange range, LockKind kind, std::uint64_t* where = nullptr);
  // A lock on the file as a whole, apart from those on bytes: false when another handle has it. Never waits, ends with
  // the handle. Being allowed to read the file is enough, except on some network drives.
  bool TryLockWhole();
  FileStatus Status();
  FileIdentity Identity() { return Status().identity; }
  // Gives this file the permissions of `original`, its group where this user may, and its owner where this user is
  // root. Nobody gets more than `original` allows: where the group cannot be kept, the group gets no more than others.
  // To be called before anything is written to a file that was created with permissions 0600.
  void TakeAccessOf(const FileStatus& original);

  virtual std::int64_t RawRead(std::uint64_t offset, ByteSpan into) = 0;
  virtual std::int64_t RawWrite(std::uint64_t offset, ByteView bytes) = 0;
  virtual int RawTruncate(std::uint64_t size) = 0;
  virtual int RawSync() = 0;
  virtual int RawLock(ByteRange range, LockKind kind) = 0;  // -EAGAIN when it is taken
  virtual int RawUnlock(ByteRange range) = 0;
  virtual int RawFindLock(ByteRange range, LockKind kind, bool* found, std::uint64_t* where) = 0;
  virtual int RawLockWhole() = 0;  // -EAGAIN when it is taken
  virtual int RawStatus(FileStatus* status) = 0;
  virtual int RawSetOwner(std::uint32_t owner, std::uint32_t group) = 0;
  virtual int RawSetPermissions(unsigned permissions) = 0;

 private:
  std::string name_;
};

}  // namespace files

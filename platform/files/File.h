// SPDX-License-Identifier: MIT
#pragma once

#include "platform/files/Bytes.h"

#include <cstddef>
#include <cstdint>
#include <string>

namespace files {

// Identifies a file independently of the path by which it was opened.
struct FileIdentity {
  std::uint64_t device = 0;
  std::uint64_t inode = 0;
  auto operator<=>(const FileIdentity&) const = default;
};

enum class FileKind { Regular, Folder, Other };

// The attributes of a file.
struct FileStatus {
  FileKind kind = FileKind::Regular;
  FileIdentity identity;
  std::uint64_t size = 0;       // bytes
  std::int64_t modifiedNs = 0;  // nanoseconds since 1970
  std::uint64_t links = 1;      // number of hard links; 0 when the file was removed
  std::uint32_t owner = 0;      // user
  std::uint32_t group = 0;
  unsigned permissions = 0;  // the 12 bits of chmod
};

// `length` bytes from offset `start`; may be beyond the end of the file.
struct ByteRange {
  std::uint64_t start = 0;
  std::uint64_t length = 1;
};

enum class LockKind { Shared, Exclusive };

// For RawSetOwner: leave the owner or group as it is.
constexpr std::uint32_t kUnchanged = 0xFFFFFFFF;

// One open file. All reading, writing and locking uses this class and FileSystem, so that a test can make any single
// call fail.
//
// The Raw calls are one system call each, overridden by each kind of file: they return a count, 0, or a negative errno,
// and may transfer fewer bytes than requested. The other calls transfer everything, repeat interrupted system calls,
// and throw files::Error with the name of the file.
//
// Reading and writing take an offset, so that threads may share a handle. The destructor closes the file.
class File {
 public:
  explicit File(std::string name) : name_(std::move(name)) {}
  virtual ~File() = default;
  File(const File&) = delete;
  File& operator=(const File&) = delete;

  const std::string& Name() const { return name_; }

  // Reads from `offset` until `into` is full; returns the number of bytes, fewer only at the end of the file.
  std::size_t ReadAt(std::uint64_t offset, ByteSpan into);
  void WriteAt(std::uint64_t offset, ByteView bytes);
  std::uint64_t Size();
  void Truncate(std::uint64_t size);
  // On return the written data survives a power cut. After an error its state is unknown.
  void Sync();
  // False when another handle holds a conflicting lock. Never waits. Locks belong to this handle, not to the process;
  // locking the same range again changes the kind of the lock.
  bool TryLock(ByteRange range, LockKind kind);
  void Unlock(ByteRange range);
  // Whether another handle holds a lock that conflicts, and in `where` the start of the first of those.
  bool IsLockedByOther(ByteRange range, LockKind kind, std::uint64_t* where = nullptr);
  // Locks the complete file, independently of byte locks; false when another handle holds this lock. Never waits; ends
  // with the handle. Needs read permission only, except on some network drives.
  bool TryLockWhole();
  FileStatus Status();
  FileIdentity Identity() { return Status().identity; }
  // Sets the permissions of `original`, its group where this user may, and its owner where this user is root. The file
  // is never accessible to more users than `original`: where the group cannot be set, the group gets no more than
  // others. Call before the first write to a file that was created with permissions 0600.
  void TakeAccessOf(const FileStatus& original);

  virtual std::int64_t RawRead(std::uint64_t offset, ByteSpan into) = 0;
  virtual std::int64_t RawWrite(std::uint64_t offset, ByteView bytes) = 0;
  virtual int RawTruncate(std::uint64_t size) = 0;
  virtual int RawSync() = 0;
  virtual int RawLock(ByteRange range, LockKind kind) = 0;  // -EAGAIN when locked by another handle
  virtual int RawUnlock(ByteRange range) = 0;
  virtual int RawFindLock(ByteRange range, LockKind kind, bool* found, std::uint64_t* where) = 0;
  virtual int RawLockWhole() = 0;  // -EAGAIN when locked by another handle
  virtual int RawStatus(FileStatus* status) = 0;
  virtual int RawSetOwner(std::uint32_t owner, std::uint32_t group) = 0;
  virtual int RawSetPermissions(unsigned permissions) = 0;

 private:
  std::string name_;
};

}  // namespace files

#pragma once

#include "platform/files/Bytes.h"

#include <cstddef>
#include <cstdint>
#include <string>

namespace files {

/// Which file a handle really is, whatever path led to it.
struct FileIdentity {
  std::uint64_t device = 0;
  std::uint64_t inode = 0;
  auto operator<=>(const FileIdentity&) const = default;
};

/// Bytes from `start` on, `length` of them. They may lie past the end of the file.
struct ByteRange {
  std::uint64_t start = 0;
  std::uint64_t length = 1;
};

enum class LockKind { Shared, Exclusive };

/// One open file. All reading, writing and locking of this library goes through here and through FileSystem, so that a
/// test can make any single call fail.
///
/// The Raw calls are one system call each, overridden by each kind of file: they answer a count or 0, or a negative
/// errno, and may do less than asked. The others are what the library uses: they finish what was begun, repeat an
/// interrupted call, and throw files::Error with the file's name.
///
/// Reading and writing name their place, so that threads may share a handle; closing is the destructor's.
class File {
 public:
  explicit File(std::string name) : name_(std::move(name)) {}
  virtual ~File() = default;
  File(const File&) = delete;
  File& operator=(const File&) = delete;

  const std::string& Name() const { return name_; }

  /// Fills `into` from `offset` on; answers how much there was (less than asked only at the end of the file).
  std::size_t ReadAt(std::uint64_t offset, ByteSpan into);
  void WriteAt(std::uint64_t offset, ByteView bytes);
  std::uint64_t Size();
  void Truncate(std::uint64_t size);
  /// Returns when what was written will survive a power cut. After an error nothing is known about it.
  void Sync();
  /// False when someone else holds a conflicting lock. Never waits. Locks belong to this handle, not to the process;
  /// locking again what one holds changes its kind.
  bool TryLock(ByteRange range, LockKind kind);
  void Unlock(ByteRange range);
  /// Whether another handle holds a lock that TryLock would meet, and where the first of those begins.
  bool IsLockedByOther(ByteRange range, LockKind kind, std::uint64_t* where = nullptr);
  FileIdentity Identity();

  virtual std::int64_t RawRead(std::uint64_t offset, ByteSpan into) = 0;
  virtual std::int64_t RawWrite(std::uint64_t offset, ByteView bytes) = 0;
  virtual std::int64_t RawSize() = 0;
  virtual int RawTruncate(std::uint64_t size) = 0;
  virtual int RawSync() = 0;
  virtual int RawLock(ByteRange range, LockKind kind) = 0;  ///< -EAGAIN when it is taken
  virtual int RawUnlock(ByteRange range) = 0;
  virtual int RawFindLock(ByteRange range, LockKind kind, bool* found, std::uint64_t* where) = 0;
  virtual int RawIdentity(FileIdentity* identity) = 0;

 private:
  std::string name_;
};

}  // namespace files

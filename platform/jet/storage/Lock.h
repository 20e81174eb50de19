// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/pages/Files.h"

#include <chrono>
#include <cstdint>
#include <optional>

namespace jet {

// The locks that let several programs share one database: byte-range locks on the database file itself, past the
// largest possible data. Any number of programs may read; one may prepare a change while others read; to write, it
// blocks new readers and waits for the current ones. The locks of a process end with it.
//
//   0x80000000  pending: held by a writer that waits for the readers to end
//   0x80000001  reserved: held by the program that may change the file
//   0x80000002  shared by readers, exclusive while pages are written
//   0x80002000  + n: user n of the .ldb has the reserved lock
//   0x80010000  + n: waits for the reserved lock; the lowest n is next
class Lock {
 public:
  explicit Lock(File& file) : file_(file) {}

  // None of these waits; false: another program has the lock.
  bool TryShare();
  // The same for the program that has the reserved lock: then no other one can hold the pending lock.
  bool TryShareWhileReserved();
  bool TryReserve();
  // The same for waiting programs, first come first served. The first failed attempt takes a place in the queue, which
  // is kept until an attempt succeeds or LeaveQueue.
  bool TryReserveInTurn();
  void LeaveQueue() noexcept;
  // Requires the reserved lock. Blocks new readers from the first attempt on.
  bool TryExclude();
  // The same for a writer that waits for a slow reader: periodically lets in the readers that it blocks. `waited` must
  // not decrease between attempts.
  bool TryExcludeByTurns(std::chrono::milliseconds waited);

  void EndExclude();  // back to shared
  void EndReserve();
  void EndShare();
  // All of them at once, and the mark of the writer; `keepsShare`: all but the shared lock.
  void EndWriting(bool keepsShare);

  // Makes visible to others that user `number` of the .ldb has the reserved lock.
  void MarkWriter(unsigned number);
  // The number of the user with the reserved lock; nothing when unknown.
  std::optional<unsigned> Writer();

 private:
  void JoinQueue();

  File& file_;
  std::optional<std::uint64_t> place_;                 // our byte in the queue
  std::optional<std::chrono::milliseconds> turnEnds_;  // end of the current phase, blocking readers or letting them in
  bool keepsOut_ = false;
};

}  // namespace jet

// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/pages/Files.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>

namespace jet {

// How long to wait for others, and how. `sleep` is replaced in tests.
struct WaitRule {
  std::chrono::milliseconds limit{5000};
  std::function<void(std::chrono::milliseconds)> sleep;

  // Sleeps for a real while.
  static WaitRule Real();
};

// Tries again and again, with growing pauses, until `attempt` answers true. False when the limit is reached. `waited`
// is what was waited before, and grows: several waits of one statement share one limit.
bool WaitFor(const WaitRule& rule, std::chrono::milliseconds& waited, const std::function<bool()>& attempt);

// The locks by which programs of this kind take turns on one database: on bytes of the database file itself, past the
// largest place that data can have. Any number may read; one may prepare a change while others read; to write, it
// keeps new readers out and waits for the present ones. A lock dies with the process that holds it.
//
//   0x80000000  pending: held by who waits for the readers to end
//   0x80000001  reserved: held by the one who may change the file
//   0x80000002  shared by readers, exclusive while pages are written
//   0x80002000  + n: user n of the .ldb has the reserved lock
//   0x80010000  + n: whoever waits for the reserved lock; the lowest n is next
class Lock {
 public:
  explicit Lock(File& file) : file_(file) {}

  // None of these waits; false = someone is in the way.
  bool TryShare();
  bool TryReserve();
  // The same for one who waits: those who came before go first. From the first attempt that fails on there is a place
  // in the queue, until an attempt succeeds or LeaveQueue.
  bool TryReserveInTurn();
  void LeaveQueue() noexcept;
  // With the reserved lock only. Keeps new readers out from the first attempt on.
  bool TryExclude();
  // The same for one who waits: now and then, while it waits for a slow reader, it lets in the readers that it keeps
  // out. `waited` grows from attempt to attempt.
  bool TryExcludeByTurns(std::chrono::milliseconds waited);

  void EndExclude();  // back to shared
  void EndReserve();
  void EndShare();

  // Lets others see that user `number` of the .ldb has the reserved lock.
  void MarkWriter(unsigned number);
  void UnmarkWriter(unsigned number);
  // The number of the user who has the reserved lock; nothing when it is not known.
  std::optional<unsigned> Writer();

 private:
  void JoinQueue();

  File& file_;
  std::optional<std::uint64_t> place_;                 // in the queue: the byte that is ours
  std::optional<std::chrono::milliseconds> turnEnds_;  // of keeping readers out, or of letting them in
  bool keepsOut_ = false;
};

}  // namespace jet

// SPDX-License-Identifier: MIT
#include "platform/jet/storage/Lock.h"

#include "platform/jet/storage/LockFile.h"
#include "platform/jet/values/Error.h"

#include <algorithm>
#include <chrono>

namespace jet {
namespace {

using std::chrono::milliseconds;

constexpr std::uint64_t kBase = 0x80000000;
constexpr ByteRange kPending = {kBase, 1};
constexpr ByteRange kReserved = {kBase + 1, 1};
constexpr ByteRange kReaders = {kBase + 2, 1};
constexpr std::uint64_t kWriters = kBase + 0x2000;
constexpr std::uint64_t kQueue = kBase + 0x10000;
constexpr std::uint64_t kQueueEnd = kQueue + 0x10000000;
constexpr milliseconds kKeepOut{500};  // most readers finish within this time
constexpr milliseconds kLetIn{50};     // several pauses of a waiting reader

}  // namespace

bool Lock::TryShare() {
  if (!file_.TryLock(kPending, LockKind::Shared)) return false;
  const bool shared = file_.TryLock(kReaders, LockKind::Shared);
  file_.Unlock(kPending);
  return shared;
}

bool Lock::TryShareWhileReserved() {
  return file_.TryLock(kReaders, LockKind::Shared);
}

bool Lock::TryReserve() {
  return file_.TryLock(kReserved, LockKind::Exclusive);
}

bool Lock::TryReserveInTurn() {
  const std::uint64_t end = place_.value_or(kQueueEnd);
  const bool isNext = end == kQueue || !file_.IsLockedByOther({kQueue, end - kQueue}, LockKind::Exclusive);
  if (isNext && TryReserve()) {
    LeaveQueue();
    return true;
  }
  if (!place_) JoinQueue();
  return false;
}

// After the last one. The gap that a killed program leaves is harmless: only locks on lower bytes count.
void Lock::JoinQueue() {
  std::uint64_t place = kQueue;
  for (std::uint64_t taken = 0;
       place < kQueueEnd && file_.IsLockedByOther({place, kQueueEnd - place}, LockKind::Exclusive, &taken);)
    place = std::max(place, taken) + 1;
  while (place < kQueueEnd && !file_.TryLock({place, 1}, LockKind::Exclusive))
    ++place;
  if (place < kQueueEnd) place_ = place;
}

void Lock::LeaveQueue() noexcept {
  if (!place_) return;
  try {
    file_.Unlock({*place_, 1});
    place_.reset();
  } catch (...) {
    // Tried again by the next LeaveQueue; the lock ends with the handle.
  }
}

bool Lock::TryExclude() {
  return file_.TryLock(kPending, LockKind::Exclusive) && file_.TryLock(kReaders, LockKind::Exclusive);
}

bool Lock::TryExcludeByTurns(milliseconds waited) {
  if (!turnEnds_ || waited >= *turnEnds_) {
    keepsOut_ = !turnEnds_ || !keepsOut_;
    turnEnds_ = waited + (keepsOut_ ? kKeepOut : kLetIn);
  }
  if (keepsOut_) return TryExclude();
  file_.Unlock(kPending);
  return false;
}

void Lock::EndExclude() {
  turnEnds_.reset();
  file_.TryLock(kReaders, LockKind::Shared);
  file_.Unlock(kPending);
}

void Lock::EndReserve() {
  file_.Unlock(kReserved);
}
void Lock::EndShare() {
  file_.Unlock(kReaders);
}

void Lock::EndWriting(bool keepsShare) {
  turnEnds_.reset();
  if (keepsShare) {
    file_.TryLock(kReaders, LockKind::Shared);
    file_.Unlock({kPending.start, kReaders.start - kPending.start});
  }
  const std::uint64_t first = keepsShare ? kReaders.start + 1 : kBase;
  file_.Unlock({first, kQueue - first});
}

void Lock::MarkWriter(unsigned number) {
  file_.TryLock({kWriters + number, 1}, LockKind::Exclusive);
}

std::optional<unsigned> Lock::Writer() {
  std::uint64_t where = 0;
  if (!file_.IsLockedByOther({kWriters + 1, LockFile::kMaxUsers}, LockKind::Exclusive, &where)) return std::nullopt;
  return static_cast<unsigned>(where - kWriters);
}

}  // namespace jet

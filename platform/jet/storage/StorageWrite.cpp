// SPDX-License-Identifier: MIT
// The writing part of Storage.
#include "platform/jet/pages/Header.h"
#include "platform/jet/pages/Pages.h"
#include "platform/jet/pages/ReusedPages.h"
#include "platform/jet/storage/Journal.h"
#include "platform/jet/storage/Lock.h"
#include "platform/jet/storage/LockFile.h"
#include "platform/jet/storage/OverlaidPages.h"
#include "platform/jet/storage/Storage.h"
#include "platform/jet/values/Codec.h"
#include "platform/jet/values/Error.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace jet {
namespace {

constexpr std::uint16_t kFirstCommitCount = 0x0100;  // lower values are believed to mark a crash

}  // namespace

// Takes the reserved lock on the open file. The path may lead to another file by then: see ReserveFile.
void Storage::Reserve() {
  // While we read we must not wait: the program that has the lock may be waiting for its readers to end.
  const bool reserved = readers_ > 0 ? lock_->TryReserve() : Wait([this] { return lock_->TryReserveInTurn(); });
  if (!reserved) ThrowInUse();
  reserved_ = true;
  if (lockFile_ != nullptr && lockFile_->Number() != 0) lock_->MarkWriter(lockFile_->Number());
}

// Takes the reserved lock and begins to read. BeginRead opens the new file when the path leads to another one, which
// releases the lock; then both are done again.
void Storage::ReserveFile() {
  for (;;) {
    Reserve();
    BeginRead();
    if (reserved_) return;
    EndRead();
  }
}

void Storage::RequireWritable() {
  if (overlay_ != nullptr) throw Error(ErrorCode::AccessDenied, "De map van '" + name_ + "' is alleen-lezen.");
  if (status_.size % kPageSize != 0) throw Error(ErrorCode::Damaged, "Het bestand '" + name_ + "' is afgekapt.");
  if (status_.links == 0) throw SystemError("schrijven", name_, ENOENT);
  // Programs that use the other name would not find the journal and the lock file.
  if (status_.links > 1) {
    throw Error(ErrorCode::Unsupported,
                "Het bestand '" + name_ + "' heeft " + std::to_string(status_.links) +
                    " namen (harde koppelingen). Er wordt niet in geschreven zolang het er meer dan een heeft.");
  }
}

void Storage::CheckForeignUsers() {
  if (lockFile_ == nullptr) lockFile_ = std::make_unique<LockFile>(files_, path_, *file_);
  std::optional<unsigned> foreign;
  std::optional<Error> unusable;
  // Another instance may be between creating the file and setting its permissions, or between taking its number and
  // marking it.
  WaitRule shortly = options_.wait;
  shortly.limit = std::min(shortly.limit, waited_ + std::chrono::milliseconds(100));
  const auto attempt = [&] {
    unusable.reset();
    try {
      lockFile_->Require();
      foreign = lockFile_->ForeignUser();
    } catch (const Error& error) {
      unusable = error;
    }
    return !unusable && !foreign;
  };
  if (WaitFor(shortly, waited_, attempt)) return;
  if (unusable) throw *unusable;
  const std::string user = Described(lockFile_->UserAt(*foreign));
  throw Error(ErrorCode::Locked, "Het bestand '" + name_ + "' is geopend met een ander databaseprogramma" +
                                     (user.empty() ? "" : " (" + user + ")") +
                                     ". Zolang dat zo is, wordt er niet in geschreven.");
}

void Storage::BeginWrite() {
  if (IsWriting()) throw Error(ErrorCode::Misuse, "Er loopt al een wijziging van het bestand '" + name_ + "'.");
  if (readOnly_) throw Error(ErrorCode::AccessDenied, "Het bestand '" + name_ + "' is alleen-lezen.");
  waited_ = {};
  isChanging_ = true;
  bool reading = false;
  try {
    // Opens the new file before the wrong one is locked.
    if (readers_ == 0 && IsReplaced()) const ReadTurn look(*this);
    ReserveFile();
    reading = true;
    if (readOnly_) throw Error(ErrorCode::AccessDenied, "Het bestand '" + name_ + "' is alleen-lezen.");
    CheckForeignUsers();
    RequireWritable();
    transaction_ = std::make_unique<Transaction>(*pages_, &doubtfulFreePages_);
  } catch (...) {
    if (reading) EndRead();
    EndReserve();
    throw;
  }
}

Transaction& Storage::Changes() {
  RequireWriting();
  return *transaction_;
}

void Storage::RequireWriting() const {
  if (!IsWriting()) throw Error(ErrorCode::Misuse, "Er loopt geen wijziging van het bestand '" + name_ + "'.");
}

void Storage::Commit() {
  RequireWriting();
  if (transaction_->IsEmpty()) return Rollback();
  bool durable = true;
  try {
    MarkCommit();
    if (!WaitForReaders()) ThrowInUse();
    RequireUnchanged();
    durable = WriteChanges();
  } catch (...) {
    mayHaveChanged_ = true;
    EndChange();
    throw;
  }
  EndChange();
  if (durable) return;
  throw Error(
      ErrorCode::NotYetDurable,
      "De wijziging in het bestand '" + name_ +
          "' is gedaan, maar het is niet zeker dat ze een stroomstoring overleeft: de map kon niet veilig worden "
          "weggeschreven. Doe de wijziging niet nog eens; kijk na een stroomstoring of ze er nog is.");
}

// Programs that do not use our locks may replace or overwrite the file at any time.
void Storage::RequireUnchanged() {
  const auto named = files_.Status(path_);
  PageBytes header{};
  file_->ReadAt(0, header);
  if (named && named->identity == status_.identity && named->size == status_.size && header == lastHeader_) {
    status_ = *named;  // the journal gets the present permissions
    return;
  }
  throw Error(ErrorCode::ForeignWrite, "Het bestand '" + name_ +
                                           "' is tijdens een wijziging door een ander programma vervangen. De "
                                           "wijziging is niet gedaan. Probeer het opnieuw.");
}

// The file has the old pages, so there is nothing to undo.
void Storage::Rollback() noexcept {
  EndChange();
}

void Storage::EndChange() noexcept {
  transaction_.reset();
  --readers_;
  EndReserve();
}

void Storage::EndReserve() noexcept {
  isChanging_ = false;
  lock_->LeaveQueue();
  if (!reserved_) return;
  reserved_ = false;
  try {
    lock_->EndWriting(readers_ > 0);
  } catch (...) {
    // The locks end with the handle.
  }
}

void WriteTurn::Commit() {
  if (std::exchange(ended_, true)) {
    throw Error(ErrorCode::Misuse, "De wijziging van het bestand '" + store_.Name() + "' is al afgesloten.");
  }
  store_.Commit();
}

void Storage::MarkCommit() {
  PageBytes& header = transaction_->Change(0);
  std::uint8_t* counter = header.data() + kCommitCounters;
  const auto next = static_cast<std::uint16_t>(LoadU16(counter) + 1);
  Store(counter, std::max(next, kFirstCommitCount));
  MarkChange(header);
}

// The page as it is in the file, still encoded.
PageRef Storage::ReadStored(std::uint32_t number) {
  auto page = std::make_shared<PageBytes>();
  file_->ReadAt(std::uint64_t{number} * kPageSize, *page);
  return page;
}

// The page as it is in the file, for the journal; null when the change can be undone without it.
PageRef Storage::OldPage(std::uint32_t number, std::span<const std::uint32_t> reused) {
  if (number >= transaction_->Before().PageCount()) return nullptr;
  const bool isReused = std::ranges::binary_search(reused, number);
  // One of them is in the journal: another program that took the same pages after a crash is recognised by it.
  if (isReused && number != reused.front()) return nullptr;
  // The cache may have an older content of a free page, from before a change that was undone.
  return isReused || DatabaseHeader().encodingKey != 0 ? ReadStored(number) : pages_->Read(number);
}

bool Storage::WriteChanges() {
  const std::vector<std::uint32_t> reused = ReusedPages(*transaction_);
  const auto changed = transaction_->ChangedPages();
  const bool encoded = DatabaseHeader().encodingKey != 0;
  std::vector<PageRef> stored;  // alive while `changes` point to them
  std::vector<PageChange> changes;
  for (const auto& [number, page] : changed) {
    PageChange change{number, stored.emplace_back(OldPage(number, reused)).get(), page.get()};
    if (encoded) {
      const auto copy = std::make_shared<PageBytes>(*page);
      pages_->ApplyEncoding(number, *copy);
      change.after = stored.emplace_back(copy).get();
    }
    changes.push_back(change);
  }
  const std::uint64_t newSize = std::uint64_t{transaction_->PageCount()} * kPageSize;
  const Journal::Outcome outcome = journal_->Commit(*file_, status_, changes, newSize);
  AcceptChanges(changed);
  return outcome == Journal::Outcome::Durable;
}

// The change is already made, so a failure here must not report that it was not.
void Storage::AcceptChanges(const std::map<std::uint32_t, PageRef>& changed) noexcept {
  try {
    for (const auto& [number, page] : changed)
      pages_->Accept(number, page);
    lastHeader_ = *changed.at(0);
    status_ = file_->Status();
  } catch (...) {
    mayHaveChanged_ = true;
    pages_->Clear();
  }
}

}  // namespace jet

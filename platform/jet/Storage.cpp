#include "platform/jet/Storage.h"

#include "platform/jet/Codec.h"
#include "platform/jet/Error.h"
#include "platform/jet/OverlaidPages.h"
#include "platform/jet/StorageRegistry.h"

#include <algorithm>
#include <chrono>
#include <exception>
#include <functional>
#include <list>
#include <optional>
#include <string>
#include <vector>

namespace jet {

namespace {

constexpr std::uint16_t kFirstCommitCount = 0x0100;  // a word below is said to mean a crash

}  // namespace

std::shared_ptr<Storage> Storage::Open(const std::filesystem::path& path, const StorageOptions& options,
                                       FileSystem& files) {
  static StorageRegistry registry;
  const auto identity = files.Identity(path);
  const auto make = [&] { return std::make_shared<Storage>(path, options, files); };
  if (!identity) return make();  // says what is wrong
  return registry.Find(files, *identity, options.readOnly, make);
}

Storage::Storage(const std::filesystem::path& path, const StorageOptions& options, FileSystem& files)
    : files_(files), path_(path), name_(path.string()), options_(options), journal_(files, path), source_(*this) {
  OpenFile();
  // A crashed statement may have left the header half written: look at it only under the lock.
  const ReadGuard reading(*this);
}

Storage::~Storage() = default;

PageSource& Storage::Present() {
  if (transaction_ != nullptr) return *transaction_;
  if (overlay_ != nullptr) return *overlay_;
  return *pages_;
}

void Storage::OpenFile() {
  overlay_.reset();
  pages_.reset();
  lockFile_.reset();
  lock_.reset();
  readOnly_ = options_.readOnly;
  try {
    file_ = files_.Open(path_, readOnly_ ? OpenMode::Read : OpenMode::Write);
  } catch (const Error& error) {
    if (readOnly_ || error.Code() != ErrorCode::AccessDenied) throw;
    file_ = files_.Open(path_, OpenMode::Read);
    readOnly_ = true;
  }
  identity_ = file_->Identity();
  lock_ = std::make_unique<Lock>(*file_);
  if (!readOnly_) lockFile_ = std::make_unique<LockFile>(files_, path_, *lock_);
}

void Storage::BeginRead() {
  if (readers_ == 0) {
    if (!reserved_) waited_ = {};
    if (!Wait([this] { return TryBeginRead(); })) ThrowInUse();
  }
  ++readers_;
}

bool Storage::Wait(const std::function<bool()>& attempt) {
  return WaitFor(options_.wait, waited_, attempt);
}

bool Storage::TryBeginRead() {
  if (!lock_->TryShare()) return false;
  try {
    const auto identity = files_.Identity(path_);
    if (identity && *identity != identity_) {
      OpenFile();  // someone put another file in its place
      return false;
    }
    if (journal_.Exists()) {
      RecoverOrOverlay();
    } else {
      overlay_.reset();
    }
    RefreshIfChanged();
  } catch (const Error&) {
    lock_->EndShare();
    throw;
  }
  return true;
}

void Storage::EndRead() noexcept {
  if (--readers_ > 0) return;
  try {
    lock_->EndShare();
  } catch (const Error&) {
    // The lock ends with the handle.
  }
}

void Storage::RecoverOrOverlay() {
  if (!readOnly_) {
    try {
      return RecoverExclusively();
    } catch (const Error& error) {
      if (error.Code() != ErrorCode::AccessDenied) throw;
    }
  }
  lastSize_ = 0;
  RefreshIfChanged();
  auto overlay = journal_.ReadOverlay();
  overlay_ = overlay ? std::make_unique<OverlaidPages>(*pages_, std::move(*overlay)) : nullptr;
}

// Gives up the shared lock for the while: others who found the same journal must not wait for each other.
void Storage::RecoverExclusively() {
  lock_->EndShare();
  const auto exclude = [this] { return (reserved_ || lock_->TryReserve()) && lock_->TryExclude(); };
  const bool excluded = Wait(exclude);
  std::exception_ptr failure;
  if (excluded) {
    try {
      journal_.Recover(*file_);
    } catch (const Error&) {
      failure = std::current_exception();
    }
    lastSize_ = 0;
  }
  lock_->EndExclude();
  if (!reserved_) lock_->EndReserve();
  if (!excluded) ThrowInUse();
  if (failure) std::rethrow_exception(failure);
}

void Storage::RefreshIfChanged() {
  PageBytes header{};
  file_->ReadAt(0, header);
  const std::uint64_t size = file_->Size();
  if (pages_ != nullptr && size == lastSize_ && header == lastHeader_) return;
  if (pages_ == nullptr) {
    pages_ = std::make_unique<Pages>(*file_, options_.cachedPages);
  } else {
    pages_->Refresh();
  }
  wronglyFree_.reset();
  lastHeader_ = header;
  lastSize_ = size;
}

void Storage::ThrowInUse() {
  std::string by = "een ander programma";
  const auto writer = lock_->Writer();
  if (writer && lockFile_ != nullptr) {
    const LockFileUser user = lockFile_->UserAt(*writer);
    if (!user.machine.empty()) by = user.name + " op " + user.machine;
  }
  throw Error(ErrorCode::Locked,
              "Het bestand '" + name_ + "' is in gebruik door " + by + ". Probeer het straks opnieuw.");
}

void Storage::Reserve() {
  // Who already reads cannot wait: the writer may be waiting for this very reader.
  const bool reserved = readers_ > 0 ? lock_->TryReserve() : Wait([this] { return lock_->TryReserveInTurn(); });
  if (!reserved) ThrowInUse();
  reserved_ = true;
  if (lockFile_ != nullptr && lockFile_->Number() != 0) lock_->MarkWriter(lockFile_->Number());
}

void Storage::CheckForeignUsers() {
  if (lockFile_ == nullptr) return;
  std::optional<unsigned> foreign;
  // Another of our programs may be just between taking its number and marking it.
  WaitRule shortly = options_.wait;
  shortly.limit = std::min(shortly.limit, std::chrono::milliseconds(100));
  std::chrono::milliseconds waited{0};
  if (WaitFor(shortly, waited, [&] { return !(foreign = lockFile_->ForeignUser()); })) return;
  const LockFileUser user = lockFile_->UserAt(*foreign);
  throw Error(ErrorCode::Locked, "Het bestand '" + name_ + "' is geopend met een ander databaseprogramma (" +
                                     user.name + " op " + user.machine +
                                     "). Zolang dat zo is, wordt er niet in geschreven.");
}

void Storage::BeginWrite() {
  if (IsWriting()) throw Error(ErrorCode::Misuse, "Er loopt al een wijziging van het bestand '" + name_ + "'.");
  if (readOnly_) throw Error(ErrorCode::AccessDenied, "Het bestand '" + name_ + "' is alleen-lezen.");
  // The file may have been put in place of the one that is open: look before the lock is taken on the wrong one.
  if (readers_ == 0) const ReadGuard look(*this);
  waited_ = {};
  bool reading = false;
  try {
    Reserve();
    BeginRead();
    reading = true;
    CheckForeignUsers();
    if (overlay_ != nullptr) throw Error(ErrorCode::AccessDenied, "De map van '" + name_ + "' is alleen-lezen.");
    if (lastSize_ % kPageSize != 0) throw Error(ErrorCode::Damaged, "Het bestand '" + name_ + "' is afgekapt.");
    transaction_ = std::make_unique<Transaction>(*pages_, &wronglyFree_);
  } catch (const Error&) {
    if (reading) EndRead();
    EndWrite();
    throw;
  }
}

void Storage::Commit() {
  if (transaction_->IsEmpty()) return Rollback();
  try {
    RaiseCommitCounter();
    if (!Wait([this] { return lock_->TryExclude(); })) ThrowInUse();
    WriteChanges();
  } catch (const Error&) {
    lastSize_ = 0;  // look at the file anew
    Rollback();
    throw;
  }
  Rollback();
}

void Storage::Rollback() noexcept {
  transaction_.reset();
  try {
    lock_->EndExclude();
  } catch (const Error&) {
    // The locks end with the handle.
  }
  EndRead();
  EndWrite();
}

void Storage::EndWrite() noexcept {
  lock_->LeaveQueue();
  if (!reserved_) return;
  reserved_ = false;
  try {
    if (lockFile_ != nullptr && lockFile_->Number() != 0) lock_->UnmarkWriter(lockFile_->Number());
    lock_->EndReserve();
  } catch (const Error&) {
    // The locks end with the handle.
  }
}

void Storage::RaiseCommitCounter() {
  std::uint8_t* counter = transaction_->Change(0).data() + kCommitCounters;
  const auto next = static_cast<std::uint16_t>(LoadU16(counter) + 1);
  Store(counter, std::max(next, kFirstCommitCount));
}

void Storage::WriteChanges() {
  const std::uint32_t oldPages = transaction_->OldPageCount();
  const auto changed = transaction_->ChangedPages();
  const bool encoded = DatabaseHeader().encodingKey != 0;
  std::list<PageBytes> copies;  // stay where they are
  std::vector<PageChange> changes;
  for (const auto& [number, page] : changed) {
    PageChange change{number, nullptr, page.get()};
    if (number < oldPages) {
      file_->ReadAt(std::uint64_t{number} * kPageSize, copies.emplace_back());
      change.before = &copies.back();
    }
    if (encoded) {
      pages_->ApplyEncoding(number, copies.emplace_back(*page));
      change.after = &copies.back();
    }
    changes.push_back(change);
  }
  const std::uint64_t newSize = std::uint64_t{transaction_->PageCount()} * kPageSize;
  journal_.Commit(*file_, changes, lastSize_, newSize);
  for (const auto& [number, page] : changed)
    pages_->Accept(number, page);
  lastHeader_ = *changed.at(0);
  lastSize_ = newSize;
}

}  // namespace jet

// SPDX-License-Identifier: MIT
#include "platform/jet/storage/Storage.h"

#include "platform/jet/pages/Pages.h"
#include "platform/jet/storage/Journal.h"
#include "platform/jet/storage/Lock.h"
#include "platform/jet/storage/LockFile.h"
#include "platform/jet/storage/OverlaidPages.h"
#include "platform/jet/storage/StorageRegistry.h"
#include "platform/jet/values/Error.h"

#include <exception>
#include <functional>
#include <string>

namespace jet {

std::shared_ptr<Storage> Storage::Open(const std::filesystem::path& path, const StorageOptions& options,
                                       FileSystem& files) {
  static StorageRegistry registry;
  const auto identity = files.Identity(path);
  const auto make = [&] { return std::make_shared<Storage>(path, options, files); };
  if (!identity) return make();  // throws the precise error
  return registry.Find(files, *identity, options.readOnly, make);
}

Storage::Storage(const std::filesystem::path& path, const StorageOptions& options, FileSystem& files)
    : files_(files),
      given_(path),
      name_(path.string()),
      options_(options),
      source_(*this),
      doubtfulFreePages_{options.findDoubtfulFreePages, {}} {
  OpenFile();
  // A crash may have left the header partly written: read it only under the lock, after recovery.
  const ReadTurn reading(*this);
}

Storage::~Storage() = default;

const Header& Storage::DatabaseHeader() const {
  return pages_->DatabaseHeader();
}

PageSource& Storage::Current() {
  if (transaction_ != nullptr) return *transaction_;
  if (overlay_ != nullptr) return *overlay_;
  return *pages_;
}

// The old state is kept until the new file is open.
void Storage::OpenFile() {
  std::filesystem::path path = given_;
  if (files_.Exists(given_)) path = files_.RealPath(given_);
  if (path == std::filesystem::absolute(given_).lexically_normal())
    path = given_;  // the caller's own spelling in messages
  bool readOnly = options_.readOnly;
  if (!readOnly) LockFile::CheckName(path);
  std::unique_ptr<File> file;
  try {
    file = files_.Open(path, readOnly ? OpenMode::Read : OpenMode::Write);
  } catch (const Error& error) {
    if (readOnly || error.Code() != ErrorCode::AccessDenied) throw;
    file = files_.Open(path, OpenMode::Read);
    readOnly = true;
  }
  const files::FileStatus status = file->Status();
  overlay_.reset();
  pages_.reset();
  lockFile_.reset();
  lock_.reset();
  reserved_ = false;  // the lock was on the old file
  path_ = std::move(path);
  readOnly_ = readOnly;
  status_ = status;
  file_ = std::move(file);
  journal_ = std::make_unique<Journal>(files_, path_);
  lock_ = std::make_unique<Lock>(*file_);
  if (!readOnly_) lockFile_ = std::make_unique<LockFile>(files_, path_, *file_);
}

// Whether the path now leads to another file.
bool Storage::IsReplaced() {
  const auto named = files_.Identity(path_);
  if (named && *named != status_.identity) return true;
  if (given_ == path_) return false;
  const auto linked = files_.Identity(given_);
  return linked && (!named || *linked != status_.identity);
}

void Storage::BeginRead() {
  if (readers_ == 0) {
    if (!isChanging_) waited_ = {};
    if (!Wait([this] { return TryBeginRead(); })) ThrowInUse();
  }
  ++readers_;
}

bool Storage::Wait(const std::function<bool()>& attempt) {
  return WaitFor(options_.wait, waited_, attempt);
}

bool Storage::WaitForReaders() {
  return Wait([this] { return lock_->TryExcludeByTurns(waited_); });
}

bool Storage::TryBeginRead() {
  if (!(reserved_ ? lock_->TryShareWhileReserved() : lock_->TryShare())) return false;
  try {
    if (IsReplaced()) {
      OpenFile();
      return false;
    }
    if (!journal_->Exists()) {
      overlay_.reset();
    } else if (!RecoverOrOverlay()) {
      OpenFile();
      return false;
    }
    RefreshIfChanged();
  } catch (...) {
    lock_->EndShare();
    throw;
  }
  return true;
}

void Storage::EndRead() noexcept {
  if (--readers_ > 0) return;
  try {
    lock_->EndShare();
  } catch (...) {
    // The lock ends with the handle.
  }
}

// False when the file was replaced and the journal belongs to the new one.
bool Storage::RecoverOrOverlay() {
  if (!readOnly_) {
    try {
      return RecoverExclusively();
    } catch (const Error& error) {
      if (error.Code() != ErrorCode::AccessDenied) throw;
    }
  }
  mayHaveChanged_ = true;
  RefreshIfChanged();
  try {
    auto images = journal_->ReadImages(*file_);
    overlay_ = images == nullptr ? nullptr : std::make_unique<OverlaidPages>(*pages_, std::move(images));
  } catch (const Error& error) {
    if (error.Code() == ErrorCode::ForeignWrite && IsReplaced()) return false;
    throw;
  }
  return true;
}

// Releases the shared lock meanwhile: programs that found the same journal must not block each other.
bool Storage::RecoverExclusively() {
  lock_->EndShare();
  bool excluded = false;
  bool replaced = false;
  std::exception_ptr failure;
  try {
    excluded = (reserved_ || Wait([this] { return lock_->TryReserve(); })) && WaitForReaders();
    // While nothing was locked, another writer may have replaced the file and its journal.
    if (excluded) replaced = IsReplaced() || journal_->Recover(*file_) == Journal::Recovery::Replaced;
  } catch (...) {
    failure = std::current_exception();
  }
  if (excluded) mayHaveChanged_ = true;
  lock_->EndExclude();
  if (!reserved_) lock_->EndReserve();
  if (failure) std::rethrow_exception(failure);
  if (!excluded) ThrowInUse();
  return !replaced;
}

// For an unchanged file this costs one stat and one read of page 0. The modification time shows changes of other
// programs that leave page 0 as it was.
void Storage::RefreshIfChanged() {
  const files::FileStatus status = file_->Status();
  PageBytes header{};
  file_->ReadAt(0, header);
  const bool same = !mayHaveChanged_ && pages_ != nullptr && status.size == status_.size &&
                    status.modifiedNs == status_.modifiedNs && header == lastHeader_;
  status_ = status;
  if (same) return;
  mayHaveChanged_ = true;  // also after a failure below
  if (pages_ == nullptr) {
    pages_ = std::make_unique<Pages>(*file_, options_.cachedPages);
  } else {
    pages_->Refresh();
  }
  doubtfulFreePages_.found.reset();
  lastHeader_ = header;
  mayHaveChanged_ = false;
}

void Storage::ThrowInUse() {
  std::string by = "een ander programma";
  const auto writer = lock_->Writer();
  if (writer && lockFile_ != nullptr) {
    const std::string user = Described(lockFile_->UserAt(*writer));
    if (!user.empty()) by = user;
  }
  throw Error(ErrorCode::Locked,
              "Het bestand '" + name_ + "' is in gebruik door " + by + ". Probeer het straks opnieuw.");
}

}  // namespace jet

// SPDX-License-Identifier: MIT
#include "platform/files/AtomicFile.h"

#include "platform/files/Error.h"
#include "platform/files/TemporaryName.h"

#include <algorithm>
#include <cerrno>
#include <string>

namespace files {
namespace {

constexpr int kMaxTemporaryNames = 1000;
constexpr unsigned kOwnerOnly = 0600;

ByteView AsBytes(std::string_view text) {
  return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
}

// Runs `call`; the error of a system call in it gets the final name of the file instead of the temporary one.
template <typename Call>
void WithPath(const std::filesystem::path& path, const Call& call) {
  try {
    call();
  } catch (const Error& error) {
    if (error.ErrorNumber() == 0) throw;
    throw SystemError("schrijven", path.string(), error.ErrorNumber());
  }
}

Error SeveralNames(const std::string& name, std::uint64_t count) {
  return Error(ErrorCode::Unsupported,
               "Het bestand '" + name + "' heeft " + std::to_string(count) +
                   " namen (harde koppelingen). Het wordt niet vervangen, want de andere namen zouden de oude inhoud "
                   "houden. Verwijder die namen, of zet een kopie van het bestand op deze plaats.");
}

}  // namespace

AtomicFile::AtomicFile(const std::filesystem::path& path, FileSystem& files) : AtomicFile(path, "", files) {}

AtomicFile::AtomicFile(const std::filesystem::path& path, std::string_view owner, FileSystem& files)
    : files_(files), path_(path) {
  WithPath(path, [&] { CreateForReplacing(owner); });
}

AtomicFile::AtomicFile(const std::filesystem::path& path, const FileStatus& original, FileSystem& files)
    : files_(files), path_(path) {
  WithPath(path, [&] { CreateTemporary(&original, {}); });
}

AtomicFile::~AtomicFile() {
  if (removesTemporary_) RemoveTemporary();
}

void AtomicFile::CreateForReplacing(std::string_view owner) {
  path_ = files_.RealPath(path_);
  // rename() ignores the permissions of the file that it replaces; opening it for writing checks them.
  const auto replaced = files_.OpenIfThere(path_, OpenMode::Write);
  if (replaced == nullptr) return CreateTemporary(nullptr, owner);
  const FileStatus original = replaced->Status();
  if (original.links > 1) throw SeveralNames(path_.string(), original.links);
  CreateTemporary(&original, owner);
}

void AtomicFile::CreateTemporary(const FileStatus* original, std::string_view owner) {
  if (owner.empty()) {
    RemoveLeftovers(path_, files_);
  } else {
    RemoveLeftoversOf(owner, path_, files_);
  }
  OpenRequest request{OpenMode::Create, false};
  if (original != nullptr) request.permissions = kOwnerOnly;
  try {
    for (int attempt = 0; attempt < kMaxTemporaryNames; ++attempt) {
      temporary_ = TemporaryName(path_, owner);
      file_ = files_.Open(temporary_, request);
      if (!LockTemporary(*file_, temporary_, files_)) continue;
      if (original != nullptr) file_->TakeAccessOf(*original);
      return;
    }
  } catch (const Error&) {
    if (file_ != nullptr) RemoveTemporary();
    throw;
  }
  throw SystemError("aanmaken", path_.string(), EEXIST);
}

void AtomicFile::RemoveTemporary() {
  file_.reset();
  try {
    files_.Remove(temporary_);
  } catch (const Error&) {
    // The error that prevented Commit is the one to report.
  }
}

void AtomicFile::Write(std::string_view content) {
  WithPath(path_, [&] { file_->WriteAt(written_, AsBytes(content)); });
  written_ += content.size();
  isDurable_ = false;
}

void AtomicFile::Rewrite(std::uint64_t offset, std::string_view content) {
  WithPath(path_, [&] {
    std::string present(content.size(), '\0');
    present.resize(file_->ReadAt(offset, {reinterpret_cast<std::uint8_t*>(present.data()), present.size()}));
    if (present == content) return;
    file_->WriteAt(offset, AsBytes(content));
    isDurable_ = false;
  });
  written_ = std::max(written_, offset + content.size());
}

void AtomicFile::Truncate(std::uint64_t size) {
  if (size == written_) return;
  WithPath(path_, [&] { file_->Truncate(size); });
  written_ = size;
  isDurable_ = false;
}

void AtomicFile::Sync() {
  if (isDurable_) return;
  WithPath(path_, [&] { file_->Sync(); });
  isDurable_ = true;
}

void AtomicFile::SyncName() {
  files_.SyncFolderOf(temporary_);
}

void AtomicFile::Replace() {
  WithPath(path_, [&] { files_.Rename(temporary_, path_); });
  removesTemporary_ = false;
}

void AtomicFile::Commit() {
  Sync();
  Replace();
  SyncPlace(path_);
}

bool AtomicFile::CommitNew(const std::filesystem::path& path) {
  Sync();
  if (!files_.RenameNew(temporary_, path)) return false;
  removesTemporary_ = false;
  SyncPlace(path);
  return true;
}

void AtomicFile::SyncPlace(const std::filesystem::path& path) {
  try {
    files_.SyncFolderOf(path);
  } catch (const Error& error) {
    throw Error(ErrorCode::NotYetDurable,
                "Het bestand '" + path.string() +
                    "' is geschreven, maar het is niet zeker dat het een stroomstoring overleeft: " +
                    SystemReason(error.ErrorNumber()) + ".",
                error.ErrorNumber());
  }
}

void WriteFile(const std::filesystem::path& path, std::string_view content, FileSystem& files) {
  AtomicFile file(path, files);
  file.Write(content);
  file.Commit();
}

}  // namespace files

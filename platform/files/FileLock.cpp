// SPDX-License-Identifier: MIT
#include "platform/files/FileLock.h"

#include "platform/files/Error.h"

#include <cerrno>

namespace files {
namespace {

bool IsNoFile(int errorNumber) {
  return errorNumber == EISDIR || errorNumber == ENXIO || errorNumber == ELOOP;
}

}  // namespace

FileLock::FileLock(const std::filesystem::path& path, FileSystem& files) {
  try {
    file_ = files.Open(path, {OpenMode::ReadOrCreate, false});
    state_ = file_->TryLockWhole() ? State::Held : State::HeldByOther;
  } catch (const Error& error) {
    if (IsNoFile(error.ErrorNumber())) throw;
  }
}

}  // namespace files

// SPDX-License-Identifier: MIT
#include "tools/SpooledText.h"

#include "platform/files/Uninterrupted.h"
#include "platform/jet/values/Error.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <utility>

namespace {

// The result of a read or a write, with a negative errno for a failure.
ssize_t Counted(ssize_t result) {
  return result < 0 ? -errno : result;
}

// -1 when there is no folder for it. Not every file system knows files without a name.
int OpenTemporary() {
  std::error_code failure;
  const std::filesystem::path folder = std::filesystem::temp_directory_path(failure);
  if (failure) return -1;
  const int unnamed = ::open(folder.c_str(), O_TMPFILE | O_RDWR | O_CLOEXEC, 0600);
  if (unnamed >= 0) return unnamed;
  std::string path = folder / "spotrooster-XXXXXX";
  const int file = ::mkostemp(path.data(), O_CLOEXEC);
  if (file >= 0) ::unlink(path.c_str());
  return file;
}

}  // namespace

SpooledText::~SpooledText() {
  if (file_ >= 0) ::close(file_);
}

SpooledText::SpooledText(SpooledText&& other) noexcept
    : limit_(other.limit_),
      memory_(std::move(other.memory_)),
      file_(std::exchange(other.file_, -1)),
      hasNoFile_(other.hasNoFile_),
      inFile_(std::exchange(other.inFile_, 0)) {}

void SpooledText::Add(std::string_view text) {
  memory_ += text;
  if (memory_.size() <= limit_ || hasNoFile_) return;
  hasNoFile_ = !MoveToFile();
}

// False when not everything could be moved: then the file ends before what was not.
bool SpooledText::MoveToFile() {
  if (file_ < 0) file_ = OpenTemporary();
  if (file_ < 0) return false;
  for (std::size_t at = 0; at < memory_.size();) {
    const ssize_t written = files::Uninterrupted([&] {
      return Counted(::pwrite(file_, memory_.data() + at, memory_.size() - at, static_cast<off_t>(inFile_ + at)));
    });
    if (written <= 0) return false;
    at += static_cast<std::size_t>(written);
  }
  inFile_ += memory_.size();
  memory_.clear();
  return true;
}

void SpooledText::WriteTo(std::ostream& out) const {
  std::array<char, std::size_t{1} << 16> part;
  for (std::uint64_t at = 0; at < inFile_;) {
    const std::size_t wanted = static_cast<std::size_t>(std::min<std::uint64_t>(part.size(), inFile_ - at));
    const ssize_t read =
        files::Uninterrupted([&] { return Counted(::pread(file_, part.data(), wanted, static_cast<off_t>(at))); });
    if (read <= 0) throw jet::SystemError("lezen", "een tijdelijk bestand", read < 0 ? static_cast<int>(-read) : EIO);
    out.write(part.data(), read);
    at += static_cast<std::uint64_t>(read);
  }
  out << memory_;
}

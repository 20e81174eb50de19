// SPDX-License-Identifier: MIT
#include "platform/audio/SourceFile.h"

#include "platform/audio/Error.h"
#include "platform/files/Error.h"
#include "platform/files/FileSystem.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

namespace audio {
namespace {

constexpr std::size_t kBufferBytes = 64 * 1024;

}  // namespace

SourceFile::SourceFile(const std::string& hostPath) : path_(hostPath), buffer_(kBufferBytes) {
  if (hostPath.empty()) throw Error("Er is geen geluidsbestand opgegeven.");
  if (const auto nul = hostPath.find('\0'); nul != std::string::npos)
    throw ReadError(hostPath.substr(0, nul), "de naam is ongeldig");
  try {
    file_ = files::HostFileSystem().Open(hostPath, files::OpenMode::Read);
    const files::FileStatus status = file_->Status();
    size_ = static_cast<std::int64_t>(status.size);
    modifiedNs_ = status.modifiedNs;
  } catch (const files::Error& error) {
    throw ReadError(path_, files::SystemReason(error.ErrorNumber()));
  }
  if (size_ == 0) throw ReadError(path_, "het bestand is leeg");
}

std::int64_t SourceFile::Read(void* out, std::size_t bytes) noexcept {
  auto* target = static_cast<char*>(out);
  const auto wanted = static_cast<std::int64_t>(bytes);
  std::int64_t done = 0;
  while (done < wanted) {
    const std::int64_t within = offset_ - bufferStart_;
    if (within < 0 || within >= bufferLength_) {
      if (!FillBuffer()) return done > 0 ? done : -1;
      if (bufferLength_ == 0) break;
      continue;
    }
    const std::int64_t count = std::min(wanted - done, bufferLength_ - within);
    std::memcpy(target + done, buffer_.data() + within, static_cast<std::size_t>(count));
    done += count;
    offset_ += count;
  }
  return done;
}

bool SourceFile::FillBuffer() noexcept {
  bufferStart_ = offset_;
  bufferLength_ = 0;
  try {
    bufferLength_ = static_cast<std::int64_t>(file_->ReadAt(static_cast<std::uint64_t>(offset_), buffer_));
  } catch (const files::Error&) {
    return false;
  }
  return true;
}

std::int64_t SourceFile::Seek(std::int64_t offset, int whence) noexcept {
  const std::int64_t base = whence == SEEK_SET ? begin_ : whence == SEEK_CUR ? offset_ : size_;
  std::int64_t target = 0;
  if (__builtin_add_overflow(base, offset, &target) || target < begin_) return -1;
  offset_ = target;
  return Tell();
}

}  // namespace audio

#include "platform/audio/SourceFile.h"

#include "platform/audio/Error.h"
#include "platform/files/Error.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>

namespace audio {
namespace {

constexpr std::size_t kBufferBytes = 64 * 1024;

}  // namespace

// O_NONBLOCK: a pipe with an audio file's name must be refused, not waited for.
SourceFile::SourceFile(const std::string& hostPath) : path_(hostPath), buffer_(kBufferBytes) {
  if (hostPath.empty()) throw Error("Er is geen geluidsbestand opgegeven.");
  if (const auto nul = hostPath.find('\0'); nul != std::string::npos)
    throw ReadError(hostPath.substr(0, nul), "de naam is ongeldig");
  descriptor_ = ::open(hostPath.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
  if (descriptor_ < 0) throw ReadError(path_, files::SystemReason(errno));

  struct stat status {};
  std::string refusal;
  if (::fstat(descriptor_, &status) != 0) {
    refusal = files::SystemReason(errno);
  } else if (S_ISDIR(status.st_mode)) {
    refusal = files::SystemReason(EISDIR);
  } else if (!S_ISREG(status.st_mode)) {
    refusal = "dit is geen gewoon bestand";
  } else if (status.st_size == 0) {
    refusal = "het bestand is leeg";
  }
  if (!refusal.empty()) {
    ::close(descriptor_);
    throw ReadError(path_, refusal);
  }
  size_ = status.st_size;
  modifiedNs_ = std::int64_t{status.st_mtim.tv_sec} * 1'000'000'000 + status.st_mtim.tv_nsec;
}

SourceFile::~SourceFile() {
  ::close(descriptor_);
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
  ssize_t got = 0;
  do {
    got = ::pread(descriptor_, buffer_.data(), buffer_.size(), offset_);
  } while (got < 0 && errno == EINTR);
  bufferStart_ = offset_;
  bufferLength_ = std::max<std::int64_t>(0, got);
  return got >= 0;
}

std::int64_t SourceFile::Seek(std::int64_t offset, int whence) noexcept {
  const std::int64_t base = whence == SEEK_SET ? begin_ : whence == SEEK_CUR ? offset_ : size_;
  std::int64_t target = 0;
  if (__builtin_add_overflow(base, offset, &target) || target < begin_) return -1;
  offset_ = target;
  return Tell();
}

}  // namespace audio

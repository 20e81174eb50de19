// SPDX-License-Identifier: MIT
// An audio file opened for reading: the one place of this library that asks the host for a file.
#pragma once

#include "platform/files/File.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

namespace audio {

// Owns the open file; reads through a buffer, since frame scans ask for a few bytes at a time. A file that is deleted
// or replaced afterwards stays readable through it. One thread at a time.
class SourceFile {
 public:
  // Opens a regular file; a folder, a device or a pipe is refused, as is an empty file. Throws Error.
  explicit SourceFile(const std::string& hostPath);
  SourceFile(const SourceFile&) = delete;
  SourceFile& operator=(const SourceFile&) = delete;

  const std::string& Path() const { return path_; }
  std::int64_t Size() const { return size_; }              // bytes, when it was opened
  std::int64_t ModifiedNs() const { return modifiedNs_; }  // nanoseconds since 1970, as the file system keeps it

  // As read(2) and lseek(2), whence included: bytes read (0 at the end, -1 on an error), the new offset or -1.
  std::int64_t Read(void* out, std::size_t bytes) noexcept;
  std::int64_t Seek(std::int64_t offset, int whence) noexcept;
  std::int64_t Tell() const noexcept { return offset_ - begin_; }

  // From now on the file begins at this place of what was its content so far; the next read is there.
  void BeginAt(std::int64_t offset) noexcept { offset_ = begin_ += offset; }

 private:
  bool FillBuffer() noexcept;

  std::string path_;
  std::unique_ptr<files::File> file_;
  std::int64_t size_ = 0;
  std::int64_t modifiedNs_ = 0;
  std::int64_t begin_ = 0;   // in the file: what offset 0 means outside
  std::int64_t offset_ = 0;  // in the file
  files::Bytes buffer_;
  std::int64_t bufferStart_ = 0;  // offset in the file of the buffer's first byte
  std::int64_t bufferLength_ = 0;
};

}  // namespace audio

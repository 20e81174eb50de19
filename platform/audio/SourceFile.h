// SPDX-License-Identifier: MIT
// An audio file opened for reading.
#pragma once

#include "platform/files/File.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

namespace audio {

// Reads through a buffer, because frame scans read a few bytes at a time. A file that is deleted or replaced after
// opening remains readable. One thread at a time.
class SourceFile {
 public:
  // Opens a regular file. Throws Error, also for a folder, a device, a pipe and an empty file.
  explicit SourceFile(const std::string& hostPath);
  SourceFile(const SourceFile&) = delete;
  SourceFile& operator=(const SourceFile&) = delete;

  const std::string& Path() const { return path_; }
  std::int64_t Size() const { return size_; }              // bytes, at the time of opening
  std::int64_t ModifiedNs() const { return modifiedNs_; }  // modification time, nanoseconds since 1970

  // Like read(2) and lseek(2): the number of bytes read (0 at the end, -1 on an error); the new offset, or -1.
  std::int64_t Read(void* out, std::size_t bytes) noexcept;
  std::int64_t Seek(std::int64_t offset, int whence) noexcept;
  std::int64_t Tell() const noexcept { return offset_ - begin_; }

  // Makes this offset the new offset 0, and the position of the next read.
  void BeginAt(std::int64_t offset) noexcept { offset_ = begin_ += offset; }

 private:
  bool FillBuffer() noexcept;

  std::string path_;
  std::unique_ptr<files::File> file_;
  std::int64_t size_ = 0;
  std::int64_t modifiedNs_ = 0;
  std::int64_t begin_ = 0;   // offset 0 of the public functions, as an offset in the file
  std::int64_t offset_ = 0;  // in the file
  files::Bytes buffer_;
  std::int64_t bufferStart_ = 0;  // offset in the file of the buffer's first byte
  std::int64_t bufferLength_ = 0;
};

}  // namespace audio

// SPDX-License-Identifier: MIT
// Identifies one version of a file.
#pragma once

#include <cstdint>
#include <string>

namespace audio {

struct FileStamp {
  std::string path;             // of the host
  std::int64_t size = 0;        // bytes
  std::int64_t modifiedNs = 0;  // nanoseconds since 1970
  bool operator==(const FileStamp&) const = default;

  static FileStamp Of(const std::string& hostPath);  // throws Error
  // All fields as one text, different for different stamps.
  std::string Key() const;
};

}  // namespace audio

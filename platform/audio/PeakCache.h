// Waveforms that were read before.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "platform/audio/Peaks.h"

namespace audio {

// What tells one state of a file from another.
struct FileStamp {
  std::string path;             // of the host
  std::int64_t size = 0;        // bytes
  std::int64_t modifiedNs = 0;  // nanoseconds since 1970
  bool operator==(const FileStamp&) const = default;

  static FileStamp Of(const std::string& hostPath);  // throws Error, as opening the file does
};

// The latest few waveforms in memory, shared by the whole process, and up to some hundred in a folder. Never fails: a
// folder that cannot be read or written only means reading the sound again. Any thread.
class PeakCache {
 public:
  // `folder`: a path of the host, made when it is missing; empty = memory only.
  explicit PeakCache(std::string folder) : folder_(std::move(folder)) {}

  std::optional<Peaks> Find(const FileStamp& stamp) const;
  void Store(const FileStamp& stamp, const Peaks& peaks) const;

  static void ForgetMemory();
  static constexpr std::size_t kMaxFiles = 300;

 private:
  std::string FileOf(const FileStamp& stamp) const;
  void Prune() const;

  std::string folder_;
};

}  // namespace audio

// SPDX-License-Identifier: MIT
// Waveforms that were read before.
#pragma once

#include "platform/audio/FileStamp.h"
#include "platform/audio/Peaks.h"

#include <cstdint>
#include <optional>
#include <string>

namespace audio {

// The latest few waveforms in memory, shared by the whole process, and those last used in a folder of bounded size.
// Never fails: a folder that cannot be read or written only means reading the sound again. Any thread; several programs
// may share the folder.
class PeakCache {
 public:
  // `folder`: a path of the host, made when it is missing; empty = memory only.
  explicit PeakCache(std::string folder, std::uintmax_t mostBytes = kMostBytes)
      : folder_(std::move(folder)), mostBytes_(mostBytes) {}

  std::optional<Peaks> Find(const FileStamp& stamp) const;
  void Store(const FileStamp& stamp, const Peaks& peaks) const;

  static void ForgetMemory();

  // On disk, where every file counts as whole blocks: 30 hours of sound, or some 3000 spots.
  static constexpr std::uintmax_t kMostBytes = 64U << 20;
  static constexpr std::uintmax_t kBlockBytes = 4096;

 private:
  std::optional<Peaks> FindOnDisk(const FileStamp& stamp) const;
  std::string FileOf(const FileStamp& stamp) const;
  void Prune() const;

  std::string folder_;
  std::uintmax_t mostBytes_;
};

}  // namespace audio

// SPDX-License-Identifier: MIT
// Cache of waveforms.
#pragma once

#include "platform/audio/FileStamp.h"
#include "platform/audio/Peaks.h"

#include <cstdint>
#include <optional>
#include <string>

namespace audio {

// Has the latest few waveforms in memory, shared by the process, and the most recently used ones in a folder of limited
// size. Never fails: if the folder cannot be used, the sound is decoded again. Any thread; several processes may share
// the folder.
class PeakCache {
 public:
  // `folder` is a host path, created when missing; empty = memory only. `maxBytes` limits the folder's size.
  explicit PeakCache(std::string folder, std::uintmax_t maxBytes = kMaxBytes)
      : folder_(std::move(folder)), maxBytes_(maxBytes) {}

  std::optional<Peaks> Find(const FileStamp& stamp) const;
  void Store(const FileStamp& stamp, const Peaks& peaks) const;

  static void ForgetMemory();

  // Disk space, each file rounded up to blocks: 30 hours of sound, or some 3000 spots.
  static constexpr std::uintmax_t kMaxBytes = 64U << 20;
  static constexpr std::uintmax_t kBlockBytes = 4096;

 private:
  std::optional<Peaks> FindOnDisk(const FileStamp& stamp) const;
  std::string FileOf(const FileStamp& stamp) const;
  void Prune() const;

  std::string folder_;
  std::uintmax_t maxBytes_;
};

}  // namespace audio

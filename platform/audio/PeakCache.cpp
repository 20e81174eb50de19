// SPDX-License-Identifier: MIT
#include "platform/audio/PeakCache.h"

#include "platform/audio/Error.h"
#include "platform/audio/PeakFile.h"
#include "platform/audio/SourceFile.h"
#include "platform/files/AtomicFile.h"
#include "platform/files/Error.h"
#include "platform/files/TemporaryName.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <deque>
#include <filesystem>
#include <mutex>
#include <string_view>
#include <system_error>
#include <vector>

namespace audio {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kMaxInMemory = 8;
constexpr std::string_view kExtension = ".peaks";

struct Memory {
  std::mutex mutex;
  std::deque<std::pair<FileStamp, Peaks>> latest;
};

Memory& SharedMemory() {
  static Memory memory;
  return memory;
}

void Remember(const FileStamp& stamp, const Peaks& peaks) {
  Memory& memory = SharedMemory();
  const std::lock_guard lock(memory.mutex);
  std::erase_if(memory.latest, [&](const auto& entry) { return entry.first.path == stamp.path; });
  memory.latest.emplace_front(stamp, peaks);
  if (memory.latest.size() > kMaxInMemory) memory.latest.pop_back();
}

std::optional<Peaks> Remembered(const FileStamp& stamp) {
  Memory& memory = SharedMemory();
  const std::lock_guard lock(memory.mutex);
  for (const auto& [known, peaks] : memory.latest) {
    if (known == stamp) return peaks;
  }
  return std::nullopt;
}

struct KeptFile {
  fs::file_time_type used;
  std::uintmax_t bytes = 0;  // rounded up to blocks
  fs::path path;
};

// Cached files, and temporary files of killed processes. Other files in the folder are ignored.
std::vector<KeptFile> KeptFiles(const std::string& folder) {
  std::error_code ignored;
  std::vector<KeptFile> files;
  for (fs::directory_iterator at(folder, ignored); at != fs::directory_iterator(); at.increment(ignored)) {
    const fs::path extension = at->path().extension();
    if (!at->is_regular_file(ignored) || (extension != kExtension && !files::IsTemporaryName(at->path()))) continue;
    const std::uintmax_t blocks = (at->file_size(ignored) + PeakCache::kBlockBytes - 1) / PeakCache::kBlockBytes;
    files.push_back({at->last_write_time(ignored), blocks * PeakCache::kBlockBytes, at->path()});
  }
  return files;
}

}  // namespace

std::optional<Peaks> PeakCache::Find(const FileStamp& stamp) const {
  if (auto peaks = Remembered(stamp)) return peaks;
  if (folder_.empty()) return std::nullopt;
  auto peaks = FindOnDisk(stamp);
  if (peaks) Remember(stamp, *peaks);
  return peaks;
}

// Sets the modification time to the time of use, for Prune.
std::optional<Peaks> PeakCache::FindOnDisk(const FileStamp& stamp) const {
  try {
    const std::string path = FileOf(stamp);
    SourceFile file(path);
    if (static_cast<std::uintmax_t>(file.Size()) > maxBytes_) return std::nullopt;
    std::string bytes(static_cast<std::size_t>(file.Size()), '\0');
    if (file.Read(bytes.data(), bytes.size()) != file.Size()) return std::nullopt;
    std::error_code ignored;
    fs::last_write_time(path, fs::file_time_type::clock::now(), ignored);
    return UnpackPeaks(stamp, bytes);
  } catch (const Error&) {
    return std::nullopt;  // missing or unreadable
  }
}

// Not synced: a file damaged by a power cut has a wrong checksum.
void PeakCache::Store(const FileStamp& stamp, const Peaks& peaks) const {
  Remember(stamp, peaks);
  if (folder_.empty()) return;
  std::error_code failure;
  fs::create_directories(folder_, failure);
  try {
    files::AtomicFile file(FileOf(stamp), files::HostFileSystem());
    file.Write(PackPeaks(stamp, peaks));
    file.Replace();
  } catch (const files::Error&) {
    // The sound is decoded again next time.
  }
  Prune();
}

// Deletes the least recently used files.
void PeakCache::Prune() const {
  std::vector<KeptFile> files = KeptFiles(folder_);
  std::sort(files.begin(), files.end(), [](const KeptFile& a, const KeptFile& b) { return a.used > b.used; });
  std::uintmax_t bytes = 0;
  std::error_code ignored;
  for (const KeptFile& file : files) {
    bytes += file.bytes;
    if (bytes > maxBytes_) fs::remove(file.path, ignored);
  }
}

std::string PeakCache::FileOf(const FileStamp& stamp) const {
  std::array<char, 17> name{};
  std::snprintf(name.data(), name.size(), "%016llx", static_cast<unsigned long long>(ChecksumOf(stamp.Key())));
  return (fs::path(folder_) / (name.data() + std::string(kExtension))).string();
}

void PeakCache::ForgetMemory() {
  Memory& memory = SharedMemory();
  const std::lock_guard lock(memory.mutex);
  memory.latest.clear();
}

}  // namespace audio

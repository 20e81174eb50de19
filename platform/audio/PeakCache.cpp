#include "platform/audio/PeakCache.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstring>
#include <deque>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <mutex>
#include <system_error>
#include <vector>

#include "platform/audio/SourceFile.h"

namespace audio {
namespace {

namespace fs = std::filesystem;

// A kept file: this mark, the stamp as text behind its length, the length in ms, the number of bins, the bins, and a
// checksum of all that. Numbers as this machine writes them: the folder belongs to it.
constexpr std::array<char, 8> kMark = {'P', 'E', 'A', 'K', 'S', '-', '0', '1'};
constexpr std::size_t kRemembered = 8;

std::uint64_t Checksum(const char* bytes, std::size_t count) {
  std::uint64_t sum = 14695981039346656037U;
  for (std::size_t i = 0; i < count; ++i)
    sum = (sum ^ static_cast<unsigned char>(bytes[i])) * 1099511628211U;
  return sum;
}

std::string TextOf(const FileStamp& stamp) {
  return std::to_string(stamp.size) + ' ' + std::to_string(stamp.modifiedNs) + ' ' + stamp.path;
}

void Append(std::string& bytes, const void* data, std::size_t count) {
  bytes.append(static_cast<const char*>(data), count);
}

std::string Packed(const FileStamp& stamp, const Peaks& peaks) {
  const std::string key = TextOf(stamp);
  const auto keyLength = static_cast<std::uint64_t>(key.size());
  const auto bins = static_cast<std::uint64_t>(peaks.bins.size());
  std::string bytes(kMark.data(), kMark.size());
  Append(bytes, &keyLength, sizeof keyLength);
  bytes += key;
  Append(bytes, &peaks.lengthMs, sizeof peaks.lengthMs);
  Append(bytes, &bins, sizeof bins);
  Append(bytes, peaks.bins.data(), peaks.bins.size() * sizeof(PeakBin));
  const std::uint64_t sum = Checksum(bytes.data(), bytes.size());
  Append(bytes, &sum, sizeof sum);
  return bytes;
}

// Compared with what would be written: only a whole, undamaged file of this very stamp passes.
std::optional<Peaks> Unpacked(const FileStamp& stamp, const std::string& bytes) {
  Peaks peaks;
  std::uint64_t bins = 0;
  const std::size_t head = kMark.size() + sizeof(std::uint64_t) + TextOf(stamp).size();
  const std::size_t fixed = head + sizeof peaks.lengthMs + sizeof bins + sizeof(std::uint64_t);
  if (bytes.size() < fixed) return std::nullopt;
  std::memcpy(&peaks.lengthMs, bytes.data() + head, sizeof peaks.lengthMs);
  std::memcpy(&bins, bytes.data() + head + sizeof peaks.lengthMs, sizeof bins);
  if (bins != (bytes.size() - fixed) / sizeof(PeakBin)) return std::nullopt;
  peaks.bins.resize(bins);
  std::memcpy(peaks.bins.data(), bytes.data() + head + sizeof peaks.lengthMs + sizeof bins, bins * sizeof(PeakBin));
  if (Packed(stamp, peaks) != bytes) return std::nullopt;
  return peaks;
}

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
  if (memory.latest.size() > kRemembered) memory.latest.pop_back();
}

std::optional<Peaks> Remembered(const FileStamp& stamp) {
  Memory& memory = SharedMemory();
  const std::lock_guard lock(memory.mutex);
  for (const auto& [known, peaks] : memory.latest) {
    if (known == stamp) return peaks;
  }
  return std::nullopt;
}

}  // namespace

FileStamp FileStamp::Of(const std::string& hostPath) {
  const SourceFile file(hostPath);
  return {hostPath, file.Size(), file.ModifiedNs()};
}

std::optional<Peaks> PeakCache::Find(const FileStamp& stamp) const {
  if (auto peaks = Remembered(stamp)) return peaks;
  if (folder_.empty()) return std::nullopt;
  std::ifstream in(FileOf(stamp), std::ios::binary);
  if (!in) return std::nullopt;
  auto peaks = Unpacked(stamp, std::string(std::istreambuf_iterator<char>(in), {}));
  if (peaks) Remember(stamp, *peaks);
  return peaks;
}

// Written under another name first: two windows may store the same file, and a half one is never found.
void PeakCache::Store(const FileStamp& stamp, const Peaks& peaks) const {
  Remember(stamp, peaks);
  if (folder_.empty()) return;
  std::error_code ignored;
  fs::create_directories(folder_, ignored);
  const std::string target = FileOf(stamp);
  const std::string half = target + "." + std::to_string(::getpid()) + ".half";
  const std::string bytes = Packed(stamp, peaks);
  std::ofstream out(half, std::ios::binary | std::ios::trunc);
  out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  out.close();
  if (out) {
    fs::rename(half, target, ignored);
  } else {
    fs::remove(half, ignored);
  }
  Prune();
}

void PeakCache::Prune() const {
  std::error_code ignored;
  std::vector<std::pair<fs::file_time_type, fs::path>> files;
  for (const auto& entry : fs::directory_iterator(folder_, ignored)) {
    if (entry.path().extension() == ".peaks") files.emplace_back(entry.last_write_time(ignored), entry.path());
  }
  if (files.size() <= kMaxFiles) return;
  std::sort(files.begin(), files.end());
  files.resize(files.size() - kMaxFiles);
  for (const auto& [time, path] : files)
    fs::remove(path, ignored);
}

std::string PeakCache::FileOf(const FileStamp& stamp) const {
  const std::string key = TextOf(stamp);
  std::array<char, 32> name{};
  std::snprintf(name.data(), name.size(), "%016llx.peaks",
                static_cast<unsigned long long>(Checksum(key.data(), key.size())));
  return (fs::path(folder_) / name.data()).string();
}

void PeakCache::ForgetMemory() {
  Memory& memory = SharedMemory();
  const std::lock_guard lock(memory.mutex);
  memory.latest.clear();
}

}  // namespace audio

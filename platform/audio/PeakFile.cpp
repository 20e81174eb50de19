// SPDX-License-Identifier: MIT
#include "platform/audio/PeakFile.h"

#include <algorithm>
#include <cstring>
#include <type_traits>

namespace audio {
namespace {

static_assert(std::is_trivially_copyable_v<PeakBin> && std::has_unique_object_representations_v<PeakBin>);

// Ends with the version: a file of another one is read again from the sound.
constexpr std::string_view kMark = "PEAKS-02";

template <typename Number>
void Append(std::string& bytes, Number number) {
  bytes.append(reinterpret_cast<const char*>(&number), sizeof number);
}

// What stands before the bins: the mark, the stamp behind its length, the length in ms, the number of bins.
std::string Head(const FileStamp& stamp, std::int32_t lengthMs, std::size_t bins) {
  const std::string key = stamp.Key();
  std::string bytes(kMark);
  Append(bytes, static_cast<std::uint64_t>(key.size()));
  bytes += key;
  Append(bytes, lengthMs);
  Append(bytes, static_cast<std::uint64_t>(bins));
  return bytes;
}

}  // namespace

// Eight bytes a step (FNV-1a takes one): an hour of sound is two megabytes of peaks.
std::uint64_t ChecksumOf(std::string_view bytes) {
  constexpr std::uint64_t kStep = 1099511628211U;
  std::uint64_t sum = 14695981039346656037U ^ bytes.size();
  while (!bytes.empty()) {
    std::uint64_t word = 0;
    const std::size_t count = std::min(bytes.size(), sizeof word);
    std::memcpy(&word, bytes.data(), count);
    sum = (sum ^ word) * kStep;
    sum ^= sum >> 32;
    bytes.remove_prefix(count);
  }
  return sum;
}

std::string PackPeaks(const FileStamp& stamp, const Peaks& peaks) {
  std::string bytes = Head(stamp, peaks.lengthMs, peaks.bins.size());
  bytes.append(reinterpret_cast<const char*>(peaks.bins.data()), peaks.bins.size() * sizeof(PeakBin));
  Append(bytes, ChecksumOf(bytes));
  return bytes;
}

// Every byte is either compared with what it must be or under the checksum, itself included.
std::optional<Peaks> UnpackPeaks(const FileStamp& stamp, std::string_view bytes) {
  const std::size_t headSize = Head(stamp, 0, 0).size();
  std::uint64_t sum = 0;
  if (bytes.size() < headSize + sizeof sum) return std::nullopt;
  const std::string_view content = bytes.substr(0, bytes.size() - sizeof sum);
  std::memcpy(&sum, bytes.data() + content.size(), sizeof sum);

  Peaks peaks;
  std::uint64_t bins = 0;
  const char* numbers = bytes.data() + headSize - sizeof bins - sizeof peaks.lengthMs;
  std::memcpy(&peaks.lengthMs, numbers, sizeof peaks.lengthMs);
  std::memcpy(&bins, numbers + sizeof peaks.lengthMs, sizeof bins);
  const std::string_view kept = content.substr(headSize);
  if (kept.size() % sizeof(PeakBin) != 0 || bins != kept.size() / sizeof(PeakBin)) return std::nullopt;
  if (!content.starts_with(Head(stamp, peaks.lengthMs, bins)) || sum != ChecksumOf(content)) return std::nullopt;
  peaks.bins.resize(bins);
  std::memcpy(peaks.bins.data(), kept.data(), kept.size());
  return peaks;
}

}  // namespace audio

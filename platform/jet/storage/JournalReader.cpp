// SPDX-License-Identifier: MIT
#include "platform/jet/storage/JournalReader.h"

#include "platform/jet/values/Codec.h"

#include <algorithm>
#include <cstring>

namespace jet {

using journal::kJournalHeadBytes;
using journal::kRecordBytes;

JournalReader::JournalReader(File& file) : file_(file), kind_(Classify()) {}

JournalReader::Kind JournalReader::Classify() {
  std::array<std::uint8_t, kJournalHeadBytes> head{};
  const std::uint64_t size = file_.Size();
  const std::size_t read = file_.ReadAt(0, head);
  // The head is within one sector, so after a power cut it is either complete or blank.
  const bool isBlank = std::all_of(head.begin(), head.end(), [](std::uint8_t byte) { return byte == 0; });
  if (isBlank) return Kind::Unfinished;
  const std::size_t known = std::min(read, journal::kCountAt);
  const bool sumsImages = std::memcmp(head.data(), journal::kFirstMagic, known) == 0;
  if (!sumsImages && std::memcmp(head.data(), journal::kMagic, known) != 0) return Kind::Foreign;
  if (read < kJournalHeadBytes) return Kind::Unfinished;
  count_ = LoadU32(&head[journal::kCountAt]);
  oldLength_ = Load<std::uint64_t>(&head[journal::kOldLengthAt]);
  newLength_ = Load<std::uint64_t>(&head[journal::kNewLengthAt]);
  if (!IsPossible(size)) return Kind::Foreign;
  if (size < kJournalHeadBytes + count_ * kRecordBytes) return Kind::Unfinished;
  const auto stored = Load<std::uint64_t>(&head[journal::kChecksumAt]);
  Store(&head[journal::kChecksumAt], std::uint64_t{0});
  std::uint64_t sum = journal::Checksum(head);
  bool isSound = true;
  for (std::uint64_t i = 0, next = 0; i < count_; ++i) {
    const Record record = Read(i);
    sum = journal::Checksum(sumsImages ? record.bytes : record.bytes.first(journal::kImageAt), sum);
    if (!MatchesItsSums(record)) return Kind::Unfinished;
    const bool inOrder = i == 0 ? record.page == 0 : record.page >= next;
    isSound = isSound && inOrder && record.page < oldLength_ / kPageSize;
    next = std::uint64_t{record.page} + 1;
  }
  if (sum != stored) return Kind::Unfinished;
  return isSound ? Kind::Sound : Kind::Foreign;
}

bool JournalReader::IsPossible(std::uint64_t size) const {
  const bool wholePages = oldLength_ % kPageSize == 0 && newLength_ % kPageSize == 0;
  return wholePages && count_ >= 1 && count_ <= oldLength_ / kPageSize && oldLength_ <= newLength_ &&
         newLength_ <= journal::kLargestDatabase && size <= kJournalHeadBytes + count_ * kRecordBytes;
}

bool JournalReader::MatchesItsSums(const Record& record) const {
  const auto sums = journal::SectorSums(record.image);
  for (std::size_t sector = 0; sector < journal::kSectors; ++sector) {
    if (sums[sector] != Load<std::uint64_t>(&record.bytes[journal::kBeforeSumsAt + 8 * sector])) return false;
  }
  return true;
}

JournalReader::Record JournalReader::Read(std::size_t i) {
  const std::size_t length = file_.ReadAt(kJournalHeadBytes + i * kRecordBytes, buffer_);
  std::fill(buffer_.begin() + static_cast<std::ptrdiff_t>(length), buffer_.end(), std::uint8_t{0});
  const ByteView bytes(buffer_);
  return {LoadU32(buffer_.data()), bytes.subspan(journal::kImageAt, kPageSize), bytes};
}

bool JournalReader::Record::KnowsSector(std::size_t sector, std::uint64_t sum) const {
  return sum == Load<std::uint64_t>(&bytes[journal::kBeforeSumsAt + 8 * sector]) ||
         sum == Load<std::uint64_t>(&bytes[journal::kAfterSumsAt + 8 * sector]);
}

}  // namespace jet

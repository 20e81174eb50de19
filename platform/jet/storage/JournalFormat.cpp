// SPDX-License-Identifier: MIT
#include "platform/jet/storage/JournalFormat.h"

#include "platform/jet/values/Codec.h"

#include <algorithm>
#include <cstring>
#include <functional>

namespace jet::journal {
namespace {

// Every step is invertible, so a change of a single word always changes the sum.
std::uint64_t Sum(std::uint64_t sum, std::uint64_t word) {
  constexpr std::uint64_t kFactor = 0xFF51AFD7ED558CCD;  // odd
  sum = (sum ^ word) * kFactor;
  return sum ^ sum >> 29;
}

// The checksums of the sectors of a page before and after.
void StoreSums(const PageChange& change, std::uint8_t* record) {
  const auto before = SectorSums(*change.before);
  const auto after = SectorSums(*change.after);
  for (std::size_t sector = 0; sector < kSectors; ++sector) {
    Store(record + kBeforeSumsAt + 8 * sector, before[sector]);
    Store(record + kAfterSumsAt + 8 * sector, after[sector]);
  }
}

}  // namespace

std::uint64_t Checksum(ByteView bytes, std::uint64_t sum) {
  for (std::size_t at = 0; at + 8 <= bytes.size(); at += 8)
    sum = Sum(sum, Load<std::uint64_t>(&bytes[at]));
  return sum;
}

// Interleaved, so that the multiplications of different sectors run in parallel.
std::array<std::uint64_t, kSectors> SectorSums(ByteView page) {
  std::array<std::uint64_t, kSectors> sums;
  sums.fill(kFirstSum);
  for (std::size_t at = 0; at < kSector; at += 8) {
    for (std::size_t sector = 0; sector < kSectors; ++sector)
      sums[sector] = Sum(sums[sector], Load<std::uint64_t>(&page[sector * kSector + at]));
  }
  return sums;
}

Bytes Build(std::span<const PageChange> changes, std::uint64_t oldLength, std::uint64_t newLength) {
  const auto hasNoImage = [](const PageChange& change) { return change.before == nullptr; };
  const auto count = static_cast<std::uint32_t>(std::ranges::count_if(changes, std::not_fn(hasNoImage)));
  Bytes journal;
  journal.reserve(kJournalHeadBytes + count * kRecordBytes);
  journal.resize(kJournalHeadBytes);
  for (const PageChange& change : changes) {
    if (hasNoImage(change)) continue;
    const std::size_t start = journal.size();
    journal.resize(start + kImageAt);
    Store(&journal[start], change.number);
    StoreSums(change, &journal[start]);
    journal.insert(journal.end(), change.before->begin(), change.before->end());
  }
  std::memcpy(journal.data(), kMagic, kCountAt);
  Store(&journal[kCountAt], count);
  Store(&journal[kOldLengthAt], oldLength);
  Store(&journal[kNewLengthAt], newLength);
  std::uint64_t sum = Checksum(ByteView(journal).first(kJournalHeadBytes));
  for (std::size_t start = kJournalHeadBytes; start < journal.size(); start += kRecordBytes)
    sum = Checksum(ByteView(journal).subspan(start, kImageAt), sum);
  Store(&journal[kChecksumAt], sum);
  return journal;
}

}  // namespace jet::journal

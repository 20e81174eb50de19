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

void StoreSums(const PageBytes& page, std::uint8_t* at) {
  for (const std::uint64_t sum : SectorSums(page)) {
    Store(at, sum);
    at += sizeof sum;
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
  const auto isNew = [](const PageChange& change) { return change.before == nullptr; };
  const auto count = static_cast<std::uint32_t>(std::ranges::count_if(changes, std::not_fn(isNew)));
  Bytes journal;
  journal.reserve(kJournalHeadBytes + count * kRecordBytes);
  journal.resize(kJournalHeadBytes);
  for (const PageChange& change : changes) {
    if (isNew(change)) continue;
    const std::size_t start = journal.size();
    journal.resize(start + kRecordBytes);
    Store(&journal[start], change.number);
    StoreSums(*change.before, &journal[start + kBeforeSumsAt]);
    StoreSums(*change.after, &journal[start + kAfterSumsAt]);
    std::memcpy(&journal[start + kImageAt], change.before->data(), kPageSize);
  }
  std::memcpy(journal.data(), kMagic, kCountAt);
  Store(&journal[kCountAt], count);
  Store(&journal[kOldLengthAt], oldLength);
  Store(&journal[kNewLengthAt], newLength);
  Store(&journal[kChecksumAt], Checksum(journal));
  return journal;
}

}  // namespace jet::journal

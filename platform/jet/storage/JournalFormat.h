// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/pages/PageSource.h"
#include "platform/jet/values/Bytes.h"

#include <array>
#include <cstdint>
#include <span>

namespace jet {

// One page of a change, as stored before and after.
struct PageChange {
  std::uint32_t number = 0;
  const PageBytes* before = nullptr;  // null for a page past the old end of the file, and for one that was free
  const PageBytes* after = nullptr;
};

// A journal file, numbers little-endian:
//    0  8  "SPRJRNL2"
//    8  u32 count of page records, u32 0
//   16  u64 length of the database before, u64 length after
//   32  u64 checksum of all but the old pages, with these eight bytes zero; those have the checksums of their sectors
//   40  records of 4232 bytes, in the order of the pages, page 0 first: u32 page, u32 0,
//       8 x u64 checksum of each 512-byte sector before, 8 x u64 after, 4096 bytes before
namespace journal {

constexpr char kMagic[] = "SPRJRNL2";
// Of the first form, whose checksum covers the old pages too. It is read only: a crash may have left such a journal.
constexpr char kFirstMagic[] = "SPRJRNL1";
constexpr std::size_t kCountAt = 8;
constexpr std::size_t kOldLengthAt = 16;
constexpr std::size_t kNewLengthAt = 24;
constexpr std::size_t kChecksumAt = 32;
constexpr std::size_t kJournalHeadBytes = 40;
constexpr std::size_t kSector = 512;  // smallest unit that a disk writes
constexpr std::size_t kSectors = kPageSize / kSector;
constexpr std::size_t kBeforeSumsAt = 8;
constexpr std::size_t kAfterSumsAt = kBeforeSumsAt + 8 * kSectors;
constexpr std::size_t kImageAt = kAfterSumsAt + 8 * kSectors;
constexpr std::size_t kRecordBytes = kImageAt + kPageSize;
constexpr std::uint64_t kLargestDatabase = std::uint64_t{1} << 31;

// Detects accidental damage only. For data in several pieces (multiples of 8 bytes), pass the previous result as `sum`.
constexpr std::uint64_t kFirstSum = 0x9E3779B97F4A7C15;
std::uint64_t Checksum(ByteView bytes, std::uint64_t sum = kFirstSum);
// The checksums of a page's sectors.
std::array<std::uint64_t, kSectors> SectorSums(ByteView page);

// The complete journal file.
Bytes Build(std::span<const PageChange> changes, std::uint64_t oldLength, std::uint64_t newLength);

}  // namespace journal
}  // namespace jet

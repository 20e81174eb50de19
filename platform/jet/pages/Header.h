// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/pages/PageSource.h"
#include "platform/jet/values/Bytes.h"
#include "platform/jet/values/SortOrder.h"

#include <cstdint>
#include <span>
#include <string>

namespace jet {

// The fields of the database header (page 0).
struct Header {
  std::uint32_t encodingKey = 0;  // 0x3E; 0 = the pages are not encoded
  std::u16string password;        // 0x42; empty = none
  std::uint32_t engineBuild = 0;  // 0x6A
  SortOrder sortOrder;            // 0x6E
  double creationDate = 0;        // 0x72, days since 1899-12-30
};

// Offset of the commit counters in page 0: 256 little-endian u16, number 0 for exclusive use.
constexpr std::size_t kCommitCounters = 0xE00;

// Offset of eight bytes of page 0 that other programs leave zero and neither read nor change. This library stores a new
// random number there with each change, so that no two files or states of a file have the same page 0.
constexpr std::size_t kChangeMark = 0xDF8;
// Stores a new random change mark.
void MarkChange(std::span<std::uint8_t, kPageSize> page0);

// Parses page 0 of a Jet 4 file. Anything else (Jet 3, a newer format, no database) is an Error (NotADatabase) that
// names `fileName`.
Header ParseHeader(ByteView page0, const std::string& fileName);

// Masks or unmasks bytes 0x18 to 0x97 of page 0.
void ApplyHeaderMask(std::span<std::uint8_t, kPageSize> page0);

}  // namespace jet

// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

namespace jet {

// The sort order of texts, as stored in the header and in every column block.
struct SortOrder {
  std::uint16_t language = 0x0409;  // Windows LCID
  std::uint8_t version = 0;         // 0 = general legacy, 1 = general (2010 and later)
  bool operator==(const SortOrder&) const = default;
};

}  // namespace jet

// SPDX-License-Identifier: MIT
// Sizes and marks in a table definition, shared by reader and writer.
#pragma once

#include <cstddef>
#include <cstdint>

namespace jet::table_definition {

constexpr std::size_t kContinuationHead = 8;  // head of a later page, not part of the stream
constexpr std::size_t kMaxColumns = 255;
constexpr std::uint32_t kBlockMark = 0x659;  // at 12 of the first page, and at the start of columns and indexes
constexpr std::size_t kIndexFields = 10;     // field slots in an index block

}  // namespace jet::table_definition

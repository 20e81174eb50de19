// SPDX-License-Identifier: MIT
// Sizes in a table definition, shared by reader and writer.
#pragma once

#include <cstddef>

namespace jet::table_definition {

constexpr std::size_t kContinuationHead = 8;  // head of a later page, not part of the stream
constexpr std::size_t kMostColumns = 255;
constexpr std::size_t kIndexFields = 10;  // field slots in an index block

}  // namespace jet::table_definition

// SPDX-License-Identifier: MIT
// Sizes in the pages of a table definition that reading and writing share.
#pragma once

#include <cstddef>

namespace jet::table_definition {

constexpr std::size_t kContinuationHead = 8;  // a later page begins with these bytes, which are not of the stream
constexpr std::size_t kMostColumns = 255;
constexpr std::size_t kIndexFields = 10;  // places for fields in an index's entry

}  // namespace jet::table_definition

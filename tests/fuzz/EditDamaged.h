// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace jet::fuzz {

// The result of one input.
struct EditOutcome {
  bool opened = false;   // the file could still be opened for writing
  bool damaged = false;  // the check had findings before the first edit
  int committed = 0;     // statements that were carried out
  int refused = 0;       // statements that ended with an Error
};

// Interprets `input` as a recipe: which of two small databases, the layout of its map of free pages, what to damage
// (half of the time a map), and which statements to run. The file is in memory. Throws std::logic_error when one of
// these does not hold:
//  * a statement that ends with an Error leaves every byte of the file as it was;
//  * a file without a problem has none after any statement either, and each of its rows is as it was last written;
//  * the rows of a sound table that no statement uses stay as they were, whatever else is damaged.
EditOutcome EditDamaged(std::span<const std::uint8_t> input);

}  // namespace jet::fuzz

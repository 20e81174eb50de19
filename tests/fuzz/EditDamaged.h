// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace jet::fuzz {

// What became of one input.
struct EditOutcome {
  bool opened = false;   // the file could still be opened for writing
  bool damaged = false;  // the check had something to say before anything was edited
  int committed = 0;     // statements that were carried out
  int refused = 0;       // statements that ended with an Error
};

// Reads `input` as a recipe: which of two small databases, how its map of free pages lies, what to damage in it (maps
// as often as anything else), which statements to run on it then. The file lives in memory. Throws std::logic_error
// when a promise is broken:
//  * a statement that ends with an Error leaves every byte of the file as it was;
//  * a file without a problem has none after any statement either, and each of its rows is as it was last written;
//  * whatever is damaged elsewhere, the rows of a sound table that no statement names stay as they were.
EditOutcome EditDamaged(std::span<const std::uint8_t> input);

}  // namespace jet::fuzz

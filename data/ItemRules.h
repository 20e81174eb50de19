// SPDX-License-Identifier: MIT
#pragma once

#include "data/Refusal.h"

#include <functional>
#include <optional>

// What may be saved as an item.

inline constexpr int kLongestItemNaam = 50;  // characters; also for the fixed part of the file name
inline constexpr int kLongestItemDirectory = 240;
inline constexpr int kLongestItemExtension = 3;

// The item editor's values; texts as typed.
struct ItemInput {
  QString naam;
  bool hasList = false;  // option 1
  int listedSpots = 0;
  bool hasPattern = false;  // option 2
  QString directory;
  QString fixedPart;
  bool hasVariablePart = false;
  QString extension;
  bool severalSpots = false;
  QString aantalSpots;
  QString maxAantalSpots;
};

// Returns the first failure, empty if there is none. `isDuplicate`: whether another item has this name; called after
// the checks of the name. Throws runtime::Error for a number of spots that does not fit 32 bits.
std::optional<Refusal> CheckItem(const ItemInput& input, const std::function<bool()>& isDuplicate);

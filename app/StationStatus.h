// SPDX-License-Identifier: MIT
#pragma once

#include <optional>

// What the status bar tells of the station's local database.
struct StationStatus {
  std::optional<int> notExported;  // statements in the offline log; nothing when the database cannot be read
  bool copyEmpty = false;          // the local copy of the items or of the item-spots holds no row
};

// Reads it anew. Never throws and never shows an error: the screens that work with the database do that.
StationStatus ReadStationStatus();

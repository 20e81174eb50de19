// SPDX-License-Identifier: MIT
#pragma once

#include "data/UnreadableReason.h"

#include <optional>

// Facts about the station's local database for the status bar.
struct StationStatus {
  std::optional<int> notExported;  // changes that wait for an export; empty when the database cannot be read
  UnreadableReason unreadable;     // then why
  bool copyEmpty = false;          // the local copy of the items or of the item-spots is empty
};

// Reads the current values. Never throws and shows no error: screens that use the database report errors.
StationStatus ReadStationStatus();

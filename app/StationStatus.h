// SPDX-License-Identifier: MIT
#pragma once

#include "data/UnreadableReason.h"

#include <optional>

// Facts about the station's local database for the status bar.
struct StationStatus {
  std::optional<int> notExported;  // statements in the offline log; empty when the database cannot be read
  std::optional<int> changes;      // as users count them (WaitingChanges)
  UnreadableReason unreadable;     // then why
  bool copyEmpty = false;          // the local copy of the items or of the item-spots is empty
};

// Reads the current values. Never throws and shows no error: screens that use the database report errors.
StationStatus ReadStationStatus();

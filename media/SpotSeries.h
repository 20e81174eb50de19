// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <optional>

// Many dropped files become item-spots with the same days, hours and state.

struct SpotTimes {
  QString startDatum;  // as in the editor's fields
  QString startUur;
  QString eindDatum;
  QString eindUur;
  bool aktief = false;
};

// Those of the item-spot that was saved last since the program started; empty before.
std::optional<SpotTimes> LastSavedTimes();
void NoteSavedTimes(const SpotTimes& times);

// Whether the other dropped files are saved with the same times, without their editors, until one is refused.
bool SavesRest();
void SetSavesRest(bool on);

// SPDX-License-Identifier: MIT
#include "media/SpotSeries.h"

namespace {

std::optional<SpotTimes> lastSavedTimes;
bool savesRest = false;

}  // namespace

std::optional<SpotTimes> LastSavedTimes() {
  return lastSavedTimes;
}

void NoteSavedTimes(const SpotTimes& times) {
  lastSavedTimes = times;
}

bool SavesRest() {
  return savesRest;
}

void SetSavesRest(bool on) {
  savesRest = on;
}

// SPDX-License-Identifier: MIT
#pragma once

#include "data/SpotFacts.h"

#include <QDateTime>
#include <QString>

#include <array>
#include <cstddef>

// The order tells which one wins when several hold.
enum class SpotState { NietAktief, BestandOntbreekt, Verlopen, Begint, Verloopt, BuitenUren, Loopt };

inline constexpr int kSpotStates = 7;

// "Verloopt" is said from this many days before the last day on.
inline constexpr int kEndsSoonDays = 7;

// The state in which a spot is at that moment. A file not looked at yet, or out of reach, counts as there.
SpotState StateOf(const SpotFacts& spot, const QDateTime& now);

// Whether the hour of a day, 0 to 23, lies in those of the spot: from the first hour to the last one, inclusive; a
// first hour behind the last one runs over midnight.
bool WithinHours(const SpotFacts& spot, int hour);

// The state in words, as a list shows it: "loopt t/m 20-04-2025".
QString StateText(const SpotFacts& spot, SpotState state);

// How many spots are in which state.
class SpotCounts {
 public:
  void Add(SpotState state) { ++counts_[static_cast<std::size_t>(state)]; }
  void Remove(SpotState state) { --counts_[static_cast<std::size_t>(state)]; }
  int In(SpotState state) const { return counts_[static_cast<std::size_t>(state)]; }

  // Lopen, also those outside of their hours just now.
  int Running() const { return In(SpotState::Loopt) + In(SpotState::BuitenUren); }
  int OverOrInactive() const { return In(SpotState::Verlopen) + In(SpotState::NietAktief); }

  // "10 lopen, 3 beginnen later, ...": only what there is.
  QString Text() const;

 private:
  std::array<int, kSpotStates> counts_{};
};

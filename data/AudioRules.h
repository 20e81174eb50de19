// SPDX-License-Identifier: MIT
#pragma once

#include "data/Refusal.h"

#include <functional>
#include <optional>

// What may be saved as an item-spot or item-pingle. The checks return the first failure, empty if there is none. Texts
// are as typed; blanks count for lengths.

inline constexpr int kLongestAudioPath = 240;  // characters
inline constexpr int kLongestAudioNaam = 70;
inline constexpr int kFirstHour = 0;
inline constexpr int kLastHour = 23;

struct AudioInput {
  QString path;  // path text
  QString naam;
};

struct ValidityInput {
  bool hasStartDatum = false;
  QString startUur;
  bool hasEindDatum = false;
  QString eindUur;
};

// `isDuplicate`: whether another record has this name; called last.
std::optional<Refusal> CheckAudio(const AudioInput& input, const std::function<bool()>& isDuplicate);

// Changes an hour outside kFirstHour to kLastHour to the nearest of both, unless an earlier check fails.
std::optional<Refusal> CheckValidity(ValidityInput& input);

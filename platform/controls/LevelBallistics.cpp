// SPDX-License-Identifier: MIT
#include "platform/controls/LevelBallistics.h"

#include <algorithm>

namespace controls {
namespace {

constexpr double kLevelFall = 30;  // dB per second
constexpr double kPeakFall = 20;   // dB per second
constexpr double kPeakHold = 1.5;  // seconds

}  // namespace

void LevelBallistics::Advance(double seconds, double loudest) {
  loudest = std::clamp(loudest, kFloor, 0.0);
  level_ = std::max(level_ - kLevelFall * seconds, loudest);
  if (level_ >= peak_) {
    peak_ = level_;
    held_ = 0;
    return;
  }
  // The peak falls during the part of this step after the hold time.
  const double falls = std::clamp(held_ + seconds - kPeakHold, 0.0, seconds);
  held_ += seconds;
  peak_ = std::max({peak_ - kPeakFall * falls, level_, kFloor});
}

void LevelBallistics::Reset() {
  *this = LevelBallistics();
}

}  // namespace controls

// SPDX-License-Identifier: MIT
#include "platform/controls/LevelBallistics.h"

#include <algorithm>

namespace controls {
namespace {

constexpr double kLevelFall = 30;  // dB a second
constexpr double kPeakFall = 20;   // dB a second
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
  // What is left of this step after the hold has ended lets the peak fall.
  const double falls = std::clamp(held_ + seconds - kPeakHold, 0.0, seconds);
  held_ += seconds;
  peak_ = std::max({peak_ - kPeakFall * falls, level_, kFloor});
}

void LevelBallistics::Reset() {
  *this = LevelBallistics();
}

}  // namespace controls

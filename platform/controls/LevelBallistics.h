// SPDX-License-Identifier: MIT
#pragma once

namespace controls {

// The movement of a level meter, without clock or widget: the level rises at once and falls 30 dB per second; the peak
// is held for 1.5 s and then falls 20 dB per second. Levels are in dBFS, from kFloor to 0.
class LevelBallistics {
 public:
  static constexpr double kFloor = -60.0;

  // Advances the time by `seconds`, then applies the loudest level (dBFS) since the last call.
  void Advance(double seconds, double loudest);
  void Reset();

  double Level() const { return level_; }
  double Peak() const { return peak_; }
  bool AtRest() const { return level_ <= kFloor && peak_ <= kFloor; }

 private:
  double level_ = kFloor;
  double peak_ = kFloor;
  double held_ = 0;  // seconds since the peak was reached
};

}  // namespace controls

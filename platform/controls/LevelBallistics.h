// SPDX-License-Identifier: MIT
#pragma once

namespace controls {

// How a meter moves, apart from any clock or screen: the level jumps up and falls 30 dB a second; the peak stays
// for 1.5 s, then falls 20 dB a second. Levels are in dBFS, from kFloor to 0.
class LevelBallistics {
 public:
  static constexpr double kFloor = -60.0;

  // Lets `seconds` pass, then takes the loudest level since the last call.
  void Advance(double seconds, double loudest);
  void Reset();

  double Level() const { return level_; }
  double Peak() const { return peak_; }
  bool AtRest() const { return level_ <= kFloor && peak_ <= kFloor; }

 private:
  double level_ = kFloor;
  double peak_ = kFloor;
  double held_ = 0;  // seconds for which the peak has stood
};

}  // namespace controls

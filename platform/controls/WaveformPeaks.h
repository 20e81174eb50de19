// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

namespace controls {

// Levels of a short part of sound, full scale = 1: min and max from -1 to 1, rms from 0 to 1.
struct Peak {
  float min = 0;
  float max = 0;
  float rms = 0;
};

// The peaks of one file, added as they are read, and their summary for any part of it.
class WaveformPeaks {
 public:
  void Begin(int expected);
  void Append(const std::vector<Peak>& peaks);
  int Count() const { return static_cast<int>(peaks_.size()); }
  int Expected() const { return expected_; }

  // The extremes between two shares of the file's length (0 to 1, from < to). `known` is false for a part not read yet.
  struct Summary {
    Peak peak;
    bool known = false;
  };
  Summary Between(double from, double to) const;

 private:
  std::vector<Peak> peaks_;
  int expected_ = 0;
};

}  // namespace controls

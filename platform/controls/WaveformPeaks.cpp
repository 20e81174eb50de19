// SPDX-License-Identifier: MIT
#include "platform/controls/WaveformPeaks.h"

#include <algorithm>
#include <cmath>

namespace controls {

void WaveformPeaks::Begin(int expected) {
  peaks_.clear();
  expected_ = std::max(0, expected);
  peaks_.reserve(static_cast<std::size_t>(expected_));
}

void WaveformPeaks::Append(const std::vector<Peak>& peaks) {
  peaks_.insert(peaks_.end(), peaks.begin(), peaks.end());
}

WaveformPeaks::Summary WaveformPeaks::Between(double from, double to) const {
  // If there are more peaks than expected, all of them share the width.
  const int total = std::max(expected_, Count());
  const auto first = std::clamp(static_cast<int>(from * total), 0, std::max(0, total - 1));
  const auto last = std::clamp(static_cast<int>(std::ceil(to * total)), first + 1, std::max(first + 1, total));
  if (first >= Count()) return {};

  Summary summary{{}, true};
  double squares = 0;
  const int end = std::min(last, Count());
  for (int i = first; i < end; ++i) {
    const Peak& peak = peaks_[static_cast<std::size_t>(i)];
    summary.peak.min = std::min(summary.peak.min, peak.min);
    summary.peak.max = std::max(summary.peak.max, peak.max);
    const double rms = static_cast<double>(peak.rms);
    squares += rms * rms;
  }
  summary.peak.rms = static_cast<float>(std::sqrt(squares / (end - first)));
  return summary;
}

}  // namespace controls

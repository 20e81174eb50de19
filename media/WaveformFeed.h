// SPDX-License-Identifier: MIT
#pragma once

#include "platform/audio/PeakReader.h"
#include "platform/controls/WaveformPeaks.h"

#include <QObject>

#include <cstddef>

namespace controls {
class WaveformStrip;
}

// Host path of the folder for peaks in the user's cache.
QString WaveformCacheFolder();

// Converts a bin of peaks for painting.
controls::Peak PeakOf(const audio::PeakBin& bin);

// Reads the peaks of a file in the background and passes them to the strip; immediately when they are in the user's
// cache. User-interface thread only.
class WaveformFeed : public QObject {
  Q_OBJECT

 public:
  // `strip` must outlive the feed.
  explicit WaveformFeed(controls::WaveformStrip* strip, QObject* parent = nullptr);

  // Starts another file (host path) of that length.
  void Show(const QString& hostPath, qint32 lengthMs);
  // Shows in the strip why there is no picture.
  void ShowTrouble(const QString& reason);
  void Cancel() { reader_.Cancel(); }

 private:
  void TakePeaks();

  controls::WaveformStrip* strip_;
  audio::PeakReader reader_;
  std::size_t taken_ = 0;
};

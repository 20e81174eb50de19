// SPDX-License-Identifier: MIT
#pragma once

#include "platform/audio/PeakReader.h"
#include "platform/controls/WaveformPeaks.h"

#include <QObject>

#include <cstddef>

namespace controls {
class WaveformStrip;
}

// The folder of the user's cache in which peaks are kept: a path of the host.
QString WaveformCacheFolder();

// A bin of a file as strips paint it.
controls::Peak PeakOf(const audio::PeakBin& bin);

// Brings the peaks of a file to the strip as they are read in the background, or at once when this user looked at the
// file before: they are kept in a folder of the user's cache. User-interface thread only.
class WaveformFeed : public QObject {
  Q_OBJECT

 public:
  // The strip must outlive the feed.
  explicit WaveformFeed(controls::WaveformStrip* strip, QObject* parent = nullptr);

  // Begins with another file (path of the host) of that length.
  void Show(const QString& hostPath, qint32 lengthMs);
  // The strip tells why there is no picture.
  void ShowTrouble(const QString& reason);
  void Cancel() { reader_.Cancel(); }

 private:
  void TakePeaks();

  controls::WaveformStrip* strip_;
  audio::PeakReader reader_;
  std::size_t taken_ = 0;
};

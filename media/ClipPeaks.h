// SPDX-License-Identifier: MIT
#pragma once

#include "platform/audio/PeakReader.h"

#include <QObject>
#include <QStringList>

#include <cstddef>

namespace controls {
class ClipStrip;
}

// Brings the peaks of several files to a strip of clips, one file after the other, as they are read in the background.
// A file that stands in it more than once is read once. User-interface thread only.
class ClipPeaks : public QObject {
  Q_OBJECT

 public:
  // The strip must outlive it.
  explicit ClipPeaks(controls::ClipStrip* strip, QObject* parent = nullptr);

  // Begins with the files of the strip's clips (paths of the host, in their order).
  void Read(const QStringList& files);
  void Cancel();

 private:
  void Next();
  void Take();

  controls::ClipStrip* strip_;
  audio::PeakReader reader_;
  QStringList files_;    // of each clip
  QStringList waiting_;  // still to be read; the first is being read
  std::size_t taken_ = 0;
};

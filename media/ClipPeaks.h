// SPDX-License-Identifier: MIT
#pragma once

#include "platform/audio/PeakReader.h"

#include <QObject>
#include <QStringList>

#include <cstddef>

namespace controls {
class ClipStrip;
}

// Reads the peaks of several files in the background, one file after the other, and passes them to a strip of clips. A
// file with several clips is read once. User-interface thread only.
class ClipPeaks : public QObject {
  Q_OBJECT

 public:
  // `strip` must outlive this object.
  explicit ClipPeaks(controls::ClipStrip* strip, QObject* parent = nullptr);

  // Starts with the files of the strip's clips (host paths, in clip order).
  void Read(const QStringList& files);
  void Cancel();

 private:
  void Next();
  void Take();

  controls::ClipStrip* strip_;
  audio::PeakReader reader_;
  QStringList files_;    // one per clip
  QStringList waiting_;  // not read yet; the first is being read
  std::size_t taken_ = 0;
};

// SPDX-License-Identifier: MIT
// Reads waveforms in the background, for a window.
#pragma once

#include "platform/audio/Peaks.h"

#include <QObject>
#include <QString>

#include <memory>
#include <span>
#include <vector>

namespace audio {

// All calls on the user-interface thread; signals arrive there through the event loop. One file at a time: Read and the
// destructor cancel the previous one, and wait at most for the decoding of a quarter of a second of sound.
class PeakReader : public QObject {
  Q_OBJECT

 public:
  // Peaks are cached in memory and, unless `cacheFolder` (a host path) is empty, in that folder.
  explicit PeakReader(const QString& cacheFolder = {}, QObject* parent = nullptr);
  ~PeakReader() override;

  void Read(const QString& hostPath);  // clears Bins() and starts reading
  void Cancel();                       // no more signals; Bins() is kept

  std::span<const PeakBin> Bins() const;  // read so far, from the beginning; 10 ms each. Valid until the next signal
  qint32 LengthMs() const;                // exact; 0 until the first progressed()

 Q_SIGNALS:
  void progressed();                    // Bins() grew
  void finished();                      // Bins() is complete
  void failed(const QString& message);  // a Dutch text with the path

 private:
  class Job;
  struct Progress;
  void OnProgress(quint64 job, const Progress& progress);

  QString cacheFolder_;
  std::unique_ptr<Job> job_;
  quint64 jobs_ = 0;  // number of jobs started; identifies the latest one
  std::vector<PeakBin> bins_;
  qint32 lengthMs_ = 0;
};

}  // namespace audio

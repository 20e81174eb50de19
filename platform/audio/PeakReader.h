// SPDX-License-Identifier: MIT
// Peaks in the background, for a window.
#pragma once

#include "platform/audio/Peaks.h"

#include <QObject>
#include <QString>

#include <memory>
#include <span>
#include <vector>

namespace audio {

// Belongs to the user-interface thread; its signals arrive there, always through the event loop. One file at a time: a
// new Read cancels the one before it, as does the destructor, and waits for no more than the decoding of a quarter of a
// second of sound.
class PeakReader : public QObject {
  Q_OBJECT

 public:
  // Peaks are kept in memory and, when `cacheFolder` (a path of the host) is not empty, on disk there.
  explicit PeakReader(const QString& cacheFolder = {}, QObject* parent = nullptr);
  ~PeakReader() override;

  void Read(const QString& hostPath);  // begins anew: Bins() is empty until progressed()
  void Cancel();                       // nothing more is signalled; Bins() stays

  std::span<const PeakBin> Bins() const;  // those known so far, from the file's beginning; 10 ms each
  qint32 LengthMs() const;                // exact; 0 until the first progressed()

 Q_SIGNALS:
  void progressed();                    // Bins() grew
  void finished();                      // Bins() is complete
  void failed(const QString& message);  // Dutch, naming the file

 private:
  class Job;
  struct News;
  void Take(quint64 job, const News& news);

  QString cacheFolder_;
  std::unique_ptr<Job> job_;
  quint64 jobs_ = 0;  // begun so far: the number of the latest one
  std::vector<PeakBin> bins_;
  qint32 lengthMs_ = 0;
};

}  // namespace audio

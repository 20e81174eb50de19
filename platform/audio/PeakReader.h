// Peaks in the background, for a window.
#pragma once

#include <QObject>
#include <QString>
#include <memory>
#include <span>

#include "platform/audio/Peaks.h"

namespace audio {

// Belongs to the user-interface thread; its signals arrive there. One file at a time: a new Read cancels the one before
// it, as does the destructor, without waiting for more than a few milliseconds of decoding.
class PeakReader : public QObject {
  Q_OBJECT

 public:
  // Peaks are kept in memory and, when `cacheFolder` (a path of the host) is not empty, on disk there.
  explicit PeakReader(const QString& cacheFolder = {}, QObject* parent = nullptr);
  ~PeakReader() override;

  void Read(const QString& hostPath);  // begins anew: Bins() is empty until progressed()
  void Cancel();

  std::span<const PeakBin> Bins() const;  // those known so far, from the file's beginning; 10 ms each
  qint32 LengthMs() const;                // exact; 0 until the first progressed()
  bool IsComplete() const;

 Q_SIGNALS:
  void progressed();                    // Bins() grew
  void finished();                      // Bins() is complete
  void failed(const QString& message);  // Dutch, naming the file

 private:
  struct Job;
  std::shared_ptr<Job> job_;
  QString cacheFolder_;
  Peaks peaks_;
  bool complete_ = false;
};

}  // namespace audio

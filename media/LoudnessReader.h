// SPDX-License-Identifier: MIT
#pragma once

#include "platform/audio/Loudness.h"

#include <QObject>

#include <atomic>
#include <memory>

// Measures the loudness of one file at a time in the background. User-interface thread only.
class LoudnessReader : public QObject {
  Q_OBJECT

 public:
  explicit LoudnessReader(QObject* parent = nullptr);
  ~LoudnessReader() override;

  // Starts measuring a file (host path); cancels the previous one.
  void Read(const QString& hostPath);
  void Cancel();

 Q_SIGNALS:
  void measured(const audio::Loudness& loudness);
  // The file cannot be measured. The player reports the error.
  void failed();

 private:
  std::shared_ptr<std::atomic<bool>> cancelled_;  // of the file being read; null for none
};

// "−16,2 LUFS, true peak −1,0 dBTP".
QString LoudnessText(const audio::Loudness& loudness);

// SPDX-License-Identifier: MIT
#pragma once

#include "platform/audio/Loudness.h"

#include <QObject>

#include <atomic>
#include <memory>

// How loud a file is, measured in the background: one file at a time, and nobody waits for it. User-interface thread
// only.
class LoudnessReader : public QObject {
  Q_OBJECT

 public:
  explicit LoudnessReader(QObject* parent = nullptr);
  ~LoudnessReader() override;

  // Begins with a file (path of the host); the one before it is left.
  void Read(const QString& hostPath);
  void Cancel();

 Q_SIGNALS:
  void measured(const audio::Loudness& loudness);
  // The file cannot be measured. What is wrong with it the player tells.
  void failed();

 private:
  std::shared_ptr<std::atomic<bool>> cancelled_;  // of the file being read; null when none is
};

// "−16,2 LUFS, true peak −1,0 dBTP".
QString LoudnessText(const audio::Loudness& loudness);

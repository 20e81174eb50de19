// SPDX-License-Identifier: MIT
#pragma once

#include "platform/controls/LevelBallistics.h"

#include <QElapsedTimer>
#include <QTimer>
#include <QWidget>

namespace controls {

// The level of one channel: 30 blocks of 2 dB from -60 to 0 dBFS, with peak hold. Levels may be set at any rate; it
// repaints at most 30 times per second, and only the blocks that changed. Its timer stops when all blocks are dark.
class LevelMeter : public QWidget {
  Q_OBJECT
  Q_PROPERTY(double level READ Level)

 public:
  static constexpr int kBlocks = 30;

  explicit LevelMeter(QWidget* parent = nullptr);

  // A level in dBFS; above 0 counts as 0, below -60 as silence.
  void SetLevel(double decibels);
  // Turns all blocks dark at once.
  void Reset();

  double Level() const { return ballistics_.Level(); }
  double Peak() const { return ballistics_.Peak(); }
  // Advances the time, as the meter's timer does.
  void Advance(double seconds);

  // The lit blocks: those from 0 to LitBlocks() - 1, and PeakBlock() (-1 = none).
  int LitBlocks() const;
  int PeakBlock() const;

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QRect BlockRect(int block) const;
  void UpdateBlocks(int from, int to);

  LevelBallistics ballistics_;
  QTimer timer_;
  QElapsedTimer clock_;
  double loudest_ = LevelBallistics::kFloor;
};

}  // namespace controls

// SPDX-License-Identifier: MIT
#pragma once

#include "platform/controls/LevelBallistics.h"

#include <QElapsedTimer>
#include <QTimer>
#include <QWidget>

namespace controls {

// One channel's level: 30 blocks of 2 dB from -60 to 0 dBFS, with peak hold. Give it levels as often as you like; it
// repaints at most 30 times a second, and only the blocks that changed. At rest it costs nothing.
class LevelMeter : public QWidget {
  Q_OBJECT
  Q_PROPERTY(double level READ Level)

 public:
  static constexpr int kBlocks = 30;

  explicit LevelMeter(QWidget* parent = nullptr);

  // A level in dBFS; what is above 0 counts as 0, what is below -60 as silence.
  void SetLevel(double decibels);
  // Dark at once.
  void Reset();

  double Level() const { return ballistics_.Level(); }
  double Peak() const { return ballistics_.Peak(); }
  // Lets time pass as the meter's own timer does.
  void Advance(double seconds);

  // Which blocks shine: all below LitBlocks(), and PeakBlock() (-1 none).
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

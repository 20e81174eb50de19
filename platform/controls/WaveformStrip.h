// SPDX-License-Identifier: MIT
#pragma once

#include "platform/controls/WaveformPeaks.h"

#include <QWidget>

#include <vector>

namespace controls {

struct WaveformView;

// The picture of a sound file: peaks as they come in, what has been played, the outtro (the last MixMs), a ruler. A
// click asks to seek, dragging the flag (or Left and Right) moves the mix point. All times are in milliseconds; it
// plays nothing itself. Plus or the wheel shows the last 30 s, Minus the whole again.
class WaveformStrip : public QWidget {
  Q_OBJECT
  Q_PROPERTY(bool zoomed READ IsZoomed WRITE SetZoomed NOTIFY zoomedChanged)

 public:
  explicit WaveformStrip(QWidget* parent = nullptr);

  // Without a file: no peaks, the inviting text.
  void Clear();
  // A new file: no peaks yet. `expectedPeaks` of equal duration will cover the length, one after the other.
  void Begin(qint64 lengthMs, int expectedPeaks);
  void AppendPeaks(const std::vector<Peak>& peaks);
  int PeakCount() const { return peaks_.Count(); }
  // The file can't be shown: the reason, in place of the picture.
  void ShowTrouble(const QString& reason);

  qint64 LengthMs() const { return lengthMs_; }
  qint64 PositionMs() const { return positionMs_; }
  void SetPositionMs(qint64 position);
  qint64 MixMs() const { return mixMs_; }
  void SetMixMs(qint64 mix);  // before the end; fires nothing

  // Whether only the last 30 s fill the width.
  bool IsZoomed() const { return zoomed_; }
  void SetZoomed(bool zoomed);

  // The step by which the mix point moves, and to whose multiples a drag holds it.
  static constexpr int kMixStepMs = 10;
  static constexpr int kZoomMs = 30000;

  QString EmptyText() const { return emptyText_; }
  void SetEmptyText(const QString& text);
  QString TroubleText() const { return trouble_; }

  // Where a time stands, and what time stands at a place: logical pixels from the widget's left edge.
  double XOf(qint64 ms) const;
  qint64 MsAt(double x) const;
  QRect FlagRect() const;

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 Q_SIGNALS:
  void seekRequested(qint64 positionMs);
  // The user moved the mix point; it is already shown.
  void mixMoved(qint64 mixMs);
  void playStopRequested();
  void zoomedChanged(bool zoomed);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void leaveEvent(QEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  QRect WaveRect() const;
  qint64 FirstMs() const;
  double XOfPeak(int peak) const;
  WaveformView View() const;
  void MoveMix(qint64 mix);
  void UpdateAccessible();

  WaveformPeaks peaks_;
  qint64 lengthMs_ = 0;
  qint64 positionMs_ = 0;
  qint64 mixMs_ = 0;
  double hoverX_ = -1;
  bool dragging_ = false;
  double grabOffset_ = 0;  // from the mix line to where it was taken hold of
  bool zoomed_ = false;
  QString emptyText_;
  QString trouble_;
};

}  // namespace controls

// SPDX-License-Identifier: MIT
#pragma once

#include "platform/controls/WaveformPeaks.h"

#include <QWidget>

#include <vector>

namespace controls {

struct WaveformView;

// The waveform of a sound file, with the played part, the outtro (the last MixMs) and a ruler. A click requests a seek;
// dragging the flag (or Left and Right) moves the mix point. Plus, Minus and the wheel zoom, down to kSmallestViewMs;
// Shift with the wheel, Page Up and Page Down move the view, which follows the position while the file plays. All times
// are in milliseconds. Does not play sound itself.
class WaveformStrip : public QWidget {
  Q_OBJECT
  Q_PROPERTY(bool zoomed READ IsZoomed WRITE SetZoomed NOTIFY zoomedChanged)

 public:
  explicit WaveformStrip(QWidget* parent = nullptr);

  // Removes the file and shows the empty text.
  void Clear();
  // Starts a new file. `expectedPeaks` peaks of equal duration will cover its length; they are added by AppendPeaks.
  void Begin(qint64 lengthMs, int expectedPeaks);
  void AppendPeaks(const std::vector<Peak>& peaks);
  int PeakCount() const { return peaks_.Count(); }
  // Shows the reason why the file has no waveform.
  void ShowTrouble(const QString& reason);

  qint64 LengthMs() const { return lengthMs_; }
  qint64 PositionMs() const { return positionMs_; }
  void SetPositionMs(qint64 position);
  qint64 MixMs() const { return mixMs_; }
  void SetMixMs(qint64 mix);  // before the end; emits nothing
  void MoveMix(qint64 mix);   // as the user does: also emits mixMoved(), if it changes

  // Whether the view was set to the last kZoomMs; it does not follow the position.
  bool IsZoomed() const { return zoomed_; }
  void SetZoomed(bool zoomed);

  // The step for moving the mix point; a drag rounds to its multiples.
  static constexpr int kMixStepMs = 10;
  static constexpr int kZoomMs = 30000;
  static constexpr int kSmallestViewMs = 2000;

  // The part of the file that the width shows.
  qint64 FirstMs() const { return firstMs_; }
  qint64 LastMs() const { return lastMs_; }
  // Shows that much of the file, at least kSmallestViewMs, with `anchor` where it is.
  void ZoomTo(qint64 span, qint64 anchor);

  QString EmptyText() const { return emptyText_; }
  void SetEmptyText(const QString& text);
  QString TroubleText() const { return trouble_; }

  // Converts between a time and a position in logical pixels from the widget's left edge.
  double XOf(qint64 ms) const;
  qint64 MsAt(double x) const;
  QRect FlagRect() const;

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 Q_SIGNALS:
  void seekRequested(qint64 positionMs);
  // The user moved the mix point; MixMs() is the new value.
  void mixMoved(qint64 mixMs);
  void playStopRequested();
  void zoomedChanged(bool zoomed);
  void viewChanged(qint64 firstMs, qint64 lastMs);

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
  void SetView(qint64 first, qint64 last);
  void ShowView(qint64 first, qint64 span);
  void MoveView(qint64 by);
  void Follow();
  double XOfPeak(int peak) const;
  WaveformView View() const;
  void UpdateAccessible();

  WaveformPeaks peaks_;
  qint64 lengthMs_ = 0;
  qint64 positionMs_ = 0;
  qint64 mixMs_ = 0;
  double hoverX_ = -1;
  bool dragging_ = false;
  double grabOffset_ = 0;  // from the mix line to where the drag started
  bool zoomed_ = false;
  qint64 firstMs_ = 0;
  qint64 lastMs_ = 0;
  QString emptyText_;
  QString trouble_;
};

}  // namespace controls

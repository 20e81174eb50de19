// SPDX-License-Identifier: MIT
#pragma once

#include <QAbstractSlider>

namespace controls {

// The position in a file, in milliseconds. Emits sliderPressed() and sliderReleased() when the user starts and stops
// moving it; also around the step of an arrow or page key, so that all seeking works the same way. A press on the
// groove moves the knob there. The program can set the value while the user moves it; the form must prevent that if
// needed.
class PositionSlider : public QAbstractSlider {
  Q_OBJECT

 public:
  explicit PositionSlider(QWidget* parent = nullptr);

  // Distance from the widget's edges to the ends of the groove, in logical pixels; the same as in WaveformStrip.
  static constexpr int kInset = 8;

  // Shows only this part of the range over the whole width, as the waveform above does; first == last: all.
  void SetView(qint64 first, qint64 last);
  // The middle of the knob; at an end of the groove while the value is outside the view.
  double KnobX() const;

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 Q_SIGNALS:
  // Space was pressed.
  void playStopRequested();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void sliderChange(SliderChange change) override;

 private:
  int ValueAt(double x) const;
  qint64 First() const { return viewFirst_ < viewLast_ ? viewFirst_ : minimum(); }
  qint64 Last() const { return viewFirst_ < viewLast_ ? viewLast_ : maximum(); }
  void SeekTo(qint64 target);
  void PaintGroove(QPainter& painter) const;
  void PaintTicks(QPainter& painter) const;
  void PaintKnob(QPainter& painter) const;

  qint64 viewFirst_ = 0;
  qint64 viewLast_ = 0;
  double shownX_ = kInset;  // position of the knob at the last repaint request
};

}  // namespace controls

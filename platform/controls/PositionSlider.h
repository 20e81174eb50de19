// SPDX-License-Identifier: MIT
#pragma once

#include <QAbstractSlider>

namespace controls {

// The place in a file, in milliseconds. sliderPressed() when the user begins to move it, sliderReleased() when he lets
// go; an arrow or page key gives both around its step, so that seeking by key and by hand is one way. A press on the
// groove takes the knob there. The program may set the value meanwhile: the owner decides whether it should.
class PositionSlider : public QAbstractSlider {
  Q_OBJECT

 public:
  explicit PositionSlider(QWidget* parent = nullptr);

  // How far the ends of the groove stand from the widget's edges: the same as in WaveformStrip.
  static constexpr int kInset = 8;

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 Q_SIGNALS:
  // Space was pressed: play, or stop.
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
  double KnobX() const;
  int ValueAt(double x) const;
  void SeekTo(qint64 target);
  void PaintGroove(QPainter& painter) const;
  void PaintTicks(QPainter& painter) const;
  void PaintKnob(QPainter& painter) const;

  double shownX_ = kInset;  // where the knob was last asked to be painted
};

}  // namespace controls

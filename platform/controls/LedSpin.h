// SPDX-License-Identifier: MIT
#pragma once

#include "platform/controls/LedPanel.h"

class QTimer;

namespace controls {

// An LED panel with two arrows; by default six digits, 0 to 999999, step 10. Up and Down, the wheel and the arrows
// change the value by one step. A click on the digits, or Enter, emits clicked(), so that the form can ask for a
// number.
class LedSpin : public LedPanel {
  Q_OBJECT
  Q_PROPERTY(int singleStep READ SingleStep WRITE SetSingleStep)

 public:
  explicit LedSpin(QWidget* parent = nullptr);

  int SingleStep() const { return singleStep_; }
  void SetSingleStep(int step) { singleStep_ = step; }
  // Adds `steps` times the step, clamped to the range.
  void StepBy(int steps);

  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  QRect DigitArea() const override;

 private:
  QRect ArrowRect(bool up) const;
  void ReleaseArrow();
  void PaintArrow(QPainter& painter, bool up) const;

  int singleStep_ = 10;
  int held_ = 0;  // +1 or -1 while the mouse button is down on an arrow
  int wheelRest_ = 0;
  QTimer* repeat_;
};

}  // namespace controls

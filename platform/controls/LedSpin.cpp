// SPDX-License-Identifier: MIT
#include "platform/controls/LedSpin.h"

#include "platform/desktop/ThemeColours.h"

#include <QAccessible>
#include <QKeyEvent>
#include <QPainter>
#include <QPainterPath>
#include <QTimer>
#include <QWheelEvent>

#include <algorithm>

namespace controls {
namespace {

constexpr int kArrowWidth = 22;
constexpr int kFirstRepeatMs = 400;
constexpr int kRepeatMs = 60;
constexpr int kWheelNotch = 120;

}  // namespace

LedSpin::LedSpin(QWidget* parent) : LedPanel(parent), repeat_(new QTimer(this)) {
  SetDigits(6);
  SetDigitHeight(22);
  SetMaximum(999999);
  SetLeadingZeros(false);
  setFocusPolicy(Qt::StrongFocus);
  connect(this, &LedPanel::valueChanged, this, [this](int value) {
    QAccessibleValueChangeEvent change(this, value);
    QAccessible::updateAccessibility(&change);
  });
  connect(repeat_, &QTimer::timeout, this, [this] {
    repeat_->setInterval(kRepeatMs);
    StepBy(held_);
  });
}

void LedSpin::StepBy(int steps) {
  const qint64 target = qint64(Value()) + qint64(steps) * singleStep_;
  SetValue(static_cast<int>(std::clamp<qint64>(target, Minimum(), Maximum())));
}

QSize LedSpin::sizeHint() const {
  return LedPanel::sizeHint() + QSize(kArrowWidth, 0);
}

QRect LedSpin::DigitArea() const {
  return rect().adjusted(0, 0, -kArrowWidth, 0);
}

QRect LedSpin::ArrowRect(bool up) const {
  const int half = height() / 2;
  return {width() - kArrowWidth, up ? 0 : half, kArrowWidth, up ? half : height() - half};
}

void LedSpin::PaintArrow(QPainter& painter, bool up) const {
  QPainterPath inside;
  inside.addRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), 3, 3);
  QPainterPath key;
  key.addRect(ArrowRect(up).adjusted(1, up ? 0 : 1, 0, 0));
  QColor ground(desktop::instrument::kArrowGround);
  if (held_ == (up ? 1 : -1)) ground = ground.lighter(160);
  painter.fillPath(key.intersected(inside), ground);

  const QPointF middle = QRectF(ArrowRect(up)).center();
  const double rise = up ? -2.5 : 2.5;
  painter.setPen(QPen(QColor(desktop::instrument::kLit), 2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  painter.drawPolyline(
      QPolygonF{middle + QPointF(-4.5, -rise), middle + QPointF(0, rise), middle + QPointF(4.5, -rise)});
}

void LedSpin::paintEvent(QPaintEvent* event) {
  LedPanel::paintEvent(event);
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  PaintArrow(painter, true);
  PaintArrow(painter, false);
}

void LedSpin::mousePressEvent(QMouseEvent* event) {
  LedPanel::mousePressEvent(event);
  const QPoint place = event->position().toPoint();
  if (!event->isAccepted() || DigitArea().contains(place)) return;
  held_ = ArrowRect(true).contains(place) ? 1 : -1;
  StepBy(held_);
  repeat_->start(kFirstRepeatMs);
  update();
}

void LedSpin::mouseReleaseEvent(QMouseEvent* event) {
  const bool heldArrow = held_ != 0;
  ReleaseArrow();
  if (!heldArrow) LedPanel::mouseReleaseEvent(event);
}

// If a box opens while an arrow is pressed, the mouse release does not arrive here.
void LedSpin::focusOutEvent(QFocusEvent* event) {
  ReleaseArrow();
  LedPanel::focusOutEvent(event);
}

void LedSpin::ReleaseArrow() {
  held_ = 0;
  repeat_->stop();
  update();
}

void LedSpin::wheelEvent(QWheelEvent* event) {
  wheelRest_ += event->angleDelta().y();
  StepBy(wheelRest_ / kWheelNotch);
  wheelRest_ %= kWheelNotch;
  event->accept();
}

void LedSpin::keyPressEvent(QKeyEvent* event) {
  switch (event->key()) {
    case Qt::Key_Up:
      return StepBy(1);
    case Qt::Key_Down:
      return StepBy(-1);
    default:
      LedPanel::keyPressEvent(event);
  }
}

}  // namespace controls

// SPDX-License-Identifier: MIT
#include "platform/controls/LedPanel.h"

#include "platform/controls/AccessibleControls.h"
#include "platform/controls/InstrumentGround.h"
#include "platform/controls/LedDigits.h"
#include "platform/desktop/ThemeColours.h"

#include <QKeyEvent>
#include <QPainter>

#include <algorithm>

namespace controls {

LedPanel::LedPanel(QWidget* parent) : QWidget(parent) {
  RegisterAccessibleControls();
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void LedPanel::SetValue(int value) {
  const int shown = std::clamp(value, minimum_, maximum_);
  if (shown == value_) return;
  const QString before = Shown();
  value_ = shown;
  UpdateDigits(before);
  Q_EMIT valueChanged(value_);
}

void LedPanel::SetMinimum(int minimum) {
  minimum_ = minimum;
  maximum_ = std::max(maximum_, minimum);
  SetValue(value_);
}

void LedPanel::SetMaximum(int maximum) {
  maximum_ = maximum;
  minimum_ = std::min(minimum_, maximum);
  SetValue(value_);
}

void LedPanel::SetDigits(int digits) {
  digits_ = std::clamp(digits, 1, 9);
  SizesChanged();
}

void LedPanel::SetDigitHeight(int height) {
  digitHeight_ = std::max(8, height);
  SizesChanged();
}

void LedPanel::SetLeadingZeros(bool leadingZeros) {
  leadingZeros_ = leadingZeros;
  update();
}

void LedPanel::SetGround(bool ground) {
  ground_ = ground;
  SizesChanged();
}

void LedPanel::SizesChanged() {
  updateGeometry();
  update();
}

// If the value has more digits than the panel, the last ones are shown, like a counter.
QString LedPanel::Shown() const {
  const QString number = QString::number(std::abs(value_)).right(digits_);
  return number.rightJustified(digits_, QChar(leadingZeros_ ? u'0' : u' '));
}

int LedPanel::Padding() const {
  return ground_ ? std::clamp(digitHeight_ * 3 / 10, 8, 10) : 0;
}

QSize LedPanel::sizeHint() const {
  const int digits = qRound(LedAdvance(digitHeight_) * digits_);
  const int sides = ground_ ? 2 * (Padding() + 2) : 0;
  return {digits + sides, digitHeight_ + 2 * Padding()};
}

QPointF LedPanel::DigitsPlace() const {
  const QRect area = DigitArea();
  const double width = LedAdvance(digitHeight_) * digits_;
  return {area.left() + (area.width() - width) / 2, area.top() + (area.height() - digitHeight_) / 2.0};
}

// Repaints only the digits that differ, because milliseconds change a hundred times per second.
void LedPanel::UpdateDigits(const QString& before) {
  const QString now = Shown();
  const double advance = LedAdvance(digitHeight_);
  const QPointF place = DigitsPlace();
  for (qsizetype i = 0; i < now.size(); ++i) {
    if (i < before.size() && now[i] == before[i]) continue;
    const QRectF cell(place.x() + static_cast<double>(i) * advance, place.y(), advance, digitHeight_);
    update(cell.toAlignedRect().adjusted(-1, -1, 1, 1));
  }
}

void LedPanel::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  if (ground_) InstrumentGround::Paint(painter, rect(), hasFocus() ? QColor(desktop::instrument::kFocus) : QColor());
  PaintLedDigits(painter, DigitsPlace(), digitHeight_, Shown());
}

void LedPanel::mousePressEvent(QMouseEvent* event) {
  event->setAccepted(event->button() == Qt::LeftButton);
}

void LedPanel::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton && DigitArea().contains(event->position().toPoint())) Q_EMIT clicked();
}

void LedPanel::keyPressEvent(QKeyEvent* event) {
  switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Space:
      Q_EMIT clicked();
      return;
    default:
      QWidget::keyPressEvent(event);
  }
}

void LedPanel::focusInEvent(QFocusEvent* event) {
  QWidget::focusInEvent(event);
  update();
}

void LedPanel::focusOutEvent(QFocusEvent* event) {
  QWidget::focusOutEvent(event);
  update();
}

}  // namespace controls

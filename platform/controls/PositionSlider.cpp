// SPDX-License-Identifier: MIT
#include "platform/controls/PositionSlider.h"

#include "platform/desktop/ThemeColours.h"

#include <QKeyEvent>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace controls {
namespace {

constexpr double kGrooveY = 10;
constexpr double kGrooveHeight = 4;
constexpr int kKnobWidth = 12;
constexpr int kKnobHeight = 16;
constexpr double kTicksY = 21;
constexpr int kTickIntervals = 10;
constexpr int kStepMs = 1000;
constexpr int kPageMs = 10000;

}  // namespace

PositionSlider::PositionSlider(QWidget* parent) : QAbstractSlider(parent) {
  setOrientation(Qt::Horizontal);
  setFocusPolicy(Qt::StrongFocus);
  setSingleStep(kStepMs);
  setPageStep(kPageMs);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

QSize PositionSlider::sizeHint() const {
  return {240, 31};
}

QSize PositionSlider::minimumSizeHint() const {
  return {80, 31};
}

double PositionSlider::KnobX() const {
  const double room = width() - 2.0 * kInset;
  const qint64 range = Last() - First();
  if (range <= 0) return kInset;
  const double share = static_cast<double>(sliderPosition() - First()) / static_cast<double>(range);
  return kInset + room * std::clamp(share, 0.0, 1.0);
}

int PositionSlider::ValueAt(double x) const {
  const double room = std::max(1.0, width() - 2.0 * kInset);
  const double share = std::clamp((x - kInset) / room, 0.0, 1.0);
  return qRound(double(First()) + share * double(Last() - First()));
}

void PositionSlider::SetView(qint64 first, qint64 last) {
  viewFirst_ = first;
  viewLast_ = last;
  shownX_ = KnobX();
  update();
}

void PositionSlider::mousePressEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return event->ignore();
  setSliderDown(true);
  setSliderPosition(ValueAt(event->position().x()));
}

void PositionSlider::mouseMoveEvent(QMouseEvent* event) {
  if (isSliderDown()) setSliderPosition(ValueAt(event->position().x()));
}

void PositionSlider::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton || !isSliderDown()) return;
  setSliderPosition(ValueAt(event->position().x()));
  setSliderDown(false);
}

// Emits the same signals as a drag of the knob.
void PositionSlider::SeekTo(qint64 target) {
  setSliderDown(true);
  setSliderPosition(static_cast<int>(std::clamp<qint64>(target, minimum(), maximum())));
  setSliderDown(false);
}

void PositionSlider::keyPressEvent(QKeyEvent* event) {
  const qint64 now = value();
  switch (event->key()) {
    case Qt::Key_Left:
    case Qt::Key_Down:
      return SeekTo(now - singleStep());
    case Qt::Key_Right:
    case Qt::Key_Up:
      return SeekTo(now + singleStep());
    case Qt::Key_PageDown:
      return SeekTo(now - pageStep());
    case Qt::Key_PageUp:
      return SeekTo(now + pageStep());
    case Qt::Key_Home:
      return SeekTo(minimum());
    case Qt::Key_End:
      return SeekTo(maximum());
    case Qt::Key_Space:
      Q_EMIT playStopRequested();
      return;
    default:
      event->ignore();
  }
}

// The wheel scrolls the surrounding window instead.
void PositionSlider::wheelEvent(QWheelEvent* event) {
  event->ignore();
}

// If a box opens while the knob is held, the mouse release does not arrive here; the knob is released where it is.
void PositionSlider::focusOutEvent(QFocusEvent* event) {
  setSliderDown(false);
  QAbstractSlider::focusOutEvent(event);
}

// While playing the value changes a hundred times per second; movements below a pixel are not repainted.
void PositionSlider::sliderChange(SliderChange change) {
  if (change != SliderValueChange) {
    shownX_ = KnobX();
    return QAbstractSlider::sliderChange(change);
  }
  const double now = KnobX();
  if (std::abs(now - shownX_) * devicePixelRatioF() < 0.5) return;
  const int left = static_cast<int>(std::min(now, shownX_)) - kKnobWidth;
  const int right = static_cast<int>(std::max(now, shownX_)) + kKnobWidth;
  shownX_ = now;
  update(left, 0, right - left, height());
}

void PositionSlider::PaintGroove(QPainter& painter) const {
  const desktop::ThemeColours& colours = desktop::ThemeColoursFor(palette());
  const QRectF groove(kInset, kGrooveY - kGrooveHeight / 2, width() - 2.0 * kInset, kGrooveHeight);
  QColor rest = colours.lineStrong;
  rest.setAlphaF(0.45F);
  painter.setPen(Qt::NoPen);
  painter.setBrush(rest);
  painter.drawRoundedRect(groove, kGrooveHeight / 2, kGrooveHeight / 2);
  if (!isEnabled()) return;
  QRectF played = groove;
  played.setRight(KnobX());
  painter.setBrush(colours.accent);
  if (played.width() > 0) painter.drawRoundedRect(played, kGrooveHeight / 2, kGrooveHeight / 2);
}

void PositionSlider::PaintTicks(QPainter& painter) const {
  const desktop::ThemeColours& colours = desktop::ThemeColoursFor(palette());
  const double room = width() - 2.0 * kInset;
  for (int step = 0; step <= kTickIntervals; ++step) {
    const int length = step % (kTickIntervals / 2) == 0 ? 9 : 5;
    painter.fillRect(QRectF(kInset + room * step / kTickIntervals - 0.5, kTicksY, 1, length), colours.lineStrong);
  }
}

void PositionSlider::PaintKnob(QPainter& painter) const {
  const desktop::ThemeColours& colours = desktop::ThemeColoursFor(palette());
  QRectF knob(0, 0, kKnobWidth, kKnobHeight);
  knob.moveCenter(QPointF(KnobX(), kGrooveY));
  const bool strong = hasFocus() || isSliderDown();
  const QColor edge = isEnabled() ? colours.accent : colours.line;
  painter.setPen(QPen(edge, 1.5));
  painter.setBrush(strong ? colours.accent : colours.face);
  painter.drawRoundedRect(knob.adjusted(0.75, 0.75, -0.75, -0.75), 3.5, 3.5);
  painter.setPen(Qt::NoPen);
  painter.setBrush(strong ? colours.onAccent : edge);
  painter.drawRect(QRectF(knob.center().x() - 0.75, knob.top() + 4.5, 1.5, kKnobHeight - 9));
}

void PositionSlider::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  PaintTicks(painter);
  PaintGroove(painter);
  PaintKnob(painter);
}

}  // namespace controls

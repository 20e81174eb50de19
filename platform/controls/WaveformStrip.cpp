// SPDX-License-Identifier: MIT
#include "platform/controls/WaveformStrip.h"

#include "platform/controls/AccessibleControls.h"
#include "platform/controls/InstrumentGround.h"
#include "platform/controls/WaveformPainter.h"
#include "platform/desktop/ThemeColours.h"

#include <QKeyEvent>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <utility>

namespace controls {
namespace {

using namespace Qt::StringLiterals;

constexpr int kInset = 8;  // the same as the slider's, so that both are aligned
constexpr int kTop = 5;
constexpr double kGrip = 5;  // distance within which a press grabs the mix line
constexpr int kAround = 8;   // repainted to the left and right of a moving line

QFont ScaleFont(QFont font) {
  if (font.pointSizeF() > 3) font.setPointSizeF(font.pointSizeF() - 2);
  return font;
}

}  // namespace

WaveformStrip::WaveformStrip(QWidget* parent)
    : QWidget(parent), emptyText_(tr("Kies een geluidsbestand met ‘Path ...’ om het te beluisteren")) {
  RegisterAccessibleControls();
  setMouseTracking(true);
  setFocusPolicy(Qt::StrongFocus);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
  setAttribute(Qt::WA_OpaquePaintEvent, false);
  UpdateAccessible();
}

QSize WaveformStrip::sizeHint() const {
  return {480, 120};
}

QSize WaveformStrip::minimumSizeHint() const {
  return {160, 56};
}

// --- contents

void WaveformStrip::Clear() {
  Begin(0, 0);
}

void WaveformStrip::Begin(qint64 lengthMs, int expectedPeaks) {
  peaks_.Begin(expectedPeaks);
  lengthMs_ = std::max<qint64>(0, lengthMs);
  positionMs_ = 0;
  hoverX_ = -1;
  dragging_ = false;
  SetView(zoomed_ ? std::max<qint64>(0, lengthMs_ - kZoomMs) : 0, lengthMs_);
  trouble_.clear();
  UpdateAccessible();
  update();
}

// Repaints only the new columns, or all of them when there are more peaks than expected.
void WaveformStrip::AppendPeaks(const std::vector<Peak>& peaks) {
  const double before = XOfPeak(peaks_.Count());
  peaks_.Append(peaks);
  if (peaks_.Count() > peaks_.Expected()) return update();
  const int left = static_cast<int>(before) - 1;
  update(left, 0, static_cast<int>(XOfPeak(peaks_.Count())) + 2 - left, height());
}

void WaveformStrip::ShowTrouble(const QString& reason) {
  Clear();
  trouble_ = reason;
  UpdateAccessible();
}

void WaveformStrip::SetEmptyText(const QString& text) {
  emptyText_ = text;
  update();
}

// Repaints the range between the old and the new position, which changes its shade; nothing for less than a pixel.
void WaveformStrip::SetPositionMs(qint64 position) {
  position = std::clamp<qint64>(position, 0, lengthMs_);
  if (position == positionMs_) return;
  if (!View().Shows(position)) {
    positionMs_ = position;
    return Follow();
  }
  const double scale = devicePixelRatioF();
  const double before = XOf(positionMs_);
  const double after = XOf(position);
  positionMs_ = position;
  if (std::lround(before * scale) == std::lround(after * scale)) return;
  const int left = static_cast<int>(std::min(before, after)) - kAround;
  const int right = static_cast<int>(std::max(before, after)) + kAround;
  update(left, 0, right - left, height());
}

void WaveformStrip::SetMixMs(qint64 mix) {
  if (mix == mixMs_) return;
  mixMs_ = mix;
  UpdateAccessible();
  update();
}

// --- view

void WaveformStrip::SetView(qint64 first, qint64 last) {
  if (first == firstMs_ && last == lastMs_) return;
  firstMs_ = first;
  lastMs_ = last;
  update();
  Q_EMIT viewChanged(firstMs_, lastMs_);
}

void WaveformStrip::SetZoomed(bool zoomed) {
  if (zoomed == zoomed_) return;
  zoomed_ = zoomed;
  SetView(zoomed ? std::max<qint64>(0, lengthMs_ - kZoomMs) : 0, lengthMs_);
  Q_EMIT zoomedChanged(zoomed_);
}

// Within the file. The view is no longer that of SetZoomed.
void WaveformStrip::ShowView(qint64 first, qint64 span) {
  const qint64 shown = std::clamp(span, std::min<qint64>(kSmallestViewMs, lengthMs_), lengthMs_);
  const qint64 from = std::clamp<qint64>(first, 0, lengthMs_ - shown);
  if (from == firstMs_ && from + shown == lastMs_) return;
  SetView(from, from + shown);
  if (!std::exchange(zoomed_, false)) return;
  Q_EMIT zoomedChanged(false);
}

void WaveformStrip::ZoomTo(qint64 span, qint64 anchor) {
  const qint64 shown = std::clamp(span, std::min<qint64>(kSmallestViewMs, lengthMs_), lengthMs_);
  const double share = lastMs_ > firstMs_ ? double(anchor - firstMs_) / double(lastMs_ - firstMs_) : 0;
  ShowView(anchor - std::llround(share * double(shown)), shown);
}

void WaveformStrip::MoveView(qint64 by) {
  ShowView(firstMs_ + by, lastMs_ - firstMs_);
}

// After the position left the view. The last 30 s stay in view.
void WaveformStrip::Follow() {
  const qint64 span = lastMs_ - firstMs_;
  if (zoomed_ || span == lengthMs_) return update();
  ShowView(positionMs_ - span / 10, span);
}

void WaveformStrip::UpdateAccessible() {
  if (!trouble_.isEmpty()) return setAccessibleDescription(trouble_);
  if (lengthMs_ == 0) return setAccessibleDescription(emptyText_);
  setAccessibleDescription(
      tr("Duur %1, mixpunt %2 vóór het einde").arg(TimeText(lengthMs_, true), TimeText(mixMs_, true)));
}

// --- positions and times

QRect WaveformStrip::WaveRect() const {
  return rect().adjusted(kInset, kTop, -kInset, -kRulerHeight - 1);
}

WaveformView WaveformStrip::View() const {
  const qint64 mix = std::clamp<qint64>(mixMs_, 0, lengthMs_);
  return {&peaks_, WaveRect(), firstMs_, lastMs_, lengthMs_, positionMs_, mix, hoverX_};
}

double WaveformStrip::XOfPeak(int peak) const {
  return XOf(lengthMs_ * peak / std::max(1, peaks_.Expected()));
}

double WaveformStrip::XOf(qint64 ms) const {
  return View().XOf(ms);
}

qint64 WaveformStrip::MsAt(double x) const {
  return View().MsAt(x);
}

QRect WaveformStrip::FlagRect() const {
  const QFontMetrics metrics(ScaleFont(font()));
  const int width = metrics.horizontalAdvance(u"MIX"_s) + 14;
  const WaveformView view = View();
  const int line = static_cast<int>(view.XOf(view.MixStart()));
  const bool fits = line + width <= view.wave.right() + 1;
  return {fits ? line : line - width, view.wave.top(), width, metrics.height() + 1};
}

// --- painting

void WaveformStrip::paintEvent(QPaintEvent* event) {
  QPainter painter(this);
  InstrumentGround::Paint(painter, rect(), hasFocus() ? QColor(desktop::instrument::kFocus) : QColor());
  if (lengthMs_ == 0) {
    painter.setPen(QColor(trouble_.isEmpty() ? desktop::instrument::kRuler : desktop::instrument::kTrouble));
    painter.drawText(rect().adjusted(16, 8, -16, -8), Qt::AlignCenter | Qt::TextWordWrap,
                     trouble_.isEmpty() ? emptyText_ : trouble_);
    return;
  }
  const WaveformView view = View();
  painter.setFont(ScaleFont(font()));
  PaintWave(painter, view, event->rect());
  PaintRuler(painter, view);
  painter.setClipRect(rect().adjusted(2, 2, -2, -2));
  if (view.Shows(view.MixStart())) PaintMixLine(painter, view, FlagRect());
  if (view.Shows(positionMs_)) PaintPlayHead(painter, view);
  if (!dragging_) PaintHover(painter, view);
}

void WaveformStrip::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() == QEvent::EnabledChange || event->type() == QEvent::FontChange) update();
}

// --- mouse and keys

// A move by the user: rounded to the step and signalled.
void WaveformStrip::MoveMix(qint64 mix) {
  mix = std::clamp<qint64>(mix, 0, lengthMs_);
  if (mix == mixMs_) return;
  SetMixMs(mix);
  Q_EMIT mixMoved(mixMs_);
}

void WaveformStrip::mousePressEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton || lengthMs_ == 0) return event->ignore();
  const WaveformView view = View();
  const double x = event->position().x();
  const bool onLine = std::abs(x - view.XOf(view.MixStart())) <= kGrip && view.Shows(view.MixStart());
  if (onLine || (view.Shows(view.MixStart()) && FlagRect().contains(event->position().toPoint()))) {
    dragging_ = true;
    grabOffset_ = x - view.XOf(view.MixStart());
    return update();
  }
  Q_EMIT seekRequested(MsAt(x));
}

void WaveformStrip::mouseMoveEvent(QMouseEvent* event) {
  if (lengthMs_ == 0) return;
  const double x = event->position().x();
  if (!event->buttons().testFlag(Qt::LeftButton)) dragging_ = false;  // a box took the mouse release
  if (dragging_) {
    const qint64 mix = lengthMs_ - MsAt(x - grabOffset_);
    return MoveMix((mix + kMixStepMs / 2) / kMixStepMs * kMixStepMs);
  }
  const WaveformView view = View();
  const bool onFlag = view.Shows(view.MixStart()) && (FlagRect().contains(event->position().toPoint()) ||
                                                      std::abs(x - view.XOf(view.MixStart())) <= kGrip);
  setCursor(onFlag ? Qt::SizeHorCursor : Qt::ArrowCursor);
  hoverX_ = x;
  update();
}

void WaveformStrip::mouseReleaseEvent(QMouseEvent*) {
  if (!dragging_) return;
  dragging_ = false;
  update();
}

void WaveformStrip::leaveEvent(QEvent* event) {
  QWidget::leaveEvent(event);
  hoverX_ = -1;
  update();
}

// A notch out of the complete file scrolls the surrounding window instead.
void WaveformStrip::wheelEvent(QWheelEvent* event) {
  constexpr double kNotch = 120;
  const QPoint turned = event->angleDelta();
  const qint64 span = lastMs_ - firstMs_;
  const bool sideways = event->modifiers().testFlag(Qt::ShiftModifier) || turned.y() == 0;
  const double notches = (sideways && turned.x() != 0 ? turned.x() : turned.y()) / kNotch;
  if (notches == 0 || lengthMs_ <= kSmallestViewMs || (notches < 0 && span == lengthMs_)) return event->ignore();
  if (sideways)
    MoveView(std::llround(-notches * double(span) / 8));
  else
    ZoomTo(std::llround(double(span) * std::pow(0.75, notches)), MsAt(event->position().x()));
  event->accept();
}

// The keys zoom around the position, or the middle when the position is not in view.
void WaveformStrip::keyPressEvent(QKeyEvent* event) {
  const qint64 span = lastMs_ - firstMs_;
  const qint64 anchor = View().Shows(positionMs_) ? positionMs_ : firstMs_ + span / 2;
  switch (event->key()) {
    case Qt::Key_Left:
      return MoveMix(mixMs_ + kMixStepMs);
    case Qt::Key_Right:
      return MoveMix(mixMs_ - kMixStepMs);
    case Qt::Key_Plus:
      return ZoomTo(span / 2, anchor);
    case Qt::Key_Minus:
      return ZoomTo(span * 2, anchor);
    case Qt::Key_PageUp:
      return MoveView(span / 2);
    case Qt::Key_PageDown:
      return MoveView(-span / 2);
    case Qt::Key_Space:
      Q_EMIT playStopRequested();
      return;
    default:
      QWidget::keyPressEvent(event);
  }
}

}  // namespace controls

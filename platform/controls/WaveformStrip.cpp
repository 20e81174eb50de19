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

void WaveformStrip::SetZoomed(bool zoomed) {
  if (zoomed == zoomed_) return;
  zoomed_ = zoomed;
  update();
  Q_EMIT zoomedChanged(zoomed_);
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

qint64 WaveformStrip::FirstMs() const {
  return zoomed_ ? std::max<qint64>(0, lengthMs_ - kZoomMs) : 0;
}

WaveformView WaveformStrip::View() const {
  const qint64 mix = std::clamp<qint64>(mixMs_, 0, lengthMs_);
  return {&peaks_, WaveRect(), FirstMs(), lengthMs_, positionMs_, mix, hoverX_};
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
  if (view.MixStart() >= view.firstMs) PaintMixLine(painter, view, FlagRect());
  if (positionMs_ >= view.firstMs) PaintPlayHead(painter, view);
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
  const bool onLine = std::abs(x - view.XOf(view.MixStart())) <= kGrip && view.MixStart() >= view.firstMs;
  if (onLine || FlagRect().contains(event->position().toPoint())) {
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
  const bool onFlag =
      FlagRect().contains(event->position().toPoint()) || std::abs(x - view.XOf(view.MixStart())) <= kGrip;
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

void WaveformStrip::wheelEvent(QWheelEvent* event) {
  if (lengthMs_ <= kZoomMs || event->angleDelta().y() == 0) return event->ignore();
  SetZoomed(event->angleDelta().y() > 0);
  event->accept();
}

void WaveformStrip::keyPressEvent(QKeyEvent* event) {
  switch (event->key()) {
    case Qt::Key_Left:
      return MoveMix(mixMs_ + kMixStepMs);
    case Qt::Key_Right:
      return MoveMix(mixMs_ - kMixStepMs);
    case Qt::Key_Plus:
      return SetZoomed(true);
    case Qt::Key_Minus:
      return SetZoomed(false);
    case Qt::Key_Space:
      Q_EMIT playStopRequested();
      return;
    default:
      QWidget::keyPressEvent(event);
  }
}

}  // namespace controls

// SPDX-License-Identifier: MIT
#include "platform/controls/ClipStrip.h"

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

namespace colour = desktop::instrument;

constexpr int kClipInset = 8;
constexpr int kClipTop = 6;
constexpr int kRows = 2;
constexpr int kRowGap = 3;  // between the rows
constexpr int kClipAround = 8;
constexpr qint64 kTenSeconds = 10'000;

}  // namespace

ClipStrip::ClipStrip(QWidget* parent) : QWidget(parent) {
  RegisterAccessibleControls();
  setMouseTracking(true);
  setFocusPolicy(Qt::StrongFocus);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
  UpdateAccessible();
}

QSize ClipStrip::sizeHint() const {
  return {640, 180};
}

QSize ClipStrip::minimumSizeHint() const {
  return {240, kClipTop + kRulerHeight + kRows * (NameHeight() + 24) + kRowGap};
}

// --- contents

void ClipStrip::SetClips(std::vector<Clip> clips) {
  clips_ = std::move(clips);
  peaks_.assign(clips_.size(), {});
  positionMs_ = 0;
  hoverX_ = -1;
  UpdateAccessible();
  update();
}

void ClipStrip::BeginPeaks(std::size_t clip, int expected) {
  peaks_[clip].Begin(expected);
  update(ClipRect(clip));
}

void ClipStrip::AppendPeaks(std::size_t clip, const std::vector<Peak>& peaks) {
  peaks_[clip].Append(peaks);
  update(ClipRect(clip));
}

qint64 ClipStrip::LengthMs() const {
  qint64 length = 0;
  for (const Clip& clip : clips_)
    length = std::max(length, clip.startMs + clip.lengthMs);
  return length;
}

// Repaints the range between the old and the new position, which changes its shade; nothing for less than a pixel.
void ClipStrip::SetPositionMs(qint64 position) {
  position = std::clamp<qint64>(position, 0, LengthMs());
  if (position == positionMs_) return;
  const double scale = devicePixelRatioF();
  const double before = XOf(positionMs_);
  const double after = XOf(position);
  positionMs_ = position;
  if (std::lround(before * scale) == std::lround(after * scale)) return;
  const int left = static_cast<int>(std::min(before, after)) - kClipAround;
  const int right = static_cast<int>(std::max(before, after)) + kClipAround;
  update(left, 0, right - left, height());
}

void ClipStrip::SetEmptyText(const QString& text) {
  emptyText_ = text;
  UpdateAccessible();
  update();
}

void ClipStrip::UpdateAccessible() {
  if (clips_.empty()) return setAccessibleDescription(emptyText_);
  QStringList parts;
  for (const Clip& clip : clips_)
    parts += tr("%1 op %2").arg(clip.name, TimeText(clip.startMs, false));
  setAccessibleDescription(tr("Duur %1. %2").arg(TimeText(LengthMs(), false), parts.join(QLatin1String(", "))));
}

// --- positions and times

QRect ClipStrip::WaveRect() const {
  return rect().adjusted(kClipInset, kClipTop, -kClipInset, -kRulerHeight - 1);
}

double ClipStrip::XOf(qint64 ms) const {
  return WaveformView{nullptr, WaveRect(), 0, LengthMs()}.XOf(ms);
}

qint64 ClipStrip::MsAt(double x) const {
  return WaveformView{nullptr, WaveRect(), 0, LengthMs()}.MsAt(x);
}

QRect ClipStrip::ClipRect(std::size_t clip) const {
  const QRect wave = WaveRect();
  const int height = (wave.height() - kRowGap) / kRows;
  const int top = wave.top() + static_cast<int>(clip % kRows) * (height + kRowGap);
  const int left = static_cast<int>(std::lround(XOf(clips_[clip].startMs)));
  const int right = static_cast<int>(std::lround(XOf(clips_[clip].startMs + clips_[clip].lengthMs)));
  return {left, top, std::max(1, right - left), height};
}

QFont ClipStrip::NameFont() const {
  QFont small = font();
  if (small.pointSizeF() > 3) small.setPointSizeF(small.pointSizeF() - 1);
  return small;
}

int ClipStrip::NameHeight() const {
  return QFontMetrics(NameFont()).height() + 2;
}

// --- painting

void ClipStrip::paintEvent(QPaintEvent* event) {
  QPainter painter(this);
  InstrumentGround::Paint(painter, rect(), hasFocus() ? QColor(colour::kFocus) : QColor());
  if (clips_.empty()) {
    painter.setPen(QColor(colour::kRuler));
    painter.drawText(rect().adjusted(16, 8, -16, -8), Qt::AlignCenter | Qt::TextWordWrap, emptyText_);
    return;
  }
  PaintOverlaps(painter);
  for (std::size_t clip = 0; clip < clips_.size(); ++clip) {
    if (ClipRect(clip).intersects(event->rect())) PaintClip(painter, clip, event->rect());
  }
  QFont scale = font();
  if (scale.pointSizeF() > 3) scale.setPointSizeF(scale.pointSizeF() - 2);
  painter.setFont(scale);
  WaveformView view{nullptr, WaveRect(), 0, LengthMs()};
  view.positionMs = positionMs_;
  view.hoverX = hoverX_;
  PaintRuler(painter, view);
  painter.setClipRect(rect().adjusted(2, 2, -2, -2));
  PaintPlayHead(painter, view);
  PaintHover(painter, view);
}

// Overlaps have a yellow background in both rows.
void ClipStrip::PaintOverlaps(QPainter& painter) const {
  const QRect wave = WaveRect();
  QColor ground(colour::kLit);
  ground.setAlphaF(0.13F);
  for (std::size_t clip = 0; clip + 1 < clips_.size(); ++clip) {
    const double from = XOf(clips_[clip + 1].startMs);
    const double to = XOf(clips_[clip].startMs + clips_[clip].lengthMs);
    if (to <= from) continue;
    painter.fillRect(QRectF(from, wave.top(), to - from, wave.height()), ground);
    painter.fillRect(QRectF(from - 0.5, wave.top(), 1, wave.height()), QColor(colour::kLit));
  }
}

void ClipStrip::PaintClip(QPainter& painter, std::size_t clip, const QRect& dirty) const {
  const QRect place = ClipRect(clip);
  painter.save();
  painter.setPen(QColor(colour::kRim));
  QColor ground(colour::kArrowGround);
  ground.setAlphaF(0.75F);
  painter.setBrush(ground);
  painter.drawRect(QRectF(place).adjusted(0.5, 0.5, -0.5, -0.5));
  painter.restore();
  const QRect name(place.left() + 4, place.top() + 1, place.width() - 6, NameHeight());
  WaveformView view;
  view.peaks = &peaks_[clip];
  view.wave = place.adjusted(1, NameHeight() + 1, -1, -2);
  view.lengthMs = clips_[clip].lengthMs;
  view.positionMs = positionMs_ - clips_[clip].startMs;
  view.mixMs = std::min(clips_[clip].mixMs, clips_[clip].lengthMs);
  if (view.wave.width() > 0 && peaks_[clip].Count() > 0) PaintWave(painter, view, dirty);
  painter.setFont(NameFont());
  painter.setPen(QColor(0xffe4e8ec));
  const QString text = painter.fontMetrics().elidedText(clips_[clip].name, Qt::ElideRight, name.width());
  if (name.width() > 12) painter.drawText(name, Qt::AlignLeft | Qt::AlignVCenter, text);
}

void ClipStrip::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() == QEvent::EnabledChange || event->type() == QEvent::FontChange) update();
}

// --- mouse and keys

void ClipStrip::RequestSeek(qint64 position) {
  if (!clips_.empty()) Q_EMIT seekRequested(std::clamp<qint64>(position, 0, LengthMs()));
}

void ClipStrip::mousePressEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton || clips_.empty()) return event->ignore();
  RequestSeek(MsAt(event->position().x()));
}

void ClipStrip::mouseMoveEvent(QMouseEvent* event) {
  if (clips_.empty()) return;
  hoverX_ = event->position().x();
  for (std::size_t clip = 0; clip < clips_.size(); ++clip) {
    if (ClipRect(clip).contains(event->position().toPoint())) setToolTip(clips_[clip].name);
  }
  update();
}

void ClipStrip::leaveEvent(QEvent* event) {
  QWidget::leaveEvent(event);
  hoverX_ = -1;
  update();
}

void ClipStrip::keyPressEvent(QKeyEvent* event) {
  switch (event->key()) {
    case Qt::Key_Left:
      return RequestSeek(positionMs_ - kStepMs);
    case Qt::Key_Right:
      return RequestSeek(positionMs_ + kStepMs);
    case Qt::Key_PageUp:
      return RequestSeek(positionMs_ - kTenSeconds);
    case Qt::Key_PageDown:
      return RequestSeek(positionMs_ + kTenSeconds);
    case Qt::Key_Home:
      return RequestSeek(0);
    case Qt::Key_End:
      return RequestSeek(LengthMs());
    case Qt::Key_Space:
      Q_EMIT playStopRequested();
      return;
    default:
      QWidget::keyPressEvent(event);
  }
}

}  // namespace controls

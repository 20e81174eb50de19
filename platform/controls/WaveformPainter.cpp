// SPDX-License-Identifier: MIT
#include "platform/controls/WaveformPainter.h"

#include "platform/controls/WaveformPeaks.h"
#include "platform/desktop/ThemeColours.h"

#include <QPainter>

#include <algorithm>
#include <array>
#include <cmath>

namespace controls {
namespace {

using namespace Qt::StringLiterals;
namespace colour = desktop::instrument;

constexpr double kPlayed = 0.8;         // brightness of the part that was played
constexpr double kOuttroGround = 0.15;  // share of yellow in the outtro's background
constexpr double kClosestNumbers = 60;  // logical pixels
constexpr qint64 kCloseMs = 5000;

QColor Darker(const QColor& shade) {
  return QColor::fromRgbF(shade.redF() * float(kPlayed), shade.greenF() * float(kPlayed),
                          shade.blueF() * float(kPlayed));
}

// Seconds between two numbers of the ruler, so that they do not overlap. Close up, each second may have one.
int RulerStep(double pixelsPerSecond, bool close) {
  if (close && pixelsPerSecond >= kClosestNumbers) return 1;
  static constexpr std::array<int, 12> kSteps{5, 10, 15, 30, 60, 120, 300, 600, 900, 1800, 3600, 7200};
  for (const int step : kSteps)
    if (step * pixelsPerSecond >= kClosestNumbers) return step;
  return kSteps.back() * 2;
}

struct ColumnColours {
  QColor peak, rms;
};

ColumnColours ColoursAt(qint64 ms, const WaveformView& view) {
  const bool outtro = view.mixMs > 0 && ms >= view.MixStart();
  const QColor peak(outtro ? colour::kOuttroPeak : colour::kPeak);
  const QColor rms(outtro ? colour::kOuttroRms : colour::kRms);
  if (ms >= view.positionMs) return {peak, rms};
  return {Darker(peak), Darker(rms)};
}

}  // namespace

double WaveformView::XOf(qint64 ms) const {
  const qint64 range = lastMs - firstMs;
  if (range <= 0) return wave.left();
  return wave.left() + wave.width() * (static_cast<double>(ms - firstMs) / static_cast<double>(range));
}

qint64 WaveformView::MsAt(double x) const {
  if (wave.width() <= 0) return firstMs;
  const double share = (x - wave.left()) / wave.width();
  const qint64 ms = firstMs + std::llround(share * static_cast<double>(lastMs - firstMs));
  return std::clamp(ms, firstMs, std::max(firstMs, lastMs));
}

void PaintWave(QPainter& painter, const WaveformView& view, const QRect& dirty) {
  const QRect& wave = view.wave;
  if (view.mixMs > 0) {
    QColor ground(colour::kLit);
    ground.setAlphaF(float(kOuttroGround));
    const double from = std::clamp<double>(view.XOf(view.MixStart()), wave.left(), wave.right() + 1);
    painter.fillRect(QRectF(from, wave.top(), wave.right() + 1 - from, wave.height()), ground);
  }
  // One column per device pixel.
  const double scale = painter.device()->devicePixelRatioF();
  const double middle = wave.top() + wave.height() / 2.0;
  const double half = wave.height() / 2.0 - 2;
  const QRect columns = dirty.intersected(wave);
  const int first = static_cast<int>(std::floor((columns.left() - wave.left()) * scale));
  const int last = static_cast<int>(std::ceil((columns.right() + 1 - wave.left()) * scale));
  const double length = std::max(1.0, static_cast<double>(view.lengthMs));
  for (int column = first; column < last; ++column) {
    const double x = wave.left() + column / scale;
    const auto [peak, known] = view.peaks->Between(static_cast<double>(view.MsAt(x)) / length,
                                                   static_cast<double>(view.MsAt(x + 1 / scale)) / length);
    if (!known) break;
    const ColumnColours colours = ColoursAt(view.MsAt(x), view);
    const double low = middle - double(peak.min) * half;
    const double high = middle - double(peak.max) * half;
    painter.fillRect(QRectF(x, high, 1 / scale, std::max(1 / scale, low - high)), colours.peak);
    const double rms = std::min(double(peak.rms), std::max(double(peak.max), -double(peak.min))) * half;
    painter.fillRect(QRectF(x, middle - rms, 1 / scale, 2 * rms), colours.rms);
  }
}

void PaintRuler(QPainter& painter, const WaveformView& view) {
  const double top = view.wave.bottom() + 1;
  painter.fillRect(QRectF(view.wave.left(), top, view.wave.width(), 1), QColor(colour::kRim));
  const double perSecond = view.wave.width() * 1000.0 / std::max(1.0, double(view.lastMs - view.firstMs));
  const int step = RulerStep(perSecond, view.lastMs - view.firstMs <= kCloseMs);
  const int tickEvery = std::max(1, step / 5);
  const QFontMetrics metrics = painter.fontMetrics();
  painter.setPen(QColor(colour::kRuler));
  for (qint64 second = (view.firstMs + 999) / 1000; second * 1000 <= view.lastMs; ++second) {
    if (second % tickEvery != 0) continue;
    const bool numbered = second % step == 0;
    const double x = view.XOf(second * 1000);
    painter.fillRect(QRectF(x - 0.5, top, 1, numbered ? 5 : 3), QColor(colour::kRuler));
    if (!numbered) continue;
    const QString text = TimeText(second * 1000, false);
    const double width = metrics.horizontalAdvance(text);
    const double left = std::max<double>(view.wave.left(), x - width / 2);
    if (left + width <= view.wave.right() + 6)
      painter.drawText(QPointF(left, top + kRulerHeight - metrics.descent() - 1), text);
  }
}

void PaintMixLine(QPainter& painter, const WaveformView& view, const QRect& flag) {
  const double x = view.XOf(view.MixStart());
  painter.fillRect(QRectF(x - 1, view.wave.top(), 2, view.wave.height()), QColor(colour::kLit));
  painter.fillRect(flag, QColor(colour::kLit));
  QFont bold = painter.font();
  bold.setWeight(QFont::Bold);
  painter.save();
  painter.setFont(bold);
  painter.setPen(QColor(colour::kGround));
  painter.drawText(flag, Qt::AlignCenter, u"MIX"_s);
  painter.restore();
}

void PaintPlayHead(QPainter& painter, const WaveformView& view) {
  const double x = view.XOf(view.positionMs);
  const double top = view.wave.top() - 3;
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.fillRect(QRectF(x - 0.75, top, 1.5, view.wave.bottom() + 1 - top), Qt::white);
  painter.setPen(Qt::NoPen);
  painter.setBrush(Qt::white);
  painter.drawPolygon(QPolygonF{QPointF(x - 5, top), QPointF(x + 5, top), QPointF(x, top + 6)});
  painter.restore();
}

void PaintHover(QPainter& painter, const WaveformView& view) {
  if (view.hoverX < view.wave.left() || view.hoverX > view.wave.right() + 1) return;
  painter.save();
  painter.setPen(QPen(QColor(255, 255, 255, 170), 1, Qt::DashLine));
  painter.drawLine(QPointF(view.hoverX, view.wave.top()), QPointF(view.hoverX, view.wave.bottom()));
  const QString text = TimeText(view.MsAt(view.hoverX), true);
  const QFontMetrics metrics = painter.fontMetrics();
  QRectF label(view.hoverX + 5, view.wave.bottom() - metrics.height() - 4, metrics.horizontalAdvance(text) + 10,
               metrics.height() + 2);
  if (label.right() > view.wave.right()) label.moveRight(view.hoverX - 5);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  painter.setBrush(QColor(0xffe4e8ec));
  painter.drawRoundedRect(label, 2, 2);
  painter.setPen(QColor(colour::kGround));
  painter.drawText(label, Qt::AlignCenter, text);
  painter.restore();
}

QString TimeText(qint64 ms, bool withMs) {
  const qint64 seconds = ms / 1000;
  const qint64 hours = seconds / 3600;
  const qint64 minutes = seconds / 60 % 60;
  QString text = hours > 0 ? u"%1:%2"_s.arg(hours).arg(minutes, 2, 10, QChar(u'0')) : QString::number(minutes);
  text += u":%1"_s.arg(seconds % 60, 2, 10, QChar(u'0'));
  if (withMs) text += u",%1"_s.arg(ms % 1000, 3, 10, QChar(u'0'));
  return text;
}

}  // namespace controls

// SPDX-License-Identifier: MIT
#include "platform/controls/LevelScale.h"

#include "platform/controls/AccessibleControls.h"
#include "platform/desktop/ThemeColours.h"

#include <QPainter>

#include <algorithm>

namespace controls {
namespace {

using namespace Qt::StringLiterals;

constexpr int kScaleIntervals = 10;
constexpr int kLong = 7;
constexpr int kShort = 4;

}  // namespace

LevelScale::LevelScale(QWidget* parent) : QWidget(parent) {
  RegisterAccessibleControls();
  setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
  setAccessibleDescription(u"\u221260 dB, \u221230 dB, 0 dB"_s);
}

void LevelScale::SetInset(int inset) {
  inset_ = inset;
  update();
}

QFont LevelScale::ScaleFont() const {
  QFont smaller = font();
  if (smaller.pointSizeF() > 3) smaller.setPointSizeF(smaller.pointSizeF() - 2);
  return smaller;
}

QSize LevelScale::sizeHint() const {
  return {120, 2 + kLong + QFontMetrics(ScaleFont()).height()};
}

void LevelScale::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const desktop::ThemeColours& colours = desktop::ThemeColoursFor(palette());
  painter.setFont(ScaleFont());
  const QFontMetrics metrics = painter.fontMetrics();
  const double room = width() - 2.0 * inset_;
  for (int step = 0; step <= kScaleIntervals; ++step) {
    const bool numbered = step % (kScaleIntervals / 2) == 0;
    const double x = inset_ + room * step / kScaleIntervals;
    painter.fillRect(QRectF(x - 0.5, 2, 1, numbered ? kLong : kShort), colours.hint);
    if (!numbered) continue;
    const int decibels = (step - kScaleIntervals) * 6;
    const QString label = decibels == 0 ? u"0 dB"_s : u"\u2212%1"_s.arg(-decibels);
    const int labelWidth = metrics.horizontalAdvance(label);
    const double left = std::clamp(x - labelWidth / 2.0, 0.0, double(width() - labelWidth));
    painter.setPen(colours.hint);
    painter.drawText(QPointF(left, 2 + kLong + metrics.ascent()), label);
  }
}

}  // namespace controls

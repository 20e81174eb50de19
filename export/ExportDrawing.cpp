// SPDX-License-Identifier: MIT
#include "export/ExportDrawing.h"

#include "platform/desktop/Icons.h"
#include "platform/desktop/ThemeColours.h"

#include <QPainter>

using namespace Qt::StringLiterals;

namespace {
constexpr int kDots = 9;
constexpr int kIconSide = 40;
constexpr int kDotStep = 21;
constexpr double kDotSide = 6;
constexpr double kHeadSide = 10;  // of the leading dot; the dot after it is between the two sizes
constexpr int kGap = 28;          // from an icon to the nearest dot
}  // namespace

ExportDrawing::ExportDrawing(QWidget* parent) : QWidget(parent) {
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
}

void ExportDrawing::SetProgress(double progress) {
  progress_ = qBound(0.0, progress, 1.0);
  update();
}

QSize ExportDrawing::sizeHint() const {
  return {2 * (kIconSide + kGap) + (kDots - 1) * kDotStep, 64};
}
QSize ExportDrawing::minimumSizeHint() const {
  return {sizeHint().width(), kIconSide};
}

void ExportDrawing::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const desktop::ThemeColours& colours = desktop::ThemeColoursFor(palette());
  const int dotsWidth = (kDots - 1) * kDotStep;
  const int middle = height() / 2;
  const int firstDot = (width() - dotsWidth) / 2;
  const QRect station(firstDot - kGap - kIconSide, middle - kIconSide / 2, kIconSide, kIconSide);
  desktop::PaintIcon(painter, station, u"radio"_s, colours.hint);
  desktop::PaintIcon(painter, station.translated(dotsWidth + 2 * kGap + kIconSide, 0), u"log"_s, colours.hint);
  const int head = qRound(progress_ * kDots) - 1;
  painter.setPen(Qt::NoPen);
  for (int dot = 0; dot < kDots; ++dot) {
    const double side = dot == head ? kHeadSide : dot == head - 1 ? (kDotSide + kHeadSide) / 2 : kDotSide;
    painter.setBrush(dot <= head ? colours.accent : colours.line);
    painter.drawRoundedRect(QRectF(firstDot + dot * kDotStep - side / 2, middle - side / 2, side, side), 1, 1);
  }
}

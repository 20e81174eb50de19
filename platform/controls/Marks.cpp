// SPDX-License-Identifier: MIT
#include "platform/controls/Marks.h"

#include "platform/desktop/ThemeColours.h"

#include <QPainter>
#include <QPalette>

#include <algorithm>

namespace controls {

QColor ToneColour(LineTone tone, const QPalette& palette) {
  const desktop::ThemeColours& colours = desktop::ThemeColoursFor(palette);
  switch (tone) {
    case LineTone::Runs:
      return colours.runs;
    case LineTone::Begins:
      return colours.begins;
    case LineTone::Ends:
      return colours.ends;
    case LineTone::Wrong:
      return colours.wrong;
    case LineTone::Quiet:
      break;
  }
  return colours.over;
}

void PaintMark(QPainter& painter, const QRectF& rect, LineMark mark, const QColor& colour) {
  // Coordinates are in a 14 x 14 square around the origin.
  const double side = std::min(rect.width(), rect.height());
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.translate(rect.center());
  painter.scale(side / kMarkSize, side / kMarkSize);
  const QPen stroke(colour, 2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
  painter.setPen(Qt::NoPen);
  painter.setBrush(colour);
  switch (mark) {
    case LineMark::None:
      break;
    case LineMark::Circle:
      painter.drawEllipse(QPointF(), 5, 5);
      break;
    case LineMark::Clock:
      painter.setPen(stroke);
      painter.setBrush(Qt::NoBrush);
      painter.drawEllipse(QPointF(), 4.6, 4.6);
      painter.setPen(QPen(colour, 1.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
      painter.drawPolyline(QPolygonF{QPointF(0, -2.6), QPointF(0, 0), QPointF(2.4, 0)});
      break;
    case LineMark::Triangle:
      painter.setPen(QPen(colour, 1.2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
      painter.drawPolygon(QPolygonF{QPointF(0, -5), QPointF(5.8, 5), QPointF(-5.8, 5)});
      break;
    case LineMark::Square:
      painter.drawRoundedRect(QRectF(-4.5, -4.5, 9, 9), 1.2, 1.2);
      break;
    case LineMark::Dash:
      painter.drawRoundedRect(QRectF(-5, -1.25, 10, 2.5), 1, 1);
      break;
    case LineMark::Cross:
      painter.setPen(QPen(colour, 2.4, Qt::SolidLine, Qt::FlatCap));
      painter.drawLine(QPointF(-4.8, -4.8), QPointF(4.8, 4.8));
      painter.drawLine(QPointF(4.8, -4.8), QPointF(-4.8, 4.8));
      break;
  }
  painter.restore();
}

}  // namespace controls

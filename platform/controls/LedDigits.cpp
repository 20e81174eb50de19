// SPDX-License-Identifier: MIT
#include "platform/controls/LedDigits.h"

#include "platform/desktop/ThemeColours.h"

#include <QPainter>
#include <QPolygonF>

#include <array>

namespace controls {
namespace {

// As shares of the digit height.
constexpr double kWidth = 0.54;
constexpr double kAdvance = 0.70;
constexpr double kStroke = 0.125;
constexpr double kSlant = 0.09;
constexpr double kGapOfStroke = 0.1;

//      a
//    f   b
//      g
//    e   c
//      d
enum Segment { kA = 1, kB = 2, kC = 4, kD = 8, kE = 16, kF = 32, kG = 64 };

constexpr std::array<int, 10> kDigits{
    kA | kB | kC | kD | kE | kF,       // 0
    kB | kC,                           // 1
    kA | kB | kD | kE | kG,            // 2
    kA | kB | kC | kD | kG,            // 3
    kB | kC | kF | kG,                 // 4
    kA | kC | kD | kF | kG,            // 5
    kA | kC | kD | kE | kF | kG,       // 6
    kA | kB | kC,                      // 7
    kA | kB | kC | kD | kE | kF | kG,  // 8
    kA | kB | kC | kD | kF | kG,       // 9
};

// One bar with six corners between two points, on an upright digit of height 1.
QPolygonF Bar(QPointF from, QPointF to) {
  const bool lying = from.y() == to.y();
  const double half = kStroke / 2;
  const double gap = kStroke * kGapOfStroke;
  const QPointF along = lying ? QPointF(1, 0) : QPointF(0, 1);
  const QPointF across = lying ? QPointF(0, half) : QPointF(half, 0);
  const QPointF start = from + along * gap;
  const QPointF end = to - along * gap;
  return {{start, start + along * half - across, end - along * half - across, end, end - along * half + across,
           start + along * half + across}};
}

struct Shape {
  Segment segment;
  QPolygonF bar;
};

std::array<Shape, 7> MakeShapes() {
  const double left = kStroke / 2;
  const double right = kWidth - kStroke / 2;
  const double top = kStroke / 2;
  const double middle = 0.5;
  const double foot = 1 - kStroke / 2;
  return {{{kA, Bar({left, top}, {right, top})},
           {kB, Bar({right, top}, {right, middle})},
           {kC, Bar({right, middle}, {right, foot})},
           {kD, Bar({left, foot}, {right, foot})},
           {kE, Bar({left, middle}, {left, foot})},
           {kF, Bar({left, top}, {left, middle})},
           {kG, Bar({left, middle}, {right, middle})}}};
}

// Transforms a digit of height 1 to a slanted one within its cell.
QTransform Cell(const QPointF& place, double height) {
  const double side = (kAdvance - kWidth) / 2;
  QTransform transform;
  transform.translate(place.x(), place.y());
  transform.scale(height, height);
  transform.translate(side, 0);
  transform.translate(0, 0.5);
  transform.shear(-kSlant, 0);
  transform.translate(0, -0.5);
  return transform;
}

}  // namespace

double LedAdvance(double digitHeight) {
  return kAdvance * digitHeight;
}

void PaintLedDigits(QPainter& painter, const QPointF& place, double digitHeight, const QString& digits) {
  static const std::array<Shape, 7> kShapes = MakeShapes();
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  const QTransform upright = painter.transform();
  for (qsizetype i = 0; i < digits.size(); ++i) {
    const int value = digits[i].digitValue();
    const int lit = value >= 0 ? kDigits[static_cast<std::size_t>(value)] : 0;
    const QPointF cell(place.x() + static_cast<double>(i) * LedAdvance(digitHeight), place.y());
    painter.setTransform(Cell(cell, digitHeight) * upright);
    for (const Shape& shape : kShapes) {
      painter.setBrush(QColor((lit & shape.segment) != 0 ? desktop::instrument::kLit : desktop::instrument::kUnlit));
      painter.drawPolygon(shape.bar);
    }
  }
  painter.restore();
}

void PaintLedSign(QPainter& painter, const QPointF& topOfGap, double digitHeight, QChar sign) {
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  painter.setBrush(QColor(desktop::instrument::kLit));
  const double radius = kStroke * digitHeight / 2 * 1.1;
  const auto dot = [&](double share) {
    const double lean = kSlant * (0.5 - share) * digitHeight;
    painter.drawEllipse(topOfGap + QPointF(lean, share * digitHeight), radius, radius);
  };
  if (sign == u':') {
    dot(0.3);
    dot(0.7);
  } else {
    dot(1 - kStroke / 2);
  }
  painter.restore();
}

}  // namespace controls

// SPDX-License-Identifier: MIT
#pragma once

#include <QPointF>
#include <QString>

class QPainter;

// Seven-segment digits. All sizes are proportional to the digit height, in logical pixels.
namespace controls {

// Distance between two digits.
double LedAdvance(double digitHeight);

// Paints digits from left to right; `place` is the top left of the first cell. A blank is painted as an unlit 8.
void PaintLedDigits(QPainter& painter, const QPointF& place, double digitHeight, const QString& digits);

// Paints ':' or '.' centred in a gap, on the digits' base line.
void PaintLedSign(QPainter& painter, const QPointF& topOfGap, double digitHeight, QChar sign);

}  // namespace controls

// SPDX-License-Identifier: MIT
#pragma once

#include <QPointF>
#include <QString>

class QPainter;

// Seven-segment digits. All measures follow from the digit's height.
namespace controls {

// How far one digit stands from the next.
double LedAdvance(double digitHeight);

// Paints digits from left to right, the first cell's left top at `place`. A blank shows an unlit 8.
void PaintLedDigits(QPainter& painter, const QPointF& place, double digitHeight, const QString& digits);

// Paints ':' or '.' in the middle of a gap, standing on the digits' foot.
void PaintLedSign(QPainter& painter, const QPointF& topOfGap, double digitHeight, QChar sign);

}  // namespace controls

// SPDX-License-Identifier: MIT
#pragma once

#include "platform/controls/ListLine.h"

#include <QColor>

class QPainter;
class QPalette;
class QRectF;

namespace controls {

inline constexpr int kMarkSize = 14;

// The colour of a tone, for the background of lists.
QColor ToneColour(LineTone tone, const QPalette& palette);

// Paints a mark in the centre of `rect`, as large as its shorter side.
void PaintMark(QPainter& painter, const QRectF& rect, LineMark mark, const QColor& colour);

}  // namespace controls

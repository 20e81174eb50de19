// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>
#include <QIcon>
#include <QString>
#include <QStringList>

class QPainter;
class QRect;

namespace desktop {

// The colour of an icon's lines. It is read from the palette while painting, so icons follow a palette change.
// OnHighlight is the text colour of a selected line.
enum class IconTint { Text, Accent, Danger, Warning, Quiet, OnHighlight };

// One of the program's icons by its name ("nieuw", "open", "play", ...). A null icon for an unknown name.
QIcon Icon(const QString& name, IconTint tint = IconTint::Text);

// The program's icon in all usual sizes.
QIcon AppIcon();

// All names that Icon() accepts.
QStringList IconNames();

// Paints an icon's shape in one colour, centred in `rect` as a square of its shorter side.
void PaintIcon(QPainter& painter, const QRect& rect, const QString& name, const QColor& colour);

}  // namespace desktop

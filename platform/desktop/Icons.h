// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>
#include <QIcon>
#include <QString>
#include <QStringList>

class QPainter;
class QRect;

namespace desktop {

// What an icon's lines are drawn in. The colour itself is looked up while painting, so icons follow the palette.
// OnHighlight: the colour of texts on a selected line.
enum class IconTint { Text, Accent, Danger, Warning, Quiet, OnHighlight };

// One of the program's own icons by its name ("nieuw", "open", "play", ...). An unknown name gives a null icon.
QIcon Icon(const QString& name, IconTint tint = IconTint::Text);

// The program's icon in all usual sizes.
QIcon AppIcon();

// All names that Icon() knows.
QStringList IconNames();

// Paints an icon's shape in one colour, centred in `rect` as a square of its shorter side.
void PaintIcon(QPainter& painter, const QRect& rect, const QString& name, const QColor& colour);

}  // namespace desktop

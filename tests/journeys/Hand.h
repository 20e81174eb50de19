// SPDX-License-Identifier: MIT
#pragma once

#include <QPoint>
#include <QString>

class QWidget;

// Mouse and key events posted to the real controls, as the desktop would deliver them. Nothing waits; the event loop
// handles them later. User-interface thread only.
namespace hand {

// A click with the left button where the control reacts to it.
void Click(QWidget& control);
void ClickAt(QWidget& control, QPoint at);
void DoubleClick(QWidget& control, QPoint at);
void Press(QWidget& control, int key);
// Selects the field's text and types over it.
void Replace(QWidget& field, const QString& text);

}  // namespace hand

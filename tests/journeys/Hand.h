// SPDX-License-Identifier: MIT
#pragma once

#include <QPoint>
#include <QString>

class QWidget;

// A user's hand at the real controls: mouse and key events posted to the widget, as the desktop would deliver them.
// Nothing is waited for; the events are handled when the event loop comes to them. User-interface thread only.
namespace hand {

// A click with the left button where the control reacts to one.
void Click(QWidget& control);
void ClickAt(QWidget& control, QPoint at);
void DoubleClick(QWidget& control, QPoint at);
void Press(QWidget& control, int key);
// Selects all of the field's text and types over it.
void Replace(QWidget& field, const QString& text);

}  // namespace hand

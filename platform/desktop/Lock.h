// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>

class QWidget;

namespace desktop {

// Locks or unlocks a text box, date box or combo: a locked one shows its value in the button-face colour, can be
// focused and copied from, but not changed by the user; an unlocked one has the colour of window backgrounds
// (QPalette::Button and QPalette::Base). The colours follow a change of palette. The program may set values in either
// state.
void SetLocked(QWidget* field, bool locked);
bool IsLocked(const QWidget* field);

// The background that the field has now.
QColor FieldBackground(const QWidget* field);

}  // namespace desktop

// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>

class QWidget;

namespace desktop {

// Makes a text box, date box or combo box read-only or editable. When locked it has the background QPalette::Button,
// can be focused and its text copied, but not changed by the user; otherwise it has QPalette::Base. The colours follow
// a palette change. The program can set values in either state.
void SetLocked(QWidget* field, bool locked);
bool IsLocked(const QWidget* field);

// The field's current background.
QColor FieldBackground(const QWidget* field);

}  // namespace desktop

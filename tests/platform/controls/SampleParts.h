// SPDX-License-Identifier: MIT
#pragma once

#include "platform/desktop/Icons.h"

#include <QString>

class QFrame;
class QLabel;
class QPushButton;

// Parts of the sample windows. Each is owned by the layout's parent widget.
namespace samples {

QPushButton* Button(const QString& text, const QString& icon = {}, desktop::IconTint tint = desktop::IconTint::Text);
QLabel* Hint(const QString& text);
QFrame* Line();

}  // namespace samples

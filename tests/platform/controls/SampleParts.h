// SPDX-License-Identifier: MIT
#pragma once

#include "platform/desktop/Icons.h"

#include <QString>

class QFrame;
class QLabel;
class QPushButton;

// What the sample windows are put together from. Each belongs to the layout it is put into.
namespace samples {

QPushButton* Button(const QString& text, const QString& icon = {}, desktop::IconTint tint = desktop::IconTint::Text);
QLabel* Hint(const QString& text);
QFrame* Line();

}  // namespace samples

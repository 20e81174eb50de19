// SPDX-License-Identifier: MIT
#pragma once

#include <QMimeData>
#include <QStringList>
#include <QWidget>

namespace testing_support {

// Drags onto the middle of a shown control and lets go there: enter, move and drop, as they come from the desktop to
// the control's window. Whether the drop was taken. What a drop sets off runs before this returns.
bool DropOn(QWidget& target, const QMimeData& data);
// The same with files (host paths).
bool DropFilesOn(QWidget& target, const QStringList& files);

// Takes hold of something at one place of a shown control and lets it go at another, step by step with the button down.
void Drag(QWidget& target, QPoint from, QPoint to);

}  // namespace testing_support

// SPDX-License-Identifier: MIT
#pragma once

#include <QMimeData>
#include <QStringList>
#include <QWidget>

namespace testing_support {

// Drags to the middle of a visible control and drops there: enter, move and drop events as the desktop sends them to
// the control's window. Returns whether the drop was accepted. The effects of a drop are complete when this returns.
bool DropOn(QWidget& target, const QMimeData& data);
// The same with files (host paths).
bool DropFilesOn(QWidget& target, const QStringList& files);

// Drags from one place of a visible control to another, step by step with the button down.
void Drag(QWidget& target, QPoint from, QPoint to);

}  // namespace testing_support

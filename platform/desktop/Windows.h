// SPDX-License-Identifier: MIT
#pragma once

class QWidget;

namespace desktop {

// Returns `owner`, or if that is null the active modal window, or else the active window; null when there is none.
QWidget* OwnerOrActive(QWidget* owner);

// Processes pending events of every kind, including clicks and keys, so that a stop button works between two steps.
void YieldToEvents();

// Processes pending events except clicks and keys, so that windows repaint during a long operation.
void RepaintWindows();

}  // namespace desktop

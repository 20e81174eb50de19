// SPDX-License-Identifier: MIT
#pragma once

namespace desktop {

// Processes pending events of every kind, including clicks and keys, so that a stop button works between two steps.
void YieldToEvents();

// Processes pending events except clicks and keys, so that windows repaint during a long operation.
void RepaintWindows();

}  // namespace desktop

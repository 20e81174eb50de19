// SPDX-License-Identifier: MIT
#pragma once

namespace desktop {

// Lets waiting events of every kind be handled, also clicks and keys: a "stop" button works between two steps.
void YieldToEvents();

// Lets windows repaint, but leaves clicks and keys waiting: for the steps of a long copy.
void RepaintWindows();

}  // namespace desktop

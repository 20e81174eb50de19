// SPDX-License-Identifier: MIT
#pragma once

class QWidget;

namespace desktop {

// Returns `owner`, or if that is null the active modal window, or else the active window; null when there is none.
QWidget* OwnerOrActive(QWidget* owner);

}  // namespace desktop

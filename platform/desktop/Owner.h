// SPDX-License-Identifier: MIT
#pragma once

class QWidget;

namespace desktop {

// The window a box belongs to: `owner`, or without one the active modal window, or the active one, or none.
QWidget* OwnerOrActive(QWidget* owner);

}  // namespace desktop

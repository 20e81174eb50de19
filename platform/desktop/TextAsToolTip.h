// SPDX-License-Identifier: MIT
#pragma once

class QLineEdit;

namespace desktop {

// Makes the field's text its tool tip too, for texts that may not fit, such as a path. While the field is empty it has
// its original tool tip.
void ShowTextAsToolTip(QLineEdit* field);

}  // namespace desktop

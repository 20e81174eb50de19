// SPDX-License-Identifier: MIT
#pragma once

class QLineEdit;

namespace desktop {

// Tells the text of a field that may be too short for it, such as a path, as its tool tip too. The field's own tool tip
// comes back while it is empty.
void ShowTextAsToolTip(QLineEdit* field);

}  // namespace desktop

// SPDX-License-Identifier: MIT
#pragma once

namespace controls {

// Makes the controls of this folder known to screen readers: role, value with its limits, and the value as text. Their
// constructors call it; only the first call has an effect.
void RegisterAccessibleControls();

}  // namespace controls

// SPDX-License-Identifier: MIT
#pragma once

#include <QPalette>

namespace desktop {

QPalette LightPalette();
QPalette DarkPalette();

}  // namespace desktop

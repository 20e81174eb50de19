// SPDX-License-Identifier: MIT
#include "platform/controls/QuietLine.h"

#include "platform/desktop/ThemeColours.h"

namespace controls {

QColor QuietLine::Colour() const {
  return desktop::ThemeColoursFor(palette()).hint;
}

}  // namespace controls

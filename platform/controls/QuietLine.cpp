// SPDX-License-Identifier: MIT
#include "platform/controls/QuietLine.h"

#include "platform/desktop/Tokens.h"

namespace controls {

QColor QuietLine::Colour() const {
  return desktop::TokensFor(palette()).hint;
}

}  // namespace controls

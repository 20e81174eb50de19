// SPDX-License-Identifier: MIT
#pragma once

#include <QFont>

namespace desktop {

// The same font at `factor` times its size, which must be in points.
inline QFont ScaledFont(QFont font, double factor, QFont::Weight weight) {
  font.setPointSizeF(font.pointSizeF() * factor);
  font.setWeight(weight);
  return font;
}

}  // namespace desktop

// SPDX-License-Identifier: MIT
#pragma once

#include <QFont>

namespace desktop {

// The font at `factor` times its size, in `weight`. The font's size must be in points.
inline QFont ScaledFont(QFont font, double factor, QFont::Weight weight) {
  font.setPointSizeF(font.pointSizeF() * factor);
  font.setWeight(weight);
  return font;
}

}  // namespace desktop

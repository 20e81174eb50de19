// SPDX-License-Identifier: MIT
#pragma once

#include "platform/controls/ElidedLine.h"

namespace controls {

// A line of text in the hint colour, such as the count below a list.
class QuietLine : public ElidedLine {
  Q_OBJECT

 public:
  using ElidedLine::ElidedLine;

 protected:
  QColor Colour() const override;
};

}  // namespace controls

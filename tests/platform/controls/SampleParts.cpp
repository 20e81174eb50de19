// SPDX-License-Identifier: MIT
#include "tests/platform/controls/SampleParts.h"

#include <QFrame>
#include <QLabel>
#include <QPushButton>

namespace samples {

QPushButton* Button(const QString& text, const QString& icon, desktop::IconTint tint) {
  auto* button = new QPushButton(text);
  button->setAutoDefault(false);
  if (!icon.isEmpty()) {
    button->setIcon(desktop::Icon(icon, tint));
    button->setProperty("textBesideIcon", true);
  }
  return button;
}

QLabel* Hint(const QString& text) {
  auto* label = new QLabel(text);
  label->setProperty("hint", true);
  return label;
}

QFrame* Line() {
  auto* line = new QFrame;
  line->setFrameShape(QFrame::HLine);
  return line;
}

}  // namespace samples

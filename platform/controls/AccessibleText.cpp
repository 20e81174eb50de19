// SPDX-License-Identifier: MIT
#include "platform/controls/AccessibleText.h"

#include <QRect>

namespace controls {

void AccessibleText::selection(int, int* startOffset, int* endOffset) const {
  *startOffset = 0;
  *endOffset = 0;
}

void AccessibleText::addSelection(int, int) {}
void AccessibleText::removeSelection(int) {}
void AccessibleText::setSelection(int, int, int) {}
void AccessibleText::setCursorPosition(int) {}
void AccessibleText::scrollToSubstring(int, int) {}

QString AccessibleText::text(int startOffset, int endOffset) const {
  return ShownText().mid(startOffset, endOffset < 0 ? -1 : endOffset - startOffset);
}

int AccessibleText::characterCount() const {
  return static_cast<int>(ShownText().size());
}

QRect AccessibleText::characterRect(int) const {
  return {};
}

int AccessibleText::offsetAtPoint(const QPoint&) const {
  return -1;
}

QString AccessibleText::attributes(int, int* startOffset, int* endOffset) const {
  *startOffset = 0;
  *endOffset = characterCount();
  return {};
}

}  // namespace controls

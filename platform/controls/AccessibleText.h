// SPDX-License-Identifier: MIT
#pragma once

#include <QAccessible>

namespace controls {

// Read-only text without a cursor or selection, for a control whose value is drawn.
class AccessibleText : public QAccessibleTextInterface {
 public:
  // The complete text.
  virtual QString ShownText() const = 0;

  void selection(int selectionIndex, int* startOffset, int* endOffset) const override;
  int selectionCount() const override { return 0; }
  void addSelection(int startOffset, int endOffset) override;
  void removeSelection(int selectionIndex) override;
  void setSelection(int selectionIndex, int startOffset, int endOffset) override;
  int cursorPosition() const override { return 0; }
  void setCursorPosition(int position) override;
  QString text(int startOffset, int endOffset) const override;
  int characterCount() const override;
  QRect characterRect(int offset) const override;
  int offsetAtPoint(const QPoint& point) const override;
  void scrollToSubstring(int startIndex, int endIndex) override;
  QString attributes(int offset, int* startOffset, int* endOffset) const override;
};

}  // namespace controls

// SPDX-License-Identifier: MIT
#pragma once

#include <QComboBox>

#include <vector>

namespace controls {

// A drop-down list of text lines, each with a number (ItemData). After filling, nothing is selected (ListIndex -1).
// Connect to currentIndexChanged: it is emitted when the user or the program changes the selection. The tool tip shows
// a selected text that does not fit.
class ComboBox : public QComboBox {
  Q_OBJECT

 public:
  struct Line {
    QString text;
    qint64 itemData = 0;
  };

  explicit ComboBox(QWidget* parent = nullptr);

  // Adds a line at the end and returns its index. Emits nothing.
  int AddItem(const QString& text, qint64 itemData = 0);
  // Removes all lines and the selection. Emits nothing.
  void Clear();
  // Replaces all lines and selects the line with the same number, without a signal. If there is none, nothing is
  // selected, and the change is signalled.
  void Refill(const std::vector<Line>& lines);

  int ListCount() const { return count(); }
  int ListIndex() const { return currentIndex(); }
  // -1 selects nothing. Throws runtime::Error for an index out of range.
  void SetListIndex(int index);
  // The number of a line. Throws runtime::Error for an index out of range, so also for ListIndex() while nothing is
  // selected.
  qint64 ItemData(int index) const;
  QString Text(int index) const;
  // Selects the first line with this number and returns true; without one, selects nothing and returns false.
  bool SelectWhereItemData(qint64 itemData);

  // The list is as wide as its longest line, limited by the screen.
  void showPopup() override;

 protected:
  bool event(QEvent* event) override;

 private:
  bool IsTextCut() const;
  int IndexOf(qint64 itemData) const;
};

}  // namespace controls

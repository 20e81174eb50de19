// SPDX-License-Identifier: MIT
#pragma once

#include <QComboBox>

#include <vector>

namespace controls {

// A drop-down list of text lines, each with a number of its own (ItemData). A filled one has no choice (ListIndex -1)
// until one is set. Listen to currentIndexChanged: it fires when the choice changes, by hand or by program. A choice
// that does not fit is told in full by the tool tip.
class ComboBox : public QComboBox {
  Q_OBJECT

 public:
  struct Line {
    QString text;
    qint64 itemData = 0;
  };

  explicit ComboBox(QWidget* parent = nullptr);

  // Adds a line at the end and returns its index. Fires nothing.
  int AddItem(const QString& text, qint64 itemData = 0);
  // Removes all lines and the choice. Fires nothing.
  void Clear();
  // Replaces all lines. The choice goes to the line with the same number, without firing; when there is no such line
  // the choice is lost, which fires.
  void Refill(const std::vector<Line>& lines);

  int ListCount() const { return count(); }
  int ListIndex() const { return currentIndex(); }
  // -1: no choice. Throws runtime::Error for an index out of range.
  void SetListIndex(int index);
  // The number of a line. Throws runtime::Error for an index out of range, so also for ListIndex() while nothing is
  // chosen.
  qint64 ItemData(int index) const;
  QString Text(int index) const;
  // Chooses the first line with this number; without one there is no choice. Whether there was one.
  bool SelectWhereItemData(qint64 itemData);

  // The list is as wide as its longest line, where the screen allows it.
  void showPopup() override;

 protected:
  bool event(QEvent* event) override;

 private:
  bool IsTextCut() const;
  int IndexOf(qint64 itemData) const;
};

}  // namespace controls

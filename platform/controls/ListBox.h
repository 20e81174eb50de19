// SPDX-License-Identifier: MIT
#pragma once

#include "platform/controls/ListLine.h"

#include <QListView>
#include <QPersistentModelIndex>

#include <functional>
#include <limits>
#include <optional>
#include <vector>

namespace controls {

class LineDelegate;
class LineModel;
class ListHeader;

// A list of text lines, each with a number (ItemData). An index counts all lines from 0, including hidden ones.
// ListIndex is the selected line, -1 = none, independent of Qt's current item. When the selected line is removed or the
// list is filled again, the next arrow key continues at its position. In a markable list the user marks several lines
// with Ctrl, Shift or Ctrl+A; ListIndex is then the marked line that was selected last. Fast with 100 000 lines.
class ListBox : public QListView {
  Q_OBJECT
  Q_PROPERTY(int rowHeight READ RowHeight WRITE SetRowHeight)
  Q_PROPERTY(bool numbered READ IsNumbered WRITE SetNumbered)
  Q_PROPERTY(bool movable READ IsMovable WRITE SetMovable)
  Q_PROPERTY(bool markable READ IsMarkable WRITE SetMarkable)
  Q_PROPERTY(QString emptyText READ EmptyText WRITE SetEmptyText)

 public:
  struct Line {
    QString text;
    qint64 itemData = 0;
    LineDetails details = {};
  };

  explicit ListBox(QWidget* parent = nullptr);

  // Adds a line at the end and returns its index.
  int AddItem(const QString& text, qint64 itemData = 0);
  // Adds many lines, faster than one by one.
  void AddItems(std::vector<Line> lines);
  // Removes all lines and the selection. Emits nothing.
  void Clear();
  // Throws runtime::Error for an index out of range, as do ItemData, Text, SetText, SetItemData and SetDetails.
  void RemoveItem(int index);
  int ListCount() const;

  int ListIndex() const;
  // Selects a line; -1 = none. Emits clicked() when another line becomes selected. Throws runtime::Error for a hidden
  // line or an index out of range.
  void SetListIndex(int index);
  // Selects the first line with this number and returns true; without one, selects nothing and returns false.
  bool SelectWhereItemData(qint64 itemData);

  // The marked lines in the order shown, with ListIndex; only that one in a list that is not markable.
  std::vector<int> Marked() const;
  int MarkedCount() const;
  // Marks these lines lightly as those edited last, without selecting them: scrolls to the first, and the next arrow
  // key selects it. Hidden lines are skipped. Until the next call, the next selection or Clear.
  void ShowEdited(const std::vector<int>& indexes);

  QString Text(int index) const;
  void SetText(int index, const QString& text);
  qint64 ItemData(int index) const;
  void SetItemData(int index, qint64 itemData);
  const LineDetails& Details(int index) const;
  void SetDetails(int index, LineDetails details);

  // Hides the lines whose text does not contain `text`, ignoring letter case; empty shows all. A hidden line is
  // deselected.
  void SetFilterText(const QString& text);
  // Also hides the lines for which `shows` returns false; null shows all.
  void SetFilter(std::function<bool(int index)> shows);
  // Filters again after data used by the predicate changed.
  void Refilter();
  int ShownCount() const;
  bool IsShown(int index) const;
  // The index of the line shown in that row, 0 to ShownCount() - 1.
  int ShownLine(int row) const;

  // Captions above the columns; a click on one, or Ctrl and its number, emits sortRequested(). Empty texts: no caption.
  void SetCaptions(const ColumnTexts& captions);
  // Shows the lines in the order of these keys (LineModel::SetOrder) and an arrow at the column. The indexes of lines
  // do not change, and the selected lines stay selected and in sight.
  void SetOrder(LineColumn column, std::vector<qint64> keys, bool descending);
  static constexpr qint64 kNoKey = std::numeric_limits<qint64>::max();

  // Moves one line and selects it. Emits lineMoved().
  void MoveLine(int from, int to);

  int RowHeight() const;
  void SetRowHeight(int height);  // logical pixels for a 10 pt font; scales with the font
  bool IsNumbered() const;
  void SetNumbered(bool numbered);  // shows a number, from 1, before each line
  bool IsMovable() const { return movable_; }
  void SetMovable(bool movable);  // the user moves lines with Alt+Up/Down and by dragging
  bool IsMarkable() const { return selectionMode() == ExtendedSelection; }
  void SetMarkable(bool markable) { setSelectionMode(markable ? ExtendedSelection : SingleSelection); }
  // Framed in the accent colour: what is dragged may be dropped here.
  bool IsDropTarget() const { return dropTarget_; }
  void SetDropTarget(bool target);
  QString EmptyText() const { return emptyText_; }
  void SetEmptyText(const QString& text);  // shown centred while no line is visible

 Q_SIGNALS:
  // Another line was selected, by the user or by the program. Not emitted by filling or clearing.
  void clicked();
  void doubleClicked();
  // The selected line was hidden by a filter, or deselected by SetListIndex(-1).
  void selectionLost();
  void lineMoved(int from, int to);
  // Other lines are marked, by the user or by a filter. Not emitted by filling or clearing.
  void markedChanged();
  void sortRequested(controls::LineColumn column);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void showEvent(QShowEvent* event) override;
  void dropEvent(QDropEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void changeEvent(QEvent* event) override;
  void selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) override;
  QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex& index, const QEvent* event) const override;

 private:
  struct Place {
    int row = 0;
    std::optional<qint64> itemData;  // of the removed line, if it may be added again
  };

  struct Selection {
    int listIndex = -1;
    std::vector<int> marked;
  };

  void PaintDropTarget();
  void PlaceHeader();
  void SelectSilently(int index);
  void SelectOnly(int row);
  void FollowSelection();
  Selection CurrentSelection() const { return {ListIndex(), Marked()}; }
  void MoveSelected(int step);
  bool SelectFromNothing(int key);
  int RowToContinueAt() const;
  QItemSelection RowsOf(const std::vector<int>& indexes) const;
  void RestoreAfterFilter(const Selection& before);

  LineModel* lines_;
  LineDelegate* delegate_;
  ListHeader* header_ = nullptr;
  std::vector<int> edited_;  // see ShowEdited
  bool movable_ = false;
  bool silent_ = false;
  bool dropTarget_ = false;
  int announced_ = -1;          // the selected line according to the last signal
  QPersistentModelIndex last_;  // the line selected last
  std::optional<Place> place_;  // of the line that was selected last; none while one is selected
  QString emptyText_;
};

}  // namespace controls

// SPDX-License-Identifier: MIT
#pragma once

#include "platform/controls/ListLine.h"

#include <QListView>

#include <functional>
#include <optional>
#include <vector>

namespace controls {

class LineDelegate;
class LineModel;

// A list of text lines, each with a number of its own (ItemData). An index counts all lines from 0, hidden ones too.
// ListIndex is the selected line, none = -1, whatever line the keyboard cursor stands on. Once the selected line is
// gone, filled anew or removed, the first step of the keyboard goes on at its place. Quick with 100 000 lines.
class ListBox : public QListView {
  Q_OBJECT
  Q_PROPERTY(int rowHeight READ RowHeight WRITE SetRowHeight)
  Q_PROPERTY(bool numbered READ IsNumbered WRITE SetNumbered)
  Q_PROPERTY(bool movable READ IsMovable WRITE SetMovable)
  Q_PROPERTY(QString emptyText READ EmptyText WRITE SetEmptyText)

 public:
  struct Line {
    QString text;
    qint64 itemData = 0;
  };

  explicit ListBox(QWidget* parent = nullptr);

  // Adds a line at the end and returns its index.
  int AddItem(const QString& text, qint64 itemData = 0);
  // The quick way to add many.
  void AddItems(std::vector<Line> lines);
  // Removes all lines; nothing is selected then. Fires nothing.
  void Clear();
  // Throws runtime::Error for an index out of range, as ItemData, Text, SetText, SetItemData and SetDetails do.
  void RemoveItem(int index);
  int ListCount() const;

  int ListIndex() const;
  // Selects a line, -1 none. Fires clicked() when another line becomes the selected one. Selecting a hidden line, or an
  // index out of range, throws runtime::Error.
  void SetListIndex(int index);
  // Selects the first line with this number, none when there is none; whether there was one.
  bool SelectWhereItemData(qint64 itemData);

  QString Text(int index) const;
  void SetText(int index, const QString& text);
  qint64 ItemData(int index) const;
  void SetItemData(int index, qint64 itemData);
  const LineDetails& Details(int index) const;
  void SetDetails(int index, LineDetails details);

  // Hides the lines whose text does not hold `text` (letter case does not count); empty shows all. A hidden line loses
  // its selection.
  void SetFilterText(const QString& text);
  // Hides the lines for which `shows` answers false, besides those the text hides; null shows all.
  void SetFilter(std::function<bool(int index)> shows);
  // Filters again after what the predicate looks at has changed.
  void Refilter();
  int ShownCount() const;
  bool IsShown(int index) const;
  // The line that is shown in that row, 0 to ShownCount() - 1.
  int ShownLine(int row) const;

  // Moves one line; the selection goes with it. Emits lineMoved().
  void MoveLine(int from, int to);

  int RowHeight() const;
  void SetRowHeight(int height);  // at the usual 10 pt; the row grows with the font
  bool IsNumbered() const;
  void SetNumbered(bool numbered);  // a counting number before each line
  bool IsMovable() const { return movable_; }
  void SetMovable(bool movable);  // the user moves lines with Alt+Up/Down and by dragging
  QString EmptyText() const { return emptyText_; }
  void SetEmptyText(const QString& text);  // shown centred and quiet while no line is visible

 Q_SIGNALS:
  // The selection became a line, by hand or by program. Never fired by filling or clearing, nor when it stays the same.
  void clicked();
  void doubleClicked();
  // The selected line was hidden by a filter, or the selection taken away by SetListIndex(-1).
  void selectionLost();
  void lineMoved(int from, int to);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void showEvent(QShowEvent* event) override;
  void dropEvent(QDropEvent* event) override;
  void selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) override;
  QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex& index, const QEvent* event) const override;

 private:
  struct Place {
    int row = 0;
    std::optional<qint64> itemData;  // of the line that stood there, when it may come again
  };

  void SelectSilently(int index);
  void MoveSelected(int step);
  bool SelectFromNothing(int key);
  int RowToGoOn() const;
  void RestoreAfterFilter(int selected);

  LineModel* lines_;
  LineDelegate* delegate_;
  bool movable_ = false;
  bool silent_ = false;
  int announced_ = -1;          // the line that listeners know as selected
  std::optional<Place> place_;  // of the line that was selected; none once another one is
  QString emptyText_;
};

}  // namespace controls

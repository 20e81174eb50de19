// SPDX-License-Identifier: MIT
// The selection of a list, and how a filter keeps it.
#include "platform/controls/LineModel.h"
#include "platform/controls/ListBox.h"
#include "platform/controls/ListHeader.h"
#include "platform/runtime/Error.h"

#include <QScopedValueRollback>

#include <algorithm>
#include <iterator>
#include <utility>

namespace controls {

using namespace Qt::StringLiterals;

int ListBox::ListIndex() const {
  return last_.isValid() && selectionModel()->isSelected(last_) ? lines_->IndexOf(last_.row()) : -1;
}

// The current line when it is selected: it is the one that the user touched last.
void ListBox::FollowSelection() {
  const QItemSelection& selected = selectionModel()->selection();
  if (selected.isEmpty()) {
    last_ = QPersistentModelIndex();
  } else if (selected.contains(currentIndex())) {
    last_ = currentIndex();
  } else if (!last_.isValid() || !selected.contains(last_)) {
    last_ = lines_->index(selected.constLast().bottom());
  }
}

std::vector<int> ListBox::Marked() const {
  std::vector<int> rows;
  for (const QItemSelectionRange& range : selectionModel()->selection()) {
    for (int row = range.top(); row <= range.bottom(); ++row)
      rows.push_back(row);
  }
  std::sort(rows.begin(), rows.end());
  std::transform(rows.begin(), rows.end(), rows.begin(), [this](int row) { return lines_->IndexOf(row); });
  return rows;
}

int ListBox::MarkedCount() const {
  int count = 0;
  for (const QItemSelectionRange& range : selectionModel()->selection())
    count += range.height();
  return count;
}

void ListBox::ShowEdited(const std::vector<int>& indexes) {
  edited_ = indexes;
  lines_->SetEdited(indexes);
  int first = -1;
  for (const int index : indexes) {
    const int row = lines_->RowOf(index);
    if (row >= 0 && (first < 0 || row < first)) first = row;
  }
  viewport()->update();
  if (first < 0) return;
  place_ = {first, ItemData(lines_->IndexOf(first))};
  executeDelayedItemsLayout();  // scrolls to the wrong place while new lines are not laid out
  scrollTo(lines_->index(first));
}

void ListBox::SelectSilently(int index) {
  const QScopedValueRollback quiet(silent_, true);
  const int row = lines_->RowOf(index);
  if (row >= 0)
    SelectOnly(row);
  else
    selectionModel()->clear();
  FollowSelection();
  announced_ = row >= 0 ? index : -1;
}

void ListBox::SetListIndex(int index) {
  if (index == ListIndex()) return;
  if (index == -1) {
    SelectSilently(-1);
    Q_EMIT selectionLost();
    return;
  }
  lines_->At(index);
  const int row = lines_->RowOf(index);
  if (row < 0) throw runtime::Error(u"De regel '%1' is niet zichtbaar in de lijst."_s.arg(Text(index)));
  SelectOnly(row);
}

// Whatever keys are held down, which setCurrentIndex() of the view would follow.
void ListBox::SelectOnly(int row) {
  selectionModel()->setCurrentIndex(lines_->index(row), QItemSelectionModel::ClearAndSelect);
}

bool ListBox::SelectWhereItemData(qint64 itemData) {
  for (int index = 0; index < ListCount(); ++index) {
    if (lines_->At(index).itemData != itemData || !IsShown(index)) continue;
    SetListIndex(index);
    return true;
  }
  SetListIndex(-1);
  return false;
}

void ListBox::selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) {
  QListView::selectionChanged(selected, deselected);
  FollowSelection();
  const int now = ListIndex();
  if (now >= 0) place_.reset();
  if (silent_) return;
  if (now >= 0) {
    edited_.clear();
    lines_->SetEdited({});
  }
  Q_EMIT markedChanged();
  if (now == announced_) return;
  announced_ = now;
  if (now >= 0) Q_EMIT clicked();
}

// A click never clears the selection, not even with Ctrl or below the last line. Qt also asks without an event, to
// learn where a range marked with Shift begins.
QItemSelectionModel::SelectionFlags ListBox::selectionCommand(const QModelIndex& index, const QEvent* event) const {
  if (!index.isValid()) return QItemSelectionModel::NoUpdate;
  const QItemSelectionModel::SelectionFlags usual = QListView::selectionCommand(index, event);
  const bool wouldClear =
      usual.testFlag(QItemSelectionModel::Toggle) && MarkedCount() == 1 && selectionModel()->isSelected(index);
  return wouldClear || usual.testFlag(QItemSelectionModel::Deselect) ? QItemSelectionModel::NoUpdate : usual;
}

// --- filter

void ListBox::SetFilterText(const QString& text) {
  const Selection before = CurrentSelection();
  {
    const QScopedValueRollback quiet(silent_, true);
    lines_->SetFilterText(text);
  }
  RestoreAfterFilter(before);
}

void ListBox::SetFilter(std::function<bool(int index)> shows) {
  const Selection before = CurrentSelection();
  {
    const QScopedValueRollback quiet(silent_, true);
    lines_->SetFilter(std::move(shows));
  }
  RestoreAfterFilter(before);
}

void ListBox::Refilter() {
  const Selection before = CurrentSelection();
  {
    const QScopedValueRollback quiet(silent_, true);
    lines_->Refilter();
  }
  RestoreAfterFilter(before);
}

// As few ranges as possible: many are slow.
QItemSelection ListBox::RowsOf(const std::vector<int>& indexes) const {
  std::vector<int> rows(indexes.size());
  std::transform(indexes.begin(), indexes.end(), rows.begin(), [this](int index) { return lines_->RowOf(index); });
  std::sort(rows.begin(), rows.end());
  QItemSelection ranges;
  for (std::size_t first = 0, end = 0; first < rows.size(); first = end) {
    for (end = first + 1; end < rows.size() && rows[end] == rows[end - 1] + 1;)
      ++end;
    ranges.append(QItemSelectionRange(lines_->index(rows[first]), lines_->index(rows[end - 1])));
  }
  return ranges;
}

// Marked lines that are still shown stay marked; when the one selected last is hidden, another takes its place.
void ListBox::RestoreAfterFilter(const Selection& before) {
  std::vector<int> shown;
  std::copy_if(before.marked.begin(), before.marked.end(), std::back_inserter(shown),
               [this](int index) { return IsShown(index); });
  SelectSilently(IsShown(before.listIndex) || shown.empty() ? before.listIndex : shown.back());
  if (shown.size() > 1) {
    const QScopedValueRollback quiet(silent_, true);
    selectionModel()->select(RowsOf(shown), QItemSelectionModel::Select);
  }
  if (before.listIndex >= 0 && announced_ < 0) Q_EMIT selectionLost();
  if (announced_ >= 0 && announced_ != before.listIndex) Q_EMIT clicked();
  if (shown.size() != before.marked.size()) Q_EMIT markedChanged();
}

int ListBox::ShownCount() const {
  return lines_->rowCount();
}

bool ListBox::IsShown(int index) const {
  return lines_->RowOf(index) >= 0;
}

int ListBox::ShownLine(int row) const {
  return lines_->IndexOf(row);
}

void ListBox::SetOrder(LineColumn column, std::vector<qint64> keys, bool descending) {
  const Selection before = CurrentSelection();
  const std::vector<int> edited = edited_;
  {
    const QScopedValueRollback quiet(silent_, true);
    lines_->SetOrder(std::move(keys), descending);
  }
  RestoreAfterFilter(before);
  if (header_ != nullptr) header_->ShowSort(column, descending);
  if (ListIndex() >= 0)
    scrollTo(currentIndex());
  else if (!edited.empty())
    ShowEdited(edited);
}

}  // namespace controls

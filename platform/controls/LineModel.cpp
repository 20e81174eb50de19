// SPDX-License-Identifier: MIT
#include "platform/controls/LineModel.h"

#include "platform/runtime/Error.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace controls {

using namespace Qt::StringLiterals;

const LineModel::Line& LineModel::At(int index) const {
  if (index == -1) throw runtime::Error(u"Er is geen regel gekozen."_s);
  if (index < 0 || index >= Count())
    throw runtime::Error(u"De lijst heeft geen regel met nummer %1 (aantal regels: %2)."_s.arg(index).arg(Count()));
  return lines_[static_cast<std::size_t>(index)];
}

bool LineModel::Shows(int index) const {
  if (!folded_.isEmpty() && !texts_.Holds(index, folded_)) return false;
  return shows_ == nullptr || shows_(index);
}

void LineModel::FoldTexts() {
  for (int index = texts_.Count(); index < Count(); ++index)
    texts_.Append(lines_[static_cast<std::size_t>(index)].text);
}

void LineModel::ApplyFilter() {
  FoldTexts();
  shown_.clear();
  for (int index = 0; index < Count(); ++index)
    if (Shows(index)) shown_.push_back(index);
  upToDate_ = true;
}

int LineModel::RowOf(int index) const {
  const auto found = std::lower_bound(shown_.begin(), shown_.end(), index);
  return found != shown_.end() && *found == index ? static_cast<int>(found - shown_.begin()) : -1;
}

void LineModel::Measure(const LineDetails& details) {
  if (details.word.size() > longestWord_.size()) longestWord_ = details.word;
  if (details.trailing.size() > longestTrailing_.size()) longestTrailing_ = details.trailing;
  hasMarks_ = hasMarks_ || details.mark != LineMark::None;
}

void LineModel::Append(std::vector<Line> lines) {
  const int first = Count();
  for (const Line& line : lines)
    Measure(line.details);
  lines_.insert(lines_.end(), std::make_move_iterator(lines.begin()), std::make_move_iterator(lines.end()));
  FoldTexts();
  std::vector<int> added;
  for (int index = first; index < Count(); ++index)
    if (Shows(index)) added.push_back(index);
  if (added.empty()) return;
  beginInsertRows({}, rowCount(), rowCount() + static_cast<int>(added.size()) - 1);
  shown_.insert(shown_.end(), added.begin(), added.end());
  endInsertRows();
}

void LineModel::Clear() {
  beginResetModel();
  lines_.clear();
  edited_.clear();
  texts_.Clear();
  shown_.clear();
  longestWord_.clear();
  longestTrailing_.clear();
  hasMarks_ = false;
  endResetModel();
}

void LineModel::Remove(int index) {
  At(index);
  edited_.clear();
  const int row = RowOf(index);
  if (row >= 0) beginRemoveRows({}, row, row);
  lines_.erase(lines_.begin() + index);
  texts_.Clear();
  const auto after = std::lower_bound(shown_.begin(), shown_.end(), index);
  std::for_each(after, shown_.end(), [](int& shownIndex) { --shownIndex; });
  if (row >= 0) {
    shown_.erase(shown_.begin() + row);
    endRemoveRows();
  }
}

void LineModel::Move(int from, int to) {
  At(from);
  At(to);
  if (from == to) return;
  beginResetModel();
  edited_.clear();
  const auto begin = lines_.begin();
  if (from < to)
    std::rotate(begin + from, begin + from + 1, begin + to + 1);
  else
    std::rotate(begin + to, begin + from, begin + from + 1);
  texts_.Clear();
  ApplyFilter();
  endResetModel();
}

void LineModel::Changed(int index) {
  const int row = RowOf(index);
  if (row >= 0) Q_EMIT dataChanged(this->index(row), this->index(row));
}

void LineModel::SetText(int index, const QString& text) {
  At(index);
  lines_[static_cast<std::size_t>(index)].text = text;
  texts_.Clear();
  upToDate_ = false;
  Changed(index);
}

void LineModel::SetItemData(int index, qint64 itemData) {
  At(index);
  lines_[static_cast<std::size_t>(index)].itemData = itemData;
}

void LineModel::SetDetails(int index, LineDetails details) {
  At(index);
  Measure(details);
  lines_[static_cast<std::size_t>(index)].details = std::move(details);
  Changed(index);
}

void LineModel::SetEdited(const std::vector<int>& indexes) {
  const std::vector<int> before = std::exchange(edited_, indexes);
  std::sort(edited_.begin(), edited_.end());
  for (const std::vector<int>& lines : {before, edited_})
    std::for_each(lines.begin(), lines.end(), [this](int index) { Changed(index); });
}

void LineModel::SetFilterText(const QString& text) {
  const QString before = std::exchange(folded_, FoldedTexts::Folded(text));
  if (!upToDate_ || !folded_.contains(before)) return Refilter();
  // If the filter text was extended, only lines shown now can match.
  FoldTexts();
  beginResetModel();
  std::erase_if(shown_, [this](int index) { return !texts_.Holds(index, folded_); });
  endResetModel();
}

void LineModel::SetFilter(std::function<bool(int index)> shows) {
  shows_ = std::move(shows);
  Refilter();
}

void LineModel::Refilter() {
  beginResetModel();
  ApplyFilter();
  endResetModel();
}

int LineModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(shown_.size());
}

QVariant LineModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid() || index.row() >= rowCount()) return {};
  const Line& line = lines_[static_cast<std::size_t>(IndexOf(index.row()))];
  const LineDetails& details = line.details;
  switch (role) {
    case Qt::DisplayRole:
      return line.text;
    case Qt::ToolTipRole:
      return details.toolTip.isEmpty() ? QVariant() : QVariant(details.toolTip);
    case Qt::AccessibleTextRole: {
      QStringList parts{line.text, details.word, details.trailing};
      if (IsEdited(IndexOf(index.row()))) parts += u"zojuist bewaard"_s;
      parts.removeAll(QString());
      return parts.join(u", "_s);
    }
    default:
      return {};
  }
}

Qt::ItemFlags LineModel::flags(const QModelIndex& index) const {
  const Qt::ItemFlags line = Qt::ItemIsSelectable | Qt::ItemIsEnabled | Qt::ItemNeverHasChildren;
  return index.isValid() ? line | Qt::ItemIsDragEnabled : Qt::ItemIsDropEnabled;
}

}  // namespace controls

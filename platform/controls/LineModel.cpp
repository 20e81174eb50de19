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

bool LineModel::Finds(int index) const {
  return texts_.Holds(index, folded_) || (searched_.Count() > index && searched_.Holds(index, folded_));
}

bool LineModel::Shows(int index) const {
  if (!folded_.isEmpty() && !Finds(index)) return false;
  return shows_ == nullptr || shows_(index);
}

void LineModel::FoldTexts() {
  if (folded_.isEmpty()) return;
  for (int index = texts_.Count(); index < Count(); ++index)
    texts_.Append(lines_[static_cast<std::size_t>(index)].text);
  if (searchedUpToDate_) return;
  searched_.Clear();
  for (const Line& line : lines_)
    searched_.Append(line.details.searched);
  searchedUpToDate_ = true;
}

void LineModel::ApplyFilter() {
  FoldTexts();
  shown_.clear();
  for (int index = 0; index < Count(); ++index)
    if (Shows(index)) shown_.push_back(index);
  Sort();
  upToDate_ = true;
}

bool LineModel::IsBefore(int one, int other) const {
  const qint64 key = keys_[static_cast<std::size_t>(one)];
  const qint64 otherKey = keys_[static_cast<std::size_t>(other)];
  if (key == kNoKey || otherKey == kNoKey) return key != kNoKey && otherKey == kNoKey;
  return descending_ ? key > otherKey : key < otherKey;
}

void LineModel::Sort() {
  rows_.clear();
  if (keys_.empty()) return;
  std::stable_sort(shown_.begin(), shown_.end(), [this](int one, int other) { return IsBefore(one, other); });
}

void LineModel::SetOrder(std::vector<qint64> keys, bool descending) {
  if (!keys.empty()) keys.resize(lines_.size(), kNoKey);
  if (keys.empty() && keys_.empty()) return;
  beginResetModel();
  keys_ = std::move(keys);
  descending_ = descending;
  ApplyFilter();
  endResetModel();
}

int LineModel::RowOf(int index) const {
  if (!keys_.empty()) {
    if (rows_.empty()) {
      rows_.assign(lines_.size(), -1);
      for (int row = 0; row < rowCount(); ++row)
        rows_[static_cast<std::size_t>(IndexOf(row))] = row;
    }
    return index >= 0 && index < Count() ? rows_[static_cast<std::size_t>(index)] : -1;
  }
  const auto found = std::lower_bound(shown_.begin(), shown_.end(), index);
  return found != shown_.end() && *found == index ? static_cast<int>(found - shown_.begin()) : -1;
}

void LineModel::Measure(const LineDetails& details) {
  bool wider = !hasMarks_ && details.mark != LineMark::None;
  hasMarks_ = hasMarks_ || wider;
  const auto measure = [&wider](const QString& text, QString& longest) {
    if (text.size() <= longest.size()) return;
    longest = text;
    wider = true;
  };
  measure(details.word, longestWord_);
  measure(details.date, longestDate_);
  measure(details.trailing, longestTrailing_);
  if (wider) Q_EMIT columnsChanged();
}

void LineModel::Append(std::vector<Line> lines) {
  const int first = Count();
  SetOrder({}, false);
  searchedUpToDate_ = !hasSearched_;
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
  keys_.clear();
  rows_.clear();
  searched_.Clear();
  hasSearched_ = false;
  searchedUpToDate_ = true;
  longestDate_.clear();
  texts_.Clear();
  shown_.clear();
  longestWord_.clear();
  longestTrailing_.clear();
  hasMarks_ = false;
  endResetModel();
}

void LineModel::Remove(int index) {
  At(index);
  SetOrder({}, false);
  edited_.clear();
  searchedUpToDate_ = !hasSearched_;
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
  keys_.clear();
  edited_.clear();
  searchedUpToDate_ = !hasSearched_;
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
  LineDetails& stored = lines_[static_cast<std::size_t>(index)].details;
  if (details.searched != stored.searched) {
    hasSearched_ = true;
    searchedUpToDate_ = false;
  }
  stored = std::move(details);
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
  if (folded_.isEmpty() || !upToDate_ || !searchedUpToDate_ || !folded_.contains(before)) return Refilter();
  // If the filter text was extended, only lines shown now can match.
  FoldTexts();
  beginResetModel();
  std::erase_if(shown_, [this](int index) { return !Finds(index); });
  rows_.clear();
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

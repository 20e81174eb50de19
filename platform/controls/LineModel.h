// SPDX-License-Identifier: MIT
#pragma once

#include "platform/controls/FoldedTexts.h"
#include "platform/controls/ListLine.h"

#include <QAbstractListModel>

#include <algorithm>
#include <functional>
#include <vector>

namespace controls {

// The lines of a list, and which of them a filter shows. An "index" counts all lines, a "row" only the shown ones.
class LineModel : public QAbstractListModel {
  Q_OBJECT

 public:
  struct Line {
    QString text;
    qint64 itemData = 0;
    LineDetails details;
  };

  using QAbstractListModel::QAbstractListModel;

  int Count() const { return static_cast<int>(lines_.size()); }
  // Throws runtime::Error for an index out of range.
  const Line& At(int index) const;

  void Append(std::vector<Line> lines);
  void Clear();
  void Remove(int index);
  void Move(int from, int to);
  void SetText(int index, const QString& text);
  void SetItemData(int index, qint64 itemData);
  void SetDetails(int index, LineDetails details);

  // The lines that were edited last; painted lightly marked. Empty: none.
  void SetEdited(const std::vector<int>& indexes);
  bool IsEdited(int index) const { return std::binary_search(edited_.begin(), edited_.end(), index); }

  void SetFilterText(const QString& text);
  void SetFilter(std::function<bool(int index)> shows);
  void Refilter();
  bool IsFiltered() const { return !folded_.isEmpty() || shows_ != nullptr; }

  int IndexOf(int row) const { return shown_.at(static_cast<std::size_t>(row)); }
  // -1: hidden, or no such line.
  int RowOf(int index) const;

  // For the widths of the columns: whether there is any mark, and the longest texts.
  bool HasMarks() const { return hasMarks_; }
  const QString& LongestWord() const { return longestWord_; }
  const QString& LongestTrailing() const { return longestTrailing_; }

  int rowCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;
  Qt::DropActions supportedDropActions() const override { return Qt::MoveAction; }

 private:
  // FoldTexts must have been called.
  bool Shows(int index) const;
  void FoldTexts();
  void ApplyFilter();
  void Measure(const LineDetails& details);
  void Changed(int index);

  std::vector<Line> lines_;
  std::vector<int> shown_;  // ascending
  FoldedTexts texts_;       // of the first lines; FoldTexts adds the missing ones
  QString folded_;          // the filter's text, folded
  bool upToDate_ = true;    // shown_ matches the current filter and texts
  std::function<bool(int index)> shows_;
  std::vector<int> edited_;  // ascending
  QString longestWord_;
  QString longestTrailing_;
  bool hasMarks_ = false;
};

}  // namespace controls

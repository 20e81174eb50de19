// SPDX-License-Identifier: MIT
#pragma once

#include "platform/controls/FoldedTexts.h"
#include "platform/controls/ListLine.h"

#include <QAbstractListModel>

#include <algorithm>
#include <functional>
#include <limits>
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
  // Shows the lines ascending by these keys, one for each index, or descending; kNoKey comes last in both. Lines with
  // the same key stay in the order of their indexes. Empty: all in the order of their indexes. Adding, removing and
  // moving lines returns to that.
  void SetOrder(std::vector<qint64> keys, bool descending);
  static constexpr qint64 kNoKey = std::numeric_limits<qint64>::max();
  bool IsFiltered() const { return !folded_.isEmpty() || shows_ != nullptr; }

  int IndexOf(int row) const { return shown_.at(static_cast<std::size_t>(row)); }
  // -1: hidden, or no such line.
  int RowOf(int index) const;

  // For the widths of the columns: whether there is any mark, and the longest texts.
  bool HasMarks() const { return hasMarks_; }
  const QString& LongestWord() const { return longestWord_; }
  const QString& LongestDate() const { return longestDate_; }
  const QString& LongestTrailing() const { return longestTrailing_; }

 Q_SIGNALS:
  // The columns need another width.
  void columnsChanged();

 public:
  int rowCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;
  Qt::DropActions supportedDropActions() const override { return Qt::MoveAction; }

 private:
  // FoldTexts must have been called.
  bool Shows(int index) const;
  bool Finds(int index) const;
  bool IsBefore(int one, int other) const;
  void Sort();
  void FoldTexts();  // nothing without a filter text
  void ApplyFilter();
  void Measure(const LineDetails& details);
  void Changed(int index);

  std::vector<Line> lines_;
  std::vector<int> shown_;         // ascending, or in the order of keys_
  std::vector<qint64> keys_;       // by index; empty: not sorted
  bool descending_ = false;        // only with keys_
  mutable std::vector<int> rows_;  // row by index, for RowOf while sorted; empty: not up to date
  FoldedTexts texts_;              // of the first lines; FoldTexts adds the missing ones for a search
  FoldedTexts searched_;           // the details' texts for searches; of all lines, or empty
  bool hasSearched_ = false;       // there are such texts
  bool searchedUpToDate_ = true;
  QString folded_;        // the filter's text, folded
  bool upToDate_ = true;  // shown_ matches the current filter and texts
  std::function<bool(int index)> shows_;
  std::vector<int> edited_;  // ascending
  QString longestWord_;
  QString longestDate_;
  QString longestTrailing_;
  bool hasMarks_ = false;
};

}  // namespace controls

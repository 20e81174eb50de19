// SPDX-License-Identifier: MIT
#pragma once

#include "platform/controls/ListLine.h"

#include <QObject>
#include <QString>

#include <functional>
#include <vector>

namespace controls {
class ListBox;
}

// The column by which an overview list is shown, remembered for the user. A matter of the view alone: the query, the
// indexes of the lines and ListIndex do not change. Until the user chooses, the order is that of the query.
class OverviewSort : public QObject {
  Q_OBJECT

 public:
  // The key of each line for a column other than the name, empty while they are not known.
  using Keys = std::function<std::vector<qint64>(controls::LineColumn column)>;

  // `view`: the name under which the choice is remembered. The list becomes the owner.
  OverviewSort(const QString& view, const controls::ColumnTexts& captions, Keys keys, controls::ListBox& list);

  // After the list was filled, or the keys are known.
  void Apply();

 private:
  void Choose(controls::LineColumn column);
  void Read();

  QString view_;
  controls::ColumnTexts captions_;
  Keys keys_;
  controls::ListBox& list_;
  controls::LineColumn column_ = controls::LineColumn::Text;
  bool descending_ = false;
};

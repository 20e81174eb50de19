// SPDX-License-Identifier: MIT
#include "catalogue/OverviewSort.h"

#include "platform/controls/ListBox.h"
#include "platform/desktop/ViewMemory.h"

#include <numeric>
#include <utility>

using namespace Qt::StringLiterals;
using controls::LineColumn;

namespace {

const QString kDescendingMark = u" aflopend"_s;

}  // namespace

OverviewSort::OverviewSort(const QString& view, const controls::ColumnTexts& captions, Keys keys,
                           controls::ListBox& list)
    : QObject(&list), view_(view), captions_(captions), keys_(std::move(keys)), list_(list) {
  list_.SetCaptions(captions_);
  connect(&list_, &controls::ListBox::sortRequested, this, &OverviewSort::Choose);
  Read();
}

void OverviewSort::Read() {
  QString choice = desktop::ViewMemory::ChoiceOf(view_);
  const bool descending = choice.endsWith(kDescendingMark);
  if (descending) choice.chop(kDescendingMark.size());
  for (const LineColumn column : controls::kLineColumns) {
    if (choice.isEmpty() || captions_[static_cast<std::size_t>(column)] != choice) continue;
    column_ = column;
    descending_ = descending;
  }
}

void OverviewSort::Choose(LineColumn column) {
  descending_ = column == column_ && !descending_;
  column_ = column;
  desktop::ViewMemory::Chosen(
      view_, captions_[static_cast<std::size_t>(column)] + (descending_ ? kDescendingMark : QString()));
  Apply();
}

// The query already sorts by name.
void OverviewSort::Apply() {
  std::vector<qint64> keys;
  if (column_ != LineColumn::Text) {
    keys = keys_(column_);
  } else if (descending_) {
    keys.resize(static_cast<std::size_t>(list_.ListCount()));
    std::iota(keys.begin(), keys.end(), 0);
  }
  list_.SetOrder(column_, std::move(keys), descending_);
}

// SPDX-License-Identifier: MIT
#include "platform/controls/ListFiller.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace controls {
namespace {

constexpr int kLinesPerTurn = 500;  // a few milliseconds

}  // namespace

ListFiller::ListFiller(ListBox& list, QObject* parent) : QObject(parent), list_(list) {
  connect(&timer_, &QTimer::timeout, this, &ListFiller::AddPart);
}

void ListFiller::Fill(int count, LineAt lineAt) {
  timer_.stop();
  list_.Clear();
  lineAt_ = std::move(lineAt);
  count_ = count;
  next_ = 0;
  AddPart();
  if (!IsFilled()) timer_.start(0);
}

void ListFiller::AddPart() {
  const int end = std::min(count_, next_ + kLinesPerTurn);
  std::vector<ListBox::Line> lines;
  lines.reserve(static_cast<std::size_t>(end - next_));
  for (; next_ < end; ++next_)
    lines.push_back(lineAt_(next_));
  list_.AddItems(std::move(lines));
  if (!IsFilled()) return;
  timer_.stop();
  lineAt_ = nullptr;
}

}  // namespace controls

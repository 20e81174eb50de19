// SPDX-License-Identifier: MIT
#pragma once

#include "platform/controls/ListBox.h"

#include <QObject>
#include <QTimer>

#include <functional>

namespace controls {

// Fills a list in parts, one per turn of the event loop, so that a window with very many lines stays responsive.
class ListFiller : public QObject {
  Q_OBJECT

 public:
  using LineAt = std::function<ListBox::Line(int index)>;

  // `list` must outlive the filler.
  ListFiller(ListBox& list, QObject* parent);

  // Replaces all lines by `count` new ones, the first part at once. `lineAt` is called in order, once for each index
  // from 0, until the last line or the next call of Fill; it must own its data.
  void Fill(int count, LineAt lineAt);
  bool IsFilled() const { return next_ == count_; }

 private:
  void AddPart();

  ListBox& list_;
  LineAt lineAt_;
  int count_ = 0;
  int next_ = 0;
  QTimer timer_;
};

}  // namespace controls

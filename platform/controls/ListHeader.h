// SPDX-License-Identifier: MIT
#pragma once

#include "platform/controls/ListLine.h"

#include <QWidget>

#include <functional>
#include <optional>

namespace controls {

// The captions above the columns of a list; a click chooses the column to sort by. Belongs to its list, which places it
// and offers the same choice by keyboard.
class ListHeader : public QWidget {
  Q_OBJECT

 public:
  // `columns` returns the columns for a line of that rectangle.
  ListHeader(std::function<LineColumns(const QRect&)> columns, QWidget* parent);

  void SetCaptions(const ColumnTexts& captions);
  void ShowSort(LineColumn column, bool descending);

  // What is painted for a column: its caption, with an arrow when the list is sorted by it.
  QString TextOf(LineColumn column) const;
  // In this widget's coordinates; empty for a column that is not shown.
  QRect PlaceOf(LineColumn column) const;
  // The number of a column among those with a caption, from 1.
  int KeyOf(LineColumn column) const;

 Q_SIGNALS:
  void pressed(controls::LineColumn column);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  bool event(QEvent* event) override;

 private:
  std::optional<LineColumn> ColumnAt(const QPoint& place) const;

  std::function<LineColumns(const QRect&)> columns_;
  ColumnTexts captions_;
  LineColumn sorted_ = LineColumn::Text;
  bool descending_ = false;
};

}  // namespace controls

// SPDX-License-Identifier: MIT
#pragma once

#include <QStyledItemDelegate>

namespace controls {

class LineModel;
struct LineDetails;

// Paints a line: number, mark, text, word, trailing text. Reads the colours while painting.
class LineDelegate : public QStyledItemDelegate {
  Q_OBJECT

 public:
  LineDelegate(const LineModel& lines, QObject* parent);

  int RowHeight() const { return rowHeight_; }
  void SetRowHeight(int height) { rowHeight_ = height; }
  bool IsNumbered() const { return numbered_; }
  void SetNumbered(bool numbered) { numbered_ = numbered; }

  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

 private:
  struct Colours {
    QColor text, quiet, mark, word;
  };
  struct Columns {
    QRect number, mark, text, word, trailing;
  };

  Colours ColoursOf(const QStyleOptionViewItem& option, const LineDetails& details) const;
  Columns ColumnsOf(const QStyleOptionViewItem& option) const;

  const LineModel& lines_;
  int rowHeight_ = 28;
  bool numbered_ = false;
};

}  // namespace controls

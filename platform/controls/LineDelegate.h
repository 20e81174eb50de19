// SPDX-License-Identifier: MIT
#pragma once

#include "platform/controls/ListLine.h"

#include <QFontMetrics>
#include <QStyledItemDelegate>

#include <array>
#include <optional>

namespace controls {

class LineModel;

// Paints a line: number, mark, text, word, trailing text. Reads the colours while painting.
class LineDelegate : public QStyledItemDelegate {
  Q_OBJECT

 public:
  LineDelegate(const LineModel& lines, QObject* parent);

  int RowHeight() const { return rowHeight_; }
  void SetRowHeight(int height) { rowHeight_ = height; }
  bool IsNumbered() const { return numbered_; }
  void SetNumbered(bool numbered) { numbered_ = numbered; }

  // Captions above the columns, which are then wide enough for them and always shown.
  void SetCaptions(const ColumnTexts& captions) { captions_ = captions; }
  LineColumns ColumnsOf(const QRect& line, const QFontMetrics& metrics) const;

  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

 private:
  struct Colours {
    QColor text, quiet, mark, word;
  };

  // The last measured texts of a column: they are the same for every line that is painted.
  struct Measured {
    QString longest;
    QString caption;
    QFontMetrics metrics;
    int width;
  };

  Colours ColoursOf(const QStyleOptionViewItem& option, const LineDetails& details) const;
  int WidthOf(LineColumn column, const QString& longest, const QFontMetrics& metrics) const;

  const LineModel& lines_;
  int rowHeight_ = 28;
  bool numbered_ = false;
  ColumnTexts captions_;
  mutable std::array<std::optional<Measured>, std::tuple_size_v<ColumnTexts>> measured_;
};

}  // namespace controls

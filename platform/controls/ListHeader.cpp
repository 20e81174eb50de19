// SPDX-License-Identifier: MIT
#include "platform/controls/ListHeader.h"

#include "platform/desktop/ThemeColours.h"

#include <QHelpEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QToolTip>

#include <utility>

namespace controls {

using namespace Qt::StringLiterals;

ListHeader::ListHeader(std::function<LineColumns(const QRect&)> columns, QWidget* parent)
    : QWidget(parent), columns_(std::move(columns)) {
  setCursor(Qt::PointingHandCursor);
}

void ListHeader::SetCaptions(const ColumnTexts& captions) {
  captions_ = captions;
  update();
}

void ListHeader::ShowSort(LineColumn column, bool descending) {
  sorted_ = column;
  descending_ = descending;
  update();
}

QString ListHeader::TextOf(LineColumn column) const {
  const QString& caption = captions_[static_cast<std::size_t>(column)];
  if (caption.isEmpty() || column != sorted_) return caption;
  return caption + (descending_ ? u" ↓"_s : u" ↑"_s);
}

QRect ListHeader::PlaceOf(LineColumn column) const {
  if (captions_[static_cast<std::size_t>(column)].isEmpty()) return {};
  return columns_(rect()).Place(column);
}

std::optional<LineColumn> ListHeader::ColumnAt(const QPoint& place) const {
  for (const LineColumn column : kLineColumns) {
    if (PlaceOf(column).contains(place)) return column;
  }
  return std::nullopt;
}

void ListHeader::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const desktop::ThemeColours& colours = desktop::ThemeColoursFor(palette());
  painter.fillRect(rect(), palette().color(QPalette::AlternateBase));
  painter.fillRect(QRect(0, height() - 1, width(), 1), colours.line);
  for (const LineColumn column : kLineColumns) {
    const QRect place = PlaceOf(column);
    if (place.isEmpty()) continue;
    painter.setPen(column == sorted_ ? palette().color(QPalette::Text) : colours.hint);
    const Qt::Alignment side = column == LineColumn::Trailing ? Qt::AlignRight : Qt::AlignLeft;
    painter.drawText(place, static_cast<int>(side | Qt::AlignVCenter) | Qt::TextSingleLine,
                     fontMetrics().elidedText(TextOf(column), Qt::ElideRight, place.width()));
  }
}

void ListHeader::mouseReleaseEvent(QMouseEvent* event) {
  const std::optional<LineColumn> column = ColumnAt(event->position().toPoint());
  if (event->button() == Qt::LeftButton && column) Q_EMIT pressed(*column);
}

bool ListHeader::event(QEvent* event) {
  if (event->type() != QEvent::ToolTip) return QWidget::event(event);
  const auto& help = static_cast<const QHelpEvent&>(*event);
  const std::optional<LineColumn> column = ColumnAt(help.pos());
  if (column) {
    const auto at = static_cast<std::size_t>(*column);
    QToolTip::showText(help.globalPos(), u"Sorteren op %1 (Ctrl+%2)"_s.arg(captions_[at].toLower()).arg(KeyOf(*column)),
                       this);
  }
  return true;
}

// The captions that are there are numbered from the left.
int ListHeader::KeyOf(LineColumn column) const {
  int key = 0;
  for (const LineColumn one : kLineColumns) {
    if (!captions_[static_cast<std::size_t>(one)].isEmpty()) ++key;
    if (one == column) break;
  }
  return key;
}

}  // namespace controls

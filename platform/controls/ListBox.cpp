// SPDX-License-Identifier: MIT
#include "platform/controls/ListBox.h"

#include "platform/controls/LineDelegate.h"
#include "platform/controls/LineModel.h"
#include "platform/controls/ListHeader.h"
#include "platform/desktop/ThemeColours.h"

#include <QDropEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QScopedValueRollback>
#include <QScrollBar>

#include <algorithm>

namespace controls {

using namespace Qt::StringLiterals;

ListBox::ListBox(QWidget* parent)
    : QListView(parent), lines_(new LineModel(this)), delegate_(new LineDelegate(*lines_, this)) {
  setModel(lines_);
  setItemDelegate(delegate_);
  setSelectionMode(SingleSelection);
  setEditTriggers(NoEditTriggers);
  setUniformItemSizes(true);
  setAlternatingRowColors(true);
  setVerticalScrollMode(ScrollPerPixel);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
}

// --- lines

int ListBox::AddItem(const QString& text, qint64 itemData) {
  std::vector<LineModel::Line> one(1);
  one[0].text = text;
  one[0].itemData = itemData;
  lines_->Append(std::move(one));
  return lines_->Count() - 1;
}

void ListBox::AddItems(std::vector<Line> lines) {
  std::vector<LineModel::Line> all;
  all.reserve(lines.size());
  for (Line& line : lines)
    all.push_back({std::move(line.text), line.itemData, std::move(line.details)});
  lines_->Append(std::move(all));
}

void ListBox::Clear() {
  const QScopedValueRollback quiet(silent_, true);
  if (ListIndex() >= 0) place_ = {lines_->RowOf(ListIndex()), ItemData(ListIndex())};
  lines_->Clear();
  edited_.clear();
  announced_ = -1;
}

// Without this the view would select the line after a removed one.
void ListBox::RemoveItem(int index) {
  lines_->At(index);
  const QScopedValueRollback quiet(silent_, true);
  const int selected = ListIndex();
  if (selected == index) {
    place_ = {lines_->RowOf(index), std::nullopt};
    SelectSilently(-1);
  }
  lines_->Remove(index);
  announced_ = selected == index ? -1 : (selected > index ? selected - 1 : selected);
}

int ListBox::ListCount() const {
  return lines_->Count();
}

QString ListBox::Text(int index) const {
  return lines_->At(index).text;
}

void ListBox::SetText(int index, const QString& text) {
  lines_->SetText(index, text);
}

qint64 ListBox::ItemData(int index) const {
  return lines_->At(index).itemData;
}

void ListBox::SetItemData(int index, qint64 itemData) {
  lines_->SetItemData(index, itemData);
}

const LineDetails& ListBox::Details(int index) const {
  return lines_->At(index).details;
}

void ListBox::SetDetails(int index, LineDetails details) {
  lines_->SetDetails(index, std::move(details));
}

// --- order

void ListBox::MoveLine(int from, int to) {
  lines_->At(from);
  lines_->At(to);
  if (from == to) return;
  int selected = ListIndex();
  if (selected == from)
    selected = to;
  else if (from < selected && selected <= to)
    --selected;
  else if (to <= selected && selected < from)
    ++selected;
  lines_->Move(from, to);
  SelectSilently(selected);
  Q_EMIT lineMoved(from, to);
}

void ListBox::MoveSelected(int step) {
  const int from = ListIndex();
  const int to = from + step;
  if (from >= 0 && to >= 0 && to < ListCount() && !lines_->IsFiltered()) MoveLine(from, to);
}

void ListBox::dropEvent(QDropEvent* event) {
  const int from = ListIndex();
  const QModelIndex over = indexAt(event->position().toPoint());
  int gap = over.isValid() ? lines_->IndexOf(over.row()) : ListCount();
  if (over.isValid() && event->position().y() > visualRect(over).center().y()) ++gap;
  const int to = gap > from ? gap - 1 : gap;
  event->accept();
  if (event->source() == this && from >= 0 && !lines_->IsFiltered()) MoveLine(from, to);
}

// --- keys, mouse, painting

// The row where the keyboard continues in a list without a selection.
int ListBox::RowToContinueAt() const {
  if (!place_) return std::max(0, currentIndex().row());
  for (int row = 0; place_->itemData && row < ShownCount(); ++row) {
    if (ItemData(ShownLine(row)) == place_->itemData) return row;
  }
  return std::min(place_->row, ShownCount() - 1);
}

// In a list without a selection, the first arrow key selects the current line, not the one after it.
bool ListBox::SelectFromNothing(int key) {
  const bool steps = key == Qt::Key_Down || key == Qt::Key_Up || key == Qt::Key_Home || key == Qt::Key_Space ||
                     key == Qt::Key_PageDown || key == Qt::Key_PageUp;
  if (!steps || ListIndex() >= 0 || ShownCount() == 0) return false;
  SetListIndex(lines_->IndexOf(key == Qt::Key_Home ? 0 : RowToContinueAt()));
  scrollTo(currentIndex());  // the view does not if it already was the current line
  return true;
}

void ListBox::keyPressEvent(QKeyEvent* event) {
  const bool alt = event->modifiers() == Qt::AltModifier;
  if (movable_ && alt && (event->key() == Qt::Key_Up || event->key() == Qt::Key_Down)) {
    MoveSelected(event->key() == Qt::Key_Up ? -1 : 1);
    return event->accept();
  }
  if (header_ != nullptr && event->modifiers() == Qt::ControlModifier) {
    for (const LineColumn column : kLineColumns) {
      if (header_->TextOf(column).isEmpty() || event->key() != Qt::Key_0 + header_->KeyOf(column)) continue;
      Q_EMIT sortRequested(column);
      return event->accept();
    }
  }
  if (SelectFromNothing(event->key())) return event->accept();
  QListView::keyPressEvent(event);
}

void ListBox::mouseDoubleClickEvent(QMouseEvent* event) {
  QListView::mouseDoubleClickEvent(event);
  if (event->button() == Qt::LeftButton && indexAt(event->position().toPoint()).isValid()) Q_EMIT doubleClicked();
}

void ListBox::paintEvent(QPaintEvent* event) {
  QListView::paintEvent(event);
  if (dropTarget_) PaintDropTarget();
  if (ShownCount() > 0 || emptyText_.isEmpty()) return;
  QPainter painter(viewport());
  painter.setPen(desktop::ThemeColoursFor(palette()).hint);
  painter.drawText(viewport()->rect().adjusted(16, 16, -16, -16), Qt::AlignCenter | Qt::TextWordWrap, emptyText_);
}

void ListBox::PaintDropTarget() {
  constexpr int kFrame = 3;
  QColor accent = desktop::ThemeColoursFor(palette()).accent;
  QPainter painter(viewport());
  painter.setPen(QPen(accent, kFrame));
  accent.setAlphaF(0.10F);
  painter.setBrush(accent);
  painter.drawRect(QRectF(viewport()->rect()).adjusted(kFrame / 2.0, kFrame / 2.0, -kFrame / 2.0, -kFrame / 2.0));
}

void ListBox::SetDropTarget(bool target) {
  dropTarget_ = target;
  viewport()->update();
}

// The list's size is unknown while it is hidden, so it scrolls to the selection when shown.
void ListBox::showEvent(QShowEvent* event) {
  QListView::showEvent(event);
  if (event->spontaneous()) return;
  executeDelayedItemsLayout();
  verticalScrollBar()->setValue(0);
  if (ListIndex() >= 0) scrollTo(currentIndex());
}

// --- header

void ListBox::SetCaptions(const ColumnTexts& captions) {
  delegate_->SetCaptions(captions);
  if (header_ == nullptr) {
    header_ = new ListHeader(
        [this](const QRect& line) {
          return delegate_->ColumnsOf(QRect(line.left(), line.top(), viewport()->width(), line.height()),
                                      fontMetrics());
        },
        this);
    connect(header_, &ListHeader::pressed, this, &ListBox::sortRequested);
    connect(lines_, &LineModel::columnsChanged, header_, qOverload<>(&QWidget::update));
  }
  header_->SetCaptions(captions);
  PlaceHeader();
}

// Above the lines, inside the frame.
void ListBox::PlaceHeader() {
  if (header_ == nullptr) return;
  const int height = std::max(RowHeight(), fontMetrics().height() + 10);
  setViewportMargins(0, height, 0, 0);
  const QRect inside = rect().adjusted(frameWidth(), frameWidth(), -frameWidth(), -frameWidth());
  header_->setGeometry(inside.left(), inside.top(), inside.width(), height);
}

void ListBox::resizeEvent(QResizeEvent* event) {
  QListView::resizeEvent(event);
  PlaceHeader();
}

void ListBox::changeEvent(QEvent* event) {
  QListView::changeEvent(event);
  if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) PlaceHeader();
}

int ListBox::RowHeight() const {
  return delegate_->RowHeight();
}

void ListBox::SetRowHeight(int height) {
  delegate_->SetRowHeight(height);
  scheduleDelayedItemsLayout();
}

bool ListBox::IsNumbered() const {
  return delegate_->IsNumbered();
}

void ListBox::SetNumbered(bool numbered) {
  delegate_->SetNumbered(numbered);
  viewport()->update();
}

void ListBox::SetMovable(bool movable) {
  movable_ = movable;
  setDragDropMode(movable ? InternalMove : NoDragDrop);
}

void ListBox::SetEmptyText(const QString& text) {
  if (text == emptyText_) return;
  emptyText_ = text;
  viewport()->update();
}

}  // namespace controls

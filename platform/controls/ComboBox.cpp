// SPDX-License-Identifier: MIT
#include "platform/controls/ComboBox.h"

#include "platform/runtime/Error.h"

#include <QAbstractItemView>
#include <QHelpEvent>
#include <QScreen>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QStandardItemModel>
#include <QStyleOptionComboBox>
#include <QToolTip>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace controls {

ComboBox::ComboBox(QWidget* parent) : QComboBox(parent) {
  setSizeAdjustPolicy(AdjustToMinimumContentsLengthWithIcon);
  setMinimumContentsLength(8);
}

void ComboBox::showPopup() {
  constexpr int kMargins = 24;  // of a line, left and right together
  const int longest = view()->sizeHintForColumn(0) + view()->verticalScrollBar()->sizeHint().width() + kMargins;
  view()->setMinimumWidth(std::min(std::max(longest, width()), screen()->availableSize().width()));
  QComboBox::showPopup();
}

bool ComboBox::event(QEvent* event) {
  if (event->type() != QEvent::ToolTip || !IsTextCut()) return QComboBox::event(event);
  QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), currentText(), this);
  return true;
}

bool ComboBox::IsTextCut() const {
  QStyleOptionComboBox option;
  initStyleOption(&option);
  const QRect field = style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, this);
  return fontMetrics().horizontalAdvance(currentText()) > field.width();
}

// QComboBox selects its first entry by itself; that is undone without a signal.
int ComboBox::AddItem(const QString& text, qint64 itemData) {
  const QSignalBlocker quiet(this);
  const int chosen = currentIndex();
  addItem(text, itemData);
  setCurrentIndex(chosen);
  return count() - 1;
}

void ComboBox::Clear() {
  const QSignalBlocker quiet(this);
  clear();
}

void ComboBox::Refill(const std::vector<Line>& lines) {
  const int before = currentIndex();
  const qint64 chosen = before >= 0 ? ItemData(before) : 0;
  {
    const QSignalBlocker quiet(this);
    clear();
    QList<QStandardItem*> items;
    items.reserve(static_cast<qsizetype>(lines.size()));
    for (const Line& line : lines) {
      items += new QStandardItem(line.text);
      items.back()->setData(line.itemData, Qt::UserRole);
    }
    // As addItem does, but all at once.
    if (!items.isEmpty()) qobject_cast<QStandardItemModel*>(model())->invisibleRootItem()->appendRows(items);
    setCurrentIndex(before >= 0 ? IndexOf(chosen) : -1);
  }
  if (before >= 0 && currentIndex() < 0) Q_EMIT currentIndexChanged(-1);
}

void ComboBox::SetListIndex(int index) {
  if (index < -1 || index >= count()) Text(index);
  if (index != currentIndex()) setCurrentIndex(index);  // QComboBox may signal -1 twice
}

QString ComboBox::Text(int index) const {
  if (index == -1) throw runtime::Error(u"Er is geen regel gekozen."_s);
  if (index < 0 || index >= count())
    throw runtime::Error(
        u"De keuzelijst heeft geen regel met nummer %1 (aantal regels: %2)."_s.arg(index).arg(count()));
  return itemText(index);
}

qint64 ComboBox::ItemData(int index) const {
  Text(index);
  return itemData(index).toLongLong();
}

int ComboBox::IndexOf(qint64 itemData) const {
  for (int index = 0; index < count(); ++index)
    if (this->itemData(index).toLongLong() == itemData) return index;
  return -1;
}

bool ComboBox::SelectWhereItemData(qint64 itemData) {
  setCurrentIndex(IndexOf(itemData));
  return currentIndex() >= 0;
}

}  // namespace controls

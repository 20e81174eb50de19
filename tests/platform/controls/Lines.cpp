// SPDX-License-Identifier: MIT
#include "tests/platform/controls/Lines.h"

#include <QCoreApplication>
#include <QMouseEvent>
#include <QTest>

using namespace Qt::StringLiterals;
using controls::ListBox;

Lines::Lines() : clicked(&list, qOverload<>(&ListBox::clicked)), lost(&list, &ListBox::selectionLost) {
  list.AddItems({{u"Appel"_s, 10}, {u"Banaan"_s, 20}, {u"Citroen"_s, 30}, {u"Druif"_s, 40}});
  list.resize(300, 200);
  list.show();
  QCoreApplication::processEvents();
}

void Lines::Click(int row, Qt::KeyboardModifiers keys) {
  QTest::mouseClick(list.viewport(), Qt::LeftButton, keys, Middle(row));
}

void Lines::MoveHolding(Qt::MouseButton button, QPoint to) {
  QWidget* view = list.viewport();
  QMouseEvent move(QEvent::MouseMove, to, view->mapToGlobal(to), Qt::NoButton, button, Qt::NoModifier);
  QCoreApplication::sendEvent(view, &move);
}

QPoint Lines::Middle(int row) {
  return list.visualRect(list.model()->index(row, 0)).center();
}

// SPDX-License-Identifier: MIT
#include "catalogue/OverviewKeys.h"

#include "platform/controls/ListBox.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QShortcut>

namespace {

bool IsTyped(const QKeyEvent& event) {
  const Qt::KeyboardModifiers modifiers = event.modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier);
  return modifiers == Qt::NoModifier && !event.text().isEmpty() && event.text().at(0).isPrint();
}

}  // namespace

OverviewKeys::OverviewKeys(const Targets& targets, QWidget* window) : QObject(window), targets_(targets) {
  targets_.list->installEventFilter(this);
  targets_.search->installEventFilter(this);
  const auto* find = new QShortcut(QKeySequence(Qt::CTRL | Qt::Key_F), window);
  connect(find, &QShortcut::activated, this, &OverviewKeys::GoToSearch);
  const auto* refill = new QShortcut(QKeySequence(Qt::Key_F5), window);
  connect(refill, &QShortcut::activated, this, &OverviewKeys::refillRequested);
}

bool OverviewKeys::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::KeyPress) return QObject::eventFilter(watched, event);
  auto& key = static_cast<QKeyEvent&>(*event);
  return watched == targets_.list ? ListKey(key) : SearchKey(key);
}

bool OverviewKeys::ListKey(QKeyEvent& event) {
  switch (event.key()) {
    case Qt::Key_Insert:
      targets_.nieuw->click();
      return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
      targets_.open->click();
      return true;
    case Qt::Key_Delete:
      targets_.verwijder->click();
      return true;
    case Qt::Key_Space:
      return false;
    default:
      break;
  }
  if (!IsTyped(event)) return false;
  targets_.search->setFocus(Qt::OtherFocusReason);
  targets_.search->end(false);
  QCoreApplication::sendEvent(targets_.search, &event);
  return true;
}

bool OverviewKeys::SearchKey(const QKeyEvent& event) {
  switch (event.key()) {
    case Qt::Key_Down:
    case Qt::Key_Return:
    case Qt::Key_Enter:
      GoToList();
      return true;
    case Qt::Key_Escape:
      if (targets_.search->text().isEmpty()) return false;
      targets_.search->clear();
      return true;
    default:
      return false;
  }
}

void OverviewKeys::GoToSearch() {
  targets_.search->setFocus(Qt::ShortcutFocusReason);
  targets_.search->selectAll();
}

// Selects the first visible line if none is selected, so that the next key acts on it.
void OverviewKeys::GoToList() {
  targets_.list->setFocus(Qt::OtherFocusReason);
  if (targets_.list->ListIndex() != -1) return;
  if (targets_.list->ShownCount() > 0) targets_.list->SetListIndex(targets_.list->ShownLine(0));
}

// SPDX-License-Identifier: MIT
#include "platform/desktop/EnterKey.h"

#include <QApplication>
#include <QKeyEvent>
#include <QPushButton>
#include <QToolButton>

namespace desktop {

namespace {

bool IsEnter(const QKeyEvent& key) {
  const Qt::KeyboardModifiers held = key.modifiers() & ~Qt::KeypadModifier;
  return held == Qt::NoModifier && (key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter);
}

// Not for check boxes and radio buttons: Enter triggers the default button there. Buttons with a menu are left to Qt.
QAbstractButton* AsButton(QObject* watched) {
  if (auto* button = qobject_cast<QPushButton*>(watched)) return button->menu() == nullptr ? button : nullptr;
  auto* tool = qobject_cast<QToolButton*>(watched);
  return tool != nullptr && tool->menu() == nullptr ? tool : nullptr;
}

}  // namespace

EnterKey::EnterKey(QApplication& application) : QObject(&application) {
  application.installEventFilter(this);
}

bool EnterKey::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::KeyPress) return false;
  const auto& key = static_cast<const QKeyEvent&>(*event);
  QAbstractButton* button = IsEnter(key) ? AsButton(watched) : nullptr;
  if (button == nullptr) return false;
  if (button->property("danger").toBool()) {
    event->ignore();  // the window handles it
  } else if (!key.isAutoRepeat()) {
    button->click();
  }
  return true;
}

}  // namespace desktop

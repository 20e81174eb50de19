// SPDX-License-Identifier: MIT
#include "tests/journeys/Hand.h"

#include <QCheckBox>
#include <QCoreApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QRadioButton>

namespace hand {
namespace {

constexpr int kMarkMiddle = 8;  // from the left edge: the mark of a check box or option button

QPoint SpotOf(const QWidget& control) {
  const bool marked =
      qobject_cast<const QCheckBox*>(&control) != nullptr || qobject_cast<const QRadioButton*>(&control) != nullptr;
  return marked ? QPoint(kMarkMiddle, control.height() / 2) : control.rect().center();
}

void PostMouse(QWidget& control, QEvent::Type type, QPoint at) {
  const Qt::MouseButtons held = type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton;
  QCoreApplication::postEvent(&control,
                              new QMouseEvent(type, at, control.mapToGlobal(at), Qt::LeftButton, held, Qt::NoModifier));
}

void PostKey(QWidget& control, int key, const QString& text, Qt::KeyboardModifiers modifiers) {
  for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
    QCoreApplication::postEvent(&control, new QKeyEvent(type, key, modifiers, text));
  }
}

}  // namespace

void Click(QWidget& control) {
  control.setFocus(Qt::MouseFocusReason);
  ClickAt(control, SpotOf(control));
}

void ClickAt(QWidget& control, QPoint at) {
  PostMouse(control, QEvent::MouseButtonPress, at);
  PostMouse(control, QEvent::MouseButtonRelease, at);
}

void DoubleClick(QWidget& control, QPoint at) {
  PostMouse(control, QEvent::MouseButtonPress, at);
  PostMouse(control, QEvent::MouseButtonRelease, at);
  PostMouse(control, QEvent::MouseButtonDblClick, at);
  PostMouse(control, QEvent::MouseButtonRelease, at);
}

void Press(QWidget& control, int key) {
  control.setFocus(Qt::TabFocusReason);
  PostKey(control, key, {}, Qt::NoModifier);
}

void Replace(QWidget& field, const QString& text) {
  field.setFocus(Qt::TabFocusReason);
  PostKey(field, Qt::Key_A, {}, Qt::ControlModifier);
  if (text.isEmpty()) PostKey(field, Qt::Key_Delete, {}, Qt::NoModifier);
  for (const QChar letter : text)
    PostKey(field, 0, letter, Qt::NoModifier);
}

}  // namespace hand

// SPDX-License-Identifier: MIT
#include "tests/support/Ui.h"

#include <QAbstractButton>
#include <QCheckBox>
#include <QLineEdit>
#include <QRadioButton>
#include <QTest>

namespace testing_support {

std::string ChildNames(const QWidget& parent) {
  std::string names;
  for (const QWidget* child : parent.findChildren<QWidget*>()) {
    if (!child->objectName().isEmpty() && !child->objectName().startsWith(QLatin1String("qt_"))) {
      names += child->objectName().toStdString() + ":" + child->metaObject()->className() + " ";
    }
  }
  return names;
}

void Click(const QWidget& window, const QString& button) {
  constexpr int kMark = 8;  // from the left edge to the middle of the mark
  auto& target = Child<QAbstractButton>(window, button);
  const bool hasMark = qobject_cast<QCheckBox*>(&target) != nullptr || qobject_cast<QRadioButton*>(&target) != nullptr;
  const QPoint at = hasMark ? QPoint(kMark, target.height() / 2) : target.rect().center();
  QTest::mouseClick(&target, Qt::LeftButton, Qt::NoModifier, at);
}

QString Text(const QWidget& window, const QString& field) {
  return Child<QLineEdit>(window, field).text();
}

void SetText(const QWidget& window, const QString& field, const QString& text) {
  Child<QLineEdit>(window, field).setText(text);
}

QString Focused(const QWidget& window) {
  const QWidget* widget = window.focusWidget();
  return widget == nullptr ? QString() : widget->objectName();
}

QString Plain(QString caption) {
  return caption.remove(u'&');
}

}  // namespace testing_support

// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QWidget>

#include <stdexcept>
#include <string>

// Operating and reading real windows. Controls are given by their object names; a name that does not exist fails with
// the names that do.
namespace testing_support {

// Object names of all children of that class, for failure messages.
std::string ChildNames(const QWidget& parent);

// The control with that name and type.
template <class Control>
Control& Child(const QWidget& parent, const QString& name) {
  auto* child = parent.findChild<Control*>(name);
  if (child == nullptr) {
    throw std::runtime_error("no control '" + name.toStdString() + "' of this type; there are: " + ChildNames(parent));
  }
  return *child;
}

// Clicks a button with the left mouse button; a check box or option on its mark.
void Click(const QWidget& window, const QString& button);

// The text of a line edit.
QString Text(const QWidget& window, const QString& field);
void SetText(const QWidget& window, const QString& field, const QString& text);

// Name of the control in the window that has the focus; empty without one.
QString Focused(const QWidget& window);

// The text without the mnemonic "&".
QString Plain(QString caption);

}  // namespace testing_support

// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

#include <stdexcept>
#include <string>

namespace testing_support {

// Object names of all children of that class, for failure messages.
std::string ChildNames(const QWidget& parent);

// The control with that name and type; fails with the names that exist.
template <class Control>
Control& Child(const QWidget& parent, const QString& name) {
  auto* child = parent.findChild<Control*>(name);
  if (child == nullptr) {
    throw std::runtime_error("no control '" + name.toStdString() + "' of this type; there are: " + ChildNames(parent));
  }
  return *child;
}

// The text without the mnemonic "&".
QString Plain(QString caption);

}  // namespace testing_support

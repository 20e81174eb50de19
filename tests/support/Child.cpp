// SPDX-License-Identifier: MIT
#include "tests/support/Child.h"

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

QString Plain(QString caption) {
  return caption.remove(u'&');
}

}  // namespace testing_support

// SPDX-License-Identifier: MIT
#include "platform/desktop/Owner.h"

#include <QApplication>
#include <QWidget>

namespace desktop {

QWidget* OwnerOrActive(QWidget* owner) {
  if (owner != nullptr) return owner;
  if (QWidget* modal = QApplication::activeModalWidget()) return modal;
  return QApplication::activeWindow();
}

}  // namespace desktop

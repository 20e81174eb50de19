// SPDX-License-Identifier: MIT
#include "platform/desktop/Windows.h"

#include <QApplication>
#include <QWidget>

namespace desktop {

QWidget* OwnerOrActive(QWidget* owner) {
  if (owner != nullptr) return owner;
  if (QWidget* modal = QApplication::activeModalWidget()) return modal;
  return QApplication::activeWindow();
}

void YieldToEvents() {
  QCoreApplication::processEvents(QEventLoop::AllEvents);
}

void RepaintWindows() {
  QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

}  // namespace desktop

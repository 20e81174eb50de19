// SPDX-License-Identifier: MIT
#include "platform/desktop/WaitPointer.h"

#include <QCursor>
#include <QGuiApplication>

namespace desktop {

WaitPointer::WaitPointer() {
  QGuiApplication::setOverrideCursor(Qt::WaitCursor);
}

WaitPointer::~WaitPointer() {
  QGuiApplication::restoreOverrideCursor();
}

ArrowPointer::ArrowPointer() : overridden_(QGuiApplication::overrideCursor() != nullptr) {
  if (overridden_) QGuiApplication::setOverrideCursor(Qt::ArrowCursor);
}

ArrowPointer::~ArrowPointer() {
  if (overridden_) QGuiApplication::restoreOverrideCursor();
}

}  // namespace desktop

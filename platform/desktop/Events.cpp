// SPDX-License-Identifier: MIT
#include "platform/desktop/Events.h"

#include <QCoreApplication>

namespace desktop {

void YieldToEvents() {
  QCoreApplication::processEvents(QEventLoop::AllEvents);
}

void RepaintWindows() {
  QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

}  // namespace desktop

// SPDX-License-Identifier: MIT
#pragma once

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QThread>

#include <functional>

// Handles events until it holds; false when it has not for so long that it never will.
inline bool WaitUntil(const std::function<bool()>& holds) {
  const QDeadlineTimer never(60000);
  while (!holds()) {
    if (never.hasExpired()) return false;
    QCoreApplication::processEvents();
    QThread::msleep(1);
  }
  return true;
}

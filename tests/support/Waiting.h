// SPDX-License-Identifier: MIT
#pragma once

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QThread>

#include <functional>

// Processes events until the condition holds; false after a timeout.
inline bool WaitUntil(const std::function<bool()>& holds) {
  const QDeadlineTimer never(60000);
  while (!holds()) {
    if (never.hasExpired()) return false;
    QCoreApplication::processEvents();
    QThread::msleep(1);
  }
  return true;
}

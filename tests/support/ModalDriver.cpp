// SPDX-License-Identifier: MIT
#include "tests/support/ModalDriver.h"

#include <QApplication>
#include <QDialog>
#include <QEvent>
#include <QPointer>
#include <QTimer>

#include <gtest/gtest.h>

namespace testing_support {

ModalDriver::ModalDriver() {
  qApp->installEventFilter(this);
}

ModalDriver::~ModalDriver() {
  for (const auto& step : steps_)
    ADD_FAILURE() << "window never opened: " << step.first.toStdString();
}

void ModalDriver::OnNext(const QString& windowName, std::function<void(QDialog&)> step) {
  steps_.emplace_back(windowName, std::move(step));
}

bool ModalDriver::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::Show && !steps_.empty() && watched->objectName() == steps_.front().first) {
    if (auto* window = qobject_cast<QDialog*>(watched)) {
      auto step = std::move(steps_.front().second);
      steps_.pop_front();
      QTimer::singleShot(0, window, [pointer = QPointer<QDialog>(window), step = std::move(step)] {
        if (pointer) step(*pointer);
      });
    }
  }
  return QObject::eventFilter(watched, event);
}

}  // namespace testing_support

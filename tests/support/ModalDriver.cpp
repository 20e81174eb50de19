// SPDX-License-Identifier: MIT
#include "tests/support/ModalDriver.h"

#include <QApplication>
#include <QDialog>
#include <QEvent>
#include <QPointer>
#include <QTimer>

#include <gtest/gtest.h>

namespace testing_support {
namespace {

constexpr int kPatience = 10000;  // ms

// A step that failed may not have closed its window, which nothing else would ever close.
void HideIfLeftOpen(QDialog* window) {
  QTimer::singleShot(kPatience, window, [window] {
    if (!window->isVisible() || !window->isModal()) return;
    ADD_FAILURE() << "window was left open: " << window->objectName().toStdString();
    window->hide();
  });
}

}  // namespace

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
        if (pointer) HideIfLeftOpen(pointer);
      });
    }
  }
  return QObject::eventFilter(watched, event);
}

}  // namespace testing_support

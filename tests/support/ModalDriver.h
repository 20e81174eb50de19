// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QString>

#include <deque>
#include <functional>
#include <utility>

class QDialog;

namespace testing_support {

// Drives modal windows that open while a test's own call is still running: each step waits for the window of that name
// and runs inside its event loop, in order. A step that did not run fails the test, and so does a window that stays
// open ten seconds after its step; it is then hidden, so that the call returns.
class ModalDriver : public QObject {
  Q_OBJECT

 public:
  ModalDriver();
  ~ModalDriver() override;

  void OnNext(const QString& windowName, std::function<void(QDialog& window)> step);
  bool Done() const { return steps_.empty(); }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  std::deque<std::pair<QString, std::function<void(QDialog&)>>> steps_;
};

}  // namespace testing_support

// SPDX-License-Identifier: MIT
#pragma once

#include <QPointer>
#include <QWidget>

namespace desktop {

// For a step that may disable the control it was asked for with: when it does, the focus goes to `home` at the end of
// the step. Qt gives it to whatever is next, where the key pressed once more would do something else.
class FocusFallback {
 public:
  explicit FocusFallback(QWidget& home) : home_(home), before_(home.window()->focusWidget()) {}
  ~FocusFallback() {
    if (before_ != nullptr && !before_->isEnabled()) home_.setFocus(Qt::OtherFocusReason);
  }
  FocusFallback(const FocusFallback&) = delete;
  FocusFallback& operator=(const FocusFallback&) = delete;

 private:
  QWidget& home_;
  const QPointer<QWidget> before_;
};

}  // namespace desktop

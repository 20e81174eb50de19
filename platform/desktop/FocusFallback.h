// SPDX-License-Identifier: MIT
#pragma once

#include <QPointer>
#include <QWidget>

namespace desktop {

// For code that may disable the focused control: if it does, the focus moves to `home` at the end of the scope. Qt
// would move it to the next control, where pressing the same key again would do something else.
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

#pragma once
#include <QPointer>
#include <QWidget>

namespace desktop {

// For a step that may disable the control it was asked for with: when it does, the focus goes to `home` at the end of
// the step. Qt gives it to whatever is next, where the key pressed once more would do something else.
class FocusHome {
 public:
  explicit FocusHome(QWidget& home) : home_(home), before_(home.window()->focusWidget()) {}
  ~FocusHome() {
    if (before_ != nullptr && !before_->isEnabled()) home_.setFocus(Qt::OtherFocusReason);
  }
  FocusHome(const FocusHome&) = delete;
  FocusHome& operator=(const FocusHome&) = delete;

 private:
  QWidget& home_;
  const QPointer<QWidget> before_;
};

}  // namespace desktop

// SPDX-License-Identifier: MIT
#include "platform/desktop/InputBox.h"

#include "platform/desktop/InputDialog.h"
#include "platform/desktop/WaitPointer.h"
#include "platform/desktop/Windows.h"

namespace desktop {

std::optional<QString> AskText(QWidget* owner, const QString& prompt, const QString& title,
                               const QString& defaultText) {
  const ArrowPointer arrow;
  InputDialog dialog(OwnerOrActive(owner), prompt, title, defaultText);
  if (InputBoxScript* script = InputBoxScript::Active()) dialog.RunScript(*script);
  if (dialog.exec() != QDialog::Accepted) return std::nullopt;
  return dialog.Typed();
}

InputBoxScript::InputBoxScript() : previous_(active_) {
  active_ = this;
}

InputBoxScript::~InputBoxScript() {
  active_ = previous_;
}

InputBoxScript* InputBoxScript::Active() {
  return active_;
}

std::optional<QString> InputBoxScript::TakeAnswer() {
  if (answers_.empty()) return std::nullopt;
  std::optional<QString> answer;
  answer.swap(answers_.front());
  answers_.pop_front();
  return answer;
}

}  // namespace desktop

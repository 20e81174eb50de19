// SPDX-License-Identifier: MIT
#include "platform/desktop/MessageBox.h"

#include "platform/desktop/ErrorHistory.h"
#include "platform/desktop/MessageDialog.h"
#include "platform/desktop/WaitPointer.h"
#include "platform/desktop/Windows.h"

#include <QApplication>

#include <utility>

namespace desktop {

int ShowMessageBox(QWidget* owner, const QString& text, int style, const QString& title) {
  constexpr int kIconMask = 0xf0;
  if ((style & kIconMask) == runtime::kStyleCritical) NoteError(title, text);
  const ArrowPointer arrow;
  MessageDialog dialog(OwnerOrActive(owner), text, style, title);
  if (MessageBoxScript* script = MessageBoxScript::Active()) dialog.RunScript(*script);
  return dialog.exec();
}

void ShowUserMessagesAsBoxes() {
  runtime::SetUserMessageSink(
      [](const QString& text, int style, const QString& title) { return ShowMessageBox(nullptr, text, style, title); });
}

MessageBoxScript::MessageBoxScript() : previous_(active_) {
  active_ = this;
}

MessageBoxScript::MessageBoxScript(std::initializer_list<int> answers) : MessageBoxScript() {
  answers_.assign(answers.begin(), answers.end());
}

MessageBoxScript::~MessageBoxScript() {
  active_ = previous_;
}

MessageBoxScript* MessageBoxScript::Active() {
  return active_;
}

int MessageBoxScript::TakeAnswer(int defaultAnswer) {
  if (answers_.empty()) return defaultAnswer;
  const int answer = answers_.front();
  answers_.pop_front();
  return answer;
}

}  // namespace desktop

// SPDX-License-Identifier: MIT
#pragma once

#include "platform/runtime/UserMessage.h"

#include <QString>
#include <QStringList>

#include <deque>
#include <initializer_list>
#include <vector>

class QWidget;

namespace desktop {

using runtime::kAnswerCancel;
using runtime::kAnswerNo;
using runtime::kAnswerOk;
using runtime::kAnswerYes;

// Shows a modal message box and returns the answer; styles and answers are those of runtime::ShowUserMessage.
// Critical boxes are noted in the error history. `owner` null: the active modal window, or else the active window.
// Shows the arrow pointer while the box is open. User-interface thread only.
int ShowMessageBox(QWidget* owner, const QString& text, int style, const QString& title);

// Makes runtime::ShowUserMessage show message boxes. Call once at the start of a program with windows.
void ShowUserMessagesAsBoxes();

// A box recorded by a script.
struct ShownMessageBox {
  QString title;
  QString text;
  int style = 0;
  QStringList buttons;    // captions from left to right, without mnemonics
  int defaultAnswer = 0;  // answer of the default button
  int answer = 0;         // answer of the clicked button
};

// For tests and the screenshot tour: while an instance exists, each box is shown as usual and its real button is
// clicked. Answers are used in the order given; without one left the default button is clicked. Nests: the newest
// instance is used.
class MessageBoxScript {
 public:
  MessageBoxScript();
  explicit MessageBoxScript(std::initializer_list<int> answers);
  ~MessageBoxScript();
  MessageBoxScript(const MessageBoxScript&) = delete;
  MessageBoxScript& operator=(const MessageBoxScript&) = delete;

  void Answer(int answer) { answers_.push_back(answer); }
  const std::vector<ShownMessageBox>& Shown() const { return shown_; }
  const ShownMessageBox& Last() const { return shown_.at(shown_.size() - 1); }
  // Number of unused answers.
  std::size_t Left() const { return answers_.size(); }

  static MessageBoxScript* Active();

 private:
  friend class MessageDialog;
  int TakeAnswer(int defaultAnswer);

  std::deque<int> answers_;
  std::vector<ShownMessageBox> shown_;
  MessageBoxScript* previous_;
  static inline MessageBoxScript* active_ = nullptr;
};

}  // namespace desktop

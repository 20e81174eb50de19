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
// `owner` null: the active modal window, or the active one. The wait pointer is lifted while the box is open.
// User-interface thread only.
int ShowMessageBox(QWidget* owner, const QString& text, int style, const QString& title);

// From now on every runtime::ShowUserMessage is a message box. Called once at the start of a program with windows.
void ShowUserMessagesAsBoxes();

// What was on screen, as a script saw it.
struct ShownMessageBox {
  QString title;
  QString text;
  int style = 0;
  QStringList buttons;    // captions from left to right, without mnemonics
  int defaultAnswer = 0;  // what Enter would have answered
  int answer = 0;         // what was clicked
};

// For tests and tours: while one lives, each box is opened as usual and its real button is clicked as soon as the box
// runs. Answers are taken in the order given; without one, the default button is clicked. Scripts nest: the
// youngest answers.
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
  // Answers that no box has asked for yet.
  std::size_t Left() const { return answers_.size(); }

  static MessageBoxScript* Active();

 private:
  friend class MessageDialog;
  int TakeAnswer(int defaultAnswer);

  std::deque<int> answers_;
  std::vector<ShownMessageBox> shown_;
  MessageBoxScript* older_;
  static inline MessageBoxScript* youngest_ = nullptr;
};

}  // namespace desktop

// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <functional>

namespace runtime {

// Messages and questions to the user, without knowing how they are shown: a program with windows shows boxes, a command
// prints them. User-interface thread only.

// What the user chose. Closing the window or Esc does not answer a question that has Yes and No only.
inline constexpr int kAnswerOk = 1;
inline constexpr int kAnswerCancel = 2;
inline constexpr int kAnswerYes = 6;
inline constexpr int kAnswerNo = 7;

// A style is the sum of
//   buttons  0 OK, 3 Yes/No/Cancel, 4 Yes/No (anything else: OK)
//   icon     16 critical, 32 question, 48 exclamation, 64 information (0: none)
//   default  0 first button, 256 second, 512 third
inline constexpr int kStyleCritical = 16;
inline constexpr int kStyleYesNo = 36;
inline constexpr int kStyleYesNoCancel = 35;
inline constexpr int kStyleYesNoDefaultNo = 292;
inline constexpr int kStyleExclamation = 48;
inline constexpr int kStyleInformation = 64;

// True when the style has more than an OK button.
constexpr bool IsQuestion(int style) {
  return (style & 15) != 0;
}

using UserMessageSink = std::function<int(const QString& text, int style, const QString& title)>;

// Shows a message and returns the user's choice. Without a sink the text is written to standard error and a question
// returns kAnswerCancel, which no caller takes as consent.
int ShowUserMessage(const QString& text, int style, const QString& title);

// Sets the sink of all messages; called once at the start of the program.
void SetUserMessageSink(UserMessageSink sink);

// Replaces the sink for its lifetime. Scopes nest.
class UserMessageScope {
 public:
  explicit UserMessageScope(UserMessageSink sink);
  ~UserMessageScope();
  UserMessageScope(const UserMessageScope&) = delete;
  UserMessageScope& operator=(const UserMessageScope&) = delete;

 private:
  UserMessageSink previous_;
};

}  // namespace runtime

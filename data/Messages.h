// SPDX-License-Identifier: MIT
#pragma once

#include "platform/runtime/UserMessage.h"

#include <QString>

// The catalogue of questions and errors: rows of appMessages in the local database, shown by number.

struct MsgElements {
  QString text;
  int style = 0;  // message-box style value: icon, buttons and default button
};

// The finished text and style of a message, without showing anything. A number without a row gives the fallback text.
// An error is shown under the name "GetMsgElements"; the text is then null.
MsgElements GetMsgElements(int msgNr, const QString& value1 = {}, const QString& value2 = {},
                           const QString& value3 = {});

// Shows the message, titled "Items", and returns the button chosen: OK 1, Cancel 2, Yes 6, No 7. When its text could
// not be read nothing more is shown and the answer is 0. The answer is kept in global.lastAnswer.
int ShowAppMessage(int msgNr, const QString& value1 = {}, const QString& value2 = {}, const QString& value3 = {});

// A fixed text with a style value, titled "Items"; the answer as above, kept likewise.
int ShowItemsMessage(const QString& text, int style);

// The answers are those of runtime::ShowUserMessage, and:
inline constexpr int kAnswerNone = 0;
using runtime::kAnswerCancel;
using runtime::kAnswerNo;
using runtime::kAnswerOk;
using runtime::kAnswerYes;
using runtime::kStyleCritical;
using runtime::kStyleExclamation;
using runtime::kStyleInformation;
using runtime::kStyleYesNo;
using runtime::kStyleYesNoDefaultNo;

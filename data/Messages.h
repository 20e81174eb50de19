// SPDX-License-Identifier: MIT
#pragma once

#include "platform/runtime/UserMessage.h"

#include <QString>

// Questions and errors stored in table appMessages of the local database, shown by number.

struct MsgElements {
  QString text;
  int style = 0;  // message-box style value: icon, buttons and default button
};

// Text and style of a message with its values filled in; shows nothing. A number without a row gives a fallback text.
// An error is shown in a box titled "GetMsgElements"; the text is then null.
MsgElements GetMsgElements(int msgNr, const QString& value1 = {}, const QString& value2 = {},
                           const QString& value3 = {});

// Shows the message in a box titled "Items" and returns the chosen button (kAnswer...), or kAnswerNone when its text
// could not be read. Also stores the result in global.lastAnswer.
int ShowAppMessage(int msgNr, const QString& value1 = {}, const QString& value2 = {}, const QString& value3 = {});

// The same for a given text and style value.
int ShowItemsMessage(const QString& text, int style);

// The values of runtime::ShowUserMessage, and kAnswerNone.
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

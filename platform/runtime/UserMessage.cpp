// SPDX-License-Identifier: MIT
#include "platform/runtime/UserMessage.h"

#include <iostream>
#include <utility>

namespace runtime {
namespace {

UserMessageSink sinkInUse;

}  // namespace

int ShowUserMessage(const QString& text, int style, const QString& title) {
  if (sinkInUse) return sinkInUse(text, style, title);
  std::cerr << text.toStdString() << '\n';
  return IsQuestion(style) ? kAnswerCancel : kAnswerOk;
}

void SetUserMessageSink(UserMessageSink sink) {
  sinkInUse = std::move(sink);
}

UserMessageScope::UserMessageScope(UserMessageSink sink) : previous_(std::exchange(sinkInUse, std::move(sink))) {}

UserMessageScope::~UserMessageScope() {
  sinkInUse = std::move(previous_);
}

}  // namespace runtime

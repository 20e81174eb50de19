// SPDX-License-Identifier: MIT
#pragma once

#include "platform/runtime/UserMessage.h"

#include <QCursor>
#include <QGuiApplication>
#include <QStringList>

namespace testing_support {

// While it exists, messages are answered without being shown; it keeps the titles of those that appeared while the wait
// pointer was set.
class PointerWatch {
 public:
  explicit PointerWatch(int answer = runtime::kAnswerOk)
      : messages_([this, answer](const QString&, int, const QString& title) {
          if (IsHourglass()) titles_ += title;
          return answer;
        }) {}

  const QStringList& UnderHourglass() const { return titles_; }
  static bool IsHourglass() {
    const QCursor* cursor = QGuiApplication::overrideCursor();
    return cursor != nullptr && cursor->shape() == Qt::WaitCursor;
  }

 private:
  QStringList titles_;
  runtime::UserMessageScope messages_;
};

}  // namespace testing_support

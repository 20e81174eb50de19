// SPDX-License-Identifier: MIT
#include "platform/desktop/ErrorHistory.h"

#include "platform/runtime/Clock.h"

#include <QRegularExpression>

namespace desktop {
namespace {

using namespace Qt::StringLiterals;

QList<ShownError> shownErrors;

}  // namespace

void NoteError(const QString& title, const QString& text) {
  if (shownErrors.size() == kErrorsKept) shownErrors.removeFirst();
  shownErrors.append({runtime::Now(), title, text});
}

const QList<ShownError>& RecentErrors() {
  return shownErrors;
}

QString WithoutPasswords(QString text) {
  // A password may contain any character, also "@", "/" and "?", when it was typed without escapes: up to the last "@".
  // "host:5432" is a port.
  static const QRegularExpression kInAddress(u"(postgres(?:ql)?://[^\\s/?@:]*):(?!\\d+(?:[/?,\\s]|$))\\S*@"_s,
                                             QRegularExpression::CaseInsensitiveOption);
  static const QRegularExpression kOption(
      u"((?:password|passwd|pwd)\\s*=\\s*)('(?:\\\\.|[^'\\\\])*'|\"[^\"]*\"|[^\\s&;'\"\\\\]+)"_s,
      QRegularExpression::CaseInsensitiveOption);
  text.replace(kInAddress, u"\\1:***@"_s);
  return text.replace(kOption, u"\\1***"_s);
}

}  // namespace desktop

// SPDX-License-Identifier: MIT
#include "data/Text.h"

#include "platform/runtime/Numbers.h"

QString RemReservedChr(const QString& text) {
  QString clean = text;
  clean.replace(u'"', u' ');
  clean.replace(u'\'', u' ');
  return runtime::TrimBlanks(clean);
}

bool IsKull(const QVariant& value) {
  return !value.isValid() || value.isNull() || runtime::TrimBlanks(value.toString()).isEmpty();
}

QString GetFile(const QString& path) {
  return path.mid(path.lastIndexOf(u'\\') + 1);
}

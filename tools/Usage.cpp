// SPDX-License-Identifier: MIT
#include "tools/Usage.h"

using namespace Qt::StringLiterals;

Usage Usage::Of(const QString& text) {
  Usage usage;
  bool optional = false;
  bool isValue = false;  // of the preceding option
  for (const QString& word : text.split(u' ', Qt::SkipEmptyParts)) {
    const bool closes = word.endsWith(u']');
    const QString bare = QString(word).remove(u'[').remove(u']');
    optional = optional || word.startsWith(u'[');
    if (bare.startsWith(u"--"_s)) {
      (closes ? usage.flags : usage.valuedOptions) += bare;
      isValue = !closes;
    } else if (isValue) {
      isValue = false;
    } else {
      if (!optional) ++usage.leastWords;
      usage.mostWords = bare.endsWith(u"..."_s) ? -1 : usage.mostWords + 1;
    }
    optional = optional && !closes;
  }
  return usage;
}

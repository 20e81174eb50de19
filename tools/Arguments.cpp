// SPDX-License-Identifier: MIT
#include "tools/Arguments.h"

#include <limits>

using namespace Qt::StringLiterals;

Arguments::Arguments(const QStringList& words, const Usage& usage) {
  for (qsizetype i = 0; i < words.size(); ++i) {
    const QString& word = words[i];
    if (word.isEmpty()) throw UseError(u"Een leeg woord kan hier niet."_s);
    if (!word.startsWith(u"--"_s)) {
      plain_ += word;
    } else if (usage.flags.contains(word)) {
      options_.insert(word, {});
    } else if (!usage.valuedOptions.contains(word)) {
      throw UseError(u"De optie '%1' bestaat niet."_s.arg(word));
    } else if (i + 1 == words.size()) {
      throw UseError(u"Bij de optie '%1' hoort een waarde."_s.arg(word));
    } else {
      options_.insert(word, words[++i]);
    }
  }
}

std::optional<int> Arguments::Number(const QString& option, int most) const {
  if (!Has(option)) return std::nullopt;
  bool isNumber = false;
  const int number = Value(option).toInt(&isNumber);
  if (isNumber && number >= 0 && number <= most) return number;
  throw UseError(u"Bij %1 hoort een getal van 0 tot %2; '%3' kan niet."_s.arg(option).arg(most).arg(Value(option)));
}

qint16 Arguments::Station() const {
  return static_cast<qint16>(Number(u"--station"_s, std::numeric_limits<qint16>::max()).value_or(0));
}

#include "tools/Arguments.h"

#include "platform/runtime/Error.h"

using namespace Qt::StringLiterals;

Arguments::Arguments(const QStringList& words, const QStringList& valued, const QStringList& flags) {
  for (qsizetype i = 0; i < words.size(); ++i) {
    const QString& word = words[i];
    if (!word.startsWith(u"--"_s)) {
      plain_ += word;
    } else if (flags.contains(word)) {
      options_.insert(word, u"1"_s);
    } else if (!valued.contains(word)) {
      throw runtime::Error(u"De optie '%1' bestaat niet."_s.arg(word));
    } else if (i + 1 == words.size()) {
      throw runtime::Error(u"Bij de optie '%1' hoort een waarde."_s.arg(word));
    } else {
      options_.insert(word, words[++i]);
    }
  }
}

// SPDX-License-Identifier: MIT
#include "platform/dao/EngineMessages.h"

#include "platform/dao/SqlText.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace dao {
namespace {

struct Translation {
  QString pattern;  // regular expression for the complete message of SQLite; its groups fill in %1, %2
  QString reason;
};

const QList<Translation>& Translations() {
  static const QList<Translation> kList = {
      {u"near \"(.*)\": syntax error"_s, u"syntaxisfout bij '%1'"_s},
      {u"incomplete input"_s, u"de instructie is niet volledig"_s},
      {u"no such table: (.*)"_s, u"de tabel '%1' bestaat niet"_s},
      {u"no such column: (.*?)(?: - should this be a string literal in single-quotes\\?)?"_s,
       u"het veld '%1' bestaat niet"_s},
      {u"no such function: (.*)"_s, u"de functie %1 bestaat niet"_s},
      {u"no tables specified"_s, u"er is geen tabel genoemd"_s},
      {u"ambiguous column name: (.*)"_s, u"het veld '%1' komt in meer dan een tabel voor"_s},
      {u"table .* has (\\d+) columns but (\\d+) values were supplied"_s, u"%2 waarden voor %1 velden"_s},
      {u"(\\d+) values for (\\d+) columns"_s, u"%1 waarden voor %2 velden"_s},
      {u"wrong number of arguments to function (.*)\\(\\)"_s, u"de functie %1 krijgt een verkeerd aantal waarden"_s},
      {u"misuse of aggregate:? ?(?:function )?(.*)\\(\\)"_s, u"de functie %1 is hier niet toegestaan"_s},
      {u"sub-select returns (\\d+) columns - expected (\\d+)"_s, u"een subquery geeft %1 velden in plaats van %2"_s},
      {u"row value misused"_s, u"een subquery geeft meer dan een veld"_s},
      {u"SELECTs to the left and right of UNION(?: ALL)? do not have the same number of result columns"_s,
       u"de delen van de UNION hebben niet even veel velden"_s},
      {u"not authorized"_s, u"dat is niet toegestaan"_s},
      {u"out of memory"_s, u"er is onvoldoende geheugen"_s},
      {u"integer overflow"_s, u"overloop"_s}};
  return kList;
}

// A name or literal as the user wrote it, from the form that the rewriter gave it.
QString AsWritten(QString text, const Statement& statement) {
  if (text.startsWith(u'?')) {
    const qsizetype number = text.mid(1).toLongLong();
    if (number >= 1 && number <= statement.texts.size()) return statement.texts[number - 1];
  }
  if (text.size() >= 2 && text.startsWith(u'"') && text.endsWith(u'"')) text = text.mid(1, text.size() - 2);
  return text.replace(u"\"\""_s, u"\""_s);
}

QString Reason(const Statement& statement, const QString& message) {
  for (const Translation& translation : Translations()) {
    const QRegularExpression pattern(QRegularExpression::anchoredPattern(translation.pattern));
    const QRegularExpressionMatch match = pattern.match(message);
    if (!match.hasMatch()) continue;
    QString reason = translation.reason;
    for (int group = 1; group <= match.lastCapturedIndex(); ++group) {
      reason.replace(u"%%1"_s.arg(group), AsWritten(match.captured(group), statement));
    }
    return reason;
  }
  return message;
}

}  // namespace

QString StatementError(const Statement& statement, const QString& pathText, const QString& message) {
  return u"De SQL-instructie kan niet worden uitgevoerd op '%1': %2.\n%3"_s.arg(pathText, Reason(statement, message),
                                                                                Shown(statement.source));
}

}  // namespace dao

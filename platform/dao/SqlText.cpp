// SPDX-License-Identifier: MIT
#include "platform/dao/SqlText.h"

#include "platform/runtime/Error.h"

using namespace Qt::StringLiterals;

namespace dao {
namespace {

constexpr qsizetype kLongestShown = 600;

template <class Mapping>
QString Mapped(QString text, Mapping mapping) {
  for (QChar& c : text)
    c = mapping(c);
  return text;
}

}  // namespace

QString QuotedName(const QString& name) {
  if (!name.contains(u'"')) return u'"' + name + u'"';
  QString doubled = name;
  doubled.replace(u"\""_s, u"\"\""_s);
  return u'"' + doubled + u'"';
}

// The dialect quotes texts as names.
QString TextLiteral(const QString& text) {
  return QuotedName(text);
}

QString UCase(const QString& text) {
  return Mapped(text, [](QChar c) { return c.toUpper(); });
}

QString LCase(const QString& text) {
  return Mapped(text, [](QChar c) { return c.toLower(); });
}

QString Shown(const QString& sql) {
  return sql.size() <= kLongestShown ? sql : QString(sql.left(kLongestShown) + u" ..."_s);
}

void ThrowSyntaxError(const QString& sql, const QString& reason) {
  throw runtime::Error(u"Syntaxisfout in de SQL-instructie: %1.\n%2"_s.arg(reason, Shown(sql)));
}

}  // namespace dao

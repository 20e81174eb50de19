// SPDX-License-Identifier: MIT
#include "bench/PgbenchScript.h"

#include <QRegularExpression>
#include <QtEndian>

using namespace Qt::StringLiterals;

namespace bench {
namespace {

constexpr qsizetype kLengthSize = 4;

qsizetype LengthAt(const QByteArray& bytes, qsizetype at) {
  return qFromBigEndian<qint32>(bytes.constData() + at);
}

// One query, whose statements stay in one message: "\;" between them.
QString ScriptLine(QString query) {
  while (query.endsWith(u';'))
    query.chop(1);
  return query.replace(u";"_s, u"\\;"_s) + u";\n";
}

}  // namespace

QList<QByteArray> QueriesIn(const QByteArray& sent) {
  QList<QByteArray> queries;
  qsizetype at = LengthAt(sent, 0);  // the start message has no type
  while (at + 1 + kLengthSize <= sent.size()) {
    const qsizetype length = LengthAt(sent, at + 1);
    // A text ends with a zero byte.
    if (sent[at] == 'Q') queries += sent.mid(at + 1 + kLengthSize, length - kLengthSize - 1);
    at += 1 + length;
  }
  return queries;
}

QByteArray PgbenchScript(const QList<QByteArray>& queries, const QList<QPair<QString, QString>>& variables,
                         const QByteArray& settings) {
  static const QRegularExpression kToken(u"'[0-9a-f]{8}(-[0-9a-f]{4}){3}-[0-9a-f]{12}'"_s);
  QByteArray script = settings;
  for (const QByteArray& query : queries) {
    QString text = QString::fromUtf8(query);
    text.replace(kToken, u"pg_catalog.gen_random_uuid()"_s);
    for (const auto& [number, variable] : variables)
      text.replace(QRegularExpression(u"\\b%1\\b"_s.arg(number)), u':' + variable);
    script += ScriptLine(text).toUtf8();
  }
  return script;
}

}  // namespace bench

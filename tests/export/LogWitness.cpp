// SPDX-License-Identifier: MIT
#include "tests/export/LogWitness.h"

#include <QDir>
#include <QFile>

#include <stdexcept>

using namespace Qt::StringLiterals;

QStringList StatementsInFiles(const QString& folder) {
  QStringList statements;
  for (const QString& name : QDir(folder).entryList({u"*.tql"_s}, QDir::Files, QDir::Name)) {
    QFile file(folder + u'/' + name);
    if (!file.open(QIODevice::ReadOnly)) throw std::runtime_error("cannot be read: " + name.toStdString());
    QStringList lines = QString::fromLatin1(file.readAll()).split(u";\r\n"_s);
    if (!lines.takeLast().isEmpty()) throw std::runtime_error("not complete: " + name.toStdString());
    statements += lines;
  }
  return statements;
}

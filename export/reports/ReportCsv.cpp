// SPDX-License-Identifier: MIT
#include "export/reports/ReportCsv.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace {

// A spreadsheet executes a cell that begins with these characters as a formula, and cells contain names from the
// catalogue. A plus or minus followed only by a number is harmless.
bool IsFormula(const QString& text) {
  static const QRegularExpression kFormula(u"\\A\\s*([=@]|[+-].*[^0-9 ,./:+-])"_s,
                                           QRegularExpression::DotMatchesEverythingOption);
  return kFormula.match(text).hasMatch();
}

QString Field(QString text) {
  if (IsFormula(text)) text.prepend(u'\'');
  const bool plain = !text.contains(u';') && !text.contains(u'"') && !text.contains(u'\n') && !text.contains(u'\r') &&
                     !text.startsWith(u' ') && !text.endsWith(u' ');
  return plain ? text : u'"' + text.replace(u'"', u"\"\""_s) + u'"';
}

QString Line(const QStringList& fields) {
  QStringList texts;
  for (const QString& field : fields)
    texts += Field(field);
  return texts.join(u';') + u"\r\n"_s;
}

QStringList Titles(const Report& report) {
  QStringList titles;
  if (!report.groupTitle.isEmpty()) titles << report.groupTitle << u"Toelichting"_s;
  for (const Report::Column& column : report.columns)
    titles += column.title;
  return titles;
}

}  // namespace

QByteArray CsvOf(const Report& report) {
  QString text = QChar(0xFEFF) + Line(Titles(report));
  for (const Report::Group& group : report.groups) {
    const QStringList head = report.groupTitle.isEmpty() ? QStringList() : QStringList{group.name, group.note};
    for (const QStringList& line : group.lines)
      text += Line(head + line);
    if (group.lines.empty()) text += Line(head + QStringList(static_cast<qsizetype>(report.columns.size())));
  }
  return text.toUtf8();
}

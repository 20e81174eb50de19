#include "tools/Csv.h"

#include <QDateTime>
#include <QStringList>

using namespace Qt::StringLiterals;

namespace {

QString Quoted(const QString& text) {
  const bool needed =
      text.isEmpty() || text.contains(u'"') || text.contains(u',') || text.contains(u'\n') || text.contains(u'\r');
  return needed ? u'"' + QString(text).replace(u'"', u"\"\""_s) + u'"' : text;
}

}  // namespace

void WriteCsvLine(const QStringList& fields, std::ostream& out) {
  out << fields.join(u',').toStdString() << "\r\n";
}

QString CsvField(const QVariant& value) {
  if (!value.isValid() || value.isNull()) return {};
  switch (value.typeId()) {
    case QMetaType::Bool:
      return value.toBool() ? u"-1"_s : u"0"_s;
    case QMetaType::QDateTime:
      return value.toDateTime().toString(u"yyyy-MM-dd HH:mm:ss"_s);
    case QMetaType::QByteArray:
      return QString::fromLatin1(value.toByteArray().toHex());
    case QMetaType::Double:
      return QString::number(value.toDouble(), 'g', QLocale::FloatingPointShortest);
    default:
      return Quoted(value.toString());
  }
}

void WriteCsv(dao::Recordset& rows, std::ostream& out) {
  const QStringList names = rows.FieldNames();
  QStringList header;
  for (const QString& name : names)
    header += Quoted(name);
  WriteCsvLine(header, out);
  for (; !rows.Eof(); rows.MoveNext()) {
    QStringList fields;
    for (int i = 0; i < names.size(); ++i)
      fields += CsvField(rows.Field(i));
    WriteCsvLine(fields, out);
  }
}

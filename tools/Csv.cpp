// SPDX-License-Identifier: MIT
#include "tools/Csv.h"

#include <QDateTime>
#include <QStringList>

using namespace Qt::StringLiterals;

namespace {

std::u16string_view View(const QString& text) {
  return {reinterpret_cast<const char16_t*>(text.utf16()), static_cast<std::size_t>(text.size())};
}

void AddField(CsvLine& line, const QVariant& value) {
  if (!value.isValid() || value.isNull()) return line.AddNull();
  switch (value.typeId()) {
    case QMetaType::Bool:
      return line.AddWhole(value.toBool() ? -1 : 0);
    case QMetaType::Int:
    case QMetaType::LongLong:
      return line.AddWhole(value.toLongLong());
    case QMetaType::Double:
      return line.AddNumber(value.toDouble());
    case QMetaType::QDateTime:
      return line.AddText(value.toDateTime().toString(u"yyyy-MM-dd HH:mm:ss"_s).toStdString());
    case QMetaType::QByteArray: {
      const QByteArray bytes = value.toByteArray();
      return line.AddBinary({reinterpret_cast<const std::uint8_t*>(bytes.constData()), std::size_t(bytes.size())});
    }
    default:
      return line.AddText(View(value.toString()));
  }
}

}  // namespace

QString CsvField(const QVariant& value) {
  CsvLine line;
  AddField(line, value);
  return QString::fromStdString(line.Text());
}

void WriteCsvLine(const QStringList& fields, std::ostream& out) {
  out << fields.join(u',').toStdString() << "\r\n";
}

void WriteCsv(dao::Recordset& rows, std::ostream& out) {
  CsvLine line;
  const QStringList names = rows.FieldNames();
  for (const QString& name : names)
    line.AddText(View(name));
  line.End();
  for (; !rows.Eof(); rows.MoveNext()) {
    for (int i = 0; i < names.size(); ++i)
      AddField(line, rows.Field(i));
    line.End();
    out << line.Take();
  }
  out << line.Take();
}

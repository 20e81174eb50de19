// SPDX-License-Identifier: MIT
#include "tools/Commands.h"
#include "tools/DatabaseArgument.h"

using namespace Qt::StringLiterals;

namespace {

QString TypeText(const dao::FieldDef& field) {
  switch (field.type) {
    case dao::FieldType::Boolean:
      return u"Boolean"_s;
    case dao::FieldType::Byte:
      return u"Byte"_s;
    case dao::FieldType::Integer:
      return u"Integer"_s;
    case dao::FieldType::Long:
      return u"Long"_s;
    case dao::FieldType::Currency:
      return u"Currency"_s;
    case dao::FieldType::Single:
      return u"Single"_s;
    case dao::FieldType::Double:
      return u"Double"_s;
    case dao::FieldType::Date:
      return u"Date"_s;
    case dao::FieldType::Text:
      return u"Text(%1)"_s.arg(field.size);
    case dao::FieldType::Memo:
      return u"Memo"_s;
    case dao::FieldType::Binary:
      return field.size > 0 ? u"Binary(%1)"_s.arg(field.size) : u"Binary"_s;
    case dao::FieldType::Guid:
      return u"Guid"_s;
    case dao::FieldType::Numeric:
      return u"Numeric(%1,%2)"_s.arg(field.precision).arg(field.scale);
  }
  return {};
}

QString FieldLine(const dao::FieldDef& field) {
  QString line = u"  "_s + field.name + u' ' + TypeText(field);
  if (field.required) line += u" required"_s;
  if (field.autoNumber) line += u" autonumber"_s;
  if (!field.allowZeroLength) line += u" no-zero-length"_s;
  if (!field.defaultExpression.isEmpty()) line += u" default ="_s + field.defaultExpression;
  if (field.defaultValue.isValid()) line += u" default "_s + field.defaultValue.toString();
  return line;
}

QString IndexLine(const dao::IndexDef& index) {
  QStringList fields;
  for (const dao::IndexField& field : index.fields) {
    fields += field.direction == dao::Direction::Descending ? field.name + u" desc" : field.name;
  }
  QString line = u"  index "_s + index.name + u" (" + fields.join(u", "_s) + u')';
  if (index.primary) line += u" primary"_s;
  if (index.unique) line += u" unique"_s;
  if (index.required) line += u" required"_s;
  if (index.ignoreNull) line += u" ignore-null"_s;
  return line;
}

int ShowSchema(const Arguments& arguments, const Streams& streams) {
  dao::Database database = OpenDatabase(arguments);
  const QStringList names = arguments.Plain().size() > 1 ? arguments.Plain().mid(1) : database.TableNames();
  for (const QString& name : names) {
    const dao::TableDef table = database.Table(name);
    streams.out << table.name.toStdString() << '\n';
    for (const dao::FieldDef& field : table.fields)
      streams.out << FieldLine(field).toStdString() << '\n';
    for (const dao::IndexDef& index : table.indexes)
      streams.out << IndexLine(index).toStdString() << '\n';
  }
  return kDone;
}

}  // namespace

Command SchemaCommand() {
  return {.name = u"schema"_s,
          .usage = u"DATABASE [TABEL] [--password TEKST]"_s,
          .summary = u"Toont velden met type, grootte en eigenschappen, en de indexen."_s,
          .run = ShowSchema,
          .examples = {u"schema /tmp/proef/data/OvalistoLocal.mdb"_s,
                       u"schema /tmp/proef/server/OvalistoServer.mdb tblItemSpots"_s}};
}

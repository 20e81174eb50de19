#include "platform/dao/TableDefText.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

using namespace Qt::StringLiterals;

namespace dao {
namespace {

QJsonObject OfField(const FieldDef& field) {
  return {{u"name"_s, field.name},
          {u"type"_s, static_cast<int>(field.type)},
          {u"size"_s, field.size},
          {u"required"_s, field.required},
          {u"allowZeroLength"_s, field.allowZeroLength},
          {u"autoNumber"_s, field.autoNumber},
          {u"default"_s, QJsonValue::fromVariant(field.defaultValue)},
          {u"precision"_s, field.precision},
          {u"scale"_s, field.scale}};
}

FieldDef ToField(const QJsonObject& json) {
  FieldDef field;
  field.name = json[u"name"_s].toString();
  field.type = static_cast<FieldType>(json[u"type"_s].toInt());
  field.size = json[u"size"_s].toInt();
  field.required = json[u"required"_s].toBool();
  field.allowZeroLength = json[u"allowZeroLength"_s].toBool();
  field.autoNumber = json[u"autoNumber"_s].toBool();
  const QJsonValue value = json[u"default"_s];
  if (!value.isNull()) field.defaultValue = value.toVariant();
  field.precision = json[u"precision"_s].toInt();
  field.scale = json[u"scale"_s].toInt();
  return field;
}

QJsonObject OfIndex(const IndexDef& index) {
  QJsonArray fields;
  for (const IndexField& field : index.fields) {
    fields += QJsonObject{{u"name"_s, field.name}, {u"descending"_s, field.direction == Direction::Descending}};
  }
  return {{u"name"_s, index.name},     {u"fields"_s, fields},           {u"primary"_s, index.primary},
          {u"unique"_s, index.unique}, {u"required"_s, index.required}, {u"ignoreNull"_s, index.ignoreNull}};
}

IndexDef ToIndex(const QJsonObject& json) {
  IndexDef index;
  index.name = json[u"name"_s].toString();
  for (const QJsonValue value : json[u"fields"_s].toArray()) {
    const bool descending = value[u"descending"_s].toBool();
    index.fields.append({value[u"name"_s].toString(), descending ? Direction::Descending : Direction::Ascending});
  }
  index.primary = json[u"primary"_s].toBool();
  index.unique = json[u"unique"_s].toBool();
  index.required = json[u"required"_s].toBool();
  index.ignoreNull = json[u"ignoreNull"_s].toBool();
  return index;
}

}  // namespace

QByteArray TextOfTableDef(const TableDef& table) {
  QJsonArray fields;
  for (const FieldDef& field : table.fields)
    fields += OfField(field);
  QJsonArray indexes;
  for (const IndexDef& index : table.indexes)
    indexes += OfIndex(index);
  const QJsonObject json{{u"name"_s, table.name}, {u"fields"_s, fields}, {u"indexes"_s, indexes}};
  return QJsonDocument(json).toJson(QJsonDocument::Compact);
}

TableDef TableDefOfText(const QByteArray& text) {
  const QJsonObject json = QJsonDocument::fromJson(text).object();
  TableDef table;
  table.name = json[u"name"_s].toString();
  for (const QJsonValue value : json[u"fields"_s].toArray())
    table.fields += ToField(value.toObject());
  for (const QJsonValue value : json[u"indexes"_s].toArray())
    table.indexes += ToIndex(value.toObject());
  return table;
}

}  // namespace dao

// SPDX-License-Identifier: MIT
#include "platform/dao/postgres/TableDefText.h"

#include "platform/dao/DefaultValue.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

using namespace Qt::StringLiterals;

namespace dao {
namespace {

QStringList TypeNames() {
  return {u"Boolean"_s, u"Byte"_s, u"Integer"_s, u"Long"_s,   u"Currency"_s, u"Single"_s, u"Double"_s,
          u"Date"_s,    u"Text"_s, u"Memo"_s,    u"Binary"_s, u"Guid"_s,     u"Numeric"_s};
}

QJsonObject JsonOf(const FieldDef& field) {
  return {
      {u"name"_s, field.name},
      {u"type"_s, TypeNames()[static_cast<int>(field.type)]},
      {u"size"_s, field.size},
      {u"required"_s, field.required},
      {u"allowZeroLength"_s, field.allowZeroLength},
      {u"autoNumber"_s, field.autoNumber},
      {u"default"_s, field.defaultExpression.isEmpty() ? ExpressionOf(field.defaultValue) : field.defaultExpression},
      {u"precision"_s, field.precision},
      {u"scale"_s, field.scale}};
}

FieldDef FieldOf(const QJsonObject& json) {
  FieldDef field;
  field.name = json[u"name"].toString();
  field.type = static_cast<FieldType>(TypeNames().indexOf(json[u"type"].toString()));
  field.size = json[u"size"].toInt();
  field.required = json[u"required"].toBool();
  field.allowZeroLength = json[u"allowZeroLength"].toBool(true);
  field.autoNumber = json[u"autoNumber"].toBool();
  const QString given = json[u"default"].toString();
  if (const auto constant = ConstantOf(given)) {
    field.defaultValue = *constant;
  } else {
    field.defaultExpression = given;
  }
  field.precision = json[u"precision"].toInt();
  field.scale = json[u"scale"].toInt();
  return field;
}

QJsonObject JsonOf(const IndexDef& index) {
  QJsonArray fields;
  for (const IndexField& field : index.fields) {
    fields.append(QJsonObject{{u"name"_s, field.name}, {u"descending"_s, field.direction == Direction::Descending}});
  }
  return {{u"name"_s, index.name},     {u"fields"_s, fields},           {u"primary"_s, index.primary},
          {u"unique"_s, index.unique}, {u"required"_s, index.required}, {u"ignoreNull"_s, index.ignoreNull}};
}

IndexDef IndexOf(const QJsonObject& json) {
  IndexDef index;
  index.name = json[u"name"].toString();
  for (const QJsonValue field : json[u"fields"].toArray()) {
    index.fields.append(
        {field[u"name"].toString(), field[u"descending"].toBool() ? Direction::Descending : Direction::Ascending});
  }
  index.primary = json[u"primary"].toBool();
  index.unique = json[u"unique"].toBool();
  index.required = json[u"required"].toBool();
  index.ignoreNull = json[u"ignoreNull"].toBool();
  return index;
}

}  // namespace

QString TextOfTableDef(const TableDef& table) {
  QJsonArray fields;
  for (const FieldDef& field : table.fields)
    fields.append(JsonOf(field));
  QJsonArray indexes;
  for (const IndexDef& index : table.indexes)
    indexes.append(JsonOf(index));
  const QJsonObject json{{u"name"_s, table.name}, {u"fields"_s, fields}, {u"indexes"_s, indexes}};
  return QString::fromUtf8(QJsonDocument(json).toJson(QJsonDocument::Compact));
}

TableDef TableDefOfText(const QString& text) {
  const QJsonObject json = QJsonDocument::fromJson(text.toUtf8()).object();
  TableDef table;
  table.name = json[u"name"].toString();
  for (const QJsonValue field : json[u"fields"].toArray())
    table.fields += FieldOf(field.toObject());
  for (const QJsonValue index : json[u"indexes"].toArray())
    table.indexes += IndexOf(index.toObject());
  return table;
}

}  // namespace dao

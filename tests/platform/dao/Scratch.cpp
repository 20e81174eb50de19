// SPDX-License-Identifier: MIT
#include "tests/platform/dao/Scratch.h"

#include "platform/runtime/Error.h"
#include "tests/support/Cluster.h"

#include <QDateTime>

using namespace Qt::StringLiterals;
using dao::FieldType;

namespace scratch {

dao::FieldDef Field(const QString& name, FieldType type, int size) {
  dao::FieldDef field;
  field.name = name;
  field.type = type;
  field.size = size;
  return field;
}

dao::IndexDef Index(const QString& name, const QStringList& fields) {
  dao::IndexDef index;
  index.name = name;
  for (const QString& field : fields)
    index.fields.append({field, dao::Direction::Ascending});
  return index;
}

dao::IndexDef Key(const QStringList& fields) {
  dao::IndexDef index = Index(u"PrimaryKey"_s, fields);
  index.primary = index.unique = index.required = true;
  return index;
}

namespace {
int nextNumber = 0;
}

Scratch::Scratch() : number_(++nextNumber) {
  dao::CreateDatabase(Path());
}

QString Scratch::Path(const QString& name) const {
  if (!testing_support::OnServer() || !name.endsWith(u".mdb"_s)) return folder_.filePath(name);
  return testing_support::ServerPath(u"s%1 %2"_s.arg(number_).arg(name.chopped(4)));
}

dao::Database Scratch::Another(const QString& name) const {
  dao::CreateDatabase(Path(name));
  return dao::OpenDatabase(Path(name));
}

dao::TableDef Spots(const QString& name) {
  return {
      name,
      {Field(u"ID"_s, FieldType::Long), Field(u"Naam"_s, FieldType::Text, 50), Field(u"Aktief"_s, FieldType::Integer),
       Field(u"StartDatum"_s, FieldType::Date), Field(u"Memo"_s, FieldType::Memo)},
      {Key({u"ID"_s})}};
}

SpotScratch::SpotScratch() {
  dao::Database database = Open();
  database.CreateTable(Spots());
  database.Execute(u"INSERT INTO tblSpots (ID, Naam, Aktief) VALUES (1, \"Appel\", 1)"_s);
  database.Execute(u"INSERT INTO tblSpots (ID, Naam, Aktief) VALUES (2, \"bier\", 0)"_s);
  database.Execute(u"INSERT INTO tblSpots (ID, Naam, Aktief) VALUES (3, \"Cola\", 1)"_s);
}

namespace {

QString Shown(const QVariant& value) {
  if (!value.isValid()) return u"-"_s;
  if (value.typeId() == QMetaType::QDateTime) return value.toDateTime().toString(u"yyyy-MM-dd HH:mm:ss"_s);
  return value.toString();
}

}  // namespace

QStringList Rows(dao::Database database, const QString& sql) {
  QStringList shown;
  dao::Recordset rows = database.OpenRecordset(sql);
  for (; !rows.Eof(); rows.MoveNext()) {
    QStringList values;
    for (int column = 0; column < rows.FieldNames().size(); ++column)
      values += Shown(rows.Field(column));
    shown += values.join(u'|');
  }
  return shown;
}

QVariant Value(dao::Database database, const QString& sql, const QString& field) {
  return database.OpenRecordset(sql).Field(field);
}

QString ErrorOf(const std::function<void()>& action) {
  try {
    action();
  } catch (const runtime::Error& error) {
    return error.Description();
  }
  return {};
}

QString ExecuteError(dao::Database database, const QString& sql) {
  return ErrorOf([&] { database.Execute(sql); });
}

}  // namespace scratch

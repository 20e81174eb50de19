// SPDX-License-Identifier: MIT
#include "tests/journeys/CatalogueModel.h"

#include "data/Schema.h"
#include "platform/dao/Database.h"

#include <QDateTime>

#include <algorithm>
#include <stdexcept>

using namespace Qt::StringLiterals;

namespace {

QString TextOf(const QVariant& value) {
  return value.typeId() == QMetaType::QDateTime ? value.toDate().toString(Qt::ISODate) : value.toString();
}

CatalogueModel::Row RowOf(const dao::Recordset& row) {
  CatalogueModel::Row texts;
  for (const QString& field : row.FieldNames()) {
    const QVariant value = row.Field(field);
    if (value.isValid()) texts[field] = TextOf(value);
  }
  return texts;
}

}  // namespace

CatalogueModel CatalogueModel::Of(const QString& databasePath) {
  CatalogueModel model;
  dao::Database database = dao::OpenDatabase(databasePath);
  for (const dao::TableDef& table : schema::ServerTables()) {
    dao::Recordset rows = database.OpenRecordset(u"SELECT * FROM "_s + table.name);
    for (; !rows.Eof(); rows.MoveNext())
      model.Add(table.name, RowOf(rows));
  }
  return model;
}

int CatalogueModel::NextID(const QString& table) const {
  int highest = 0;
  for (const Row& row : tables_[table])
    highest = std::max(highest, row[u"ID"_s].toInt());
  return highest + 1;
}

CatalogueModel::Row& CatalogueModel::Find(const QString& table, const QString& field, const QString& text) {
  for (Row& row : tables_[table]) {
    if (row[field] == text) return row;
  }
  throw std::runtime_error("no row in " + table.toStdString() + " with " + text.toStdString());
}

void CatalogueModel::Remove(const QString& table, const QString& field, const QString& text) {
  tables_[table].removeIf([&](const Row& row) { return row[field] == text; });
}

void CatalogueModel::TakeRows(const QString& table, const QString& field, const QString& text,
                              const CatalogueModel& other) {
  for (const Row& row : other.tables_[table]) {
    if (row[field] == text) Add(table, row);
  }
}

QStringList CatalogueModel::Lines() const {
  QStringList lines;
  for (auto table = tables_.begin(); table != tables_.end(); ++table) {
    for (const Row& row : *table) {
      QString line = table.key();
      for (auto field = row.begin(); field != row.end(); ++field)
        line += u' ' + field.key() + u'=' + field.value();
      lines += line;
    }
  }
  lines.sort();
  return lines;
}

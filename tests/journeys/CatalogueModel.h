// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QMap>
#include <QString>
#include <QStringList>

// The content of a catalogue as texts: of a server database, or as expected, so that the two can be compared.
class CatalogueModel {
 public:
  using Row = QMap<QString, QString>;  // field to text; NULL is left out, a date is yyyy-mm-dd

  // The content of the database at this path text.
  static CatalogueModel Of(const QString& databasePath);

  // The highest ID plus one; 1 for an empty table.
  int NextID(const QString& table) const;
  // The row in which the field has this text; throws std::runtime_error when there is not exactly one.
  Row& Find(const QString& table, const QString& field, const QString& text);
  void Add(const QString& table, const Row& row) { tables_[table] += row; }
  void Remove(const QString& table, const QString& field, const QString& text);

  // Adds the other's rows in which the field has this text.
  void TakeRows(const QString& table, const QString& field, const QString& text, const CatalogueModel& other);

  // One line for each row: the table and its fields, as "tblItems Aktief=1 ID=3 Naam=Blok".
  QStringList Lines() const;

 private:
  QMap<QString, QList<Row>> tables_;
};

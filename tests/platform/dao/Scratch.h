// SPDX-License-Identifier: MIT
#pragma once

#include "platform/dao/Database.h"

#include <QStringList>
#include <QTemporaryDir>

#include <functional>

namespace scratch {

dao::FieldDef Field(const QString& name, dao::FieldType type, int size = 0);
dao::IndexDef Key(const QStringList& fields);
dao::IndexDef Index(const QString& name, const QStringList& fields);

// A temporary folder with one database, "planning.mdb"; in a run on a server, a new schema for each database whose name
// has no folder.
class Scratch {
 public:
  Scratch();
  QString Path(const QString& name) const;
  QString Path() const { return Path(QStringLiteral("planning.mdb")); }
  dao::Database Open() const { return dao::OpenDatabase(Path()); }
  // Creates a second, empty database with that name.
  dao::Database Another(const QString& name) const;

 private:
  QTemporaryDir folder_;
  int number_;
};

// tblSpots: ID (Long, key), Naam (Text 50), Aktief (Integer), StartDatum (Date), Memo (Memo).
dao::TableDef Spots(const QString& name = QStringLiteral("tblSpots"));
// As Scratch, with tblSpots and three rows: 1 "Appel" 1, 2 "bier" 0, 3 "Cola" 1.
class SpotScratch : public Scratch {
 public:
  SpotScratch();
};

// The rows as texts, their fields joined by "|"; NULL is "-".
QStringList Rows(dao::Database database, const QString& sql);
// The first value of the first row.
QVariant Value(dao::Database database, const QString& sql, const QString& field);
// The description of the runtime::Error that `call` throws; empty when it throws none.
QString ErrorOf(const std::function<void()>& action);
QString ExecuteError(dao::Database database, const QString& sql);

}  // namespace scratch

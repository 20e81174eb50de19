// SPDX-License-Identifier: MIT
#pragma once

#include "platform/dao/TableDef.h"

#include <QList>
#include <QString>

#include <functional>

namespace dao {
class Database;
}

// The tables of the three database files, and functions that create the files.
namespace schema {

// Server database: the catalogue.
QList<dao::TableDef> ServerTables();
// Local database: copies of the catalogue tables (same fields in the same order), offline log, settings, stations and
// messages.
QList<dao::TableDef> LocalTables();

// Each creates a new file (path text) with all its tables; it appears complete or not at all. Throws runtime::Error,
// also when the file exists.
void CreateServerDatabase(const QString& path);
// Also inserts the messages and sets the mode to online; `fill` may add rows.
void CreateLocalDatabase(const QString& path, const std::function<void(dao::Database&)>& fill = {});
void CreateWorkDatabase(const QString& path);

// Adds a station to the list of a local database.
void AddStation(dao::Database& localDatabase, qint16 number, const QString& name);
void AddStation(const QString& localPath, qint16 number, const QString& name);

}  // namespace schema

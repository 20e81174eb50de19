// SPDX-License-Identifier: MIT
#pragma once

#include "platform/dao/TableDef.h"

#include <QList>
#include <QString>

// The tables of the three database files, and functions that create the files.
namespace schema {

// Server database: the catalogue.
QList<dao::TableDef> ServerTables();
// Local database: copies of the catalogue tables (same fields in the same order), offline log, settings, stations and
// messages.
QList<dao::TableDef> LocalTables();

// Each creates a new file (path text) with all its tables. Throws runtime::Error, also when the file exists.
void CreateServerDatabase(const QString& path);
// Also inserts the messages and sets the mode to online.
void CreateLocalDatabase(const QString& path);
void CreateWorkDatabase(const QString& path);

// Adds a station to the list of a local database.
void AddStation(const QString& localPath, qint16 number, const QString& name);

}  // namespace schema

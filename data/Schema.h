// SPDX-License-Identifier: MIT
#pragma once

#include "platform/dao/TableDef.h"

#include <QList>
#include <QString>

// The tables of the three database files, and the files themselves.
namespace schema {

// Of the server database: the catalogue.
QList<dao::TableDef> ServerTables();
// Of the local database: the copies of the catalogue (same fields in the same order), the offline log, the settings,
// the stations and the messages.
QList<dao::TableDef> LocalTables();

// Each makes a new file (path text) with every table; an Error when the file exists.
void CreateServerDatabase(const QString& path);
// With the message rows and the mode set to online.
void CreateLocalDatabase(const QString& path);
void CreateWorkDatabase(const QString& path);

// Adds a station to the list of a local database.
void AddStation(const QString& localPath, qint16 number, const QString& name);

}  // namespace schema

// SPDX-License-Identifier: MIT
#pragma once

#include "data/Rows.h"

#include <QString>

// All changes of the catalogue by the planner's windows; exports are applied by export/apply. Each procedure builds one
// statement and executes it on the given database and table. Offline it first writes the statement's basis (the rows
// before and after, data/OfflineBasis.h), and afterwards appends the statement to tblOfflineLog of the local database,
// with the copy table's name replaced by the server table's. Returns true when all of that succeeded. Otherwise it
// shows the error in a box titled with its own name and returns false (Reset_... shows nothing). A statement that was
// executed is not undone: if its log row failed, it is logged later (data/LogQueue.h). A statement that is
// executed and logged but may not survive a power cut is reported as an error too.

bool Insert_tblItems(const ItemRow& row, const QString& databasePath, const QString& table);
bool Update_tblItems(const ItemRow& row, const QString& databasePath, const QString& table);
bool Update_tblItems_Aktief(qint32 id, qint32 aktief, const QString& databasePath, const QString& table);
bool Insert_tblItemsItemSpots(const ItemsItemSpotsRow& row, const QString& databasePath, const QString& table);
bool Insert_tblItemSpots(const ItemSpotRow& row, const QString& databasePath, const QString& table);
bool Update_tblItemSpots(const ItemSpotRow& row, const QString& databasePath, const QString& table);
bool Update_tblItemSpots_Aktief(qint32 id, qint32 aktief, const QString& databasePath, const QString& table);
bool Reset_tblItemSpots_AantalGedraaid(qint32 id, const QString& databasePath, const QString& table);
bool Insert_tblItemPingles(const ItemPingleRow& row, const QString& databasePath, const QString& table);
bool Update_tblItemPingles(const ItemPingleRow& row, const QString& databasePath, const QString& table);

// Deletes the rows whose key field has this value. Logged for some copy tables only: see DeleteForLog in Writes.cpp.
bool Delete_tblBeheer(qint32 id, const QString& table, const QString& keyField, const QString& databasePath);

// Whether the last of these procedures executed its statement, even if it returned false.
bool WasExecuted();
// Whether the log row of that statement could not be written and will be written later.
bool WaitsForLog();

// Empties a table. Never logged.
bool DeleteAllInTable(const QString& table, const QString& databasePath);

// Returns true also for a row that may not survive a power cut: the calling procedure reports that.
bool Insert_tblOfflineLog(qint32 id, const QString& statement);

// Copy the server's tables into the local database's copy tables, which must be empty. Never logged.
bool TransItemSpotsToLocal(const QString& sourcePath, const QString& localPath);
bool TransItemPinglesToLocal(const QString& sourcePath, const QString& localPath);
bool TransItemsToLocal(const QString& sourcePath, const QString& localPath);
bool TransItemsItemSpotsToLocal(const QString& sourcePath, const QString& localPath);

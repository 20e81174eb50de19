// SPDX-License-Identifier: MIT
#pragma once

#include "data/Rows.h"

#include <QString>

// The only way in which the catalogue changes. Each procedure builds one statement, carries it out on the database and
// table its caller names and, while the system works offline, appends it to tblOfflineLog of the local database with
// the server table's name in place of the copy table's. True when all of that was done. On an error each shows it under
// its own name and returns false (Reset_... stays silent); a statement already carried out stays carried out, and is
// logged later when its log row failed (data/KeptStatements.h). So it is when a statement is done and logged, but may
// not survive a power cut.

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

// Deletes the rows whose key field has this number. Logged for three copy tables only; which, and under which name, is
// told at the implementation.
bool Delete_tblBeheer(qint32 id, const QString& table, const QString& keyField, const QString& databasePath);

// Whether the statement of the last of these procedures was carried out, also when it returned false.
bool WasCarriedOut();
// Whether its row in the log could not be written and will be later.
bool WaitsForLog();

// Empties a table. Never logged.
bool DeleteAllInTable(const QString& table, const QString& databasePath);

// A row that is there but may not survive a power cut counts: the procedure that logs reports it.
bool Insert_tblOfflineLog(qint32 id, const QString& statement);

// Copies of the server's tables into the emptied copy tables of the local database. Never logged.
bool TransItemSpotsToLocal(const QString& sourcePath, const QString& localPath);
bool TransItemPinglesToLocal(const QString& sourcePath, const QString& localPath);
bool TransItemsToLocal(const QString& sourcePath, const QString& localPath);
bool TransItemsItemSpotsToLocal(const QString& sourcePath, const QString& localPath);

// SPDX-License-Identifier: MIT
#pragma once

#include "platform/dao/Recordset.h"

#include <QString>

#include <optional>

// The read procedures that the screens and the write layer share. Each shows its own error under its own name and then
// returns its default.

// The table's highest key plus 1; 1 for an empty table. 0 on an error.
qint32 GetNewID(const QString& table, const QString& keyField, const QString& databasePath);
// The same for callers that tell a failure from the key 0, which follows -1: nothing on an error, which was shown under
// GetNewID's name.
std::optional<qint32> GetNewIDIfAny(const QString& table, const QString& keyField, const QString& databasePath);
// The same without a box: throws runtime::Error.
qint32 NextID(const QString& table, const QString& keyField, const QString& databasePath);

// The trimmed name of one row; empty when there is no row or no name. On an error empty too, and null
// (QString::isNull): a name that could not be read is not one that is gone.
QString GetItemSpotID_Naam(qint32 id, const QString& databasePath, const QString& table);
QString GetItemNaam(qint32 id, const QString& databasePath, const QString& table);

// The item-spot rows linked to an item, in the database's own order (not by ItemSpotOrder). Nothing on an error.
std::optional<dao::Recordset> GetItem_ItemSpots(qint32 itemID, const QString& databasePath, const QString& items,
                                                const QString& link, const QString& spots);

// Reads the online flag from the local database. Once the recordset is open the flag is on; a numeric value then
// decides.
void SetOnlineYn();
// Reads the station's name from the local database.
void SetRadioNaam();
// Stores the mode in the local database: -1 online, 0 offline. Never logged.
bool Update_cdeInstellingen_OnlineYn(qint32 value);

// SPDX-License-Identifier: MIT
#pragma once

#include "platform/dao/Recordset.h"

#include <QString>
#include <QVariant>

#include <optional>

// Read procedures shared by the screens and the write layer. Each shows its error in a box titled with the procedure's
// name and returns its default.

// The table's highest key plus 1; 1 for an empty table. 0 after an error.
qint32 GetNewID(const QString& table, const QString& keyField, const QString& databasePath);
// The same for callers that must distinguish an error (nullopt, shown as "GetNewID") from the key 0, which follows -1.
std::optional<qint32> GetNewIDIfAny(const QString& table, const QString& keyField, const QString& databasePath);
// The same, but throws runtime::Error.
qint32 NextID(const QString& table, const QString& keyField, const QString& databasePath);

// The trimmed name of one row; empty, but not null, when there is no row or no name. A null QString after an error.
QString GetItemSpotID_Naam(qint32 id, const QString& databasePath, const QString& table);
QString GetItemNaam(qint32 id, const QString& databasePath, const QString& table);
// The trimmed name in a field Naam; empty, but not null, when it has none.
QString NameIn(const QVariant& field);

// The item-spot rows linked to an item, in the database's own order (not by ItemSpotOrder). nullopt after an error.
std::optional<dao::Recordset> GetItem_ItemSpots(qint32 itemID, const QString& databasePath, const QString& items,
                                                const QString& link, const QString& spots);

// Sets global.online from the local database: true once the query succeeds, unless it returns a row with the number 0.
// After an error the flag is unchanged.
void SetOnlineYn();
// Sets global.stationName from the local database.
void SetRadioNaam();
// Stores the mode in the local database: -1 online, 0 offline. Never logged. False after an error.
bool Update_cdeInstellingen_OnlineYn(qint32 value);

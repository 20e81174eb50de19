// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

// Where the catalogue is read and written: online the server database with its own tables, offline the local database
// with the copy tables.
struct Catalogue {
  QString databasePath;
  QString items;
  QString itemSpots;
  QString itemPingles;
  QString itemsItemSpots;
};

// Chosen by global.online.
Catalogue CurrentCatalogue();

inline const QString kServerTablePrefix = QStringLiteral("tbl");
inline const QString kCopyTablePrefix = QStringLiteral("tblCopie_");

// The name of a server table's copy table: "tblCopie_Items" for "tblItems".
QString CopyTableOf(const QString& serverTable);
// The other way round; the name of another table is returned unchanged.
QString ServerTableOf(const QString& table);

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

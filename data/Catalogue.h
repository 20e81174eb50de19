// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

// Where the catalogue is read and written at present: the server database with the real tables online, the local
// database with the copy tables offline.
struct Catalogue {
  QString databasePath;
  QString items;
  QString itemSpots;
  QString itemPingles;
  QString itemsItemSpots;
};

// By the global online flag.
Catalogue CurrentCatalogue();

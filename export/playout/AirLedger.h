// SPDX-License-Identifier: MIT
#pragma once

#include "export/playout/AirLog.h"

#include <QString>

#include <vector>

// Records when item-spots were aired (table tblUitzendingen) and updates their play counts. Off by default, since at
// some stations another program fills those fields. Paths are path texts; every function throws runtime::Error.

inline const QString kLedgerTable = QStringLiteral("tblUitzendingen");

// Stored in the database's settings table.
bool IsCountingOn(const QString& databasePath, const QString& password = {});
void SwitchCounting(const QString& databasePath, bool on, const QString& password = {});

struct AiringCount {
  int added = 0;    // new airings
  int known = 0;    // airings that were in the ledger already
  int unknown = 0;  // added airings of spots that are not in the catalogue
};

// Adds each airing to the ledger once, even when it is passed several times. Adds the new airings to the spot's
// AantalGedraaid and sets LaatstGedraaid to the latest. All changes are made, or none.
AiringCount CountAirings(const QString& databasePath, const std::vector<Airing>& airings, const QString& password = {});

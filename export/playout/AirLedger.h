// SPDX-License-Identifier: MIT
#pragma once

#include "export/playout/AirLog.h"

#include <QString>

#include <vector>

// Which item-spots were aired when, kept in a database (table tblUitzendingen), and the play counts that follow from
// it. Off until it is switched on for the database, since at other stations another program fills those fields. Paths
// are path texts; everything throws runtime::Error.

inline const QString kLedgerTable = QStringLiteral("tblUitzendingen");

// Kept in the database, beside its other settings.
bool IsCountingOn(const QString& databasePath, const QString& password = {});
void SwitchCounting(const QString& databasePath, bool on, const QString& password = {});

struct AiringCount {
  int added = 0;    // airings that were not in the ledger yet
  int known = 0;    // those that were
  int unknown = 0;  // of the added ones, those of spots that are not in the catalogue
};

// Takes each airing into the ledger once, however often it is handed in. A spot's AantalGedraaid rises by its new ones,
// and LaatstGedraaid becomes the latest. All of it or nothing is there afterwards.
AiringCount CountAirings(const QString& databasePath, const std::vector<Airing>& airings, const QString& password = {});

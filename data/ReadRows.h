// SPDX-License-Identifier: MIT
#pragma once

#include "data/Catalogue.h"
#include "data/Rows.h"
#include "platform/dao/Recordset.h"

#include <optional>
#include <vector>

// Stored records as rows for the write procedures: for code that changes a record without its editor. A field that is
// missing in the row would be written empty. Paths are trimmed.

// The recordset's current row, with all fields of its table.
ItemSpotRow ItemSpotRowOf(const dao::Recordset& row);
ItemPingleRow ItemPingleRowOf(const dao::Recordset& row);
ItemRow ItemRowOf(const dao::Recordset& row);

// The record with this ID; empty when there is none. Throws runtime::Error.
std::optional<ItemSpotRow> ReadItemSpot(const Catalogue& catalogue, qint32 id);
std::optional<ItemPingleRow> ReadItemPingle(const Catalogue& catalogue, qint32 id);
std::optional<ItemRow> ReadItem(const Catalogue& catalogue, qint32 id);

// The spots of an item's list in their order, without those that do not exist. Throws runtime::Error.
std::vector<qint32> ReadSpotsOfItem(const Catalogue& catalogue, qint32 itemID);

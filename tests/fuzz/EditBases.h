// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/database/Database.h"
#include "platform/jet/table/Definition.h"
#include "platform/jet/values/Bytes.h"

#include <vector>

namespace jet::fuzz {

// Sound databases with two tables, `tblSpots` (ID, Naam, Tekst, Actief; two indexes) and `tblItems` (Nr, Omschrijving).
// The first has a few rows per table; the second has index trees of two levels, long values of one and several pieces,
// moved rows, deleted rows and freed pages.
const Bytes& SmallBase();
const Bytes& LargerBase();

// A row of tblSpots; ID null: the next number.
std::vector<Value> SpotRow(Value id, const std::u16string& name, Value text);

OpenOptions ForEditing();

}  // namespace jet::fuzz

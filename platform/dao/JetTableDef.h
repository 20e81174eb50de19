// SPDX-License-Identifier: MIT
#pragma once

#include "platform/dao/TableDef.h"
#include "platform/jet/table/Table.h"

namespace dao {

// What a stored table's definition says. Fields and indexes keep their places.
TableDef TableDefOf(const jet::Table& table);

// The definition of a table that is still to be made.
jet::TableDefinition StoredDefinition(const TableDef& table);

}  // namespace dao

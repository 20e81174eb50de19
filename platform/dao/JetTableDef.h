// SPDX-License-Identifier: MIT
#pragma once

#include "platform/dao/TableDef.h"
#include "platform/jet/table/Table.h"

namespace dao {

// The definition of a stored table. Fields and indexes have the same positions.
TableDef TableDefOf(const jet::Table& table);

// The definition with which to create a table.
jet::TableDefinition StoredDefinition(const TableDef& table);

}  // namespace dao

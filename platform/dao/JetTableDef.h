// SPDX-License-Identifier: MIT
#pragma once

#include "platform/dao/TableDef.h"
#include "platform/jet/table/Table.h"

#include <memory>

namespace dao {

// The definition of a stored table. Fields and indexes have the same positions. Kept with the table's shape.
std::shared_ptr<const TableDef> TableDefOf(const jet::Table& table);

// The definition with which to create a table.
jet::TableDefinition StoredDefinition(const TableDef& table);

}  // namespace dao

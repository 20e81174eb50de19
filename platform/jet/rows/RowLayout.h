// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/rows/StoredTable.h"

namespace jet {

// Whether the two tables have the same columns, and their rows the same bytes for the same values: a row of the one
// can be a row of the other as it is. Never with memo or OLE columns, whose values lie elsewhere.
bool HaveSameRows(const StoredTable& left, const StoredTable& right);

}  // namespace jet

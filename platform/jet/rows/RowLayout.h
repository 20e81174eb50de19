// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/rows/StoredTable.h"

namespace jet {

// Whether rows of one table can be copied to the other byte for byte: same columns with the same stored form. False for
// tables with memo or OLE columns, whose values are on other pages.
bool HaveSameRows(const StoredTable& left, const StoredTable& right);

}  // namespace jet

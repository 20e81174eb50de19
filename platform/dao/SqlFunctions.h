// SPDX-License-Identifier: MIT
#pragma once

#include <sqlite3.h>

namespace dao {

// The functions of the dialect that the engine does not have: UCase and LCase.
void AddSqlFunctions(sqlite3* connection);

// Whether a statement may call it: these and the aggregates MAX, MIN, COUNT, SUM and AVG.
bool IsDialectFunction(const char* name);

}  // namespace dao

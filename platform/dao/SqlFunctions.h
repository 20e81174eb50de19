// SPDX-License-Identifier: MIT
#pragma once

#include <sqlite3.h>

namespace dao {

// Adds the functions of the dialect that SQLite does not have: UCase and LCase.
void AddSqlFunctions(sqlite3* connection);

// Whether a statement may call the function: UCase, LCase, MAX, MIN, COUNT, SUM or AVG.
bool IsDialectFunction(const char* name);

}  // namespace dao

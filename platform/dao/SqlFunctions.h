// SPDX-License-Identifier: MIT
#pragma once

#include <sqlite3.h>

namespace dao {

// Adds the functions of the dialect that SQLite does not have, UCase and LCase, and the one that the rewriter puts
// around the operands of arithmetic.
void AddSqlFunctions(sqlite3* connection);

// Whether a rewritten statement may call the function: UCase, LCase, MAX, MIN, COUNT, SUM, AVG, or the rewriter's.
bool IsDialectFunction(const char* name);

}  // namespace dao

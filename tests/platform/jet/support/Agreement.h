// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/database/Database.h"

#include <string>

namespace witness {

// Where the outside readers that are installed find other rows in the file than this library does: the first
// difference of each; "" when there is none. What not every reader can tell is left out: empty values count as null, a
// short binary ends at its first zero; mdbtools tells no moment before 1899-12-31 or on the last day there is, and
// 199,999 bytes of a text; mdb-reader tells no time before 1899-12-31.
std::string Disagreements(jet::Database& database, const std::string& file, const std::string& password = {});

// The same of a file that is in memory only.
std::string Disagreements(jet::Database& database, const jet::Bytes& content, const std::string& password = {});

}  // namespace witness

// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/database/Database.h"

#include <string>

namespace witness {

// The first difference between each installed outside reader and this library; "" when there is none. Known limits of
// the readers are ignored: empty values count as null, a short binary ends at its first zero; mdbtools has no times
// before 1899-12-31 or on the last possible day, and at most 199,999 bytes of a text; mdb-reader has no times before
// 1899-12-31.
std::string Disagreements(jet::Database& database, const std::string& file, const std::string& password = {});

// The same for a file in memory.
std::string Disagreements(jet::Database& database, const jet::Bytes& content, const std::string& password = {});

}  // namespace witness

// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/database/Database.h"

#include <map>
#include <string>
#include <vector>

namespace witness {

using Cells = std::vector<std::vector<std::string>>;

// A table as text, in the notation of mdb-schema and mdb-export, for comparing readers.
struct TableText {
  // "Name: Text (50)", followed by " NOT NULL" for a required field if the reader reports that.
  std::vector<std::string> fields;
  // Null is "<null>", Booleans are 0 and 1, dates "yyyy-mm-dd hh:mm:ss", bytes upper-case hex, Single has 8 digits and
  // Double 16.
  Cells rows;
  bool operator==(const TableText&) const = default;
};

// The tables of users by name.
using Tables = std::map<std::string, TableText>;

// One table, or all, as read by this library.
TableText TextOf(jet::Database& database, const std::u16string& table);
Tables ReadWithJet(jet::Database& database);

// Sorts the rows of all tables, since readers return moved rows at different positions.
Tables Sorted(Tables tables);

}  // namespace witness

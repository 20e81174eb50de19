// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/table/Table.h"

#include <string>
#include <vector>

// What is in a table, as CSV with a header line, and a sentence for each damaged place behind which reading went on.
struct TableCsv {
  std::vector<std::string> blocks;
  std::vector<std::string> damages;
};

TableCsv CsvOf(const jet::Table& table);

// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/table/Table.h"

#include <string>
#include <vector>

// The rows of a table as CSV with a header line, and one sentence for each damaged place that was skipped.
struct TableCsv {
  std::vector<std::string> blocks;
  std::vector<std::string> damages;
};

TableCsv CsvOf(const jet::Table& table);

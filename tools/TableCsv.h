// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/table/Table.h"
#include "tools/SpooledText.h"

#include <string>
#include <vector>

// The rows of a table as CSV with a header line, and one sentence for each damaged place that was skipped.
struct TableCsv {
  SpooledText text;
  std::vector<std::string> damages;
};

TableCsv CsvOf(const jet::Table& table);

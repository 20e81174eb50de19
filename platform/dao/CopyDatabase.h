// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <cstdint>
#include <vector>

namespace dao {

struct CopiedTable {
  QString name;
  std::int64_t rows = 0;      // in both databases afterwards
  std::int64_t inserted = 0;  // into the target
  std::int64_t deleted = 0;   // from the target
};

enum class CopyMode {
  Fill,    // a table of the target that has rows already is an error
  Refresh  // rows that the target has already stay, those that the source lacks go
};

// Makes the target hold every table of the source with the same rows: files and servers' schemas in any combination,
// all tables in one transaction. A missing target is made first, and so are its missing tables; tables that only the
// target has are left alone. Number and check sum of the rows are compared before the target keeps them. Dates are
// equal to the microsecond. Path texts; runtime::Error, with the target as it was.
std::vector<CopiedTable> CopyDatabase(const QString& source, const QString& target, CopyMode mode);

}  // namespace dao

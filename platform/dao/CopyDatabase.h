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
  Fill,    // a target table that already has rows is an error
  Refresh  // equal rows of the target are kept, rows that the source does not have are deleted
};

// Copies every table of the source to the target: files and server schemas in any combination, all tables in one
// transaction. A missing target and missing tables are created; tables that only the target has are not changed. Row
// count and checksum are compared before the commit. Dates are equal to the microsecond. Paths are path texts. After a
// runtime::Error the target is unchanged.
std::vector<CopiedTable> CopyDatabase(const QString& source, const QString& target, CopyMode mode);

}  // namespace dao

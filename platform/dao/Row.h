// SPDX-License-Identifier: MIT
#pragma once

#include "platform/dao/ResultColumn.h"

#include <QStringView>
#include <QVariant>

#include <functional>
#include <vector>

namespace dao {

// The row at which the reading of a SELECT stands. Only within the visit that it is handed to. Columns count from 0.
class Row {
 public:
  explicit Row(sqlite3_stmt* statement) : statement_(statement), columns_(ResultColumnsOf(statement)) {}

  // As of a Recordset.
  QVariant Field(int column) const { return columns_[static_cast<std::size_t>(column)].Read(statement_); }
  // The value as text, without a copy of it: valid until the visit ends. A null view for NULL.
  QStringView Text(int column) const;

 private:
  sqlite3_stmt* statement_;
  std::vector<ResultColumn> columns_;
};

// Is handed one row after the other; answers whether it wants the next.
using RowVisit = std::function<bool(const Row&)>;

}  // namespace dao

// SPDX-License-Identifier: MIT
#pragma once

#include "platform/dao/ResultColumn.h"

#include <QStringView>
#include <QVariant>

#include <functional>
#include <vector>

namespace dao {

// The current row of Database::Visit; valid only during the call. Columns count from 0.
class Row {
 public:
  explicit Row(sqlite3_stmt* statement) : statement_(statement), columns_(ResultColumnsOf(statement)) {}

  // As Recordset::Field.
  QVariant Field(int column) const { return columns_[static_cast<std::size_t>(column)].Read(statement_); }
  // The value as text, not copied: valid during the call. A null view for NULL.
  QStringView Text(int column) const;

 private:
  sqlite3_stmt* statement_;
  std::vector<ResultColumn> columns_;
};

// Called for each row; returns false to stop.
using RowVisit = std::function<bool(const Row&)>;

}  // namespace dao

// SPDX-License-Identifier: MIT
#pragma once

#include "platform/dao/ResultColumn.h"
#include "platform/dao/Storage.h"

#include <QStringList>
#include <QStringView>
#include <QVariant>

#include <cstddef>
#include <memory>
#include <vector>

namespace dao {

// Some fields of all rows of a table in ascending order of a number field, NULL first, as SELECT ... ORDER BY gives
// them. It reads below the SQL engine, which takes longer for a row than reading it does: for tables of a million rows.
// An index on the field gives the order; without one the rows are sorted in memory.
class OrderedRows {
 public:
  // Inside a transaction of `storage`, which must outlive it. `fields`: the first one is the number. Throws
  // runtime::Error for a table or field that does not exist.
  OrderedRows(Storage& storage, const QString& table, const QStringList& fields);

  // Advances to the next row; false after the last.
  bool Next() { return cursor_->Next(); }
  // As Recordset::Field; columns count from 0, in the order of `fields`.
  QVariant Field(std::size_t column) const { return columns_[column].Read(cursor_->Field(places_[column])); }
  // The value of a text field, not copied: valid until Next. A null view for NULL.
  QStringView Text(std::size_t column) const;

 private:
  std::unique_ptr<Table> table_;
  std::vector<std::size_t> places_;
  std::vector<ResultColumn> columns_;
  std::unique_ptr<Cursor> cursor_;
};

}  // namespace dao

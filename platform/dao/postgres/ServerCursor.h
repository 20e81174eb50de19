// SPDX-License-Identifier: MIT
#pragma once

#include "platform/dao/Storage.h"
#include "platform/dao/postgres/Connection.h"

#include <deque>
#include <memory>
#include <string>
#include <vector>

namespace dao {

// The rows of a reply, with the row identity in the first column, followed by the wanted fields in order.
struct ServerRows {
  Result result;
  std::vector<std::size_t> fields;  // the fields of the second and later columns

  int Count() const { return Libpq().PQntuples(result.get()); }
  RowId Id(int row) const;
  // -1 for a field that is not in the reply.
  int ColumnOf(std::size_t field) const;
};

// Reads all rows of a reply, or the chosen ones. The definition of the table must outlive it.
class ServerCursor : public Cursor {
 public:
  ServerCursor(const TableDef& table, std::shared_ptr<const ServerRows> rows);
  ServerCursor(const TableDef& table, std::shared_ptr<const ServerRows> rows, std::vector<int> chosen);

  bool Next() override;
  RowId Id() const override { return rows_->Id(Row()); }
  ValueView Field(std::size_t field) const override;

 private:
  int Row() const { return all_ ? at_ : chosen_[static_cast<std::size_t>(at_)]; }

  const TableDef& table_;
  std::shared_ptr<const ServerRows> rows_;
  bool all_ = true;
  std::vector<int> chosen_;
  int at_ = -1;
  std::vector<int> columns_;  // for each field of the table
  mutable std::deque<std::u16string> texts_;
  mutable std::deque<Bytes> bytes_;
};

}  // namespace dao

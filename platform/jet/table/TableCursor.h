// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/index/IndexCursor.h"
#include "platform/jet/rows/RowScan.h"
#include "platform/jet/rows/Rows.h"

#include <functional>
#include <string>
#include <vector>

namespace jet {

// Decodes chosen columns of a table's rows.
class RowDecoder {
 public:
  // `columns` point into `table`; both outlive the decoder.
  RowDecoder(PageSource& pages, const StoredTable& table, std::vector<const StoredColumn*> columns)
      : pages_(pages), table_(table), columns_(std::move(columns)), values_(columns_.size()) {}

  // Values in the order of the chosen columns; valid until the next call. `budget`: of a walk over many rows.
  const std::vector<Value>& Decode(ByteView row, LongValueBudget* budget = nullptr);
  const std::vector<Value>& Values() const { return values_; }

 private:
  PageSource& pages_;
  const StoredTable& table_;
  std::vector<const StoredColumn*> columns_;
  std::vector<Value> values_;
};

// Rows by their places, one after the other; each is decoded into the memory of the one before.
class RowFetcher {
 public:
  RowFetcher(PageSource& pages, const StoredTable& table, std::vector<const StoredColumn*> columns, std::string context)
      : pages_(pages), table_(table), decoder_(pages, table, std::move(columns)), context_(std::move(context)) {}

  // False when there is no such row (any more).
  bool Fetch(RowId row);
  // The chosen columns, in the order asked for; valid until the next Fetch.
  const std::vector<Value>& Values() const { return decoder_.Values(); }

 private:
  PageSource& pages_;
  const StoredTable& table_;
  RowDecoder decoder_;
  std::string context_;
};

// All rows of a table. Where the file is damaged, Next throws an Error that names table and page; the call after that
// goes on with what is still readable.
class TableCursor {
 public:
  TableCursor(PageSource& pages, const StoredTable& table, std::vector<const StoredColumn*> columns,
              std::string context)
      : scan_(pages, table), decoder_(pages, table, std::move(columns)), context_(std::move(context)) {}

  // Goes to the next row; false behind the last.
  bool Next();
  RowId Id() const { return scan_.Id(); }
  // The chosen columns, in the order asked for; valid until Next.
  const std::vector<Value>& Values() const { return decoder_.Values(); }
  // The row as it is stored; valid until Next.
  ByteView Row() const { return scan_.Row(); }

 private:
  RowScan scan_;
  RowDecoder decoder_;
  LongValueBudget budget_;
  std::string context_;
};

// The rows that an index names, in its order.
class KeyCursor {
 public:
  // Every entry, forwards or backwards.
  KeyCursor(IndexCursor cursor, bool backwards, std::string context);
  // The entries whose key begins with `key`.
  KeyCursor(IndexCursor cursor, Bytes key, std::string context);

  // Goes to the next entry; false behind the last.
  bool Next();
  RowId Id() const { return row_; }

 private:
  bool Step();

  IndexCursor cursor_;
  Bytes key_;
  bool backwards_ = false;
  bool started_ = false;
  RowId row_ = 0;
  std::string context_;
};

}  // namespace jet

// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/index/IndexCursor.h"
#include "platform/jet/pages/DataPage.h"
#include "platform/jet/rows/LongValue.h"
#include "platform/jet/rows/RowScan.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace jet {

struct StoredColumn;
struct StoredTable;

// Decodes selected columns of a table's rows.
class RowDecoder {
 public:
  // `columns` point into `table`; both must outlive the decoder.
  RowDecoder(PageSource& pages, const StoredTable& table, std::vector<const StoredColumn*> columns)
      : pages_(pages), table_(table), columns_(std::move(columns)), values_(columns_.size()) {}

  // Values in the order of the selected columns; valid until the next call. `budget`: for scans of many rows.
  const std::vector<Value>& Decode(ByteView row, LongValueBudget* budget = nullptr);
  const std::vector<Value>& Values() const { return values_; }

 private:
  PageSource& pages_;
  const StoredTable& table_;
  std::vector<const StoredColumn*> columns_;
  std::vector<Value> values_;
};

// Fetches rows by RowId, reusing the memory of the previous row, and its page: rows that follow each other in an index
// are often on one page. The table may not change between two calls.
class RowFetcher {
 public:
  RowFetcher(PageSource& pages, const StoredTable& table, std::vector<const StoredColumn*> columns, std::string context)
      : pages_(pages), table_(table), decoder_(pages, table, std::move(columns)), context_(std::move(context)) {}

  // False when the row does not exist (any more).
  bool Fetch(RowId row);
  // The selected columns, in the given order; valid until the next Fetch.
  const std::vector<Value>& Values() const { return decoder_.Values(); }

 private:
  void TurnTo(std::uint32_t number);

  PageSource& pages_;
  const StoredTable& table_;
  RowDecoder decoder_;
  std::optional<DataPage> page_;
  std::string context_;
};

// Iterates over all rows of a table. Where the file is damaged, Next throws an Error that names table and page; the
// next call continues with what is readable.
class TableCursor {
 public:
  TableCursor(PageSource& pages, const StoredTable& table, std::vector<const StoredColumn*> columns,
              std::string context)
      : scan_(pages, table), decoder_(pages, table, std::move(columns)), context_(std::move(context)) {}

  // Advances to the next row; false after the last.
  bool Next();
  RowId Id() const { return scan_.Id(); }
  // The selected columns, in the given order; valid until Next.
  const std::vector<Value>& Values() const { return decoder_.Values(); }
  // The row as stored; valid until Next.
  ByteView Row() const { return scan_.Row(); }

 private:
  RowScan scan_;
  RowDecoder decoder_;
  LongValueBudget budget_;
  std::string context_;
};

// Iterates over the rows of an index, in its order.
class KeyCursor {
 public:
  // Every entry, forwards or backwards.
  KeyCursor(IndexCursor cursor, bool backwards, std::string context);
  // The entries whose key begins with `key`.
  KeyCursor(IndexCursor cursor, Bytes key, std::string context);

  // Advances to the next entry; false after the last.
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

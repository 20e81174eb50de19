// SPDX-License-Identifier: MIT
#pragma once

#include "platform/dao/OpenOptions.h"
#include "platform/dao/TableDef.h"
#include "platform/dao/Value.h"

#include <QString>
#include <QStringList>

#include <bitset>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <utility>
#include <vector>

namespace dao {

// The seam under the SQL engine: what a database must be able to do, a file (JetStorage) or a schema on a server
// (postgres/ServerStorage). Above it lie the dialect, conversions,
// collation of expressions and error texts of statements; below it pages, keys and locks. Fields and indexes are
// counted from 0 in the order of the TableDef. Every failure is a runtime::Error naming file, table, field or value.

// Which row, for as long as it exists: never reused within a transaction, never a position in an order.
using RowId = std::int64_t;

constexpr std::size_t kMostFields = 255;
using FieldMask = std::bitset<kMostFields>;

// Rows one by one. It may be used on while rows of other tables change; once rows of its own table changed, it is only
// destroyed (the engine collects the rows of an UPDATE or DELETE first).
class Cursor {
 public:
  virtual ~Cursor() = default;
  virtual bool Next() = 0;  // to the first row at first; false at the end
  virtual RowId Id() const = 0;
  // A wanted field of the current row; text and bytes stay valid until Next.
  virtual ValueView Field(std::size_t field) const = 0;
};

// A field and its new value, of the kind that Value tells for its type.
using FieldValue = std::pair<std::size_t, Value>;

// One table, for use inside a transaction of its storage.
class Table {
 public:
  virtual ~Table() = default;
  virtual const TableDef& Definition() const = 0;

  // Every row, in the file's own order.
  virtual std::unique_ptr<Cursor> Scan(const FieldMask& wanted) = 0;
  // Every row that the index has, in its order or backwards.
  virtual std::unique_ptr<Cursor> ScanByIndex(std::size_t index, bool backwards, const FieldMask& wanted) = 0;
  // The rows whose first key.size() fields of the index equal the key, which holds no NULL. Text equals as the
  // engine compares it.
  virtual std::unique_ptr<Cursor> Lookup(std::size_t index, std::span<const Value> key, const FieldMask& wanted) = 0;

  // A whole row, one value a field. NULL in an autonumber field lets the file choose. A key that is there already and
  // a missing required key are errors.
  virtual void Insert(std::vector<Value> row) = 0;
  // Every row of another table, as it is stored there; how many. Nothing, with nothing done, when the two are not made
  // alike: then the rows go one by one.
  virtual std::optional<std::size_t> InsertAllOf(Table& /*other*/) { return std::nullopt; }
  virtual void Update(RowId row, std::span<const FieldValue> changes) = 0;
  virtual void Delete(std::span<const RowId> rows) = 0;  // each named once
  // Empties the table in one go; answers how many rows it had.
  virtual std::size_t DeleteAll() = 0;
};

enum class Access { Read, Write };

// A consistent look at the file, or the one writer's turn. Going without Commit rolls everything back.
class Transaction {
 public:
  virtual ~Transaction() = default;
  virtual void Commit() = 0;  // durable when it returns
};

// An opened database file. Holds no lock outside a transaction; at most one transaction at a time.
class Storage {
 public:
  virtual ~Storage() = default;
  virtual const QString& PathText() const = 0;
  virtual bool IsSameFile(const Storage& other) const = 0;
  // Waits a bounded time for its turn, then an error.
  virtual std::unique_ptr<Transaction> Begin(Access access) = 0;
  // Inside a reading transaction: the statement reads one table once, so that it needs no moment shared by several
  // reads. A server saves round trips by it.
  virtual void ExpectOneRead() {}

  // Inside a transaction: names without the system's own tables; one table without regard to letter case, or nothing.
  virtual QStringList TableNames() = 0;
  virtual std::unique_ptr<Table> OpenTable(const QString& name) = 0;
  virtual void CreateTable(const TableDef& table) = 0;
};

// Opens or makes the file at a path text, or the schema at a server's address (IsServerPath); the errors are those of
// OpenDatabase and CreateDatabase.
std::unique_ptr<Storage> OpenStorage(const QString& pathText, const OpenOptions& options = {});
void CreateStorage(const QString& pathText);

}  // namespace dao

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
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string_view>
#include <utility>
#include <vector>

namespace dao {

// The interface of a database for the SQL layer, implemented for files (JetStorage) and for a schema on a server
// (postgres/ServerStorage). The SQL layer handles the dialect, conversions, collation and the error texts of
// statements; a storage handles rows, keys and locks. Fields and indexes are counted from 0 in the order of the
// TableDef. Every failure is a runtime::Error with the name of the file, table, field or value.

// Identifies a row; never reused within a transaction, and not a position.
using RowId = std::int64_t;

constexpr std::size_t kMaxFields = 255;
using FieldMask = std::bitset<kMaxFields>;

// Reads rows one by one. Stays valid while rows of other tables change, but may only be destroyed after a change of its
// own table (SQLite collects the rows of an UPDATE or DELETE first).
class Cursor {
 public:
  virtual ~Cursor() = default;
  virtual bool Next() = 0;  // the first call moves to the first row; false at the end
  virtual RowId Id() const = 0;
  // A wanted field of the current row; text and bytes are valid until Next.
  virtual ValueView Field(std::size_t field) const = 0;
};

// A field and its new value, of the kind for its type (see Value).
using FieldValue = std::pair<std::size_t, Value>;

// One table, for use inside a transaction of its storage.
class Table {
 public:
  virtual ~Table() = default;
  virtual const TableDef& Definition() const = 0;

  // Every row, in storage order.
  virtual std::unique_ptr<Cursor> Scan(const FieldMask& wanted) = 0;
  // The same, but rows in which a text field is not equal to `text` by the text order, whatever the case of letters,
  // may be left out.
  virtual std::unique_ptr<Cursor> ScanForText(std::size_t /*field*/, std::u16string_view /*text*/,
                                              const FieldMask& wanted) {
    return Scan(wanted);
  }
  // Every row in the index, in its order or backwards.
  virtual std::unique_ptr<Cursor> ScanByIndex(std::size_t index, bool backwards, const FieldMask& wanted) = 0;
  // The rows in which the first key.size() fields of the index equal the key, which contains no NULL. Texts are equal
  // by the text order. More rows than these may be returned.
  virtual std::unique_ptr<Cursor> Lookup(std::size_t index, std::span<const Value> key, const FieldMask& wanted) = 0;

  // Inserts a row, one value per field. NULL in an autonumber field lets the storage assign the number. A duplicate of
  // a unique key and NULL in a required key are errors.
  virtual void Insert(std::vector<Value> row) = 0;
  // The same for a row among many, which may be missing in look-ups until EndInserts.
  virtual void InsertAmongMany(std::vector<Value> row) { Insert(std::move(row)); }
  virtual void EndInserts() {}
  // Copies every row of another table in its stored form; returns the number of rows. Nothing, with nothing changed,
  // when the tables do not allow this: the caller then inserts the rows one by one.
  virtual std::optional<std::size_t> InsertAllOf(Table& /*other*/) { return std::nullopt; }
  virtual void Update(RowId row, std::span<const FieldValue> changes) = 0;
  virtual void Delete(std::span<const RowId> rows) = 0;  // without duplicates
  // Deletes all rows at once; returns how many there were.
  virtual std::size_t DeleteAll() = 0;
};

enum class Access { Read, Write };

// A consistent snapshot for reading, or the exclusive right to write. Destruction without Commit rolls back.
class Transaction {
 public:
  virtual ~Transaction() = default;
  virtual void Commit() = 0;  // durable when it returns
};

// An open database. Holds no lock outside a transaction; at most one transaction at a time.
class Storage {
 public:
  virtual ~Storage() = default;
  virtual const QString& PathText() const = 0;
  virtual bool IsSameFile(const Storage& other) const = 0;
  // Waits for other writers for a limited time (WriteWait), then throws an error.
  virtual std::unique_ptr<Transaction> Begin(Access access) = 0;
  // Inside a reading transaction: the statement will read one table once, so no snapshot shared by several reads is
  // needed. Saves round trips to a server.
  virtual void ExpectOneRead() {}

  // Inside a transaction: the names without system tables; a table by its name, ignoring letter case, or null.
  virtual QStringList TableNames() = 0;
  virtual std::unique_ptr<Table> OpenTable(const QString& name) = 0;
  virtual void CreateTable(const TableDef& table) = 0;
};

// Opens or creates the file at a path text, or the schema at a server address (IsServerPath); the errors are those of
// OpenDatabase and CreateDatabase.
std::unique_ptr<Storage> OpenStorage(const QString& pathText, const OpenOptions& options = {});
void CreateStorage(const QString& pathText);
void CreateStorage(const QString& pathText, const std::function<void(std::unique_ptr<Storage>)>& fill);

}  // namespace dao

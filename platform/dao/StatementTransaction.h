// SPDX-License-Identifier: MIT
#pragma once

#include "platform/dao/Recordset.h"
#include "platform/dao/Storage.h"
#include "platform/dao/TableDef.h"

#include <QHash>
#include <QString>

#include <memory>
#include <span>
#include <vector>

namespace dao {

class Database;

// Several statements of one database that are executed together or not at all. From its construction on it is the only
// writer: other writers wait, readers see the database as it was. Its own reads see its changes. Without Commit, and
// after any error, nothing is changed.
//
// One thread at a time. During its lifetime its Database, and others of the same file in this thread, must not be used.
// Every failure is a runtime::Error; after a failed change every further call fails.
class StatementTransaction {
 public:
  explicit StatementTransaction(const Database& database);
  ~StatementTransaction();
  StatementTransaction(const StatementTransaction&) = delete;
  StatementTransaction& operator=(const StatementTransaction&) = delete;

  // As those of Database. A statement with IN (another file) is an error.
  int Execute(const QString& sql);
  Recordset OpenRecordset(const QString& sql);
  bool HasTable(const QString& name);
  TableDef Definition(const QString& table);
  void CreateTable(const TableDef& table);

  // Row by row without SQL text, for thousands of changes. Values are in the order of the definition's fields and are
  // converted as those of a statement are. A RowId is valid until the transaction ends or the row is deleted.
  struct StoredRow {
    RowId id = 0;
    std::vector<Value> values;
  };
  std::vector<StoredRow> All(const QString& table);
  // The rows whose field has that number; fast when an index begins with the field.
  std::vector<StoredRow> Find(const QString& table, const QString& field, std::int64_t number);
  // The highest number in a field; 0 for a table without rows.
  std::int64_t Highest(const QString& table, const QString& field);
  void Insert(const QString& table, std::span<const Value> values);
  void Update(const QString& table, RowId row, std::span<const FieldValue> changes);
  void Delete(const QString& table, std::span<const RowId> rows);

  // The changes are durable when it returns. After an Error that IsDone they are made, but may not survive a power cut.
  void Commit();

 private:
  template <class Work>
  auto Guarded(Work work) -> decltype(work());
  Table& Opened(const QString& name);

  const std::shared_ptr<Storage> storage_;
  std::unique_ptr<Transaction> writing_;
  QHash<QString, std::shared_ptr<Table>> tables_;  // by their names in lower case; destroyed before the transaction
  bool failed_ = false;
};

}  // namespace dao

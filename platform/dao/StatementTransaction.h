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

// Several statements of one database that are carried out together or not at all. From its construction on it has the
// writer's turn: other writers wait, readers see the database as it was. What it changed it reads back itself. Without
// Commit, and after any error, nothing of it is left.
//
// One thread at a time; while it lives its Database, and others of the same file in this thread, are not used. Every
// failure is a runtime::Error; after one that comes from a change every further call fails.
class StatementTransaction {
 public:
  explicit StatementTransaction(const Database& database);
  ~StatementTransaction();
  StatementTransaction(const StatementTransaction&) = delete;
  StatementTransaction& operator=(const StatementTransaction&) = delete;

  // As of Database. A statement that names another file is an error.
  int Execute(const QString& sql);
  Recordset OpenRecordset(const QString& sql);
  bool HasTable(const QString& name);
  TableDef Definition(const QString& table);
  void CreateTable(const TableDef& table);

  // Row by row without SQL text, for thousands of changes. Values are in the order of the definition's fields and are
  // converted as those of a statement are. A row's number is good until the transaction ends or the row goes.
  struct StoredRow {
    RowId id = 0;
    std::vector<Value> values;
  };
  std::vector<StoredRow> All(const QString& table);
  // The rows whose field has that number; quick when an index begins with the field.
  std::vector<StoredRow> Find(const QString& table, const QString& field, std::int64_t number);
  // The highest number in a field; 0 for a table without rows.
  std::int64_t Highest(const QString& table, const QString& field);
  void Insert(const QString& table, std::span<const Value> values);
  void Update(const QString& table, RowId row, std::span<const FieldValue> changes);
  void Delete(const QString& table, std::span<const RowId> rows);

  // Durable when it returns. After an Error that IsDone all is there, but may not survive a power cut.
  void Commit();

 private:
  template <class Work>
  auto Guarded(Work work) -> decltype(work());
  Table& Opened(const QString& name);

  const std::shared_ptr<Storage> storage_;
  std::unique_ptr<Transaction> writing_;
  QHash<QString, std::shared_ptr<Table>> tables_;  // by their names in lower case; gone before the transaction
  bool failed_ = false;
};

}  // namespace dao

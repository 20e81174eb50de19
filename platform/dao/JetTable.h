// SPDX-License-Identifier: MIT
#pragma once

#include "platform/dao/JetFile.h"
#include "platform/dao/Storage.h"
#include "platform/jet/table/Table.h"

#include <memory>
#include <optional>
#include <span>
#include <vector>

namespace jet {
class TableWriter;
}

namespace dao {

// A table of a Jet 4 file.
class JetTable : public Table {
 public:
  JetTable(JetFile file, jet::Table table);
  ~JetTable() override;
  JetTable(const JetTable&) = delete;
  JetTable& operator=(const JetTable&) = delete;

  const TableDef& Definition() const override { return *definition_; }
  std::unique_ptr<Cursor> Scan(const FieldMask& wanted) override;
  std::unique_ptr<Cursor> ScanByIndex(std::size_t index, bool backwards, const FieldMask& wanted) override;
  std::unique_ptr<Cursor> Lookup(std::size_t index, std::span<const Value> key, const FieldMask& wanted) override;
  void Insert(std::vector<Value> row) override;
  void InsertAmongMany(std::vector<Value> row) override;
  void EndInserts() override;
  std::optional<std::size_t> InsertAllOf(Table& other) override;
  void Update(RowId row, std::span<const FieldValue> changes) override;
  void Delete(std::span<const RowId> rows) override;
  std::size_t DeleteAll() override;

 private:
  // The key as the columns of the index store it; ends before the first value that cannot be a key.
  std::vector<jet::Value> KeyOf(std::size_t index, std::span<const Value> key) const;
  jet::Value Stored(std::size_t field, Value value) const;
  std::vector<jet::Value> StoredRow(std::vector<Value> row) const;
  jet::TableWriter& Writer();

  const JetFile file_;
  const jet::Table table_;
  const std::shared_ptr<const TableDef> definition_;
  std::unique_ptr<jet::TableWriter>
      writer_;  // created by the first change, because it reads the relations and all indexes
};

}  // namespace dao

// SPDX-License-Identifier: MIT
#pragma once

#include "platform/dao/Storage.h"
#include "platform/dao/postgres/ServerCursor.h"
#include "platform/dao/postgres/ServerSession.h"

#include <memory>
#include <string>

namespace dao {

// A table on the server, within a transaction. Queries only have conditions that the server surely decides as the text
// order and SQLite do, and may therefore return more rows than requested; SQLite checks every condition again.
class ServerTable : public Table {
 public:
  ServerTable(std::shared_ptr<ServerSession> session, TableDef definition)
      : session_(std::move(session)), definition_(std::move(definition)) {}

  const TableDef& Definition() const override { return definition_; }
  std::unique_ptr<Cursor> Scan(const FieldMask& wanted) override;
  std::unique_ptr<Cursor> ScanForText(std::size_t field, std::u16string_view text, const FieldMask& wanted) override;
  std::unique_ptr<Cursor> ScanByIndex(std::size_t index, bool backwards, const FieldMask& wanted) override;
  std::unique_ptr<Cursor> Lookup(std::size_t index, std::span<const Value> key, const FieldMask& wanted) override;
  void Insert(std::vector<Value> row) override;
  void Update(RowId row, std::span<const FieldValue> changes) override;
  void Delete(std::span<const RowId> rows) override;
  std::size_t DeleteAll() override;

  // The rows with one of these values in a field of whole numbers. They contain that field and the wanted ones.
  std::shared_ptr<ServerRows> RowsOfKeys(std::size_t field, const std::vector<std::int64_t>& keys,
                                         const FieldMask& wanted);

 private:
  std::string Name() const { return session_->Known().Quoted(definition_.name); }
  std::string Literal(std::size_t field, const Value& value) const;
  // The SELECT of the wanted fields, up to and including the name of the table.
  std::string Select(const FieldMask& wanted, std::vector<std::size_t>& fields) const;
  std::unique_ptr<Cursor> LookupInBatch(std::size_t field, std::int64_t key, const FieldMask& wanted);
  std::shared_ptr<ServerRows> Query(const FieldMask& wanted, const std::string& conditionAndOrder);

  std::shared_ptr<ServerSession> session_;
  const TableDef definition_;
};

}  // namespace dao

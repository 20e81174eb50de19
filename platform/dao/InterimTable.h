#pragma once

#include "platform/dao/InterimConnection.h"
#include "platform/dao/Storage.h"

namespace dao {

// A table of the interim file: an SQLite table of the same name and fields, its rowid the row's identity.
class InterimTable : public Table {
 public:
  InterimTable(InterimConnection& connection, TableDef definition)
      : connection_(connection), definition_(std::move(definition)) {}

  const TableDef& Definition() const override { return definition_; }
  std::unique_ptr<Cursor> Scan(const FieldMask& wanted) override;
  std::unique_ptr<Cursor> ScanByIndex(std::size_t index, bool backwards, const FieldMask& wanted) override;
  std::unique_ptr<Cursor> Lookup(std::size_t index, std::span<const Value> key, const FieldMask& wanted) override;
  void Insert(std::span<const Value> row) override;
  void Update(RowId row, std::span<const FieldValue> changes) override;
  void Delete(RowId row) override;

  static void Create(InterimConnection& connection, const TableDef& definition);

 private:
  QString SelectSql(const FieldMask& wanted) const;
  Value NextNumber(const QString& field);
  void Run(InterimStatement& statement);

  InterimConnection& connection_;
  const TableDef definition_;
};

}  // namespace dao

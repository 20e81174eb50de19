// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/index/Counters.h"
#include "platform/jet/index/TableIndexes.h"
#include "platform/jet/rows/FieldWriter.h"
#include "platform/jet/rows/RowFiller.h"
#include "platform/jet/rows/RowSpace.h"
#include "platform/jet/rows/StoredTable.h"
#include "platform/jet/table/Autonumbers.h"
#include "platform/jet/table/Definition.h"
#include "platform/jet/table/ForeignKeys.h"
#include "platform/jet/table/Table.h"

#include <memory>
#include <optional>
#include <span>
#include <vector>

namespace jet {

// Inserts, updates and deletes rows of one table within a Transaction, including long values, indexes and counters.
//
// An Error names table and field. One about a value (Duplicate, Required, TooLong, OutOfRange, UnknownCharacter,
// Relation) is thrown before anything changes; after any other the transaction must be rolled back.
//
// Values are in the order of TableDefinition::columns. The transaction must outlive this; nothing else may change the
// table meanwhile.
class TableWriter {
 public:
  // Throws Error (Unsupported) for a table with validation rules or an index whose keys cannot be built.
  TableWriter(Transaction& pages, std::shared_ptr<const TableShape> shape);
  TableWriter(const TableWriter&) = delete;
  TableWriter& operator=(const TableWriter&) = delete;

  const TableDefinition& Definition() const { return definition_; }

  // `values` are changed to the stored ones: null in an autonumber column becomes the next number.
  RowId Insert(std::vector<Value>& values) { return Insert(values, &TableIndexes::Insert); }
  // The same for a row among many: their index entries are sorted and written leaf by leaf. EndInserts must follow the
  // last one, before any other method is called or rows are looked up.
  RowId InsertAmongMany(std::vector<Value>& values) { return Insert(values, &TableIndexes::InsertLater); }
  void EndInserts();

  // Whether rows of `other`, a different table, can be copied as stored, with checks only for indexes and autonumbers.
  bool CanCopyRowsFrom(const Table& other) const;
  // The columns whose values CopyRow needs for those checks.
  const ColumnSet& IndexedColumns() const { return indexedColumns_; }
  // BeginCopy and EndCopy enclose calls of CopyRow; the rows are in the table only after EndCopy. In an empty table
  // each page is written once and the indexes are built from all keys together. After an Error of these three the
  // transaction must be rolled back.
  void BeginCopy();
  // Inserts a row as stored. `known`: its values of IndexedColumns.
  void CopyRow(ByteView row, const std::vector<Value>& known);
  void EndCopy();

  // Updates the columns for which `changed` is true; `values` has one element per column.
  void Update(RowId row, const std::vector<Value>& values, const std::vector<bool>& changed);
  void Delete(RowId row) { Delete({&row, 1}); }
  // `rows`: without repeats. Rows on one page, and their keys on one index page, are removed together.
  void Delete(std::span<const RowId> rows);
  // Empties the table without visiting each row; returns the number of rows. Autonumbers continue, as in the original
  // engine.
  std::size_t DeleteAll();

 private:
  // Values and fields in the order of def_.columns.
  using Values = std::vector<Value>;
  using Fields = std::vector<Field>;

  struct CurrentRow {
    Values values;     // long values only where an index needs them
    Fields fields;     // as stored
    RowId target = 0;  // present place of a moved row; 0 otherwise
  };

  const ColumnDefinition& DefinitionOf(std::size_t column) const { return definition_.columns[places_[column]]; }

  Values Arrange(const std::vector<Value>& values) const;
  void Normalise(Values& values) const;
  void CheckValue(std::size_t column, const Value& value) const;
  // How the keys of a new row get into the indexes.
  using InsertKeys = void (TableIndexes::*)(const TableIndexes::Keys& keys, RowId row);
  RowId Insert(std::vector<Value>& values, InsertKeys insertKeys);
  RowId InsertArranged(Values& values, InsertKeys insertKeys);
  void CheckFields(ByteView row) const;
  CurrentRow Read(RowId row);
  void Place(RowId row, const CurrentRow& present, const Bytes& bytes);

  // Everything to remove with a set of rows.
  struct RowsToDelete {
    TableIndexes::Entries entries;
    FieldWriter::Pieces pieces;
    LongValueBudget budget;     // for the pieces
    std::vector<RowId> places;  // both places of moved rows
  };
  void CollectForDelete(RowId row, RowsToDelete& toDelete);
  void DeleteTogether(std::span<const RowId> rows);
  void CheckNoneReferenced();

  // State of filling an empty table.
  struct Filling {
    RowFiller rows;
    TableIndexes::Entries entries;
  };

  Transaction& pages_;
  PageSpace space_;
  const std::shared_ptr<const TableShape> shape_;
  const StoredTable& def_;
  const TableDefinition& definition_;
  RowSpace rows_;
  Counters counters_;
  TableIndexes indexes_;
  Autonumbers autonumbers_;
  ForeignKeys foreignKeys_;
  FieldWriter fieldWriter_;
  std::vector<std::size_t> places_;  // positions of def_.columns in definition_.columns
  bool inOrder_ = true;              // def_ and definition_ have the same column order
  std::size_t fixedSize_;            // bytes of the fixed columns of a row
  std::vector<bool> allColumns_;
  Fields newFields_;  // reused buffer for the row being inserted
  Values newValues_;  // reused buffer for the known values of a copied or deleted row
  ColumnSet indexedColumns_;
  std::vector<std::size_t> indexedPlaces_;  // the same, as positions in def_.columns
  std::optional<Filling> filling_;
  std::size_t storedRows_ = 0;  // since BeginCopy
};

}  // namespace jet

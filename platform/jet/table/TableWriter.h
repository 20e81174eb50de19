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

#include <optional>
#include <span>
#include <vector>

namespace jet {

// Inserts, changes and deletes rows of one table within a Transaction: rows, long values, every index, counters.
//
// An Error names table and field. One that comes from a value (Duplicate, Required, TooLong, OutOfRange,
// UnknownCharacter, Relation) comes before anything changes; after any other the transaction must be rolled back.
//
// Values are in the order of TableDefinition::columns, of the kinds that Value tells. The transaction must outlive
// this; while it lives nothing else changes the table.
class TableWriter {
 public:
  // An Error (Unsupported) for a table with an index whose keys cannot be built, or with validation rules.
  TableWriter(Transaction& pages, StoredTable def, TableDefinition definition);
  TableWriter(const TableWriter&) = delete;
  TableWriter& operator=(const TableWriter&) = delete;

  const TableDefinition& Definition() const { return definition_; }

  // `values` come back as they are stored: null in an autonumber column became the next number.
  RowId Insert(std::vector<Value>& values);

  // Whether rows of `other`, which is another table, can be put in as they are stored there, with nothing to look at
  // but what the indexes and autonumbers want to know.
  bool CanCopyRowsFrom(const Table& other) const;
  // What they want to know.
  const ColumnSet& IndexedColumns() const { return indexedColumns_; }
  // Before the first and after the last of such rows; the table has them after EndCopy only. An empty table is
  // filled: each of its pages is written once, and its indexes are made of all keys together. After an Error of these
  // three the transaction must be rolled back.
  void BeginCopy();
  // Puts in a row, as stored; `known`: its values in IndexedColumns.
  void CopyRow(ByteView row, const std::vector<Value>& known);
  void EndCopy();

  // `changed` tells which columns `values` (in full length) brings anew; the others keep what they have.
  void Update(RowId row, const std::vector<Value>& values, const std::vector<bool>& changed);
  void Delete(RowId row) { Delete({&row, 1}); }
  // Each named once; those of one page, and their keys in one page of an index, go together.
  void Delete(std::span<const RowId> rows);
  // Empties the table without looking at each row; answers how many there were. Autonumbers go on from where they
  // were, as the original engine's do.
  std::size_t DeleteAll();

 private:
  // Values and fields in the order of def_.columns.
  using Values = std::vector<Value>;
  using Fields = std::vector<Field>;

  struct CurrentRow {
    Values values;     // those of long values only where an index needs them
    Fields fields;     // as stored
    RowId target = 0;  // where the bytes are when the row was moved
  };

  const ColumnDefinition& DefinitionOf(std::size_t column) const { return definition_.columns[places_[column]]; }

  Values Arrange(const std::vector<Value>& values) const;
  void Normalise(Values& values) const;
  void CheckValue(std::size_t column, const Value& value) const;
  RowId InsertArranged(Values& values);
  void CheckFields(ByteView row) const;
  CurrentRow Read(RowId row);
  void Place(RowId row, const CurrentRow& present, const Bytes& bytes);

  // What has to go with some rows.
  struct RowsToDelete {
    TableIndexes::Entries entries;
    FieldWriter::Pieces pieces;
    LongValueBudget budget;     // for the pieces
    std::vector<RowId> places;  // of moved rows both
  };
  void CollectForDelete(RowId row, RowsToDelete& going);
  void DeleteTogether(std::span<const RowId> rows);
  void CheckNoneReferenced();

  // An empty table that is being filled.
  struct Filling {
    RowFiller rows;
    TableIndexes::Entries entries;
  };

  Transaction& pages_;
  PageSpace space_;
  StoredTable def_;
  TableDefinition definition_;
  RowSpace rows_;
  Counters counters_;
  TableIndexes indexes_;
  Autonumbers autonumbers_;
  ForeignKeys foreignKeys_;
  FieldWriter fieldWriter_;
  std::vector<std::size_t> places_;  // of def_.columns in definition_.columns
  bool inOrder_ = true;              // both have the same order
  Fields newFields_;                 // of the row being inserted; kept for its memory
  Values newValues_;                 // likewise, of a stored row that comes or goes: what is known of it
  ColumnSet indexedColumns_;
  std::vector<std::size_t> indexedPlaces_;  // the same in def_.columns
  std::optional<Filling> filling_;
  std::size_t storedRows_ = 0;  // since BeginCopy
};

}  // namespace jet

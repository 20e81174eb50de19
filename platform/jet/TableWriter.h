#pragma once

#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "platform/jet/Definition.h"
#include "platform/jet/IndexWriter.h"
#include "platform/jet/LongValueWriter.h"
#include "platform/jet/Relations.h"
#include "platform/jet/RowBuilder.h"
#include "platform/jet/RowSpace.h"
#include "platform/jet/TableDef.h"

namespace jet {

/// Inserts, changes and deletes rows of one table within a Transaction: rows, long values, every index, counters.
///
/// An Error names table and field. One that comes from a value (Duplicate, Required, TooLong, OutOfRange,
/// UnknownCharacter, Relation) comes before anything changes; after any other the transaction must be rolled back.
///
/// Values are in the order of TableDefinition::columns, of the kinds that Value tells. The transaction must outlive
/// this.
class TableWriter {
 public:
  /// An Error (Unsupported) for a table with an index whose keys cannot be built, or with validation rules.
  TableWriter(Transaction& pages, TableDef def, TableDefinition definition);
  TableWriter(const TableWriter&) = delete;
  TableWriter& operator=(const TableWriter&) = delete;

  const TableDefinition& Definition() const { return definition_; }

  /// Null in an autonumber column gets the next number, which is written back into `values`.
  RowId Insert(std::vector<Value>& values);
  /// `changed` tells which columns `values` (in full length) brings anew; the others keep what they have.
  void Update(RowId row, const std::vector<Value>& values, const std::vector<bool>& changed);
  void Delete(RowId row);

 private:
  /// Values and fields in the order of def_.columns.
  using Values = std::vector<Value>;
  using Fields = std::vector<Field>;

  struct Present {
    Values values;     ///< those of long values only where an index needs them
    Fields fields;     ///< as stored
    RowId target = 0;  ///< where the bytes are when the row was moved
  };
  struct Tree {
    const RealIndexDef* def;
    std::string name;
    bool unique = false;
    bool required = false;
    std::vector<std::size_t> columns;  ///< places in def_.columns
    std::unique_ptr<IndexWriter> writer;
  };

  void MakeTrees();
  void CheckSupported() const;
  template <typename Work>
  auto Naming(Work work) const;
  std::string NameOf(std::size_t column) const;
  const ColumnDefinition& DefinitionOf(std::size_t column) const { return definition_.columns[places_[column]]; }

  Values Arrange(const std::vector<Value>& values) const;
  void Normalise(std::size_t column, Value& value) const;
  void CheckValue(std::size_t column, const Value& value) const;
  /// Nothing for a row that the index leaves out.
  std::optional<Bytes> KeyOf(const Tree& tree, const Values& values) const;
  void CheckKey(Tree& tree, const std::optional<Bytes>& key, const Values& values);
  void InsertKey(Tree& tree, const std::optional<Bytes>& key, RowId row);
  void RemoveKey(Tree& tree, const Values& values, RowId row);
  bool IsSameKey(const Tree& tree, const Values& before, const Values& after) const;

  void FillAutonumbers(Values& values, std::vector<Value>& given);
  std::int64_t NextNumber(std::size_t column);
  void RaiseAutonumber(std::size_t column, const Value& value);

  Present Read(RowId row);
  bool IsIndexed(std::size_t column) const;
  void EncodeField(std::size_t column, const Value& value, Field& field) const;
  void PutLongValues(const Values& values, const std::vector<bool>& changed, Fields& fields);
  void Place(RowId row, const Present& present, const Bytes& bytes);
  LongValueWriter& LongValues(std::size_t column);
  void CountRows(int change);
  void CountKey(const RealIndexDef& index);

  Transaction& pages_;
  PageSpace space_;
  TableDef def_;
  TableDefinition definition_;
  RowSpace rows_;
  Relations relations_;
  std::vector<std::size_t> places_;  ///< of def_.columns in definition_.columns
  std::vector<Tree> trees_;
  std::vector<std::unique_ptr<LongValueWriter>> longValues_;  ///< by column, made when needed
};

}  // namespace jet

// SPDX-License-Identifier: MIT
#include "platform/jet/table/TableWriter.h"

#include "platform/jet/rows/RowFiller.h"
#include "platform/jet/rows/RowLayout.h"
#include "platform/jet/rows/RowScan.h"
#include "platform/jet/rows/RowView.h"
#include "platform/jet/values/Codec.h"
#include "platform/jet/values/Damage.h"
#include "platform/jet/values/Names.h"
#include "platform/jet/values/Utf8.h"

#include <algorithm>
#include <optional>
#include <utility>
#include <variant>

namespace jet {

namespace {

template <typename Work>
auto WithTableName(const TableDefinition& table, Work work) {
  try {
    return work();
  } catch (const Error& error) {
    throw Error(error.Code(), "Tabel '" + ToUtf8(table.name) + "': " + error.what());
  }
}

void CheckColumn(const StoredColumn& column, const ColumnDefinition& definition) {
  if (!column.KnownType()) throw Error(ErrorCode::Unsupported, FieldName(column) + " is van een onbekende soort.");
  if (definition.validationRule.empty()) return;
  throw Error(ErrorCode::Unsupported, FieldName(column) + " heeft een validatieregel; die wordt niet ondersteund.");
}

std::size_t PlaceOf(const StoredColumn& column, const TableDefinition& definition) {
  const auto found =
      std::ranges::find(definition.columns, column.number, [](const ColumnDefinition& known) { return known.number; });
  return static_cast<std::size_t>(found - definition.columns.begin());
}

// Returns the shape; throws when the table has features that this library cannot write.
std::shared_ptr<const TableShape> Supported(std::shared_ptr<const TableShape> shape) {
  WithTableName(shape->definition, [&] {
    for (const StoredColumn& column : shape->stored.columns)
      CheckColumn(column, shape->definition.columns[PlaceOf(column, shape->definition)]);
    TableIndexes::RequireKnownOrders(shape->stored);
  });
  return shape;
}

// The present place of a moved row, which must be marked as such; 0 for a row that has not moved.
RowId TargetOf(PageSource& pages, RowId row, const StoredRow& stored) {
  if (stored.place == row) return 0;
  const DataPage page(pages.Read(PageOf(row)), PageOf(row));
  const RowId target = U32(page.BytesOf(page.At(SlotOf(row))), 0);
  const DataPage targetPage(pages.Read(PageOf(target)), PageOf(target));
  if (targetPage.At(SlotOf(target)).kind != SlotKind::Target)
    throw DamageAt(PageOf(row), "een verplaatste rij ontbreekt");
  return target;
}

}  // namespace

TableWriter::TableWriter(Transaction& pages, std::shared_ptr<const TableShape> shape)
    : pages_(pages),
      space_(pages),
      shape_(Supported(std::move(shape))),
      def_(shape_->stored),
      definition_(shape_->definition),
      rows_(pages, space_, def_.page, def_.ownedMap, def_.freeMap),
      counters_(pages, def_),
      indexes_(pages, space_, def_, counters_),
      autonumbers_(def_, counters_, indexes_),
      foreignKeys_(pages, def_),
      fieldWriter_(pages, space_, def_),
      fixedSize_(FixedSize(def_)),
      allColumns_(def_.columns.size(), true),
      newFields_(def_.columns.size()),
      newValues_(def_.columns.size()) {
  for (const StoredColumn& column : def_.columns) {
    places_.push_back(PlaceOf(column, definition_));
    inOrder_ = inOrder_ && places_.back() + 1 == places_.size();
    if (!column.IsAutonumber() && !indexes_.Uses(places_.size() - 1)) continue;
    indexedColumns_.push_back(places_.back());
    indexedPlaces_.push_back(places_.size() - 1);
  }
}

TableWriter::Values TableWriter::Arrange(const std::vector<Value>& values) const {
  Values arranged;
  arranged.reserve(places_.size());
  for (const std::size_t place : places_)
    arranged.push_back(values[place]);
  return arranged;
}

void TableWriter::Normalise(Values& values) const {
  for (std::size_t i = 0; i < values.size(); ++i) {
    const StoredColumn& column = def_.columns[i];
    Value& value = values[i];
    if (column.Type() == ColumnType::Boolean && IsNull(value)) value = false;
    if (double* number = std::get_if<double>(&value); number != nullptr && *number == 0) *number = 0;  // not -0
    const Decimal* number = std::get_if<Decimal>(&value);
    if (number != nullptr && column.Type() == ColumnType::Decimal) value = Rescaled(column, *number);
  }
}

void TableWriter::CheckValue(std::size_t column, const Value& value) const {
  const ColumnDefinition& definition = DefinitionOf(column);
  if (IsNull(value)) {
    if (!definition.required) return;
    throw Error(ErrorCode::Required, FieldName(def_.columns[column]) + " moet een waarde hebben.");
  }
  if (definition.allowZeroLength) return;
  const std::u16string* text = std::get_if<std::u16string>(&value);
  if (text != nullptr && text->empty()) {
    throw Error(ErrorCode::Required, FieldName(def_.columns[column]) + " mag geen lege tekst hebben.");
  }
}

RowId TableWriter::Insert(std::vector<Value>& given, InsertKeys insertKeys) {
  return WithTableName(definition_, [&] {
    if (given.size() != places_.size()) throw Error(ErrorCode::Misuse, "Er is niet voor elk veld een waarde.");
    if (inOrder_) return InsertArranged(given, insertKeys);
    Values values = Arrange(given);
    const RowId row = InsertArranged(values, insertKeys);
    for (std::size_t i = 0; i < places_.size(); ++i)
      given[places_[i]] = std::move(values[i]);
    return row;
  });
}

RowId TableWriter::InsertArranged(Values& values, InsertKeys insertKeys) {
  Normalise(values);
  autonumbers_.Fill(values);
  for (std::size_t i = 0; i < values.size(); ++i) {
    CheckValue(i, values[i]);
    fieldWriter_.Encode(i, values[i], newFields_[i]);
  }
  const TableIndexes::Keys& keys = indexes_.KeysOf(values);
  foreignKeys_.CheckReferences(values);
  fieldWriter_.WriteLongValues(values, allColumns_, newFields_);
  const RowId row = rows_.Add(fieldWriter_.Row(newFields_));
  (indexes_.*insertKeys)(keys, row);
  for (std::size_t i = 0; i < values.size(); ++i)
    autonumbers_.Note(i, values[i]);
  counters_.CountRows(1);
  return row;
}

void TableWriter::EndInserts() {
  WithTableName(definition_, [&] { indexes_.InsertCollected(); });
}

bool TableWriter::CanCopyRowsFrom(const Table& other) const {
  const auto isFree = [](const ColumnDefinition& column) { return !column.required && column.allowZeroLength; };
  const auto isSameName = [](const ColumnDefinition& left, const ColumnDefinition& right) {
    return SameName(left.name, right.name);
  };
  return foreignKeys_.AreNone() && HaveSameRows(def_, other.Def()) &&
         std::ranges::equal(definition_.columns, other.Definition().columns, isSameName) &&
         std::ranges::all_of(definition_.columns, isFree);
}

void TableWriter::BeginCopy() {
  WithTableName(definition_, [&] {
    storedRows_ = 0;
    if (rows_.IsEmpty() && indexes_.AreEmpty()) filling_.emplace(Filling{rows_.Filler(), {}});
  });
}

void TableWriter::CopyRow(ByteView row, const std::vector<Value>& known) {
  WithTableName(definition_, [&] {
    CheckFields(row);
    for (std::size_t i = 0; i < known.size(); ++i)
      newValues_[indexedPlaces_[i]] = known[i];
    if (filling_) {
      indexes_.CollectNewEntries(newValues_, filling_->rows.Add(row), filling_->entries);
    } else {
      const TableIndexes::Keys& keys = indexes_.KeysOf(newValues_);
      indexes_.InsertLater(keys, rows_.Add(row));
    }
    for (const std::size_t place : indexedPlaces_)
      autonumbers_.Note(place, newValues_[place]);
    ++storedRows_;
  });
}

void TableWriter::EndCopy() {
  WithTableName(definition_, [&] {
    if (filling_) {
      filling_->rows.Finish();
      indexes_.Fill(filling_->entries);
      filling_.reset();
    }
    indexes_.InsertCollected();
    if (storedRows_ > 0) counters_.CountRows(static_cast<std::int64_t>(storedRows_));
  });
}

// Guards against damage in the source file: throws when a field is not within the row.
void TableWriter::CheckFields(ByteView row) const {
  const RowView view(row, def_);
  const bool holdsFixed = view.HoldsFixed(fixedSize_);
  for (const StoredColumn& column : def_.columns) {
    if (column.Type() == ColumnType::Boolean || (holdsFixed && column.IsFixed())) continue;
    if (view.Bit(column)) static_cast<void>(view.BytesOf(column));
  }
}

TableWriter::CurrentRow TableWriter::Read(RowId row) {
  const auto stored = FindRow(pages_, row, true, def_.page);
  if (!stored) throw Error(ErrorCode::NotFound, "de rij bestaat niet meer.");
  CurrentRow present;
  present.target = TargetOf(pages_, row, *stored);
  const RowView view(stored->bytes, def_);
  present.values.resize(def_.columns.size());
  present.fields.resize(def_.columns.size());
  for (std::size_t i = 0; i < def_.columns.size(); ++i) {
    const StoredColumn& column = def_.columns[i];
    if (!column.IsLong() || indexes_.Uses(i)) ReadField(pages_, view, column, present.values[i]);
    present.fields[i].bit = view.Bit(column);
    if (column.Type() == ColumnType::Boolean || !view.Bit(column)) continue;
    const ByteView bytes = view.BytesOf(column);
    present.fields[i].stored.assign(bytes.begin(), bytes.end());
  }
  return present;
}

void TableWriter::Update(RowId row, const std::vector<Value>& given, const std::vector<bool>& changedGiven) {
  WithTableName(definition_, [&] {
    if (given.size() != places_.size()) throw Error(ErrorCode::Misuse, "Er is niet voor elk veld een waarde.");
    const CurrentRow present = Read(row);
    Values arranged = Arrange(given);
    Normalise(arranged);
    Values values = present.values;
    Fields fields = present.fields;
    std::vector<bool> changed(values.size());
    for (std::size_t i = 0; i < values.size(); ++i) {
      changed[i] = changedGiven[places_[i]];
      if (!changed[i]) continue;
      values[i] = std::move(arranged[i]);
      CheckValue(i, values[i]);
      fieldWriter_.Encode(i, values[i], fields[i]);
    }
    const auto changes = indexes_.KeyChangesOf(present.values, values);
    foreignKeys_.CheckChange(present.values, values);
    fieldWriter_.WriteLongValues(values, changed, fields);
    Place(row, present, fieldWriter_.Row(fields));
    indexes_.Apply(changes, present.values, row);
    FieldWriter::Pieces pieces;
    for (std::size_t i = 0; i < values.size(); ++i) {
      if (!changed[i]) continue;
      if (present.fields[i].bit) fieldWriter_.CollectPieces(i, present.fields[i].stored, pieces);
      autonumbers_.Note(i, values[i]);
    }
    fieldWriter_.Release(std::move(pieces));
  });
}

void TableWriter::Place(RowId row, const CurrentRow& present, const Bytes& bytes) {
  const bool moved = present.target != 0;
  if (rows_.ReplaceInPlace(moved ? present.target : row, bytes, moved ? SlotKind::Target : SlotKind::Row)) return;
  const RowId target = rows_.Add(bytes, SlotKind::Target);
  Bytes pointer(4);
  Store(pointer.data(), target);
  if (!rows_.ReplaceInPlace(row, pointer, SlotKind::Pointer))
    throw DamageAt(PageOf(row), "geen plaats voor een verwijzing");
  if (moved) rows_.Delete({present.target});
}

void TableWriter::Delete(std::span<const RowId> rows) {
  WithTableName(definition_, [&] {
    if (foreignKeys_.AreNone()) return DeleteTogether(rows);
    // Deleting a row may release references to later ones, so check one by one.
    for (const RowId row : rows)
      DeleteTogether({&row, 1});
  });
}

void TableWriter::DeleteTogether(std::span<const RowId> rows) {
  RowsToDelete toDelete;
  for (const RowId row : rows)
    CollectForDelete(row, toDelete);
  indexes_.Remove(toDelete.entries);
  fieldWriter_.Release(std::move(toDelete.pieces));
  rows_.Delete(std::move(toDelete.places));
  counters_.CountRows(-static_cast<std::int64_t>(rows.size()));
}

void TableWriter::CollectForDelete(RowId row, RowsToDelete& toDelete) {
  const auto stored = FindRow(pages_, row, true, def_.page);
  if (!stored) throw Error(ErrorCode::NotFound, "de rij bestaat niet meer.");
  const RowId target = TargetOf(pages_, row, *stored);
  CheckFields(stored->bytes);
  const RowView view(stored->bytes, def_);
  for (std::size_t i = 0; i < def_.columns.size(); ++i) {
    const StoredColumn& column = def_.columns[i];
    if (indexes_.Uses(i)) ReadField(pages_, view, column, newValues_[i]);
    if (!column.IsLong() || !view.Bit(column)) continue;
    toDelete.budget.Spend(pages_, ParseLongValueHead(view.BytesOf(column)));
    fieldWriter_.CollectPieces(i, view.BytesOf(column), toDelete.pieces);
  }
  foreignKeys_.CheckNotReferenced(newValues_);
  indexes_.CollectEntries(newValues_, row, toDelete.entries);
  toDelete.places.push_back(row);
  if (target != 0) toDelete.places.push_back(target);
}

// References from this table itself are deleted too, so only other tables count.
void TableWriter::CheckNoneReferenced() {
  if (!foreignKeys_.IsReferencedElsewhere()) return;
  RowScan scan(pages_, def_);
  Values values(def_.columns.size());
  while (scan.Next()) {
    const RowView view(scan.Row(), def_);
    for (std::size_t i = 0; i < values.size(); ++i) {
      if (indexes_.Uses(i)) ReadField(pages_, view, def_.columns[i], values[i]);
    }
    foreignKeys_.CheckNotReferencedElsewhere(values);
  }
}

std::size_t TableWriter::DeleteAll() {
  return WithTableName(definition_, [&] {
    CheckNoneReferenced();
    const std::size_t count = rows_.Clear();
    fieldWriter_.Clear();
    indexes_.Clear();
    counters_.CountNoRows();
    return count;
  });
}

}  // namespace jet

// SPDX-License-Identifier: MIT
#include "platform/dao/JetTable.h"

#include "platform/dao/JetCursor.h"
#include "platform/dao/JetTableDef.h"
#include "platform/dao/JetValue.h"
#include "platform/jet/database/Database.h"
#include "platform/jet/table/TableWriter.h"
#include "platform/runtime/Error.h"

#include <algorithm>
#include <optional>
#include <span>
#include <vector>

using namespace Qt::StringLiterals;

namespace dao {
namespace {

jet::RowId StoredId(RowId row) {
  return static_cast<jet::RowId>(row);
}

}  // namespace

JetTable::JetTable(JetFile file, jet::Table table)
    : file_(std::move(file)), table_(std::move(table)), definition_(TableDefOf(table_)) {}

JetTable::~JetTable() = default;

std::unique_ptr<Cursor> JetTable::Scan(const FieldMask& wanted) {
  return std::make_unique<JetScan>(file_, table_, wanted);
}

std::unique_ptr<Cursor> JetTable::ScanByIndex(std::size_t index, bool backwards, const FieldMask& wanted) {
  return std::make_unique<JetKeyScan>(
      file_, table_, file_.WithUserErrors([&] { return table_.ScanByIndex(index, backwards); }), wanted);
}

std::unique_ptr<Cursor> JetTable::Lookup(std::size_t index, std::span<const Value> key, const FieldMask& wanted) {
  const std::vector<jet::Value> stored = KeyOf(index, key);
  if (stored.size() < key.size()) return Scan(wanted);
  return file_.WithUserErrors([&]() -> std::unique_ptr<Cursor> {
    try {
      return std::make_unique<JetKeyScan>(file_, table_, table_.Lookup(index, stored), wanted);
    } catch (const jet::Error& error) {
      const bool keyless =
          error.Code() == jet::ErrorCode::UnknownCharacter || error.Code() == jet::ErrorCode::Unsupported;
      if (!keyless) throw;
    }
    return Scan(wanted);
  });
}

std::vector<jet::Value> JetTable::KeyOf(std::size_t index, std::span<const Value> key) const {
  const jet::TableDefinition& table = table_.Definition();
  std::vector<jet::Value> stored;
  for (std::size_t i = 0; i < key.size(); ++i) {
    auto value = StoredOf(table.columns[table.indexes[index].fields[i].column], key[i]);
    if (!value) break;
    stored.push_back(std::move(*value));
  }
  return stored;
}

jet::Value JetTable::Stored(std::size_t field, Value value) const {
  auto stored = StoredOf(table_.Definition().columns[field], std::move(value));
  if (!stored) {
    throw runtime::Error(u"De waarde past niet in het veld '%1' van de tabel '%2'."_s.arg(
        definition_->fields[static_cast<qsizetype>(field)].name, definition_->name));
  }
  return std::move(*stored);
}

jet::TableWriter& JetTable::Writer() {
  if (!writer_) writer_ = file_.Database().OpenWriter(table_);
  return *writer_;
}

std::vector<jet::Value> JetTable::StoredRow(std::vector<Value> row) const {
  std::vector<jet::Value> values;
  values.reserve(row.size());
  for (std::size_t i = 0; i < row.size(); ++i)
    values.push_back(Stored(i, std::move(row[i])));
  return values;
}

void JetTable::Insert(std::vector<Value> row) {
  std::vector<jet::Value> values = StoredRow(std::move(row));
  file_.WithUserErrors([&] { Writer().Insert(values); });
}

void JetTable::InsertAmongMany(std::vector<Value> row) {
  std::vector<jet::Value> values = StoredRow(std::move(row));
  file_.WithUserErrors([&] { Writer().InsertAmongMany(values); });
}

void JetTable::EndInserts() {
  if (writer_) file_.WithUserErrors([&] { writer_->EndInserts(); });
}

std::optional<std::size_t> JetTable::InsertAllOf(Table& other) {
  const auto* source = dynamic_cast<const JetTable*>(&other);
  if (source == nullptr) return std::nullopt;
  jet::TableWriter& writer = file_.WithUserErrors([&]() -> jet::TableWriter& { return Writer(); });
  if (!writer.CanCopyRowsFrom(source->table_)) return std::nullopt;
  const auto fromSource = [&](auto work) { return source->file_.WithUserErrors(work); };
  jet::TableCursor rows = fromSource([&] { return source->table_.Scan(writer.IndexedColumns()); });
  file_.WithUserErrors([&] { writer.BeginCopy(); });
  std::size_t count = 0;
  for (; fromSource([&] { return rows.Next(); }); ++count)
    file_.WithUserErrors([&] { writer.CopyRow(rows.Row(), rows.Values()); });
  file_.WithUserErrors([&] { writer.EndCopy(); });
  return count;
}

void JetTable::Update(RowId row, std::span<const FieldValue> changes) {
  if (changes.empty()) return;
  std::vector<jet::Value> values(table_.Definition().columns.size());
  std::vector<bool> changed(values.size());
  for (const auto& [field, value] : changes) {
    values[field] = Stored(field, value);
    changed[field] = true;
  }
  file_.WithUserErrors([&] { Writer().Update(StoredId(row), values, changed); });
}

void JetTable::Delete(std::span<const RowId> rows) {
  std::vector<jet::RowId> stored(rows.size());
  std::transform(rows.begin(), rows.end(), stored.begin(), StoredId);
  file_.WithUserErrors([&] { Writer().Delete(stored); });
}

std::size_t JetTable::DeleteAll() {
  return file_.WithUserErrors([&] { return Writer().DeleteAll(); });
}

}  // namespace dao

// SPDX-License-Identifier: MIT
#include "platform/dao/StatementTransaction.h"

#include "platform/dao/Conversion.h"
#include "platform/dao/Database.h"
#include "platform/dao/Engine.h"
#include "platform/dao/SqlText.h"
#include "platform/dao/Statement.h"
#include "platform/runtime/Error.h"

#include <algorithm>
#include <optional>

using namespace Qt::StringLiterals;

namespace dao {
namespace {

std::shared_ptr<Storage> OpenedStorage(std::shared_ptr<Storage> storage) {
  if (!storage) throw runtime::Error(u"De database is gesloten."_s);
  return storage;
}

FieldMask EveryField(const TableDef& table) {
  FieldMask mask;
  for (qsizetype i = 0; i < table.fields.size(); ++i)
    mask.set(static_cast<std::size_t>(i));
  return mask;
}

std::optional<std::size_t> IndexOn(const TableDef& table, const QString& field) {
  for (qsizetype i = 0; i < table.indexes.size(); ++i) {
    const IndexDef& index = table.indexes[i];
    if (index.usable && !index.ignoreNull && index.fields.first().name.compare(field, Qt::CaseInsensitive) == 0)
      return static_cast<std::size_t>(i);
  }
  return std::nullopt;
}

std::size_t FieldPlace(const TableDef& table, const QString& field) {
  const int place = table.FieldIndex(field);
  if (place < 0) throw runtime::Error(u"Het veld '%1' bestaat niet in de tabel '%2'."_s.arg(field, table.name));
  return static_cast<std::size_t>(place);
}

StatementTransaction::StoredRow RowAt(const Cursor& cursor, std::size_t fieldCount) {
  StatementTransaction::StoredRow row{cursor.Id(), {}};
  row.values.reserve(fieldCount);
  for (std::size_t field = 0; field < fieldCount; ++field)
    row.values.push_back(Owned(cursor.Field(field)));
  return row;
}

}  // namespace

StatementTransaction::StatementTransaction(const Database& database)
    : storage_(OpenedStorage(database.storage_)), writing_(storage_->Begin(Access::Write)) {}

StatementTransaction::~StatementTransaction() = default;

template <class Work>
auto StatementTransaction::Guarded(Work work) -> decltype(work()) {
  if (!writing_ || failed_)
    throw runtime::Error(u"Deze transactie op '%1' is al beëindigd."_s.arg(storage_->PathText()));
  try {
    return work();
  } catch (...) {
    failed_ = true;
    throw;
  }
}

// The engine opens its tables itself, and a table may have only one writer.
int StatementTransaction::Execute(const QString& sql) {
  const Statement statement = ParseStatement(sql);
  if (statement.verb == Verb::Select || statement.inFile) {
    throw runtime::Error(u"Deze SQL-instructie kan niet in een transactie worden uitgevoerd.\n%1"_s.arg(Shown(sql)));
  }
  return Guarded([&] {
    tables_.clear();
    return Engine(statement, *storage_, *storage_).Change();
  });
}

Recordset StatementTransaction::OpenRecordset(const QString& sql) {
  const Statement statement = ParseStatement(sql);
  if (statement.verb != Verb::Select) {
    throw runtime::Error(u"Een recordset kan alleen met SELECT worden geopend.\n%1"_s.arg(Shown(sql)));
  }
  return Guarded([&] { return Recordset(Engine(statement, *storage_, *storage_).Select()); });
}

bool StatementTransaction::HasTable(const QString& name) {
  return Guarded([&] { return tables_.contains(name.toLower()) || storage_->OpenTable(name) != nullptr; });
}

TableDef StatementTransaction::Definition(const QString& table) {
  return Guarded([&] { return Opened(table).Definition(); });
}

void StatementTransaction::CreateTable(const TableDef& table) {
  CheckTableDef(table);
  Guarded([&] {
    tables_.clear();
    storage_->CreateTable(table);
  });
}

Table& StatementTransaction::Opened(const QString& name) {
  std::shared_ptr<Table>& table = tables_[name.toLower()];
  if (!table) table = storage_->OpenTable(name);
  if (!table) throw runtime::Error(u"De tabel '%1' bestaat niet in '%2'."_s.arg(name, storage_->PathText()));
  return *table;
}

std::vector<StatementTransaction::StoredRow> StatementTransaction::All(const QString& table) {
  return Guarded([&] {
    Table& opened = Opened(table);
    const TableDef& definition = opened.Definition();
    const auto cursor = opened.Scan(EveryField(definition));
    std::vector<StoredRow> rows;
    while (cursor->Next())
      rows.push_back(RowAt(*cursor, static_cast<std::size_t>(definition.fields.size())));
    return rows;
  });
}

// A look-up may give more rows than asked for.
std::vector<StatementTransaction::StoredRow> StatementTransaction::Find(const QString& table, const QString& field,
                                                                        std::int64_t number) {
  return Guarded([&] {
    Table& opened = Opened(table);
    const TableDef& definition = opened.Definition();
    const std::size_t place = FieldPlace(definition, field);
    const auto index = IndexOn(definition, field);
    const Value key = number;
    const FieldMask wanted = EveryField(definition);
    const auto cursor = index ? opened.Lookup(*index, {&key, 1}, wanted) : opened.Scan(wanted);
    std::vector<StoredRow> rows;
    while (cursor->Next()) {
      const ValueView found = cursor->Field(place);
      const auto* whole = std::get_if<std::int64_t>(&found);
      if (whole != nullptr && *whole == number)
        rows.push_back(RowAt(*cursor, static_cast<std::size_t>(definition.fields.size())));
    }
    return rows;
  });
}

std::int64_t StatementTransaction::Highest(const QString& table, const QString& field) {
  return Guarded([&] {
    Table& opened = Opened(table);
    const TableDef& definition = opened.Definition();
    const std::size_t place = FieldPlace(definition, field);
    const FieldMask wanted = FieldMask().set(place);
    const auto index = IndexOn(definition, field);
    std::int64_t highest = 0;
    const auto cursor = index ? opened.ScanByIndex(*index, true, wanted) : opened.Scan(wanted);
    while (cursor->Next()) {
      const ValueView found = cursor->Field(place);
      const auto* whole = std::get_if<std::int64_t>(&found);
      if (whole != nullptr) highest = std::max(highest, *whole);
      const bool isFirstTheHighest =
          index && definition.indexes[static_cast<qsizetype>(*index)].fields.first().direction == Direction::Ascending;
      if (whole != nullptr && isFirstTheHighest) break;
    }
    return highest;
  });
}

void StatementTransaction::Insert(const QString& table, std::span<const Value> values) {
  Guarded([&] {
    Table& opened = Opened(table);
    const TableDef& definition = opened.Definition();
    std::vector<Value> row;
    row.reserve(values.size());
    for (std::size_t field = 0; field < values.size(); ++field)
      row.push_back(
          ConvertToField(definition.name, definition.fields[static_cast<qsizetype>(field)], View(values[field])));
    opened.Insert(std::move(row));
  });
}

void StatementTransaction::Update(const QString& table, RowId row, std::span<const FieldValue> changes) {
  Guarded([&] {
    Table& opened = Opened(table);
    const TableDef& definition = opened.Definition();
    std::vector<FieldValue> converted;
    converted.reserve(changes.size());
    for (const auto& [field, value] : changes) {
      converted.emplace_back(
          field, ConvertToField(definition.name, definition.fields[static_cast<qsizetype>(field)], View(value)));
    }
    opened.Update(row, converted);
  });
}

void StatementTransaction::Delete(const QString& table, std::span<const RowId> rows) {
  Guarded([&] { Opened(table).Delete(rows); });
}

void StatementTransaction::Commit() {
  Guarded([&] {
    tables_.clear();
    writing_->Commit();
  });
  writing_.reset();
}

}  // namespace dao

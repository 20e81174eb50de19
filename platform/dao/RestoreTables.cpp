// SPDX-License-Identifier: MIT
#include "platform/dao/RestoreTables.h"

#include "platform/dao/Storage.h"
#include "platform/runtime/Error.h"

#include <memory>
#include <span>
#include <variant>
#include <vector>

using namespace Qt::StringLiterals;

namespace dao {
namespace {

constexpr int kNoField = -1;

std::unique_ptr<Table> Existing(Storage& storage, const QString& name) {
  auto table = storage.OpenTable(name);
  if (!table) throw runtime::Error(u"De tabel '%1' bestaat niet in '%2'."_s.arg(name, storage.PathText()));
  return table;
}

// For each field of the target its position in the source, or kNoField.
std::vector<int> Places(const TableDef& source, const TableDef& target) {
  for (const FieldDef& field : source.fields) {
    const int there = target.FieldIndex(field.name);
    if (there != kNoField && target.fields[there].type == field.type) continue;
    throw runtime::Error(
        u"Het veld '%1' van tabel '%2' bestaat niet meer zoals in de reservekopie."_s.arg(field.name, source.name));
  }
  std::vector<int> places;
  for (const FieldDef& field : target.fields)
    places.push_back(source.FieldIndex(field.name));
  return places;
}

void DeleteAll(Table& table) {
  std::vector<RowId> rows;
  {
    const auto cursor = table.Scan({});
    while (cursor->Next())
      rows.push_back(cursor->Id());
  }
  table.Delete(rows);
}

int CopyAll(Table& source, Table& target) {
  const std::vector<int> places = Places(source.Definition(), target.Definition());
  FieldMask all;
  for (qsizetype field = 0; field < source.Definition().fields.size(); ++field)
    all.set(static_cast<std::size_t>(field));
  const auto rows = source.Scan(all);
  int count = 0;
  for (; rows->Next(); ++count) {
    std::vector<Value> row;
    row.reserve(places.size());
    for (const int place : places)
      row.push_back(place == kNoField ? Value() : Owned(rows->Field(static_cast<std::size_t>(place))));
    target.Insert(row);
  }
  return count;
}

}  // namespace

int RestoreTables(const QString& source, const QString& target, const QList<RestoredTable>& tables) {
  const auto from = OpenStorage(source, {.readOnly = true});
  const auto to = OpenStorage(target);
  const auto writing = to->Begin(Access::Write);
  const auto reading = from->Begin(Access::Read);
  int count = 0;
  for (const RestoredTable& table : tables) {
    const auto kept = Existing(*from, table.source);
    const auto present = Existing(*to, table.target);
    DeleteAll(*present);
    count += CopyAll(*kept, *present);
  }
  writing->Commit();
  return count;
}

}  // namespace dao

// SPDX-License-Identifier: MIT
#include "platform/jet/table/ForeignKeys.h"

#include "platform/jet/index/IndexCursor.h"
#include "platform/jet/index/IndexKey.h"
#include "platform/jet/values/Damage.h"
#include "platform/jet/values/Utf8.h"

#include <algorithm>

namespace jet {

namespace {

constexpr std::uint8_t kOneSide = 1;
constexpr std::uint8_t kCascades = 1;

std::vector<std::size_t> ColumnsOf(const StoredTable& table, const StoredIndex& index) {
  std::vector<std::size_t> places;
  for (const StoredIndex::Field& field : index.fields) {
    const StoredColumn* column = table.ColumnByNumber(field.column);
    places.push_back(static_cast<std::size_t>(column - table.columns.data()));
  }
  return places;
}

std::size_t FindPartnerIndex(const StoredTable& partner, std::int32_t number) {
  const auto found = std::find_if(partner.logicalIndexes.begin(), partner.logicalIndexes.end(),
                                  [&](const LogicalIndexDef& index) { return index.number == number; });
  if (found == partner.logicalIndexes.end()) throw Damage("een relatie mist haar index in de andere tabel");
  return found->realIndex;
}

}  // namespace

ForeignKeys::ForeignKeys(Transaction& pages, const StoredTable& table) : pages_(pages), table_(table.page) {
  for (const LogicalIndexDef& index : table.logicalIndexes) {
    if (index.role != LogicalIndexDef::Role::ForeignKey || index.partnerTable == 0) continue;
    Relation relation;
    relation.name = index.name;
    relation.isReferencedByOthers = index.side == kOneSide;
    relation.columns = ColumnsOf(table, table.realIndexes[index.realIndex]);
    relation.partner = ReadStoredTable(pages, index.partnerTable);
    relation.partnerIndex = FindPartnerIndex(relation.partner, index.partnerIndex);
    relation.cascades = index.cascadeUpdates == kCascades || index.cascadeDeletes != 0;
    if (index.cascadeDeletes == 4) relation.cascades = index.cascadeUpdates == kCascades;
    foreignKeys_.push_back(std::move(relation));
  }
}

bool ForeignKeys::PartnerHas(const Relation& relation, const std::vector<Value>& values) const {
  std::vector<Value> keyValues;
  for (const std::size_t column : relation.columns)
    keyValues.push_back(values[column]);
  const StoredIndex& index = relation.partner.realIndexes[relation.partnerIndex];
  if (index.fields.size() != keyValues.size()) throw Damage("een relatie heeft aan beide kanten andere velden");
  const Bytes key = BuildKey(relation.partner, index, keyValues);
  IndexCursor cursor(pages_, relation.partner.page, index.root);
  cursor.Seek(key);
  return cursor.Valid() && std::equal(key.begin(), key.end(), cursor.Key().begin(), cursor.Key().end());
}

void ForeignKeys::RequireReferenced(const Relation& relation, const std::vector<Value>& values) const {
  const auto isNull = [&](std::size_t column) { return IsNull(values[column]); };
  if (std::any_of(relation.columns.begin(), relation.columns.end(), isNull)) return;
  if (PartnerHas(relation, values)) return;
  throw Error(ErrorCode::Relation,
              "de relatie '" + ToUtf8(relation.name) + "' vraagt een rij in de andere tabel die er niet is.");
}

void ForeignKeys::RequireNotReferenced(const Relation& relation, const std::vector<Value>& values,
                                       const char* doing) const {
  if (!PartnerHas(relation, values)) return;
  const std::string name = "de relatie '" + ToUtf8(relation.name) + "' ";
  if (relation.cascades) {
    throw Error(ErrorCode::Unsupported,
                name + "geeft wijzigingen door aan een andere tabel; dat wordt niet ondersteund.");
  }
  throw Error(ErrorCode::Relation,
              name + "laat niet toe dat deze rij wordt " + doing + ": een andere tabel verwijst ernaar.");
}

void ForeignKeys::CheckReferences(const std::vector<Value>& values) const {
  for (const Relation& relation : foreignKeys_) {
    if (!relation.isReferencedByOthers) RequireReferenced(relation, values);
  }
}

void ForeignKeys::CheckNotReferenced(const std::vector<Value>& values) const {
  for (const Relation& relation : foreignKeys_) {
    if (relation.isReferencedByOthers) RequireNotReferenced(relation, values, "verwijderd");
  }
}

bool ForeignKeys::IsReferencedElsewhere() const {
  const auto isNamed = [&](const Relation& relation) { return IsReferencedByOthers(relation); };
  return std::any_of(foreignKeys_.begin(), foreignKeys_.end(), isNamed);
}

void ForeignKeys::CheckNotReferencedElsewhere(const std::vector<Value>& values) const {
  for (const Relation& relation : foreignKeys_) {
    if (IsReferencedByOthers(relation)) RequireNotReferenced(relation, values, "verwijderd");
  }
}

void ForeignKeys::CheckChange(const std::vector<Value>& before, const std::vector<Value>& after) const {
  for (const Relation& relation : foreignKeys_) {
    const auto differs = [&](std::size_t column) { return before[column] != after[column]; };
    if (std::none_of(relation.columns.begin(), relation.columns.end(), differs)) continue;
    if (relation.isReferencedByOthers) {
      RequireNotReferenced(relation, before, "gewijzigd");
    } else {
      RequireReferenced(relation, after);
    }
  }
}

}  // namespace jet

// SPDX-License-Identifier: MIT
#include "export/apply/TargetTables.h"

#include "platform/dao/Conversion.h"
#include "platform/runtime/Error.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace apply {
namespace {

std::int64_t NumberOf(const dao::Value& value) {
  const auto* number = std::get_if<std::int64_t>(&value);
  return number != nullptr ? *number : 0;
}

}  // namespace

TargetTables::TargetTables(dao::StatementTransaction& transaction) : transaction_(transaction) {
  for (const Table table : {Table::Items, Table::Spots, Table::Jingles, Table::Links}) {
    definitions_[At(table)] = transaction.Definition(NameOf(table));
    const QList<dao::FieldDef>& fields = Definition(table).fields;
    for (qsizetype i = 0; i < fields.size(); ++i) {
      for (const QString& name : {fields[i].name, fields[i].name.toLower()})
        places_[At(table)].insert(name, static_cast<std::size_t>(i));
    }
  }
}

std::optional<TargetTables::Found> TargetTables::Find(Table table, qint64 number) {
  auto rows = transaction_.Find(NameOf(table), u"ID"_s, number);
  if (rows.empty()) return std::nullopt;
  return Found{rows.front().id, std::move(rows.front().values)};
}

void TargetTables::Update(Table table, dao::RowId id, const std::vector<dao::FieldValue>& changes) {
  if (!changes.empty()) transaction_.Update(NameOf(table), id, changes);
}

void TargetTables::Delete(Table table, dao::RowId id) {
  transaction_.Delete(NameOf(table), std::array{id});
}

SpotList TargetTables::SpotsOf(qint64 item) {
  const std::size_t order = Place(Table::Links, u"ItemSpotOrder"_s);
  const std::size_t spot = Place(Table::Links, u"ItemSpotID"_s);
  SpotList spots;
  for (const auto& link : transaction_.Find(NameOf(Table::Links), u"ItemID"_s, item))
    spots.emplace_back(NumberOf(link.values[order]), NumberOf(link.values[spot]));
  std::ranges::sort(spots);
  return spots;
}

void TargetTables::ReplaceSpotsOf(qint64 item, const SpotList& spots) {
  std::vector<dao::RowId> old;
  for (const auto& link : transaction_.Find(NameOf(Table::Links), u"ItemID"_s, item))
    old.push_back(link.id);
  if (!old.empty()) transaction_.Delete(NameOf(Table::Links), old);
  for (const auto& [order, spot] : spots) {
    Row link(static_cast<std::size_t>(Definition(Table::Links).fields.size()));
    link[Place(Table::Links, u"ItemID"_s)] = std::int64_t{item};
    link[Place(Table::Links, u"ItemSpotOrder"_s)] = std::int64_t{order};
    link[Place(Table::Links, u"ItemSpotID"_s)] = std::int64_t{spot};
    Insert(Table::Links, link);
  }
}

QStringList TargetTables::FieldNames(Table table) const {
  QStringList names;
  for (const dao::FieldDef& field : Definition(table).fields)
    names += field.name;
  return names;
}

std::optional<std::size_t> TargetTables::FindPlace(Table table, const QString& field) const {
  const QHash<QString, std::size_t>& places = places_[At(table)];
  auto place = places.constFind(field);
  if (place == places.constEnd()) place = places.constFind(field.toLower());
  return place == places.constEnd() ? std::nullopt : std::optional(*place);
}

std::size_t TargetTables::Place(Table table, const QString& field) const {
  if (const auto place = FindPlace(table, field)) return *place;
  throw runtime::Error(u"De tabel '%1' heeft geen veld '%2'."_s.arg(NameOf(table), field));
}

dao::Value TargetTables::Converted(Table table, std::size_t place, const dao::Value& value) const {
  return dao::ConvertToField(NameOf(table), Definition(table).fields[static_cast<qsizetype>(place)], dao::View(value));
}

Row TargetTables::RowOf(Table table, const QStringList& fields, const basis::Row& values) {
  std::vector<std::optional<std::size_t>>& places = knownPlaces_[At(table)];
  if (knownFields_[At(table)] != fields) {
    places.clear();
    for (const QString& field : fields)
      places.push_back(FindPlace(table, field));
    knownFields_[At(table)] = fields;
  }
  Row row(static_cast<std::size_t>(Definition(table).fields.size()));
  for (std::size_t i = 0; i < values.size(); ++i) {
    if (places[i]) {
      row[*places[i]] = Converted(table, *places[i], values[i]);
    } else if (!dao::IsNull(values[i])) {
      static_cast<void>(Place(table, fields[static_cast<qsizetype>(i)]));
    }
  }
  return row;
}

Row TargetTables::RowOf(const ExportStatement& statement) const {
  Row row(static_cast<std::size_t>(Definition(statement.table).fields.size()));
  for (const auto& [field, value] : statement.values) {
    const std::size_t place = Place(statement.table, field);
    row[place] = Converted(statement.table, place, value);
  }
  return row;
}

QString TargetTables::NaamOf(Table table, const Row& row) const {
  if (table == Table::Links) return {};
  const auto* naam = std::get_if<std::u16string>(&row[Place(table, u"Naam"_s)]);
  return naam != nullptr ? QString::fromStdU16String(*naam) : QString();
}

}  // namespace apply

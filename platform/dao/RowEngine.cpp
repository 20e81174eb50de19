// SPDX-License-Identifier: MIT
#include "platform/dao/RowEngine.h"

#include "platform/dao/NewValues.h"
#include "platform/dao/ResultColumn.h"

#include <algorithm>
#include <array>
#include <limits>

namespace dao {
namespace {

using FieldPlaces = std::vector<std::size_t>;  // of fields in a table

// The place of each field; nothing when one does not exist.
std::optional<FieldPlaces> PlacesOf(const TableDef& table, const std::vector<QStringView>& fields) {
  FieldPlaces places;
  places.reserve(fields.size());
  for (const QStringView field : fields) {
    const int place = table.FieldIndex(field);
    if (place < 0) return std::nullopt;
    places.push_back(static_cast<std::size_t>(place));
  }
  return places;
}

bool IsKeyOf(FieldType type, std::int64_t number) {
  switch (type) {
    case FieldType::Byte:
      return number >= 0 && number <= std::numeric_limits<quint8>::max();
    case FieldType::Integer:
      return number >= std::numeric_limits<qint16>::min() && number <= std::numeric_limits<qint16>::max();
    case FieldType::Long:
      return number >= std::numeric_limits<qint32>::min() && number <= std::numeric_limits<qint32>::max();
    default:
      return false;
  }
}

// The field of the key and an index on it alone without duplicates.
struct KeyIndex {
  std::size_t field;
  std::size_t index;
};

std::optional<KeyIndex> KeyIndexOf(const TableDef& table, const RowStatement& statement) {
  const int field = table.FieldIndex(statement.keyField);
  if (field < 0 || !IsKeyOf(table.fields[field].type, statement.key)) return std::nullopt;
  for (qsizetype i = 0; i < table.indexes.size(); ++i) {
    const IndexDef& index = table.indexes[i];
    const bool isUnique = index.usable && (index.unique || index.primary);
    if (!isUnique || index.fields.size() != 1) continue;
    if (table.FieldIndex(index.fields.first().name) == field)
      return KeyIndex{static_cast<std::size_t>(field), static_cast<std::size_t>(i)};
  }
  return std::nullopt;
}

// Calls `visit` for each row with the key; a look-up may give others too.
template <class Visit>
void ForEachRowWithKey(Table& table, const KeyIndex& key, std::int64_t number, FieldMask wanted, Visit visit) {
  const Value value = number;
  const auto rows = table.Lookup(key.index, {&value, 1}, wanted.set(key.field));
  while (rows->Next()) {
    const ValueView found = rows->Field(key.field);
    const auto* whole = std::get_if<std::int64_t>(&found);
    if (whole != nullptr && *whole == number) visit(*rows);
  }
}

// The position in `places` of each field that is given.
struct Given {
  FieldMask fields;
  std::array<std::uint8_t, kMaxFields> positions{};

  explicit Given(const FieldPlaces& places) {
    for (std::size_t i = 0; i < places.size(); ++i) {
      fields.set(places[i]);
      positions[places[i]] = static_cast<std::uint8_t>(i);
    }
  }
};

std::optional<int> InsertOne(const RowStatement& statement, Table& table) {
  const TableDef& definition = table.Definition();
  auto places = PlacesOf(definition, statement.fields);
  if (!places) return std::nullopt;
  for (qsizetype i = 0; statement.fields.empty() && i < definition.fields.size(); ++i)
    places->push_back(static_cast<std::size_t>(i));
  if (places->size() != statement.values.size()) return std::nullopt;
  const Given given(*places);
  table.Insert(
      NewRow(definition, given.fields, [&](std::size_t field) { return statement.values[given.positions[field]]; }));
  return 1;
}

std::vector<RowId> RowsWithKey(const RowStatement& statement, Table& table, const KeyIndex& key) {
  std::vector<RowId> rows;
  ForEachRowWithKey(table, key, statement.key, {}, [&](const Cursor& row) { rows.push_back(row.Id()); });
  return rows;
}

std::optional<int> UpdateOne(const RowStatement& statement, Table& table) {
  const TableDef& definition = table.Definition();
  const auto places = PlacesOf(definition, statement.fields);
  const auto key = KeyIndexOf(definition, statement);
  if (!places || !key) return std::nullopt;
  const Given given(*places);
  const std::vector<RowId> rows = RowsWithKey(statement, table, *key);
  for (const RowId row : rows) {
    table.Update(row, NewValues(definition, given.fields,
                                [&](std::size_t field) { return statement.values[given.positions[field]]; }));
  }
  return static_cast<int>(rows.size());
}

std::optional<int> DeleteOne(const RowStatement& statement, Table& table) {
  const auto key = KeyIndexOf(table.Definition(), statement);
  if (!key) return std::nullopt;
  const std::vector<RowId> rows = RowsWithKey(statement, table, *key);
  if (!rows.empty()) table.Delete(rows);
  return static_cast<int>(rows.size());
}

// The result of MAX is at the end of an index that starts with the field, or at its start when it is a descending one.
// NULL comes before all numbers.
std::shared_ptr<const ResultRows> SelectHighest(const RowStatement::Column& column, Storage& storage, Table& table) {
  const TableDef& definition = table.Definition();
  const int field = definition.FieldIndex(column.field);
  if (field < 0 || !IsWholeNumber(definition.fields[field].type)) return nullptr;
  const auto isSuitable = [&](const IndexDef& index) {
    return index.usable && !index.ignoreNull && definition.FieldIndex(index.fields.first().name) == field;
  };
  const auto index = std::ranges::find_if(definition.indexes, isSuitable);
  if (index == definition.indexes.end()) return nullptr;
  storage.ExpectOneRead();
  const auto place = static_cast<std::size_t>(field);
  const bool isAscending = index->fields.first().direction == Direction::Ascending;
  const auto rows = table.ScanByIndex(static_cast<std::size_t>(index - definition.indexes.begin()), isAscending,
                                      FieldMask().set(place));
  const ResultColumn result(column.name.toString(), definition.fields[field].type);
  return std::make_shared<ResultRows>(
      ResultRows{{result.Name()}, {rows->Next() ? result.Read(rows->Field(place)) : QVariant()}, 1});
}

}  // namespace

std::optional<int> ChangeRow(const RowStatement& statement, Storage& storage) {
  const auto table = storage.OpenTable(statement.table.toString());
  if (table == nullptr) return std::nullopt;
  switch (statement.verb) {
    case Verb::Insert:
      return InsertOne(statement, *table);
    case Verb::Update:
      return UpdateOne(statement, *table);
    case Verb::Delete:
      return DeleteOne(statement, *table);
    case Verb::Select:
      break;
  }
  return std::nullopt;
}

std::shared_ptr<const ResultRows> SelectRow(const RowStatement& statement, Storage& storage) {
  const auto table = storage.OpenTable(statement.table.toString());
  if (table == nullptr) return nullptr;
  if (statement.isHighest) return SelectHighest(statement.columns.front(), storage, *table);
  const TableDef& definition = table->Definition();
  const auto key = KeyIndexOf(definition, statement);
  if (!key) return nullptr;
  auto result = std::make_shared<ResultRows>();
  FieldPlaces places;
  FieldMask wanted;
  std::vector<ResultColumn> columns;
  const auto add = [&](std::size_t place, QStringView name) {
    const FieldDef& field = definition.fields[static_cast<qsizetype>(place)];
    places.push_back(place);
    wanted.set(place);
    columns.emplace_back(name.isEmpty() ? field.name : name.toString(), field.type);
    result->names += columns.back().Name();
  };
  for (const RowStatement::Column& column : statement.columns) {
    const int place = definition.FieldIndex(column.field);
    if (place < 0) return nullptr;
    add(static_cast<std::size_t>(place), column.name);
  }
  for (qsizetype i = 0; statement.columns.empty() && i < definition.fields.size(); ++i)
    add(static_cast<std::size_t>(i), {});
  storage.ExpectOneRead();
  ForEachRowWithKey(*table, *key, statement.key, wanted, [&](const Cursor& row) {
    for (std::size_t i = 0; i < places.size(); ++i)
      result->values.push_back(columns[i].Read(row.Field(places[i])));
    ++result->rowCount;
  });
  return result;
}

}  // namespace dao

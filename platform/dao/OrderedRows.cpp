// SPDX-License-Identifier: MIT
#include "platform/dao/OrderedRows.h"

#include "platform/runtime/Error.h"

#include <algorithm>
#include <optional>
#include <span>
#include <string_view>
#include <utility>
#include <variant>

using namespace Qt::StringLiterals;

namespace dao {
namespace {

std::size_t PlaceIn(const TableDef& table, const QString& field) {
  const int place = table.FieldIndex(field);
  if (place < 0) throw runtime::Error(u"Het veld '%1' bestaat niet in de tabel '%2'."_s.arg(field, table.name));
  return static_cast<std::size_t>(place);
}

// An index that begins with the field and contains all rows. An index of texts may have another program's order.
std::optional<std::size_t> NumberIndexOn(const TableDef& table, const QString& field) {
  const FieldType type = table.fields[table.FieldIndex(field)].type;
  if (type > FieldType::Date) return std::nullopt;
  const auto found = std::ranges::find_if(table.indexes, [&](const IndexDef& index) {
    return index.usable && !index.ignoreNull && index.fields.first().name.compare(field, Qt::CaseInsensitive) == 0;
  });
  if (found == table.indexes.end()) return std::nullopt;
  return static_cast<std::size_t>(found - table.indexes.begin());
}

// NULL is below every number.
std::optional<double> NumberOf(const Value& value) {
  if (const auto* whole = std::get_if<std::int64_t>(&value)) return static_cast<double>(*whole);
  if (const auto* number = std::get_if<double>(&value)) return *number;
  return std::nullopt;
}

class RowsSortedInMemory : public Cursor {
 public:
  RowsSortedInMemory(Cursor& rows, std::span<const std::size_t> fields) : fields_(fields.begin(), fields.end()) {
    while (rows.Next()) {
      Held& row = rows_.emplace_back();
      row.id = rows.Id();
      for (const std::size_t field : fields_)
        row.values.push_back(Owned(rows.Field(field)));
    }
    std::ranges::stable_sort(rows_, {}, [](const Held& row) { return NumberOf(row.values.front()); });
  }

  bool Next() override {
    if (next_ == rows_.size()) return false;
    ++next_;
    return true;
  }
  RowId Id() const override { return rows_[next_ - 1].id; }
  ValueView Field(std::size_t field) const override {
    const auto place = std::ranges::find(fields_, field) - fields_.begin();
    return View(rows_[next_ - 1].values[static_cast<std::size_t>(place)]);
  }

 private:
  struct Held {
    RowId id = 0;
    std::vector<Value> values;
  };

  std::vector<std::size_t> fields_;
  std::vector<Held> rows_;
  std::size_t next_ = 0;
};

}  // namespace

OrderedRows::OrderedRows(Storage& storage, const QString& table, const QStringList& fields)
    : table_(storage.OpenTable(table)) {
  if (!table_) throw runtime::Error(u"De tabel '%1' bestaat niet in '%2'."_s.arg(table, storage.PathText()));
  const TableDef& definition = table_->Definition();
  FieldMask wanted;
  for (const QString& field : fields) {
    const std::size_t place = places_.emplace_back(PlaceIn(definition, field));
    columns_.emplace_back(field, definition.fields[static_cast<qsizetype>(place)].type);
    wanted.set(place);
  }
  if (const auto index = NumberIndexOn(definition, fields.first())) {
    const auto& first = definition.indexes[static_cast<qsizetype>(*index)].fields.first();
    cursor_ = table_->ScanByIndex(*index, first.direction == Direction::Descending, wanted);
  } else {
    cursor_ = std::make_unique<RowsSortedInMemory>(*table_->Scan(wanted), places_);
  }
}

QStringView OrderedRows::Text(std::size_t column) const {
  const ValueView value = cursor_->Field(places_[column]);
  const auto* text = std::get_if<std::u16string_view>(&value);
  return text != nullptr ? QStringView(*text) : QStringView();
}

}  // namespace dao

// SPDX-License-Identifier: MIT
#include "platform/jet/table/Table.h"

#include "platform/jet/index/IndexKey.h"
#include "platform/jet/values/Damage.h"
#include "platform/jet/values/Utf8.h"

#include <algorithm>

namespace jet {

Table::Table(PageSource& pages, std::shared_ptr<const TableShape> shape, std::string context)
    : pages_(pages), shape_(std::move(shape)), context_(std::move(context)) {}

std::vector<const StoredColumn*> Table::Choose(const ColumnSet& columns) const {
  std::vector<const StoredColumn*> chosen;
  for (const std::size_t column : columns) {
    if (column >= Definition().columns.size()) {
      throw Error(ErrorCode::Misuse, "De tabel '" + ToUtf8(Definition().name) + "' heeft niet zoveel velden.");
    }
    chosen.push_back(Def().ColumnByNumber(Definition().columns[column].number));
  }
  return chosen;
}

TableCursor Table::Scan(const ColumnSet& columns) const& {
  return InContext(context_, [&] { return TableCursor(pages_, Def(), Choose(columns), context_); });
}

std::optional<std::vector<Value>> Table::Fetch(RowId row, const ColumnSet& columns) const {
  RowFetcher fetcher = Fetcher(columns);
  if (!fetcher.Fetch(row)) return std::nullopt;
  return fetcher.Values();
}

RowFetcher Table::Fetcher(const ColumnSet& columns) const& {
  return InContext(context_, [&] { return RowFetcher(pages_, Def(), Choose(columns), context_); });
}

const StoredIndex& Table::Real(std::size_t index) const {
  if (index >= Definition().indexes.size()) {
    throw Error(ErrorCode::Misuse, "De tabel '" + ToUtf8(Definition().name) + "' heeft niet zoveel indexen.");
  }
  return Def().realIndexes[Definition().indexes[index].realIndex];
}

IndexCursor Table::Cursor(std::size_t index) const {
  return IndexCursor(pages_, Def().page, Real(index).root);
}

bool Table::CanLookup(std::size_t index) const {
  const StoredIndex& real = Real(index);
  return std::all_of(real.fields.begin(), real.fields.end(), [&](const StoredIndex::Field& field) {
    return CanBuildKeys(*Def().ColumnByNumber(field.column));
  });
}

KeyCursor Table::Lookup(std::size_t index, std::span<const Value> key) const& {
  const StoredIndex& real = Real(index);
  if (key.empty() || key.size() > real.fields.size()) {
    throw Error(ErrorCode::Misuse, "De sleutel past niet bij de index van tabel '" + ToUtf8(Definition().name) + "'.");
  }
  Bytes bytes;
  for (std::size_t i = 0; i < key.size(); ++i) {
    AppendKeyField(*Def().ColumnByNumber(real.fields[i].column), key[i], real.fields[i].ascending, bytes);
  }
  return KeyCursor(Cursor(index), std::move(bytes), context_);
}

KeyCursor Table::ScanByIndex(std::size_t index, bool backwards) const& {
  return KeyCursor(Cursor(index), backwards, context_);
}

std::size_t Table::CountRows() const {
  TableCursor rows = Scan({});
  std::size_t count = 0;
  while (rows.Next())
    ++count;
  return count;
}

}  // namespace jet

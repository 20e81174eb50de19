// SPDX-License-Identifier: MIT
#include "platform/dao/postgres/KeyBatches.h"

#include <algorithm>
#include <charconv>
#include <unordered_set>

namespace dao {
namespace {

constexpr int kMaxKeys = 1000;
constexpr int kMaxRowsSearched = 5000;

bool IsKeyNumber(FieldType type) {
  return type == FieldType::Byte || type == FieldType::Integer || type == FieldType::Long;
}

std::int64_t NumberIn(const ServerRows& rows, int row, int column) {
  std::int64_t number = 0;
  const char* text = Libpq().PQgetvalue(rows.result.get(), row, column);
  std::from_chars(text, text + Libpq().PQgetlength(rows.result.get(), row, column), number);
  return number;
}

bool Has(const ServerRows& rows, int row, int column, std::int64_t key) {
  return Libpq().PQgetisnull(rows.result.get(), row, column) == 0 && NumberIn(rows, row, column) == key;
}

}  // namespace

void KeyBatches::Note(const TableDef& table, std::shared_ptr<const ServerRows> rows) {
  Reply reply{table.name, std::move(rows), {}};
  for (std::size_t i = 0; i < reply.rows->fields.size(); ++i) {
    if (IsKeyNumber(table.fields[static_cast<qsizetype>(reply.rows->fields[i])].type))
      reply.columns.push_back(static_cast<int>(i) + 1);
  }
  if (reply.rows->Count() > 1 && !reply.columns.empty()) replies_.push_back(std::move(reply));
}

std::vector<std::int64_t> KeyBatches::KeysFrom(const TableDef& table, std::int64_t key) const {
  std::vector<std::int64_t> keys{key};
  // SQLite reads a reply from its first row on, so the earliest occurrence of the key is the most likely origin.
  const Reply* best = nullptr;
  int bestRow = kMaxRowsSearched;
  int bestColumn = 0;
  for (const Reply& reply : replies_) {
    if (reply.table == table.name) continue;
    for (const int column : reply.columns) {
      for (int row = 0; row < std::min(reply.rows->Count(), bestRow); ++row) {
        if (!Has(*reply.rows, row, column, key)) continue;
        best = &reply;
        bestRow = row;
        bestColumn = column;
      }
    }
  }
  if (best == nullptr) return keys;
  std::unordered_set<std::int64_t> seen{key};
  for (int row = bestRow + 1; row < best->rows->Count() && keys.size() < kMaxKeys; ++row) {
    if (Libpq().PQgetisnull(best->rows->result.get(), row, bestColumn) != 0) continue;
    const std::int64_t next = NumberIn(*best->rows, row, bestColumn);
    if (seen.insert(next).second) keys.push_back(next);
  }
  return keys;
}

void KeyBatches::Keep(const TableDef& table, std::size_t field, const std::vector<std::int64_t>& keys,
                      std::shared_ptr<const ServerRows> rows) {
  Batch batch;
  for (const std::int64_t key : keys)
    batch.rowsOfKey[key];
  const int column = rows->ColumnOf(field);
  for (int row = 0; row < rows->Count(); ++row)
    batch.rowsOfKey[NumberIn(*rows, row, column)].push_back(row);
  batch.rows = std::move(rows);
  batches_[{table.name, field}] = std::move(batch);
}

std::unique_ptr<Cursor> KeyBatches::Find(const TableDef& table, std::size_t field, std::int64_t key,
                                         const FieldMask& wanted) const {
  const auto batch = batches_.find({table.name, field});
  if (batch == batches_.end()) return nullptr;
  const auto rows = batch->second.rowsOfKey.find(key);
  if (rows == batch->second.rowsOfKey.end()) return nullptr;
  for (std::size_t wantedField = 0; wantedField < static_cast<std::size_t>(table.fields.size()); ++wantedField) {
    if (wanted[wantedField] && batch->second.rows->ColumnOf(wantedField) < 0) return nullptr;
  }
  return std::make_unique<ServerCursor>(table, batch->second.rows, rows->second);
}

}  // namespace dao

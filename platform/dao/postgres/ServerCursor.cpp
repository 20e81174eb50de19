// SPDX-License-Identifier: MIT
#include "platform/dao/postgres/ServerCursor.h"

#include "platform/dao/postgres/ServerValue.h"

#include <algorithm>
#include <charconv>

namespace dao {

RowId ServerRows::Id(int row) const {
  RowId id = 0;
  const char* text = Libpq().PQgetvalue(result.get(), row, 0);
  std::from_chars(text, text + Libpq().PQgetlength(result.get(), row, 0), id);
  return id;
}

int ServerRows::ColumnOf(std::size_t field) const {
  const auto found = std::find(fields.begin(), fields.end(), field);
  return found == fields.end() ? -1 : static_cast<int>(found - fields.begin()) + 1;
}

ServerCursor::ServerCursor(const TableDef& table, std::shared_ptr<const ServerRows> rows)
    : table_(table), rows_(std::move(rows)) {
  for (qsizetype field = 0; field < table.fields.size(); ++field)
    columns_.push_back(rows_->ColumnOf(static_cast<std::size_t>(field)));
}

ServerCursor::ServerCursor(const TableDef& table, std::shared_ptr<const ServerRows> rows, std::vector<int> chosen)
    : ServerCursor(table, std::move(rows)) {
  all_ = false;
  chosen_ = std::move(chosen);
}

bool ServerCursor::Next() {
  texts_.clear();
  bytes_.clear();
  ++at_;
  return at_ < (all_ ? rows_->Count() : static_cast<int>(chosen_.size()));
}

ValueView ServerCursor::Field(std::size_t field) const {
  const int column = columns_[field];
  const PGresult* result = rows_->result.get();
  if (column < 0 || Libpq().PQgetisnull(result, Row(), column) != 0) return {};
  const std::string_view reply(Libpq().PQgetvalue(result, Row(), column),
                               static_cast<std::size_t>(Libpq().PQgetlength(result, Row(), column)));
  const FieldDef& definition = table_.fields[static_cast<qsizetype>(field)];
  switch (definition.type) {
    case FieldType::Text:
    case FieldType::Memo:
    case FieldType::Guid:
    case FieldType::Currency:
    case FieldType::Numeric:
    case FieldType::Binary:
      return ValueOfText(definition, reply, texts_.emplace_back(), bytes_.emplace_back());
    default:
      break;
  }
  std::u16string unusedText;
  Bytes unusedBytes;
  return ValueOfText(definition, reply, unusedText, unusedBytes);
}

}  // namespace dao

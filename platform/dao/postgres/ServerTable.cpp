// SPDX-License-Identifier: MIT
#include "platform/dao/postgres/ServerTable.h"

#include "platform/dao/postgres/PrefetchedRows.h"
#include "platform/dao/postgres/ServerValue.h"

#include <algorithm>
#include <string>

namespace dao {
namespace {

// A scan in the order of an index that first queries one row, which is all that MAX and MIN read. The second Next
// queries all rows.
class FirstRowThenAll : public Cursor {
 public:
  using QueryAll = std::function<std::shared_ptr<ServerRows>()>;
  FirstRowThenAll(const TableDef& table, std::shared_ptr<ServerRows> first, QueryAll queryAll)
      : table_(table), cursor_(table, std::move(first)), queryAll_(std::move(queryAll)) {}

  bool Next() override {
    if (++row_ == 1 && cursor_.Next()) return true;
    if (row_ == 1) return false;
    if (row_ == 2) {
      all_ = std::make_unique<ServerCursor>(table_, queryAll_());
      all_->Next();
    }
    return all_->Next();
  }
  RowId Id() const override { return all_ ? all_->Id() : cursor_.Id(); }
  ValueView Field(std::size_t field) const override { return all_ ? all_->Field(field) : cursor_.Field(field); }

 private:
  const TableDef& table_;
  ServerCursor cursor_;
  QueryAll queryAll_;
  std::unique_ptr<ServerCursor> all_;
  int row_ = 0;
};

bool IsWhole(FieldType type) {
  return type == FieldType::Boolean || type == FieldType::Byte || type == FieldType::Integer || type == FieldType::Long;
}

// With commas.
std::string ListOf(std::span<const std::int64_t> numbers) {
  std::string list;
  for (const std::int64_t number : numbers) {
    if (!list.empty()) list += ',';
    list += std::to_string(number);
  }
  return list;
}

const std::string kInInsertOrder = " ORDER BY " + kRowColumn;

}  // namespace

std::string ServerTable::Literal(std::size_t field, const Value& value) const {
  return LiteralOf(session_->Line(), definition_, definition_.fields[static_cast<qsizetype>(field)], value);
}

std::string ServerTable::Select(const FieldMask& wanted, std::vector<std::size_t>& fields) const {
  std::string select = "SELECT " + kRowColumn;
  for (std::size_t field = 0; field < static_cast<std::size_t>(definition_.fields.size()); ++field) {
    if (!wanted[field]) continue;
    select += ',' + QuotedServerName(definition_.fields[static_cast<qsizetype>(field)].name);
    fields.push_back(field);
  }
  return select + " FROM " + Name();
}

std::shared_ptr<ServerRows> ServerTable::Query(const FieldMask& wanted, const std::string& conditionAndOrder) {
  std::vector<std::size_t> fields;
  const std::string select = Select(wanted, fields) + conditionAndOrder;
  auto rows = std::make_shared<ServerRows>(ServerRows{session_->Query(select), std::move(fields)});
  if (session_->MakesSeveralQueries()) session_->Batches().Note(definition_, rows);
  return rows;
}

std::unique_ptr<Cursor> ServerTable::Scan(const FieldMask& wanted) {
  return std::make_unique<ServerCursor>(definition_, Query(wanted, kInInsertOrder));
}

// Two ASCII texts are equal in the text order when they differ only in the case of letters and in spaces at the end. A
// text with other characters is left to SQLite, on both sides: some are equal to ASCII letters, as the German sharp s.
// But not when it begins with another ASCII character.
std::unique_ptr<Cursor> ServerTable::ScanForText(std::size_t field, std::u16string_view text, const FieldMask& wanted) {
  const bool isAscii = std::ranges::all_of(text, [](char16_t unit) { return unit >= 0x20 && unit < 0x7F; });
  if (!isAscii) return Scan(wanted);
  std::u16string start(text.substr(0, text.find_last_not_of(u' ') + 1));
  for (char16_t& letter : start) {
    if (letter >= u'A' && letter <= u'Z') letter += u'a' - u'A';
  }
  const std::string name = QuotedServerName(definition_.fields[static_cast<qsizetype>(field)].name);
  const auto begins = [&](const std::u16string& with) {
    return "pg_catalog.starts_with(pg_catalog.lower(" + name + " COLLATE \"C\")," + Literal(field, with) + ')';
  };
  // In another encoding the lengths do not tell which texts are ASCII.
  const std::string condition = " WHERE (SELECT pg_catalog.getdatabaseencoding())<>'UTF8' OR " + begins(start) +
                                " OR pg_catalog.octet_length(" + name + ")<>pg_catalog.length(" + name +
                                ") AND (pg_catalog.ascii(" + name + ")>127 OR " + begins(start.substr(0, 1)) + ')';
  return std::make_unique<ServerCursor>(definition_, Query(wanted, condition + kInInsertOrder));
}

std::unique_ptr<Cursor> ServerTable::ScanByIndex(std::size_t index, bool backwards, const FieldMask& wanted) {
  std::string order;
  const IndexDef& definition = definition_.indexes[static_cast<qsizetype>(index)];
  for (const IndexField& field : definition.fields) {
    const bool descending = (field.direction == Direction::Descending) != backwards;
    order += (order.empty() ? " ORDER BY " : ",") + QuotedServerName(field.name) +
             (descending ? " DESC NULLS LAST" : " ASC NULLS FIRST");
  }
  const auto first = static_cast<std::size_t>(definition_.FieldIndex(definition.fields.first().name));
  if ((wanted & ~FieldMask().set(first)).any()) {
    return std::make_unique<ServerCursor>(definition_, Query(wanted, order + ',' + kRowColumn));
  }
  return std::make_unique<FirstRowThenAll>(definition_, Query(wanted, order + " LIMIT 1"),
                                           [this, wanted, order] { return Query(wanted, order + ',' + kRowColumn); });
}

std::unique_ptr<Cursor> ServerTable::Lookup(std::size_t index, std::span<const Value> key, const FieldMask& wanted) {
  const IndexDef& definition = definition_.indexes[static_cast<qsizetype>(index)];
  std::string condition;
  for (std::size_t i = 0; i < key.size(); ++i) {
    const int field = definition_.FieldIndex(definition.fields[static_cast<qsizetype>(i)].name);
    const auto* whole = std::get_if<std::int64_t>(&key[i]);
    if (whole == nullptr || !IsWhole(definition_.fields[field].type)) continue;
    if (key.size() == 1 && session_->Kind() == Access::Read) {
      if (auto found =
              FindPrefetched(session_->Address(), definition_, static_cast<std::size_t>(field), *whole, wanted))
        return found;
    }
    if (key.size() == 1 && session_->MakesSeveralQueries())
      return LookupInBatch(static_cast<std::size_t>(field), *whole, wanted);
    condition += (condition.empty() ? " WHERE " : " AND ") + QuotedServerName(definition_.fields[field].name) + '=' +
                 std::to_string(*whole);
  }
  return std::make_unique<ServerCursor>(definition_, Query(wanted, condition + kInInsertOrder));
}

// A look-up of a join, together with the look-ups that will probably follow.
std::unique_ptr<Cursor> ServerTable::LookupInBatch(std::size_t field, std::int64_t key, const FieldMask& wanted) {
  KeyBatches& batches = session_->Batches();
  if (auto found = batches.Find(definition_, field, key, wanted)) return found;
  const std::vector<std::int64_t> keys = batches.KeysFrom(definition_, key);
  batches.Keep(definition_, field, keys, RowsOfKeys(field, keys, wanted));
  return batches.Find(definition_, field, key, wanted);
}

std::shared_ptr<ServerRows> ServerTable::RowsOfKeys(std::size_t field, const std::vector<std::int64_t>& keys,
                                                    const FieldMask& wanted) {
  const std::string name = QuotedServerName(definition_.fields[static_cast<qsizetype>(field)].name);
  return Query(FieldMask(wanted).set(field),
               " WHERE " + name + " = ANY('{" + ListOf(keys) + "}'::bigint[])" + kInInsertOrder);
}

void ServerTable::Insert(std::vector<Value> row) {
  std::string into = "INSERT INTO " + Name() + '(';
  std::string orderColumns;
  std::string values = "(";
  std::string orderValues;
  for (qsizetype i = 0; i < definition_.fields.size(); ++i) {
    const FieldDef& field = definition_.fields[i];
    Value& value = row[static_cast<std::size_t>(i)];
    if (field.autoNumber && IsNull(value)) value = session_->NextNumber(definition_, field);
    if (field.autoNumber) session_->NoteNumber(definition_, field, std::get<std::int64_t>(value));
    into += (i == 0 ? "" : ",") + QuotedServerName(field.name);
    values += (i == 0 ? "" : ",") + Literal(static_cast<std::size_t>(i), value);
    if (!HasOrderColumn(definition_, i)) continue;
    orderColumns += ',' + OrderColumn(i);
    orderValues += ',' + OrderKeyLiteral(value);
  }
  session_->Insert(into + orderColumns + ") VALUES ", values + orderValues + ')');
}

void ServerTable::Update(RowId row, std::span<const FieldValue> changes) {
  std::string set;
  for (const auto& [field, value] : changes) {
    const auto at = static_cast<qsizetype>(field);
    set += (set.empty() ? "" : ",") + QuotedServerName(definition_.fields[at].name) + '=' + Literal(field, value);
    if (HasOrderColumn(definition_, at)) set += ',' + OrderColumn(at) + '=' + OrderKeyLiteral(value);
  }
  if (set.empty()) return;
  session_->Change("UPDATE " + Name() + " SET " + set + " WHERE " + kRowColumn + '=' + std::to_string(row));
}

void ServerTable::Delete(std::span<const RowId> rows) {
  if (rows.empty()) return;
  session_->Change("DELETE FROM " + Name() + " WHERE " + kRowColumn + " = ANY('{" + ListOf(rows) + "}'::bigint[])");
}

std::size_t ServerTable::DeleteAll() {
  return session_->ChangeNow("DELETE FROM " + Name());
}

}  // namespace dao

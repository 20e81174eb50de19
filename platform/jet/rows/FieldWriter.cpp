// SPDX-License-Identifier: MIT
#include "platform/jet/rows/FieldWriter.h"

#include "platform/jet/rows/LongValue.h"
#include "platform/jet/rows/LongValueWriter.h"
#include "platform/jet/values/Error.h"
#include "platform/jet/values/StoredText.h"

#include <algorithm>
#include <variant>

namespace jet {

namespace {

[[noreturn]] void RefuseKind(const StoredColumn& column) {
  throw Error(ErrorCode::Misuse, "De waarde is niet van de soort van " + FieldName(column) + ".");
}

Bytes BytesOf(const StoredColumn& column, const Value& value) {
  if (column.Type() == ColumnType::Ole) {
    if (const Bytes* bytes = std::get_if<Bytes>(&value)) return *bytes;
  } else if (const std::u16string* text = std::get_if<std::u16string>(&value)) {
    return EncodeText(*text, column.MayCompress() && text->size() <= kMaxCompressedMemo);
  }
  RefuseKind(column);
}

}  // namespace

FieldWriter::FieldWriter(Transaction& pages, PageSpace& space, const StoredTable& table)
    : pages_(pages), space_(space), table_(table), builder_(table), longValues_(table.columns.size()) {
  const auto isLong = [](const StoredColumn& column) { return column.IsLong(); };
  anyLong_ = std::any_of(table.columns.begin(), table.columns.end(), isLong);
}

FieldWriter::~FieldWriter() = default;

void FieldWriter::Encode(std::size_t column, const Value& value, Field& field) const {
  const StoredColumn& def = table_.columns[column];
  field.bit = !IsNull(value);
  field.stored.clear();
  if (!field.bit) return;
  if (def.Type() == ColumnType::Boolean) {
    const bool* bit = std::get_if<bool>(&value);
    if (bit == nullptr) RefuseKind(def);
    field.bit = *bit;
  } else if (def.IsLong()) {
    field.stored.resize(LongValueHead::kBytes);  // a placeholder; the value is written after all checks
  } else {
    EncodeValue(def, value, field.stored);
  }
}

void FieldWriter::WriteLongValues(const std::vector<Value>& values, const std::vector<bool>& changed,
                                  std::vector<Field>& fields) {
  if (!anyLong_) return;
  std::size_t size = Row(fields).size();
  for (std::size_t i = 0; i < fields.size(); ++i) {
    if (!table_.columns[i].IsLong() || !changed[i] || IsNull(values[i])) continue;
    const Bytes bytes = BytesOf(table_.columns[i], values[i]);
    const bool fits = size + bytes.size() <= RowBuilder::kMaxBytes;
    fields[i].stored = LongValues(i).Write(bytes, fits);
    size += fields[i].stored.size() - LongValueHead::kBytes;
  }
}

LongValueWriter& FieldWriter::LongValues(std::size_t column) {
  auto& writer = longValues_[column];
  if (writer == nullptr) writer = std::make_unique<LongValueWriter>(pages_, space_, table_.columns[column]);
  return *writer;
}

void FieldWriter::CollectPieces(std::size_t column, ByteView stored, Pieces& pieces) {
  if (!table_.columns[column].IsLong()) return;
  pieces.resize(table_.columns.size());
  LongValues(column).CollectPieces(stored, pieces[column]);
}

void FieldWriter::Release(Pieces pieces) {
  for (std::size_t i = 0; i < pieces.size(); ++i) {
    if (!pieces[i].empty()) LongValues(i).Release(std::move(pieces[i]));
  }
}

void FieldWriter::Clear() {
  for (std::size_t i = 0; i < table_.columns.size(); ++i) {
    if (table_.columns[i].IsLong()) LongValues(i).Clear();
  }
}

}  // namespace jet

// SPDX-License-Identifier: MIT
#include "platform/jet/rows/RowView.h"

#include "platform/jet/rows/LongValue.h"
#include "platform/jet/values/Codec.h"
#include "platform/jet/values/Damage.h"
#include "platform/jet/values/StoredText.h"
#include "platform/jet/values/Utf8.h"

#include <algorithm>
#include <variant>

namespace jet {

namespace {

// Makes the value hold a T, reusing an existing one (and the memory of its text).
template <typename T>
T& Become(Value& value) {
  if (T* held = std::get_if<T>(&value)) return *held;
  return value.emplace<T>();
}

Decimal LoadDecimal(const std::uint8_t* at, std::uint8_t scale) {
  constexpr std::uint8_t kNegative = 0x80;
  const auto word = [&](unsigned i) { return std::uint64_t{LoadU32(at + 1 + 4 * i)}; };
  return {at[0] == kNegative, scale, word(0) << 32 | word(1), word(2) << 32 | word(3)};
}

void DecodeNumber(const StoredColumn& column, const std::uint8_t* at, Value& out) {
  switch (column.Type()) {
    case ColumnType::Byte:
      out = std::int64_t{at[0]};
      break;
    case ColumnType::Integer:
      out = std::int64_t{Load<std::int16_t>(at)};
      break;
    case ColumnType::Long:
      out = std::int64_t{Load<std::int32_t>(at)};
      break;
    case ColumnType::Currency:
      out = Currency{Load<std::int64_t>(at)};
      break;
    case ColumnType::Single:
      out = static_cast<double>(Load<float>(at));
      break;
    case ColumnType::Decimal:
      out = LoadDecimal(at, column.scale);
      break;
    case ColumnType::Guid:
      std::copy_n(at, 16, Become<Guid>(out).bytes.begin());
      break;
    default:  // Double and Date
      out = Load<double>(at);
  }
}

}  // namespace

std::size_t TypeSize(ColumnType type) {
  switch (type) {
    case ColumnType::Byte:
      return 1;
    case ColumnType::Integer:
      return 2;
    case ColumnType::Long:
    case ColumnType::Single:
      return 4;
    case ColumnType::Currency:
    case ColumnType::Double:
    case ColumnType::Date:
      return 8;
    case ColumnType::Guid:
      return 16;
    case ColumnType::Decimal:
      return 17;
    default:
      return 0;
  }
}

std::size_t FixedSize(const StoredTable& table) {
  std::size_t size = 0;
  for (const StoredColumn& column : table.columns) {
    if (!column.IsFixed() || column.Type() == ColumnType::Boolean) continue;
    size = std::max(size, column.fixedOffset + FixedSize(column));
  }
  return size;
}

RowView::RowView(ByteView row, const StoredTable& table) : row_(row), columns_(U16(row, 0)) {
  const std::size_t maskBytes = (columns_ + 7) / 8;
  if (row.size() < 2 + maskBytes) throw Damage("de rij is te kort");
  maskAt_ = row.size() - maskBytes;
  valuesEnd_ = maskAt_;
  if (table.variableColumns == 0) return;
  if (maskAt_ < 2 + 4) throw Damage("de rij is te kort");
  variables_ = LoadU16(&row[maskAt_ - 2]);
  if (2 + 4 + 2 * std::size_t{variables_} > maskAt_) throw Damage("de rij is te kort voor haar velden");
  valuesEnd_ = maskAt_ - 4 - 2 * variables_;
}

ByteView RowView::BytesOf(const StoredColumn& column) const {
  return column.IsFixed() ? FixedBytes(column) : VariableBytes(column.variableIndex);
}

ByteView RowView::FixedBytes(const StoredColumn& column) const {
  const std::size_t size = FixedSize(column);
  const std::size_t start = 2 + std::size_t{column.fixedOffset};
  if (start + size > valuesEnd_) throw Damage("een veld ligt buiten de rij");
  return row_.subspan(start, size);
}

ByteView RowView::VariableBytes(unsigned index) const {
  if (index >= variables_) return {};
  const std::uint8_t* entry = &row_[maskAt_ - 4 - 2 * index];
  const std::size_t start = LoadU16(entry);
  const std::size_t end = LoadU16(entry - 2);
  if (start > end || end > valuesEnd_) throw Damage("een veld ligt buiten de rij");
  return row_.subspan(start, end - start);
}

void DecodeValue(const StoredColumn& column, ByteView stored, Value& out) {
  const std::size_t size = TypeSize(column.Type());
  if (size != 0) {
    if (stored.size() < size) throw Damage("veld '" + ToUtf8(column.name) + "' is te kort");
    DecodeNumber(column, stored.data(), out);
  } else if (column.Type() == ColumnType::Text) {
    DecodeText(stored, Become<std::u16string>(out));
  } else {
    Become<Bytes>(out).assign(stored.begin(), stored.end());
  }
}

void ReadField(PageSource& pages, const RowView& row, const StoredColumn& column, Value& out, LongValueBudget* budget) {
  const bool bit = row.Bit(column);
  if (column.Type() == ColumnType::Boolean) {
    out = bit;
  } else if (!bit) {
    out = std::monostate{};
  } else if (!column.IsLong()) {
    DecodeValue(column, row.BytesOf(column), out);
  } else {
    const ByteView stored = row.BytesOf(column);
    if (budget != nullptr) budget->Spend(pages, ParseLongValueHead(stored));
    if (column.Type() == ColumnType::Ole) return ReadLongValue(pages, stored, Become<Bytes>(out));
    Bytes text;
    ReadLongValue(pages, stored, text);
    DecodeText(text, Become<std::u16string>(out));
  }
}

}  // namespace jet

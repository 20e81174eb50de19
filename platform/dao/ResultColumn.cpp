// SPDX-License-Identifier: MIT
#include "platform/dao/ResultColumn.h"

#include "platform/dao/VirtualTables.h"
#include "platform/runtime/Dates.h"

#include <cmath>
#include <cstdint>
#include <limits>
#include <span>
#include <string_view>
#include <utility>
#include <variant>

namespace dao {
namespace {

bool IsDeclared(sqlite3_stmt* statement, int column, FieldType type) {
  const char* declared = sqlite3_column_decltype(statement, column);
  return declared != nullptr && std::string_view(declared) == DeclaredType(type);
}

}  // namespace

ResultColumn::ResultColumn(sqlite3_stmt* statement, int column)
    : column_(column),
      name_(QString::fromUtf8(sqlite3_column_name(statement, column))),
      isBoolean_(IsDeclared(statement, column, FieldType::Boolean)),
      isDate_(IsDeclared(statement, column, FieldType::Date)),
      isFloating_(
          IsDeclared(statement, column, FieldType::Single) || IsDeclared(statement, column, FieldType::Double) ||
          IsDeclared(statement, column, FieldType::Currency) || IsDeclared(statement, column, FieldType::Numeric)) {}

ResultColumn::ResultColumn(QString name, FieldType type)
    : name_(std::move(name)),
      isBoolean_(type == FieldType::Boolean),
      isDate_(type == FieldType::Date),
      isFloating_(type == FieldType::Single || type == FieldType::Double || type == FieldType::Currency ||
                  type == FieldType::Numeric) {}

// SQLite has no numbers that are not a number: they are NULL.
QVariant ResultColumn::Read(const ValueView& value) const {
  if (const auto* whole = std::get_if<std::int64_t>(&value)) return Whole(*whole);
  if (const auto* number = std::get_if<double>(&value)) return std::isnan(*number) ? QVariant() : Number(*number);
  if (const auto* text = std::get_if<std::u16string_view>(&value)) return QStringView(*text).toString();
  if (const auto* bytes = std::get_if<std::span<const std::uint8_t>>(&value)) {
    return QByteArray(reinterpret_cast<const char*>(bytes->data()), static_cast<qsizetype>(bytes->size()));
  }
  return {};
}

QVariant ResultColumn::Read(sqlite3_stmt* statement) const {
  switch (sqlite3_column_type(statement, column_)) {
    case SQLITE_INTEGER:
      return Whole(sqlite3_column_int64(statement, column_));
    case SQLITE_FLOAT:
      return Number(sqlite3_column_double(statement, column_));
    case SQLITE_TEXT: {
      const auto* text = static_cast<const QChar*>(sqlite3_column_text16(statement, column_));
      return QString(text, sqlite3_column_bytes16(statement, column_) / qsizetype{sizeof(QChar)});
    }
    case SQLITE_BLOB: {
      const auto* bytes = static_cast<const char*>(sqlite3_column_blob(statement, column_));
      return QByteArray(bytes, sqlite3_column_bytes(statement, column_));
    }
    default:
      return {};
  }
}

QVariant ResultColumn::Whole(qint64 number) const {
  if (isBoolean_) return number != 0;
  if (isDate_ || isFloating_) return Number(static_cast<double>(number));
  const bool fits = number >= std::numeric_limits<int>::min() && number <= std::numeric_limits<int>::max();
  return fits ? QVariant(static_cast<int>(number)) : QVariant(number);
}

QVariant ResultColumn::Number(double number) const {
  if (isDate_) return runtime::MomentOfDayNumber(number);
  return number;
}

std::vector<ResultColumn> ResultColumnsOf(sqlite3_stmt* statement) {
  const int count = sqlite3_column_count(statement);
  std::vector<ResultColumn> columns;
  columns.reserve(static_cast<std::size_t>(count));
  for (int i = 0; i < count; ++i)
    columns.emplace_back(statement, i);
  return columns;
}

}  // namespace dao

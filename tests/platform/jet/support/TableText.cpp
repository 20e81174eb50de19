// SPDX-License-Identifier: MIT
#include "tests/platform/jet/support/TableText.h"

#include "platform/jet/values/Utf8.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <variant>

namespace witness {

namespace {

std::string Hex(const std::uint8_t* bytes, std::size_t count) {
  std::string text;
  char pair[3];
  for (std::size_t i = 0; i < count; ++i) {
    std::snprintf(pair, sizeof pair, "%02X", bytes[i]);
    text += pair;
  }
  return text;
}

std::string Printed(int digits, double number) {
  std::array<char, 64> text{};
  std::snprintf(text.data(), text.size(), "%.*g", digits, number);
  return text.data();
}

// Scaled integers without floating point: 35000 with four decimals is 3.5000.
std::string Scaled(bool negative, std::string digits, std::size_t scale) {
  if (digits.size() <= scale) digits.insert(0, scale + 1 - digits.size(), '0');
  if (scale > 0) digits.insert(digits.size() - scale, ".");
  return (negative ? "-" : "") + digits;
}

// Days since 1899-12-30 as yyyy-mm-dd hh:mm:ss (civil-from-days, proleptic Gregorian).
std::string Date(double days) {
  const double whole = days < 0 ? std::ceil(days) : std::floor(days);
  auto seconds = static_cast<long>(std::lround(std::abs(days - whole) * 86400));
  long day = static_cast<long>(whole) + 719468 - 25569 + seconds / 86400;
  seconds %= 86400;
  const long era = (day >= 0 ? day : day - 146096) / 146097;
  const long ofEra = day - era * 146097;
  const long year = (ofEra - ofEra / 1460 + ofEra / 36524 - ofEra / 146096) / 365;
  const long ofYear = ofEra - (365 * year + year / 4 - year / 100);
  const long month = (5 * ofYear + 2) / 153;
  std::array<char, 160> text{};
  std::snprintf(text.data(), text.size(), "%04ld-%02ld-%02ld %02ld:%02ld:%02ld", year + era * 400 + (month >= 10),
                month < 10 ? month + 3 : month - 9, ofYear - (153 * month + 2) / 5 + 1, seconds / 3600,
                seconds / 60 % 60, seconds % 60);
  return text.data();
}

std::string GuidText(const jet::Guid& guid) {
  static constexpr int kOrder[] = {3, 2, 1, 0, -1, 5, 4, -1, 7, 6, -1, 8, 9, -1, 10, 11, 12, 13, 14, 15};
  std::string text = "{";
  for (const int place : kOrder)
    text += place < 0 ? "-" : Hex(&guid.bytes[static_cast<std::size_t>(place)], 1);
  return text + "}";
}

struct Printer {
  jet::ColumnType type;

  std::string operator()(std::monostate) const { return "<null>"; }
  std::string operator()(bool value) const { return value ? "1" : "0"; }
  std::string operator()(std::int64_t value) const { return std::to_string(value); }
  std::string operator()(double value) const {
    if (type == jet::ColumnType::Date) return Date(value);
    return Printed(type == jet::ColumnType::Single ? 8 : 16, value);
  }
  std::string operator()(jet::Currency value) const {
    // The lowest amount has no positive counterpart.
    const auto bits = static_cast<std::uint64_t>(value.scaled);
    return Scaled(value.scaled < 0, std::to_string(value.scaled < 0 ? 0 - bits : bits), 4);
  }
  std::string operator()(const jet::Decimal& value) const {
    return Scaled(value.negative, std::to_string(value.low), value.scale);
  }
  std::string operator()(const std::u16string& value) const { return jet::ToUtf8(value); }
  std::string operator()(const jet::Bytes& value) const { return Hex(value.data(), value.size()); }
  std::string operator()(const jet::Guid& value) const { return GuidText(value); }
};

std::string TypeText(const jet::ColumnDefinition& column) {
  using jet::ColumnType;
  const std::string size = " (" + std::to_string(column.size) + ")";
  switch (column.type) {
    case ColumnType::Boolean:
      return "Boolean";
    case ColumnType::Byte:
      return "Byte";
    case ColumnType::Integer:
      return "Integer";
    case ColumnType::Long:
      return "Long Integer";
    case ColumnType::Currency:
      return "Currency";
    case ColumnType::Single:
      return "Single";
    case ColumnType::Double:
      return "Double";
    case ColumnType::Date:
      return "DateTime";
    case ColumnType::Text:
      return "Text" + size;
    case ColumnType::Ole:
      return "OLE";
    case ColumnType::Memo:
      return "Memo/Hyperlink";
    case ColumnType::Guid:
      return "Replication ID";
    case ColumnType::Decimal:
      return "Numeric (" + std::to_string(column.precision) + ", " + std::to_string(column.scale) + ")";
    case ColumnType::Binary:
    case ColumnType::SystemBinary:
      break;
  }
  return "Binary";  // mdb-schema omits its size
}

}  // namespace

TableText TextOf(jet::Database& database, const std::u16string& table) {
  const jet::Table source = database.OpenTable(table);
  const std::vector<jet::ColumnDefinition>& columns = source.Definition().columns;
  TableText text;
  jet::ColumnSet all;
  for (std::size_t i = 0; i < columns.size(); ++i) {
    all.push_back(i);
    text.fields.push_back(jet::ToUtf8(columns[i].name) + ": " + TypeText(columns[i]) +
                          (columns[i].required ? " NOT NULL" : ""));
  }
  jet::TableCursor rows = source.Scan(all);
  while (rows.Next()) {
    std::vector<std::string>& row = text.rows.emplace_back();
    for (const std::size_t i : all)
      row.push_back(std::visit(Printer{columns[i].type}, rows.Values()[i]));
  }
  return text;
}

Tables ReadWithJet(jet::Database& database) {
  Tables tables;
  for (const std::u16string& name : database.TableNames())
    tables.emplace(jet::ToUtf8(name), TextOf(database, name));
  return tables;
}

Tables Sorted(Tables tables) {
  for (auto& [name, table] : tables)
    std::sort(table.rows.begin(), table.rows.end());
  return tables;
}

}  // namespace witness

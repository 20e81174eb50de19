// SPDX-License-Identifier: MIT
#include "tools/TableCsv.h"

#include "platform/jet/values/Error.h"
#include "platform/jet/values/ExactNumber.h"
#include "platform/jet/values/ValueText.h"
#include "tools/CsvLine.h"

#include <variant>

namespace {

constexpr std::size_t kBlock = std::size_t{1} << 16;  // bytes of text that are added together

struct FieldAdder {
  CsvLine& line;
  jet::ColumnType type;

  void operator()(std::monostate) const { line.AddNull(); }
  void operator()(bool value) const { line.AddWhole(value ? -1 : 0); }
  void operator()(std::int64_t value) const { line.AddWhole(value); }
  void operator()(double value) const { type == jet::ColumnType::Date ? line.AddDate(value) : line.AddNumber(value); }
  void operator()(const jet::Currency& value) const { (*this)(jet::ExactOf(value)); }
  void operator()(const jet::Decimal& value) const {
    if (const auto number = jet::DoubleOf(value))
      line.AddNumber(*number);
    else
      line.AddText(jet::TextOf(value));
  }
  void operator()(const std::u16string& value) const { line.AddText(value); }
  void operator()(const jet::Bytes& value) const { line.AddBinary(value); }
  void operator()(const jet::Guid& value) const { line.AddText(jet::TextOf(value)); }
};

// The next row; damage before it is noted and skipped.
bool NextSound(jet::TableCursor& rows, std::vector<std::string>& damages) {
  for (;;) {
    try {
      return rows.Next();
    } catch (const jet::Error& error) {
      if (error.Code() != jet::ErrorCode::Damaged) throw;
      damages.emplace_back(error.what());
    }
  }
}

}  // namespace

TableCsv CsvOf(const jet::Table& table) {
  const std::vector<jet::ColumnDefinition>& columns = table.Definition().columns;
  TableCsv csv;
  CsvLine line;
  jet::ColumnSet all;
  for (std::size_t i = 0; i < columns.size(); ++i) {
    all.push_back(i);
    line.AddText(columns[i].name);
  }
  line.End();
  jet::TableCursor rows = table.Scan(all);
  while (NextSound(rows, csv.damages)) {
    for (const std::size_t i : all)
      std::visit(FieldAdder{line, columns[i].type}, rows.Values()[i]);
    line.End();
    if (line.Text().size() >= kBlock) csv.text.Add(line.Take());
  }
  csv.text.Add(line.Take());
  return csv;
}

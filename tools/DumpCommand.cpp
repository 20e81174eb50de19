#include "platform/dao/JetValue.h"
#include "platform/jet/Database.h"
#include "platform/jet/Error.h"
#include "tools/Commands.h"
#include "tools/CsvLine.h"

#include <QFile>

#include <vector>

using namespace Qt::StringLiterals;

namespace {

constexpr std::size_t kBlock = std::size_t{1} << 20;  // bytes of text that are kept together

// What is in the table, and what of it could not be read.
struct TableText {
  std::vector<std::string> blocks;
  std::vector<std::string> damages;
};

void AddValue(CsvLine& line, const jet::ColumnDefinition& column, const jet::Value& value, std::u16string& buffer) {
  const dao::ValueView view = dao::ViewOf(value, buffer);
  if (const auto* whole = std::get_if<std::int64_t>(&view)) return line.AddWhole(*whole);
  if (const auto* text = std::get_if<std::u16string_view>(&view)) return line.AddText(*text);
  if (const auto* bytes = std::get_if<std::span<const std::uint8_t>>(&view)) return line.AddBinary(*bytes);
  const auto* number = std::get_if<double>(&view);
  if (number == nullptr) return line.AddNull();
  if (column.type == jet::ColumnType::Date) return line.AddDate(*number);
  line.AddNumber(*number);
}

// The next row; damage on the way is noted, and reading goes on behind it.
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

TableText Read(const jet::Table& table) {
  const std::vector<jet::ColumnDefinition>& columns = table.Definition().columns;
  TableText text;
  CsvLine line;
  jet::ColumnSet all;
  for (std::size_t i = 0; i < columns.size(); ++i) {
    all.push_back(i);
    line.AddText(columns[i].name);
  }
  line.End();
  std::u16string buffer;
  jet::TableCursor rows = table.Scan(all);
  while (NextSound(rows, text.damages)) {
    for (const std::size_t i : all)
      AddValue(line, columns[i], rows.Values()[i], buffer);
    line.End();
    if (line.Text().size() >= kBlock) text.blocks.push_back(line.Take());
  }
  text.blocks.push_back(line.Take());
  return text;
}

// Nobody waits for a reader of a slow pipe: the file is let go before the first byte is written.
TableText ReadTable(const Arguments& arguments) {
  jet::OpenOptions options;
  options.password = arguments.Value(u"--password"_s).toStdU16String();
  const auto database = jet::Database::Open(QFile::encodeName(arguments.Plain().first()).toStdString(), options);
  const jet::ReadTurn reading(*database);
  return Read(database->OpenTable(arguments.Plain().at(1).toStdU16String()));
}

int Dump(const Arguments& arguments, const Streams& streams) {
  const TableText table = ReadTable(arguments);
  for (const std::string& block : table.blocks)
    streams.out << block;
  for (const std::string& damage : table.damages)
    streams.err << damage << '\n';
  return table.damages.empty() ? kDone : kFailed;
}

}  // namespace

Command DumpCommand() {
  return {u"dump"_s,
          u"BESTAND TABEL [--password TEKST]"_s,
          u"Schrijft een tabel als CSV, met een kopregel; van een beschadigde tabel wat nog te lezen is."_s,
          2,
          2,
          {u"--password"_s},
          {},
          Dump};
}

#include "platform/jet/Database.h"
#include "tools/Commands.h"
#include "tools/TableCsv.h"

#include <QFile>

using namespace Qt::StringLiterals;

namespace {

// The file is let go before the first byte is written: a slow pipe must not keep writers waiting.
TableCsv Read(const Arguments& arguments) {
  jet::OpenOptions options;
  options.password = arguments.Value(u"--password"_s).toStdU16String();
  const auto database = jet::Database::Open(QFile::encodeName(arguments.Plain().first()).toStdString(), options);
  const jet::ReadTurn reading(*database);
  return CsvOf(database->OpenTable(arguments.Plain().at(1).toStdU16String()));
}

int Dump(const Arguments& arguments, const Streams& streams) {
  const TableCsv csv = Read(arguments);
  for (const std::string& block : csv.blocks)
    streams.out << block;
  for (const std::string& damage : csv.damages)
    streams.err << damage << '\n';
  return csv.damages.empty() ? kDone : kFailed;
}

}  // namespace

Command DumpCommand() {
  return {
      .name = u"dump"_s,
      .usage = u"BESTAND TABEL [--password TEKST]"_s,
      .summary = u"Schrijft een tabel als CSV, met een kopregel; van een beschadigde tabel wat nog te lezen is."_s,
      .leastWords = 2,
      .mostWords = 2,
      .valuedOptions = {u"--password"_s},
      .run = Dump,
      .details = u"NULL is een leeg veld, een lege tekst is \"\"; datums zijn jjjj-mm-dd uu:mm:ss, ja/nee is -1/0."_s,
      .examples = {u"dump /srv/planner/server/OvalistoServer.mdb tblItemSpots > spots.csv"_s}};
}

// SPDX-License-Identifier: MIT
#include "platform/dao/postgres/ServerAddress.h"
#include "platform/jet/database/Database.h"
#include "tools/Commands.h"
#include "tools/Csv.h"
#include "tools/DatabaseArgument.h"
#include "tools/TableCsv.h"

#include <string>

using namespace Qt::StringLiterals;

namespace {

// The file is closed before the first byte is written: a slow pipe must not block writers. The text waits outside
// memory (SpooledText).
TableCsv Read(const Arguments& arguments) {
  constexpr std::size_t kCachedPages = 64;  // most are read once
  const auto database = OpenFile(arguments, kCachedPages);
  const jet::ReadTurn reading(*database);
  return CsvOf(database->OpenTable(arguments.Plain().at(1).toStdU16String()));
}

int DumpServer(const Arguments& arguments, const Streams& streams) {
  dao::Database database = OpenDatabase(arguments);
  dao::Recordset rows = database.OpenRecordset(u"SELECT * FROM [%1]"_s.arg(arguments.Plain().at(1)));
  WriteCsv(rows, streams.out);
  return kDone;
}

int Dump(const Arguments& arguments, const Streams& streams) {
  if (dao::IsServerPath(arguments.Plain().first())) return DumpServer(arguments, streams);
  const TableCsv csv = Read(arguments);
  csv.text.WriteTo(streams.out);
  for (const std::string& damage : csv.damages)
    streams.err << damage << '\n';
  return csv.damages.empty() ? kDone : kFailed;
}

}  // namespace

Command DumpCommand() {
  return {
      .name = u"dump"_s,
      .usage = u"DATABASE TABEL [--password TEKST]"_s,
      .summary = u"Schrijft een tabel als CSV, met een kopregel; van een beschadigde tabel wat nog te lezen is."_s,
      .run = Dump,
      .details = u"NULL is een leeg veld, een lege tekst is \"\"; datums zijn jjjj-mm-dd uu:mm:ss, ja/nee is -1/0."_s,
      .examples = {u"dump /tmp/proef/server/OvalistoServer.mdb tblItemSpots > /tmp/proef/spots.csv"_s}};
}

// SPDX-License-Identifier: MIT
#include "data/Catalogue.h"
#include "data/SpotState.h"
#include "platform/dao/Database.h"
#include "platform/dao/postgres/ServerAddress.h"
#include "platform/runtime/Clock.h"
#include "tools/Commands.h"
#include "tools/Csv.h"
#include "tools/StationSession.h"

#include <optional>

using namespace Qt::StringLiterals;

namespace {

constexpr int kMaxDays = 36500;

bool EndsWithin(const SpotFacts& spot, QDate today, int days) {
  if (!spot.aktief || !spot.eindDatum) return false;
  const qint64 left = today.daysTo(*spot.eindDatum);
  return left >= 0 && left <= days;
}

QString DateField(const std::optional<QDate>& date) {
  return date ? CsvField(*date) : QString();
}

dao::Recordset Spots(const QString& path, const QString& table) {
  dao::Database database = dao::OpenDatabase(path, {.readOnly = true});
  return database.OpenRecordset(u"SELECT * FROM "_s + table + u" ORDER BY EindDatum, Naam, ID");
}

// Of a station's folder, or of a server database.
dao::Recordset SpotsOf(const Arguments& arguments, const Streams& streams) {
  const QString& word = arguments.Plain().first();
  if (dao::IsServerPath(word)) return Spots(word, u"tblItemSpots"_s);
  const StationSession station(arguments, streams.err);
  const Catalogue catalogue = CurrentCatalogue();
  return Spots(catalogue.databasePath, catalogue.itemSpots);
}

int ListSpots(const Arguments& arguments, const Streams& streams) {
  const std::optional<int> days = arguments.Number(u"--ending"_s, kMaxDays);
  dao::Recordset rows = SpotsOf(arguments, streams);
  const QDateTime now = runtime::Now();
  WriteCsvLine({u"ID"_s, u"Naam"_s, u"StartDatum"_s, u"EindDatum"_s, u"Status"_s, u"Path"_s}, streams.out);
  for (; !rows.Eof(); rows.MoveNext()) {
    const SpotFacts spot = FactsOf(rows);
    if (days && !EndsWithin(spot, now.date(), *days)) continue;
    WriteCsvLine({CsvField(rows.Field(u"ID"_s)), CsvField(rows.Field(u"Naam"_s)), DateField(spot.startDatum),
                  DateField(spot.eindDatum), CsvField(StateText(spot, StateOf(spot, now))), CsvField(spot.path)},
                 streams.out);
  }
  return kDone;
}

}  // namespace

Command SpotsCommand() {
  return {.name = u"spots"_s,
          .usage = u"MAP [--ending DAGEN] [--station N]"_s,
          .summary = u"Toont de item-spots van een zender als CSV, op einddatum; of alleen die binnenkort aflopen."_s,
          .run = ListSpots,
          .details =
              u"Leest wat het programma nu leest: online de gedeelde database, offline de kopie. --ending toont de\n"
              "aktieve item-spots waarvan de laatste dag vandaag is of binnen zoveel dagen valt. Of de\n"
              "geluidsbestanden er zijn, wordt hier niet bekeken; dat doet locate."_s,
          .examples = {u"spots /tmp/proef"_s, u"spots /tmp/proef --ending 7 > /tmp/proef/aflopend.csv"_s}};
}

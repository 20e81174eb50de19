// SPDX-License-Identifier: MIT
#include "export/playout/AirLedger.h"
#include "platform/dao/postgres/ServerAddress.h"
#include "platform/runtime/Dates.h"
#include "platform/runtime/TextFile.h"
#include "tools/Commands.h"
#include "tools/DatabaseArgument.h"
#include "tools/LocalFolder.h"

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 kLargestLog = qint64{1} << 30;  // bytes

std::optional<QDate> DayOf(const Arguments& arguments) {
  if (!arguments.Has(u"--dag"_s)) return std::nullopt;
  const QString text = arguments.Value(u"--dag"_s);
  if (const QDate day = QDate::fromString(text, u"yyyy-MM-dd"_s); day.isValid()) return day;
  if (const std::optional<QDate> day = runtime::ParseDate(text)) return day;
  throw UseError(u"'%1' is geen datum: geef bijvoorbeeld 2025-03-11."_s.arg(text));
}

int Played(const Arguments& arguments, const Streams& streams) {
  const bool on = arguments.Has(u"--aan"_s);
  const bool off = arguments.Has(u"--uit"_s);
  const QStringList logs = arguments.Plain().mid(1);
  if (on && off) throw UseError(u"--aan en --uit gaan niet samen."_s);
  if (!on && !off && logs.isEmpty()) throw UseError(u"Geef een logboek, of --aan of --uit."_s);
  const std::optional<QDate> day = DayOf(arguments);
  std::vector<Airing> airings;
  for (const QString& log : logs) {
    const std::vector<Airing> more = ReadAirLog(runtime::ReadFile(log, kLargestLog), log, day);
    airings.insert(airings.end(), more.begin(), more.end());
  }
  const QString database = DatabasePathOf(arguments.Plain().first());
  const QString password = arguments.Value(kPassword);
  const auto lock = dao::IsServerPath(database) ? nullptr : LocalFolder(database).Lock();
  if (on || off) SwitchCounting(database, on, password);
  if (logs.isEmpty()) return kDone;
  const AiringCount counted = CountAirings(database, airings, password);
  streams.out << counted.added << " nieuw, " << counted.known << " al geteld\n";
  if (counted.unknown > 0)
    streams.err << counted.unknown << " daarvan zijn van item-spots die niet in de catalogus staan.\n";
  return kDone;
}

}  // namespace

Command PlayedCommand() {
  return {
      .name = u"played"_s,
      .usage = u"DATABASE [LOG...] [--aan] [--uit] [--dag DATUM] [--password TEKST]"_s,
      .summary = u"Telt wat er volgens de logboeken van het uitzendsysteem gespeeld is."_s,
      .run = Played,
      .details =
          u"Verhoogt 'Aantal gedraaid' en zet 'Laatst gedraaid' van de item-spots, elke uitzending één keer, ook als "
          u"een\n"
          "logboek twee keer gegeven wordt. Leest het logboek van spotrooster.liq, het cutlogboek van Rivendell van "
          "één\n"
          "dag (met --dag als zijn datum twee dagen kan zijn), en een tabel met de kolommen Moment, ItemSpot en "
          "Item.\n"
          "Staat eerst uit, want elders vult een ander programma deze velden: --aan zet het aan voor deze database,\n"
          "--uit weer uit. Het overzicht Uitzendverslag in het programma toont wat er geteld is."_s,
      .examples = {u"played /tmp/proef/server/OvalistoServer.mdb --aan"_s,
                   u"played /tmp/proef/server/OvalistoServer.mdb --uit"_s}};
}

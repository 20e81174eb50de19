#include "data/stations/ProgramFolder.h"
#include "tools/Commands.h"

using namespace Qt::StringLiterals;

namespace {

// The list at the start shows names: a station without one would be an empty line there.
QString NameFor(const QString& given, qint16 station) {
  if (!given.isEmpty()) return given;
  return station == 0 ? u"Zender"_s : u"Zender %1"_s.arg(station);
}

int Create(const Arguments& arguments, const Streams& streams) {
  const qint16 station = arguments.Station();
  const ProgramFolder folder(arguments.Plain().first());
  folder.MakeStation(station, NameFor(arguments.Value(u"--name"_s), station));
  streams.out << folder.Path().toStdString() << '\n';
  return kDone;
}

}  // namespace

Command CreateCommand() {
  return {.name = u"create"_s,
          .usage = u"MAP [--station N --name NAAM]"_s,
          .summary = u"Maakt in een programmamap de lege databases van een zender, met meldingen en instellingen."_s,
          .run = Create,
          .details =
              u"Wat er al is, blijft zoals het is; een zender die er al is, is een fout. Zonder naam heet de zender\n"
              "'Zender', of 'Zender N'."_s,
          .examples = {u"create /tmp/zender --station 0 --name \"Radio Polderstem\""_s}};
}

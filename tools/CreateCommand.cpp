#include "tools/Commands.h"
#include "tools/ProgramFolder.h"

using namespace Qt::StringLiterals;

namespace {

int Create(const Arguments& arguments, const Streams& streams) {
  const qint16 station = arguments.Station();
  const ProgramFolder folder(arguments.Plain().first());
  folder.MakeStation(station, arguments.Value(u"--name"_s));
  streams.out << folder.Path().toStdString() << '\n';
  return kDone;
}

}  // namespace

Command CreateCommand() {
  return {.name = u"create"_s,
          .usage = u"MAP [--station N --name NAAM]"_s,
          .summary = u"Maakt in een programmamap de lege databases van een zender, met meldingen en instellingen."_s,
          .run = Create,
          .details = u"Wat er al is, blijft zoals het is; een zender die er al is, is een fout."_s,
          .examples = {u"create /tmp/zender --station 0 --name \"Radio Polderstem\""_s}};
}

#include "platform/runtime/Error.h"
#include "platform/runtime/Numbers.h"
#include "tools/Commands.h"
#include "tools/ProgramFolder.h"

using namespace Qt::StringLiterals;

namespace {

int Create(const Arguments& arguments, const Streams& streams) {
  const QString number = arguments.Value(u"--station"_s);
  const qint16 station = number.isEmpty() ? qint16{0} : runtime::ToInteger(number);
  if (station < 0) throw runtime::Error(u"Een zendernummer is 0 of meer; '%1' kan niet."_s.arg(number));
  const ProgramFolder folder(arguments.Plain().first());
  folder.MakeStation(station, arguments.Value(u"--name"_s));
  streams.out << folder.Path().toStdString() << '\n';
  return kDone;
}

}  // namespace

Command CreateCommand() {
  return {u"create"_s,
          u"MAP [--station N --name NAAM]"_s,
          u"Maakt in een programmamap de lege databases van een zender, met meldingen en instellingen."_s,
          1,
          1,
          {u"--station"_s, u"--name"_s},
          {},
          Create};
}

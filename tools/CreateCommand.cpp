// SPDX-License-Identifier: MIT
#include "data/Schema.h"
#include "data/stations/ProgramFolder.h"
#include "platform/dao/postgres/ServerAddress.h"
#include "platform/dao/postgres/ServerStorage.h"
#include "tools/Commands.h"

using namespace Qt::StringLiterals;

namespace {

// The station list shows names: a station without one would be an empty line.
QString NameFor(const QString& given, qint16 station) {
  if (!given.isEmpty()) return given;
  return station == 0 ? u"Zender"_s : u"Zender %1"_s.arg(station);
}

// Only the server database: the list of stations is in each program folder.
int CreateOnServer(const QString& url, qint16 station, const QString& name, const Streams& streams) {
  const QString path = url + u"\\OvalistoServer" + (station == 0 ? QString() : QString::number(station)) + u".mdb";
  schema::CreateServerDatabase(path);
  dao::DescribeServerStorage(path, name);
  streams.out << path.toStdString() << '\n';
  return kDone;
}

int Create(const Arguments& arguments, const Streams& streams) {
  const qint16 station = arguments.Station();
  const QString& word = arguments.Plain().first();
  if (dao::IsServerPath(word))
    return CreateOnServer(word, station, NameFor(arguments.Value(u"--name"_s), station), streams);
  const ProgramFolder folder(word);
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
              "'Zender', of 'Zender N'. In plaats van een map kan het adres van een databaseserver komen te staan\n"
              "(postgresql://...): dan komt daar alleen de gedeelde database van de zender, als schema."_s,
          .examples = {u"create /tmp/zender --station 0 --name \"Radio Polderstem\""_s}};
}

// SPDX-License-Identifier: MIT
#include "data/stations/DemoStation.h"

#include "data/Catalogue.h"
#include "data/Statements.h"
#include "data/stations/DemoCatalogue.h"
#include "data/stations/DemoSound.h"
#include "data/stations/ProgramFolder.h"
#include "platform/dao/Database.h"
#include "platform/runtime/Clock.h"
#include "platform/runtime/Error.h"

#include <QFile>

using namespace Qt::StringLiterals;

namespace {

struct Contents {
  QList<demo::Spot> spots;
  QList<demo::Jingle> jingles;
  QList<demo::Item> items;
};

void WriteSpot(dao::Database& database, const demo::Spot& spot, const QString& table) {
  database.Execute(statements::InsertItemSpot(spot.row, table));
  if (spot.playCount == 0) return;
  database.Execute(u"UPDATE %1 SET AantalGedraaid = %2, LaatstGedraaid = \"%3\" WHERE ID = %4"_s.arg(
      table, QString::number(spot.playCount), spot.lastPlayed.toString(u"dd-MM-yyyy HH:mm:ss"_s),
      QString::number(spot.row.id)));
}

void Fill(const QString& path, const Contents& contents, const QString& prefix) {
  dao::Database database = dao::OpenDatabase(path);
  for (const demo::Spot& spot : contents.spots)
    WriteSpot(database, spot, prefix + u"ItemSpots");
  for (const demo::Jingle& jingle : contents.jingles) {
    database.Execute(statements::InsertItemPingle(jingle.row, prefix + u"ItemPingles"));
  }
  for (const demo::Item& item : contents.items) {
    database.Execute(statements::InsertItem(item.row, prefix + u"Items"));
    qint32 order = 0;
    for (const qint32 spot : item.spots) {
      database.Execute(statements::InsertLink({item.row.id, ++order, spot}, prefix + u"ItemsItemSpots"));
    }
  }
}

void FillStation(const ProgramFolder& folder, qint16 number, const Contents& contents) {
  Fill(folder.ServerDatabase(number), contents, kServerTablePrefix);
  Fill(folder.LocalDatabase(number), contents, kCopyTablePrefix);
}

// The second station has a part of the first one's contents.
Contents Smaller(const Contents& contents) {
  return {contents.spots.mid(0, 21), contents.jingles, contents.items.mid(0, 1) + contents.items.mid(8)};
}

}  // namespace

void MakeDemoStation(const QString& hostFolder) {
  const ProgramFolder folder(hostFolder);
  if (QFile::exists(folder.LocalDatabase(0))) {
    throw runtime::Error(u"In '%1' staat al een zender; kies een andere map."_s.arg(folder.Path()));
  }
  Contents contents{demo::Spots(runtime::Now().date()), demo::Jingles(), demo::Items()};
  demo::MakeSounds(contents.spots, contents.jingles, folder.Path() + u"/audio", u"D:\\audio"_s);
  folder.MakeStation(0, u"Radio Demo"_s);
  folder.MakeStation(3, u"Radio Polderstem"_s);
  FillStation(folder, 0, contents);
  FillStation(folder, 3, Smaller(contents));
}

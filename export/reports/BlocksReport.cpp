// SPDX-License-Identifier: MIT
#include "data/Catalogue.h"
#include "data/SpotState.h"
#include "data/forms/SpotDetails.h"
#include "export/reports/ReportParts.h"
#include "export/reports/Reports.h"
#include "platform/runtime/Counted.h"

#include <QHash>

#include <vector>

using namespace Qt::StringLiterals;

namespace {

// Names of a table's records by ID.
QHash<qint32, QString> NamesOf(const QString& table) {
  QHash<qint32, QString> names;
  for (dao::Recordset row = Rows(u"SELECT ID, Naam FROM "_s + table); !row.Eof(); row.MoveNext())
    names.insert(row.Field(u"ID"_s).toInt(), TextOf(row, u"Naam"_s));
  return names;
}

// The lines of an item-spot list by the item's ID, in play order.
struct Playlist {
  std::vector<QStringList> lines;
  qint32 seconds = 0;
};

QHash<qint32, Playlist> Playlists(const FilePresences& presences, Report& report) {
  const Catalogue catalogue = CurrentCatalogue();
  const QString select =
      u"SELECT %1.*, %2.ItemID FROM %2 INNER JOIN %1 ON %2.ItemSpotID = %1.ID ORDER BY %2.ItemID, %2.ItemSpotOrder"_s;
  QHash<qint32, Playlist> lists;
  for (dao::Recordset row = Rows(select.arg(catalogue.itemSpots, catalogue.itemsItemSpots)); !row.Eof();
       row.MoveNext()) {
    Playlist& list = lists[row.Field(u"ItemID"_s).toInt()];
    const SpotFacts spot = FactsOf(row);
    list.seconds += spot.lengteSec.value_or(0);
    list.lines.push_back({QString::number(list.lines.size() + 1), TextOf(row, u"Naam"_s), LengthText(spot.lengteSec),
                          StateOn(spot, presences, report)});
  }
  return lists;
}

QString JinglesOf(const dao::Recordset& item, const QHash<qint32, QString>& names) {
  QStringList jingles;
  for (const QString& place : {u"Opener"_s, u"Midden"_s, u"Sluiter"_s}) {
    const QString name = names.value(item.Field(place).toInt());
    if (!name.isEmpty()) jingles += place.toLower() + u' ' + name;
  }
  return jingles.join(u", "_s);
}

constexpr int kFilesOfAFolder = 2;

// The text after the item's name.
QString NoteOn(const dao::Recordset& item, const Playlist& list, const QString& jingles) {
  QStringList parts;
  if (item.Field(u"Aktief"_s).toInt() == 0) parts += u"niet aktief"_s;
  if (item.Field(u"ItemSpotsOptID"_s).toInt() == kFilesOfAFolder) {
    parts += u"bestanden ‘%1…’ in %2"_s.arg(TextOf(item, u"Opt2VastNaamGedeelte"_s), TextOf(item, u"Opt2Directory"_s));
  } else {
    parts += SpotsAndLength(static_cast<qsizetype>(list.lines.size()), list.seconds);
  }
  if (!jingles.isEmpty()) parts += jingles;
  return parts.join(u"; "_s);
}

}  // namespace

Report BlocksReport(const FilePresences& presences) {
  const Catalogue catalogue = CurrentCatalogue();
  Report report = NewReport(u"Items met hun item-spots"_s);
  report.groupTitle = u"Item"_s;
  report.columns = {{u"Nr."_s, 7, true}, {u"Item-spot"_s, 54}, {u"Lengte"_s, 11, true}, {u"Status"_s, 28}};
  report.emptyText = u"Er zijn nog geen items."_s;
  const QHash<qint32, QString> jingles = NamesOf(catalogue.itemPingles);
  const QHash<qint32, Playlist> lists = Playlists(presences, report);
  for (dao::Recordset item = Rows(u"SELECT * FROM %1 ORDER BY Naam"_s.arg(catalogue.items)); !item.Eof();
       item.MoveNext()) {
    const Playlist list = lists.value(item.Field(u"ID"_s).toInt());
    report.groups.push_back({TextOf(item, u"Naam"_s), NoteOn(item, list, JinglesOf(item, jingles)), list.lines});
  }
  if (!report.IsEmpty()) {
    report.closing = runtime::Counted(static_cast<qsizetype>(report.groups.size()), u"item"_s, u"items"_s);
  }
  return report;
}

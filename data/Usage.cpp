// SPDX-License-Identifier: MIT
#include "data/Usage.h"

#include "platform/dao/Database.h"
#include "platform/runtime/Numbers.h"

using namespace Qt::StringLiterals;

namespace {

// The query returns an item once for each use; its name is listed once.
QStringList Names(dao::Recordset rows) {
  QStringList names;
  qint64 last = 0;
  for (; !rows.Eof(); rows.MoveNext()) {
    const qint64 id = rows.Field(u"ID"_s).toLongLong();
    if (names.isEmpty() || id != last) names += runtime::TrimBlanks(rows.Field(u"Naam"_s).toString());
    last = id;
  }
  return names;
}

QStringList ItemsWhere(const Catalogue& catalogue, const QString& from, const QString& condition) {
  dao::Database database = dao::OpenDatabase(catalogue.databasePath);
  return Names(database.OpenRecordset(
      u"SELECT %1.ID, %1.Naam FROM %2 WHERE %3 ORDER BY %1.Naam, %1.ID"_s.arg(catalogue.items, from, condition)));
}

// Each ID in a list for SQL; of no IDs one that no record has.
QString ListOf(dao::Recordset rows, const QString& field) {
  QStringList ids;
  for (; !rows.Eof(); rows.MoveNext())
    ids += QString::number(rows.Field(field).toLongLong());
  ids.removeDuplicates();
  return ids.isEmpty() ? u"0"_s : ids.join(u", "_s);
}

}  // namespace

QStringList ItemsWithSpot(qint32 itemSpotID, const Catalogue& catalogue) {
  return ItemsWhere(catalogue,
                    u"%1 INNER JOIN %2 ON %1.ID = %2.ItemID"_s.arg(catalogue.items, catalogue.itemsItemSpots),
                    u"%1.ItemSpotID = %2"_s.arg(catalogue.itemsItemSpots, QString::number(itemSpotID)));
}

QStringList ItemsWithPingle(qint32 itemPingleID, const Catalogue& catalogue) {
  const QString& items = catalogue.items;
  return ItemsWhere(catalogue, items,
                    u"%1.Opener = %2 OR %1.Midden = %2 OR %1.Sluiter = %2"_s.arg(items, QString::number(itemPingleID)));
}

QStringList SpotsInOtherItems(qint32 itemID, const Catalogue& catalogue) {
  const QString& links = catalogue.itemsItemSpots;
  const QString item = QString::number(itemID);
  dao::Database database = dao::OpenDatabase(catalogue.databasePath);
  const QString own = ListOf(database.OpenRecordset(u"SELECT ItemSpotID FROM %1 WHERE ItemID = %2"_s.arg(links, item)),
                             u"ItemSpotID"_s);
  const QString shared =
      ListOf(database.OpenRecordset(
                 u"SELECT ItemSpotID FROM %1 WHERE ItemID <> %2 AND ItemSpotID IN (%3)"_s.arg(links, item, own)),
             u"ItemSpotID"_s);
  return Names(database.OpenRecordset(
      u"SELECT ID, Naam FROM %1 WHERE ID IN (%2) ORDER BY Naam, ID"_s.arg(catalogue.itemSpots, shared)));
}

QString UsageText(const QStringList& items) {
  if (items.isEmpty()) return u"In geen enkel item gebruikt"_s;
  if (items.size() == 1) return u"Gebruikt in "_s + items.first();
  return u"Gebruikt in %1 items: %2"_s.arg(items.size()).arg(items.join(u", "_s));
}

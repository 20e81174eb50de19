// SPDX-License-Identifier: MIT
#include "data/Usage.h"

#include "data/Catalogue.h"
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

QStringList ItemsWhere(const QString& from, const QString& condition) {
  const Catalogue catalogue = CurrentCatalogue();
  dao::Database database = dao::OpenDatabase(catalogue.databasePath);
  return Names(database.OpenRecordset(
      u"SELECT %1.ID, %1.Naam FROM %2 WHERE %3 ORDER BY %1.Naam, %1.ID"_s.arg(catalogue.items, from, condition)));
}

}  // namespace

QStringList ItemsWithSpot(qint32 itemSpotID) {
  const Catalogue catalogue = CurrentCatalogue();
  return ItemsWhere(u"%1 INNER JOIN %2 ON %1.ID = %2.ItemID"_s.arg(catalogue.items, catalogue.itemsItemSpots),
                    u"%1.ItemSpotID = %2"_s.arg(catalogue.itemsItemSpots, QString::number(itemSpotID)));
}

QStringList ItemsWithPingle(qint32 itemPingleID) {
  const QString items = CurrentCatalogue().items;
  return ItemsWhere(items,
                    u"%1.Opener = %2 OR %1.Midden = %2 OR %1.Sluiter = %2"_s.arg(items, QString::number(itemPingleID)));
}

QString UsageText(const QStringList& items) {
  if (items.isEmpty()) return u"In geen enkel item gebruikt"_s;
  if (items.size() == 1) return u"Gebruikt in "_s + items.first();
  return u"Gebruikt in %1 items: %2"_s.arg(items.size()).arg(items.join(u", "_s));
}

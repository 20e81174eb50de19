// SPDX-License-Identifier: MIT
#include "data/Catalogue.h"

#include "data/Globals.h"

using namespace Qt::StringLiterals;

Catalogue CurrentCatalogue() {
  if (global.online) {
    return {global.serverDatabasePath, u"tblItems"_s, u"tblItemSpots"_s, u"tblItemPingles"_s, u"tblItemsItemSpots"_s};
  }
  return {global.localDatabasePath, u"tblCopie_Items"_s, u"tblCopie_ItemSpots"_s, u"tblCopie_ItemPingles"_s,
          u"tblCopie_ItemsItemSpots"_s};
}

QString CopyTableOf(const QString& serverTable) {
  return kCopyTablePrefix + serverTable.mid(kServerTablePrefix.size());
}

QString ServerTableOf(const QString& table) {
  if (!table.startsWith(kCopyTablePrefix, Qt::CaseInsensitive)) return table;
  return kServerTablePrefix + table.mid(kCopyTablePrefix.size());
}

// SPDX-License-Identifier: MIT
#include "data/Catalogue.h"

#include "data/Globals.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

TEST(Catalogue, OnlineFlagSelectsDatabaseAndTables) {
  global = Globals();
  global.localDatabasePath = u"lokaal"_s;
  global.serverDatabasePath = u"server"_s;
  const Catalogue offline = CurrentCatalogue();
  EXPECT_EQ(offline.databasePath, u"lokaal"_s);
  EXPECT_EQ((QStringList{offline.items, offline.itemSpots, offline.itemPingles, offline.itemsItemSpots}),
            (QStringList{u"tblCopie_Items"_s, u"tblCopie_ItemSpots"_s, u"tblCopie_ItemPingles"_s,
                         u"tblCopie_ItemsItemSpots"_s}));
  global.online = true;
  const Catalogue online = CurrentCatalogue();
  EXPECT_EQ(online.databasePath, u"server"_s);
  EXPECT_EQ((QStringList{online.items, online.itemSpots, online.itemPingles, online.itemsItemSpots}),
            (QStringList{u"tblItems"_s, u"tblItemSpots"_s, u"tblItemPingles"_s, u"tblItemsItemSpots"_s}));
  global = Globals();
}

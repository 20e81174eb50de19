// SPDX-License-Identifier: MIT
#include "data/WaitingChanges.h"

#include <gtest/gtest.h>

#include <initializer_list>

using namespace Qt::StringLiterals;

namespace {

const QString kItem = u"UPDATE tblItems SET Naam = 'x' WHERE ID = 1"_s;
const QString kNewItem = u"INSERT INTO tblItems (ID, Naam) VALUES (2, 'x')"_s;
const QString kNoList = u"DELETE FROM tblCopie_ItemsItemSpots WHERE tblCopie_ItemsItemSpots.ItemID = 1"_s;
const QString kEntry = u"INSERT INTO tblItemsItemSpots (ItemID, ItemSpotOrder, ItemSpotID) VALUES (1, 1, 3)"_s;
const QString kNoItem = u"DELETE FROM tblCopie_Items WHERE tblCopie_Items.ID = 1"_s;
const QString kSpot = u"UPDATE tblItemSpots SET Aktief = 0 WHERE ID = 1"_s;

int ChangesIn(std::initializer_list<QString> statements) {
  ChangeCounter counter;
  for (const QString& statement : statements)
    counter.Add(statement);
  return counter.Count();
}

}  // namespace

TEST(ChangeCounter, AnItemAndItsListAreOne) {
  EXPECT_EQ(ChangesIn({kItem, kNoList, kEntry, kEntry}), 1);
  EXPECT_EQ(ChangesIn({kNewItem, kEntry, kItem, kNoList}), 2);
  EXPECT_EQ(ChangesIn({kSpot, kItem, kNoList, kEntry, kSpot, kSpot}), 4);
}

TEST(ChangeCounter, ACleanedUpItemIsOne) {
  EXPECT_EQ(ChangesIn({kNoList, kNoItem}), 1);
  EXPECT_EQ(ChangesIn({kItem, kNoList, kEntry, kNoList, kNoItem}), 2);
  EXPECT_EQ(ChangesIn({kNoItem}), 1);
}

TEST(ChangeCounter, AListWithoutItsItemIsOne) {
  EXPECT_EQ(ChangesIn({kSpot, kEntry, kSpot}), 3);
  EXPECT_EQ(ChangesIn({kEntry, kEntry}), 1);
}

// SPDX-License-Identifier: MIT
#include "platform/desktop/MessageBox.h"
#include "tests/items/ItemEditor.h"
#include "tests/support/FailingAccesses.h"
#include "tests/support/FileFaults.h"

#include <cerrno>
#include <vector>

using namespace Qt::StringLiterals;
using testing_support::FailingAccesses;

namespace {

// Data must never be lost without a message.
class ItemLoss : public ItemEditor {
 protected:
  // Opens item 1 while accesses number `first` to `last` to the server database fail; returns the boxes shown.
  std::vector<desktop::ShownMessageBox> OpenWithFailingLooks(int first, int last) {
    const FailingAccesses failing(first, last);
    const desktop::MessageBoxScript boxes;
    Open(u"1"_s);
    return boxes.Shown();
  }
};

int CountTitled(const std::vector<desktop::ShownMessageBox>& boxes, const QString& title) {
  int count = 0;
  for (const desktop::ShownMessageBox& box : boxes)
    count += box.title == title ? 1 : 0;
  return count;
}

}  // namespace

// A spot or jingle that could not be read is not treated as deleted: whichever read fails, temporarily or permanently,
// OK writes everything or nothing.
TEST_F(ItemLoss, AfterAnyFailureOnOpeningOkLosesNoLinkAndNoJingle) {
  InsertListItem(1, u"Blok"_s, {1, 2, 3});
  station_.OnServer(u"UPDATE tblItems SET Opener = 11"_s);
  int refusals = 0;
  for (int first = 1; first <= 12; ++first) {
    for (const int last : {first + 1, 1000}) {
      const auto boxes = OpenWithFailingLooks(first, last);
      const desktop::MessageBoxScript onOk;
      Click(u"cmdOk"_s);
      refusals += onOk.Shown().empty() ? 0 : 1;
      EXPECT_TRUE(IsOpen() || boxes.empty()) << first << '-' << last;
      EXPECT_EQ(SavedSpots(), (QList<int>{1, 2, 3})) << first << '-' << last;
      EXPECT_EQ(station_.ServerRows(u"SELECT Opener FROM tblItems"_s).Field(u"Opener"_s).toInt(), 11)
          << first << '-' << last;
    }
  }
  EXPECT_GT(refusals, 0);
}

TEST_F(ItemLoss, AnUnreadableSpotIsReportedOnceAndOkSavesNothing) {
  InsertListItem(1, u"Blok"_s, {1, 2, 3});
  int first = 1;
  std::vector<desktop::ShownMessageBox> boxes;
  do {
    boxes = OpenWithFailingLooks(first, 1000);
  } while (CountTitled(boxes, u"GetItemSpotID_Naam"_s) == 0 && ++first < 50);
  EXPECT_EQ(CountTitled(boxes, u"GetItemSpotID_Naam"_s), 1);
  const desktop::MessageBoxScript onOk;
  Click(u"cmdOk"_s);
  List().AddItem(u"s"_s, 1);  // not even after a change of the list
  Click(u"cmdOk"_s);
  EXPECT_EQ(onOk.Last().title, u"Opslaan"_s);
  EXPECT_TRUE(onOk.Last().text.contains(u"Er is niets bewaard"_s)) << onOk.Last().text.toStdString();
  EXPECT_TRUE(IsOpen());
  EXPECT_EQ(SavedSpots(), (QList<int>{1, 2, 3}));
}

// The log row fails but the item exists: the next OK updates it instead of refusing its name as a duplicate.
TEST_F(ItemLoss, ANewItemThatCouldNotBeLoggedIsUpdatedByTheNextOk) {
  station_.Use(testing_support::Station::Mode::Offline);
  station_.OnLocal(u"INSERT INTO tblOfflineLog (ID, SqlSyntax) VALUES (2147483647, \"vol\")"_s);
  OpenNew();
  FillListItem();
  {
    const desktop::MessageBoxScript boxes;
    Click(u"cmdOk"_s);
    ASSERT_EQ(boxes.Shown().size(), 1U);
    EXPECT_EQ(boxes.Last().title, u"GetNewID"_s);
    EXPECT_TRUE(IsOpen());
  }
  station_.OnLocal(u"DELETE FROM tblOfflineLog"_s);
  const desktop::MessageBoxScript boxes;
  Click(u"cmdOk"_s);
  EXPECT_TRUE(boxes.Shown().empty());
  EXPECT_FALSE(IsOpen());
  EXPECT_EQ(station_.LocalRows(u"SELECT ID FROM tblCopie_Items"_s).RecordCount(), 1);
  QStringList verbs;
  for (const QString& statement : station_.Log())
    verbs += statement.section(u' ', 0, 1);
  EXPECT_EQ(verbs.value(0), u"INSERT INTO"_s);
  EXPECT_EQ(verbs.value(1), u"UPDATE tblItems"_s);
}

// Only the last sync of the server's folder fails: the item exists and is not refused as a duplicate.
TEST_F(ItemLoss, ANewItemThatWasNotSyncedIsUpdatedByTheNextOk) {
  OpenNew();
  FillListItem();
  {
    int syncs = 0;
    const testing_support::FileFaults faults([&](const files::FileCall& call) {
      const bool isSync = call.kind == files::FileCall::SyncFolder && call.path.filename() == "server";
      return isSync && ++syncs == 2 ? EIO : 0;
    });
    const desktop::MessageBoxScript boxes;
    Click(u"cmdOk"_s);
    ASSERT_EQ(boxes.Shown().size(), 1U);
    EXPECT_EQ(boxes.Last().title, u"Insert_tblItems"_s);
    EXPECT_TRUE(boxes.Last().text.contains(u"is gedaan, maar"_s)) << boxes.Last().text.toStdString();
    EXPECT_TRUE(IsOpen());
    EXPECT_FALSE(editor_->IsNew());
  }
  const desktop::MessageBoxScript boxes;
  Click(u"cmdOk"_s);
  EXPECT_TRUE(boxes.Shown().empty());
  EXPECT_FALSE(IsOpen());
  EXPECT_EQ(station_.ServerRows(u"SELECT ID FROM tblItems"_s).RecordCount(), 1);
}

// Wherever a save is interrupted, the next OK completes it: one item with all its links.
TEST_F(ItemLoss, AnInterruptedSaveIsFinishedByTheNextOkWithoutASecondItem) {
  int brokenOff = 0;
  for (int first = 1; first <= 6; ++first) {  // a save of two links accesses the database at least six times
    const QString naam = u"Blok %1"_s.arg(first);
    OpenNew();
    FillListItem();
    List().AddItem(u"s"_s, 2);
    Edit(u"txtNaam"_s).setText(naam);
    {
      const FailingAccesses failing(first);
      const desktop::MessageBoxScript boxes;
      Click(u"cmdOk"_s);
      EXPECT_TRUE(IsOpen() && editor_->IsDirty()) << first;
    }
    brokenOff += editor_->IsNew() ? 0 : 1;
    const desktop::MessageBoxScript boxes;
    Click(u"cmdOk"_s);
    EXPECT_FALSE(IsOpen()) << first;
    const dao::Recordset items = station_.ServerRows(u"SELECT ID FROM tblItems WHERE Naam = \"%1\""_s.arg(naam));
    EXPECT_EQ(items.RecordCount(), 1) << first;
    const QString links = u"SELECT ItemID FROM tblItemsItemSpots WHERE ItemID = %1"_s.arg(editor_->ID());
    EXPECT_EQ(station_.ServerRows(links).RecordCount(), 2) << first;
  }
  EXPECT_GT(brokenOff, 0);
}

// An item that changes to a pattern must lose its old links: if they cannot be removed the save has failed.
TEST_F(ItemLoss, LinksThatCouldNotBeRemovedKeepTheFormOpenAndTheNextOkRemovesThem) {
  InsertListItem(1, u"Blok"_s, {1, 2});
  Open(u"1"_s);
  FillPatternItem();
  int first = 1;
  for (bool written = false; !written && first < 50; ++first) {
    const FailingAccesses failing(first);
    const desktop::MessageBoxScript boxes;
    Click(u"cmdOk"_s);
    written = CountTitled(boxes.Shown(), u"Delete_tblBeheer"_s) == 1;
    EXPECT_TRUE(IsOpen() && editor_->IsDirty()) << first;
  }
  ASSERT_LT(first, 50);
  EXPECT_EQ(SavedSpots(), (QList<int>{1, 2}));
  Click(u"cmdOk"_s);
  EXPECT_FALSE(IsOpen());
  EXPECT_TRUE(SavedSpots().isEmpty());
}

TEST_F(ItemLoss, ManySpotsAreAllKeptInTheirOrder) {
  QList<int> spots;
  for (int i = 0; i < 200; ++i)
    spots += i * 7 % 3 + 1;
  InsertListItem(1, u"Blok"_s, spots);
  Open(u"1"_s);
  ASSERT_EQ(List().ListCount(), 200);
  List().MoveLine(199, 0);
  spots.move(199, 0);
  Click(u"cmdOk"_s);
  EXPECT_FALSE(IsOpen());
  EXPECT_EQ(SavedSpots(), spots);
}

TEST_F(ItemLoss, ALinkWithoutASpotAndASpotWithoutANameAreSkipped) {
  InsertListItem(1, u"Blok"_s, {1, 2});
  station_.OnServer(u"UPDATE tblItemSpots SET Naam = \"  \" WHERE ID = 2"_s);
  station_.OnServer(u"INSERT INTO tblItemsItemSpots (ItemID, ItemSpotOrder) VALUES (1, 3)"_s);
  // The ID of a link without a spot.
  station_.OnServer(u"INSERT INTO tblItemSpots (ID, Naam, Aktief) VALUES (-10000, \"Niets\", 1)"_s);
  const desktop::MessageBoxScript boxes;
  Open(u"1"_s);
  EXPECT_TRUE(boxes.Shown().empty());
  ASSERT_EQ(List().ListCount(), 1);
  EXPECT_EQ(List().ItemData(0), 1);
}

TEST_F(ItemLoss, ADeletedJingleIsRemovedByTheNextSave) {
  InsertListItem(1, u"Blok"_s, {1});
  station_.OnServer(u"UPDATE tblItems SET Opener = 99, Sluiter = 13"_s);
  Open(u"1"_s);
  Click(u"cmdOk"_s);
  const dao::Recordset item = station_.ServerRows(u"SELECT Opener, Sluiter FROM tblItems"_s);
  EXPECT_TRUE(item.Field(u"Opener"_s).isNull());
  EXPECT_EQ(item.Field(u"Sluiter"_s).toInt(), 13);
}

TEST_F(ItemLoss, SavingADeletedItemFromTheCancelQuestionStaysOpen) {
  InsertListItem(1, u"Blok"_s, {1});
  Open(u"1"_s);
  Edit(u"txtNaam"_s).setText(u"Anders"_s);
  station_.OnServer(u"DELETE FROM tblItems WHERE ID = 1"_s);
  const desktop::MessageBoxScript boxes({desktop::kAnswerYes});
  Click(u"cmdAnnuleren"_s);
  ASSERT_EQ(boxes.Shown().size(), 2U);
  EXPECT_TRUE(boxes.Last().text.contains(u"intussen door iemand anders verwijderd"_s));
  EXPECT_TRUE(IsOpen());
  EXPECT_EQ(Edit(u"txtNaam"_s).text(), u"Anders"_s);
}

TEST_F(ItemLoss, DoubleQuotesInThePatternAreRefusedByNameAndNothingIsSaved) {
  OpenNew();
  FillPatternItem();
  const std::vector<std::pair<QString, QString>> fields = {{u"txtOpt2Directory"_s, u"Opt2Directory"_s},
                                                           {u"txtOpt2VastNaamGedeelte"_s, u"Opt2VastNaamGedeelte"_s},
                                                           {u"txtOpt2FileExtensie"_s, u"Opt2FileExtensie"_s}};
  for (const auto& [box, field] : fields) {
    const QString good = Edit(box).text();
    Edit(box).setText(u"a\"b"_s);
    const desktop::MessageBoxScript boxes;
    Click(u"cmdOk"_s);
    ASSERT_EQ(boxes.Shown().size(), 1U);
    EXPECT_EQ(boxes.Last().title, u"Insert_tblItems"_s);
    EXPECT_TRUE(boxes.Last().text.contains(field)) << boxes.Last().text.toStdString();
    EXPECT_TRUE(IsOpen());
    EXPECT_EQ(Edit(box).text(), u"a\"b"_s);
    Edit(box).setText(good);
  }
  EXPECT_EQ(station_.ServerRows(u"SELECT ID FROM tblItems"_s).RecordCount(), 0);
}

TEST_F(ItemLoss, ApostrophesInThePatternAreStoredUnchanged) {
  OpenNew();
  FillPatternItem();
  Edit(u"txtOpt2Directory"_s).setText(u"D:\\Jan's spots"_s);
  Edit(u"txtOpt2VastNaamGedeelte"_s).setText(u"'t blok"_s);
  Click(u"cmdOk"_s);
  const dao::Recordset item = station_.ServerRows(u"SELECT * FROM tblItems"_s);
  EXPECT_EQ(item.Field(u"Opt2Directory"_s).toString(), u"D:\\Jan's spots"_s);
  EXPECT_EQ(item.Field(u"Opt2VastNaamGedeelte"_s).toString(), u"'t blok"_s);
}

TEST_F(ItemLoss, AnyNonZeroLockPreventsChanges) {
  InsertListItem(1, u"Blok"_s, {1, 2});
  station_.OnServer(u"UPDATE tblItems SET Locked = 5"_s);
  Open(u"1"_s);
  List().SetListIndex(1);
  QTest::keyClick(&List(), Qt::Key_Up, Qt::AltModifier);
  EXPECT_EQ(List().ItemData(1), 2);
  QTest::keyClick(editor_.get(), Qt::Key_Return);
  EXPECT_TRUE(IsOpen());
  EXPECT_EQ(SavedSpots(), (QList<int>{1, 2}));
  EXPECT_EQ(station_.ServerRows(u"SELECT Locked FROM tblItems"_s).Field(u"Locked"_s).toInt(), 5);
}

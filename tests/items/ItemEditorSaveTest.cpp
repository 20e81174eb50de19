// SPDX-License-Identifier: MIT
#include "data/Messages.h"
#include "platform/desktop/InputBox.h"
#include "platform/desktop/MessageBox.h"
#include "tests/items/ItemEditor.h"
#include "tests/support/FailingAccesses.h"

using namespace Qt::StringLiterals;
using testing_support::FailingAccesses;
using testing_support::Station;

namespace {

class ItemSave : public ItemEditor {};

class ItemSaveOffline : public ItemEditor {
 protected:
  ItemSaveOffline() : ItemEditor(Station::Mode::Offline) {}
};

}  // namespace

TEST_F(ItemSave, ANewItemGetsTheNextIdAndItsLinksInListOrder) {
  InsertListItem(41, u"Ander"_s, {1});
  OpenNew();
  Edit(u"txtNaam"_s).setText(u" Blok "_s);
  for (const int spot : {3, 1, 2})
    List().AddItem(u"s"_s, spot);
  Click(u"cmdOk"_s);
  EXPECT_FALSE(IsOpen());
  const dao::Recordset item = station_.ServerRows(u"SELECT * FROM tblItems WHERE ID = 42"_s);
  EXPECT_EQ(item.Field(u"Naam"_s).toString(), u"Blok"_s);
  EXPECT_EQ(item.Field(u"Aktief"_s).toInt(), 1);
  EXPECT_EQ(item.Field(u"Locked"_s).toInt(), 0);
  EXPECT_EQ(item.Field(u"OptMeerdereSpots"_s).toInt(), 0);
  EXPECT_TRUE(item.Field(u"Opener"_s).isNull());
  EXPECT_TRUE(item.Field(u"Opt2Directory"_s).isNull());
  dao::Recordset links =
      station_.ServerRows(u"SELECT * FROM tblItemsItemSpots WHERE ItemID = 42 ORDER BY ItemSpotOrder"_s);
  ASSERT_EQ(links.RecordCount(), 3);
  for (const int spot : {3, 1, 2}) {
    EXPECT_EQ(links.Field(u"ItemSpotID"_s).toInt(), spot);
    links.MoveNext();
  }
}

TEST_F(ItemSave, SwitchingToOptionTwoRemovesAllLinks) {
  InsertListItem(1, u"Blok"_s, {1, 2});
  Open(u"1"_s);
  FillPatternItem();
  Combo(u"cboOpt2VariabelNaamGedeelte"_s).SetListIndex(2);
  Click(u"cmdOk"_s);
  EXPECT_EQ(station_.ServerRows(u"SELECT ItemID FROM tblItemsItemSpots"_s).RecordCount(), 0);
  const dao::Recordset item = station_.ServerRows(u"SELECT * FROM tblItems"_s);
  EXPECT_EQ(item.Field(u"ItemSpotsOptID"_s).toInt(), 2);
  EXPECT_EQ(item.Field(u"Opt2VariabelNaamGedeelte"_s).toInt(), 3);
  EXPECT_EQ(item.Field(u"Opt2FormatGedeelte"_s).toString(), u"ww"_s);
  EXPECT_EQ(item.Field(u"Opt2Eerstedagvanweek"_s).toInt(), 0);
}

TEST_F(ItemSave, OptionOneStoresNullInAllPatternFields) {
  station_.OnServer(
      u"INSERT INTO tblItems (ID, Naam, ItemSpotsOptID, Opt2Directory, Opt2VastNaamGedeelte, "
      u"Opt2VariabelNaamGedeelte, Opt2FormatGedeelte, Opt2Eerstedagvanweek, Opt2FileExtensie, Opt2MixPunt) "
      u"VALUES (1, \"x\", 2, \"D:\", \"v\", 1, \"ddmmyyyy\", 0, \"wav\", 5)"_s);
  Open(u"1"_s);
  Option(u"opt1"_s).click();
  Option(u"opt1Spot"_s).click();
  List().AddItem(u"s"_s, 1);
  Click(u"cmdOk"_s);
  const dao::Recordset item = station_.ServerRows(u"SELECT * FROM tblItems"_s);
  for (const QString& field :
       {u"Opt2Directory"_s, u"Opt2VastNaamGedeelte"_s, u"Opt2VariabelNaamGedeelte"_s, u"Opt2FormatGedeelte"_s,
        u"Opt2Eerstedagvanweek"_s, u"Opt2FileExtensie"_s, u"Opt2MixPunt"_s}) {
    EXPECT_TRUE(item.Field(field).isNull()) << field.toStdString();
  }
}

TEST_F(ItemSave, SeveralSpotsAreStoredAsMinusOneWithTheirNumbers) {
  OpenNew();
  FillListItem();
  List().AddItem(u"s"_s, 2);
  Option(u"optMeerdereSpots"_s).click();
  Edit(u"txtAantalSpots"_s).setText(u"2"_s);
  Check(u"chkRandomizeMeerdereSpots"_s).click();
  Click(u"cmdOk"_s);
  const dao::Recordset item = station_.ServerRows(u"SELECT * FROM tblItems"_s);
  EXPECT_EQ(item.Field(u"OptMeerdereSpots"_s).toInt(), -1);
  EXPECT_EQ(item.Field(u"AantalSpots"_s).toInt(), 2);
  EXPECT_EQ(item.Field(u"MaxAantalSpots"_s).toInt(), 2);
  EXPECT_EQ(item.Field(u"ChkRandomizeMeerdereSpots"_s).toInt(), 1);
}

TEST_F(ItemSave, ThePatternIsStoredTrimmedWithItsFirstDay) {
  OpenNew();
  FillPatternItem();
  Edit(u"txtOpt2Directory"_s).setText(u" D:\\Spots "_s);
  Edit(u"txtOpt2VastNaamGedeelte"_s).setText(u" blok "_s);
  Edit(u"txtOpt2FileExtensie"_s).setText(u"au "_s);
  Combo(u"cboOpt2VariabelNaamGedeelte"_s).SetListIndex(2);
  Combo(u"cboOpt2Eerstedagvanweek"_s).SetListIndex(1);
  Mix().SetValue(750);
  Check(u"chkAktief"_s).click();
  Click(u"cmdOk"_s);
  const dao::Recordset item = station_.ServerRows(u"SELECT * FROM tblItems"_s);
  EXPECT_EQ(item.Field(u"Opt2Directory"_s).toString(), u"D:\\Spots"_s);
  EXPECT_EQ(item.Field(u"Opt2VastNaamGedeelte"_s).toString(), u"blok"_s);
  EXPECT_EQ(item.Field(u"Opt2FileExtensie"_s).toString(), u"au"_s);
  EXPECT_EQ(item.Field(u"Opt2Eerstedagvanweek"_s).toInt(), 2);
  EXPECT_EQ(item.Field(u"Opt2MixPunt"_s).toInt(), 750);
  EXPECT_EQ(item.Field(u"Aktief"_s).toInt(), 0);
}

TEST_F(ItemSave, SeveralSpotsInTheirOwnOrderAndJinglesAreStoredAsChosen) {
  OpenNew();
  FillListItem();
  Option(u"optMeerdereSpots"_s).click();
  Edit(u"txtAantalSpots"_s).setText(u"1"_s);
  int jingle = 11;
  for (const QString& name : {u"Opener"_s, u"Midden"_s, u"Sluiter"_s}) {
    Check(u"chk"_s + name + u"Pingle").click();
    Combo(u"cbo"_s + name + u"Pingle").SelectWhereItemData(jingle++);
  }
  Click(u"cmdOk"_s);
  const dao::Recordset item = station_.ServerRows(u"SELECT * FROM tblItems"_s);
  EXPECT_EQ(item.Field(u"ChkRandomizeMeerdereSpots"_s).toInt(), 0);
  EXPECT_EQ(item.Field(u"Opener"_s).toInt(), 11);
  EXPECT_EQ(item.Field(u"Midden"_s).toInt(), 12);
  EXPECT_EQ(item.Field(u"Sluiter"_s).toInt(), 13);
}

TEST_F(ItemSave, RemovedJinglesAreStoredAsNull) {
  InsertListItem(1, u"Blok"_s, {1, 2});
  station_.OnServer(
      u"UPDATE tblItems SET OptMeerdereSpots = -1, AantalSpots = 1, Opener = 11, Midden = 12, Sluiter = 13"_s);
  Open(u"1"_s);
  for (const QString& box : {u"chkOpenerPingle"_s, u"chkMiddenPingle"_s, u"chkSluiterPingle"_s}) {
    ASSERT_TRUE(Check(box).isChecked()) << box.toStdString();
    Check(box).click();
  }
  Click(u"cmdOk"_s);
  EXPECT_FALSE(IsOpen());
  const dao::Recordset item = station_.ServerRows(u"SELECT * FROM tblItems"_s);
  for (const QString& field : {u"Opener"_s, u"Midden"_s, u"Sluiter"_s}) {
    EXPECT_TRUE(item.Field(field).isNull()) << field.toStdString();
  }
}

TEST_F(ItemSave, AnItemWithoutAContentOptionDoesNotBecomeAListItem) {
  station_.OnServer(u"INSERT INTO tblItems (ID, Naam, OptMeerdereSpots, Aktief) VALUES (1, \"Oud\", 0, 1)"_s);
  Open(u"1"_s);
  Edit(u"txtNaam"_s).setText(u"Nieuw"_s);
  Click(u"cmdOk"_s);
  const dao::Recordset item = station_.ServerRows(u"SELECT * FROM tblItems"_s);
  EXPECT_EQ(item.Field(u"Naam"_s).toString(), u"Nieuw"_s);
  EXPECT_EQ(item.Field(u"ItemSpotsOptID"_s).toInt(), 0);
}

TEST_F(ItemSave, AMixPointOutsideThePanelIsKeptUnlessChanged) {
  station_.OnServer(
      u"INSERT INTO tblItems (ID, Naam, ItemSpotsOptID, Opt2Directory, Opt2VastNaamGedeelte, "
      u"Opt2VariabelNaamGedeelte, Opt2FormatGedeelte, Opt2FileExtensie, Opt2MixPunt, OptMeerdereSpots) "
      u"VALUES (1, \"x\", 2, \"D:\", \"v\", 1, \"ddmmyyyy\", \"wav\", -7, 0)"_s);
  Open(u"1"_s);
  EXPECT_EQ(Mix().Value(), 0);
  Click(u"cmdOk"_s);
  EXPECT_EQ(station_.ServerRows(u"SELECT Opt2MixPunt FROM tblItems"_s).Field(u"Opt2MixPunt"_s).toInt(), -7);
  Open(u"1"_s);
  desktop::InputBoxScript input;
  input.Type(u"0"_s);  // the panel already shows this value; entering it is a change
  QTest::mouseClick(&Mix(), Qt::LeftButton);
  Click(u"cmdOk"_s);
  EXPECT_EQ(station_.ServerRows(u"SELECT Opt2MixPunt FROM tblItems"_s).Field(u"Opt2MixPunt"_s).toInt(), 0);
}

TEST_F(ItemSave, AnItemDeletedInTheMeantimeIsAnErrorAndTheFormStaysDirty) {
  InsertListItem(1, u"Blok"_s, {1});
  Open(u"1"_s);
  station_.OnServer(u"DELETE FROM tblItems WHERE ID = 1"_s);
  const desktop::MessageBoxScript boxes;
  Click(u"cmdOk"_s);
  ASSERT_EQ(boxes.Shown().size(), 1U);
  EXPECT_EQ(boxes.Last().title, u"Opslaan"_s);
  EXPECT_TRUE(IsOpen());
  EXPECT_TRUE(editor_->IsDirty());
  EXPECT_EQ(station_.ServerRows(u"SELECT ItemID FROM tblItemsItemSpots"_s).RecordCount(), 1);
}

TEST_F(ItemSave, AnUnreadableRecordIsNotOverwritten) {
  InsertListItem(1, u"Blok"_s, {1});
  const desktop::MessageBoxScript boxes;
  station_.LoseServer();
  Open(u"1"_s);
  station_.FindServer();
  FillListItem();
  Click(u"cmdOk"_s);
  EXPECT_EQ(boxes.Last().title, u"Opslaan"_s);
  EXPECT_TRUE(IsOpen());
  EXPECT_EQ(station_.ServerRows(u"SELECT Opener, Naam FROM tblItems"_s).Field(u"Naam"_s).toString(), u"Blok"_s);
}

TEST_F(ItemSave, ANameWithADoubleQuoteIsRefusedByNameAndNothingIsLost) {
  OpenNew();
  FillListItem();
  Edit(u"txtNaam"_s).setText(u"Blok \"A\""_s);
  const desktop::MessageBoxScript boxes;
  Click(u"cmdOk"_s);
  EXPECT_EQ(boxes.Last().title, u"Insert_tblItems"_s);
  EXPECT_TRUE(boxes.Last().text.contains(u"'Naam'"_s));
  EXPECT_TRUE(IsOpen());
  EXPECT_EQ(Edit(u"txtNaam"_s).text(), u"Blok \"A\""_s);
  EXPECT_EQ(station_.ServerRows(u"SELECT ID FROM tblItems"_s).RecordCount(), 0);
}

TEST_F(ItemSave, ANameWithAnApostropheIsStoredUnchanged) {
  OpenNew();
  FillListItem();
  Edit(u"txtNaam"_s).setText(u"Jan's blok"_s);
  Click(u"cmdOk"_s);
  EXPECT_EQ(station_.ServerRows(u"SELECT Naam FROM tblItems"_s).Field(u"Naam"_s).toString(), u"Jan's blok"_s);
}

TEST_F(ItemSave, AfterAFailedLinkTheItemExistsAndTheNextOkUpdatesIt) {
  OpenNew();
  FillListItem();
  List().AddItem(u"s"_s, 2);
  {
    // The database fails after the accesses for the name, the ID, the item, deleting the links and the first new link.
    const FailingAccesses failing(6);
    const desktop::MessageBoxScript boxes;
    Click(u"cmdOk"_s);
    ASSERT_EQ(boxes.Shown().size(), 1U);
    EXPECT_EQ(boxes.Last().title, u"Insert_tblItemsItemSpots"_s);
  }
  EXPECT_TRUE(IsOpen());
  EXPECT_TRUE(editor_->IsDirty());
  EXPECT_FALSE(editor_->IsNew());
  EXPECT_EQ(station_.ServerRows(u"SELECT ID FROM tblItems"_s).RecordCount(), 1);
  EXPECT_EQ(SavedSpots(), QList<int>{1});
  Edit(u"txtNaam"_s).setText(u"Ander blok"_s);
  Click(u"cmdOk"_s);
  EXPECT_FALSE(IsOpen());
  const dao::Recordset items = station_.ServerRows(u"SELECT ID, Naam FROM tblItems"_s);
  ASSERT_EQ(items.RecordCount(), 1);
  EXPECT_EQ(items.Field(u"Naam"_s).toString(), u"Ander blok"_s);
  EXPECT_EQ(SavedSpots(), (QList<int>{1, 2}));
}

TEST_F(ItemSaveOffline, TheLogHoldsTheStatementsAndTheDeleteKeepsTheCopyTablesName) {
  OpenNew();
  FillListItem();
  List().AddItem(u"s"_s, 3);
  Click(u"cmdOk"_s);
  EXPECT_EQ(
      station_.Log(),
      (QStringList{u"INSERT INTO tblItems (ID, Naam, ItemSpotsOptID, OptMeerdereSpots, AantalSpots, MaxAantalSpots, "
                   u"ChkRandomizeMeerdereSpots, Aktief, Locked) VALUES (1, 'Blok', 1, 0, 0, 0, 0, 1, 0)"_s,
                   u"DELETE FROM tblCopie_ItemsItemSpots WHERE tblCopie_ItemsItemSpots.ItemID = 1"_s,
                   u"INSERT INTO tblItemsItemSpots (ItemID, ItemSpotOrder, ItemSpotID) VALUES (1, 1, 1)"_s,
                   u"INSERT INTO tblItemsItemSpots (ItemID, ItemSpotOrder, ItemSpotID) VALUES (1, 2, 3)"_s}));
  EXPECT_EQ(station_.LocalRows(u"SELECT ID FROM tblCopie_Items"_s).RecordCount(), 1);
  EXPECT_EQ(station_.ServerRows(u"SELECT ID FROM tblItems"_s).RecordCount(), 0);
}

TEST_F(ItemSaveOffline, ThePlayCountResetIsLoggedPerSpot) {
  InsertListItem(1, u"Blok"_s, {1, 3});
  Open(u"1"_s);
  const desktop::MessageBoxScript boxes;
  Click(u"cmdNormalizeItem"_s);
  EXPECT_EQ(station_.Log(), (QStringList{u"UPDATE tblItemSpots SET AantalGedraaid = 0 WHERE ID = 1"_s,
                                         u"UPDATE tblItemSpots SET AantalGedraaid = 0 WHERE ID = 3"_s}));
}

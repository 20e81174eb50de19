// SPDX-License-Identifier: MIT
#include "data/Messages.h"
#include "data/forms/Screens.h"
#include "platform/desktop/InputBox.h"
#include "platform/desktop/MessageBox.h"
#include "platform/runtime/Clock.h"
#include "tests/items/ItemEditor.h"
#include "tests/support/Cluster.h"
#include "tests/support/FailingAccesses.h"

#include <functional>

using namespace Qt::StringLiterals;
using testing_support::Child;
using testing_support::ModalDriver;

namespace {

class ItemEvents : public ItemEditor {
 protected:
  // True when cancelling asks about changes after `change` on a newly opened item.
  bool AsksAfter(const QString& id, const std::function<void()>& change) {
    Open(id);
    change();
    desktop::MessageBoxScript boxes({kAnswerNo});
    Click(u"cmdAnnuleren"_s);
    EXPECT_FALSE(IsOpen());
    return !boxes.Shown().empty();
  }

  void InsertPatternItem() const {
    station_.OnServer(
        u"INSERT INTO tblItems (ID, Naam, ItemSpotsOptID, Opt2Directory, Opt2VastNaamGedeelte, "
        u"Opt2VariabelNaamGedeelte, Opt2FormatGedeelte, Opt2Eerstedagvanweek, Opt2FileExtensie, Opt2MixPunt, "
        u"OptMeerdereSpots, AantalSpots, MaxAantalSpots, Opener, Midden, Aktief, Locked) VALUES (2, \"Patroon\", 2, "
        u"\"D:\\Spots\", \"blok\", 3, \"ww\", 2, \"wav\", 1500, -1, 2, 5, 11, 12, 1, 0)"_s);
  }
};

}  // namespace

TEST_F(ItemEvents, EveryControlWithAHandlerMakesTheFormDirty) {
  InsertListItem(1, u"Lijst"_s, {1, 2});
  InsertPatternItem();
  EXPECT_FALSE(AsksAfter(u"1"_s, [] {}));
  EXPECT_FALSE(AsksAfter(u"2"_s, [] {}));
  EXPECT_TRUE(AsksAfter(u"1"_s, [&] { Edit(u"txtNaam"_s).setText(u"x"_s); }));
  EXPECT_TRUE(AsksAfter(u"1"_s, [&] { Check(u"chkAktief"_s).click(); }));
  EXPECT_TRUE(AsksAfter(u"1"_s, [&] { Option(u"opt2"_s).click(); }));
  EXPECT_TRUE(AsksAfter(u"1"_s, [&] { Option(u"opt1"_s).click(); }));
  EXPECT_TRUE(AsksAfter(u"1"_s, [&] { Option(u"optMeerdereSpots"_s).click(); }));
  EXPECT_TRUE(AsksAfter(u"2"_s, [&] { Edit(u"txtOpt2Directory"_s).setText(u"E:\\"_s); }));
  EXPECT_TRUE(AsksAfter(u"2"_s, [&] { Edit(u"txtOpt2VastNaamGedeelte"_s).setText(u"x"_s); }));
  EXPECT_TRUE(AsksAfter(u"2"_s, [&] { Edit(u"txtOpt2FileExtensie"_s).setText(u"mp3"_s); }));
  EXPECT_TRUE(AsksAfter(u"2"_s, [&] { Combo(u"cboOpt2VariabelNaamGedeelte"_s).SetListIndex(0); }));
  EXPECT_TRUE(AsksAfter(u"2"_s, [&] { Combo(u"cboOpt2Eerstedagvanweek"_s).SetListIndex(4); }));
  EXPECT_TRUE(AsksAfter(u"2"_s, [&] { Check(u"chkOpenerPingle"_s).click(); }));
  EXPECT_TRUE(AsksAfter(u"2"_s, [&] { Check(u"chkMiddenPingle"_s).click(); }));
  EXPECT_TRUE(AsksAfter(u"2"_s, [&] { Check(u"chkSluiterPingle"_s).click(); }));
  EXPECT_TRUE(AsksAfter(u"2"_s, [&] { Combo(u"cboOpenerPingle"_s).SelectWhereItemData(13); }));
  EXPECT_TRUE(AsksAfter(u"2"_s, [&] { Combo(u"cboSluiterPingle"_s).SelectWhereItemData(11); }));
}

TEST_F(ItemEvents, ControlsWithoutAHandlerCloseWithoutAQuestionAndWithoutSaving) {
  InsertPatternItem();
  EXPECT_FALSE(AsksAfter(u"2"_s, [&] { Combo(u"cboMiddenPingle"_s).SelectWhereItemData(13); }));
  EXPECT_FALSE(AsksAfter(u"2"_s, [&] { Edit(u"txtAantalSpots"_s).setText(u"4"_s); }));
  EXPECT_FALSE(AsksAfter(u"2"_s, [&] { Edit(u"txtMaxAantalSpots"_s).setText(u"9"_s); }));
  EXPECT_FALSE(AsksAfter(u"2"_s, [&] { Check(u"chkRandomizeMeerdereSpots"_s).click(); }));
  EXPECT_FALSE(AsksAfter(u"2"_s, [&] { Mix().SetValue(20); }));
  const dao::Recordset row = station_.ServerRows(u"SELECT * FROM tblItems"_s);
  EXPECT_EQ(row.Field(u"AantalSpots"_s).toInt(), 2);
  EXPECT_EQ(row.Field(u"Midden"_s).toInt(), 12);
}

TEST_F(ItemEvents, OkStillSavesThem) {
  InsertPatternItem();
  Open(u"2"_s);
  Combo(u"cboMiddenPingle"_s).SelectWhereItemData(13);
  Edit(u"txtAantalSpots"_s).setText(u"4"_s);
  Mix().SetValue(20);
  Click(u"cmdOk"_s);
  EXPECT_FALSE(IsOpen());
  const dao::Recordset row = station_.ServerRows(u"SELECT * FROM tblItems"_s);
  EXPECT_EQ(row.Field(u"AantalSpots"_s).toInt(), 4);
  EXPECT_EQ(row.Field(u"Midden"_s).toInt(), 13);
  EXPECT_EQ(row.Field(u"Opt2MixPunt"_s).toInt(), 20);
}

TEST_F(ItemEvents, RemovingAnEntryIsAChangeAndDisablesTheButtons) {
  InsertListItem(1, u"Lijst"_s, {1, 2});
  Open(u"1"_s);
  List().SetListIndex(0);
  Click(u"cmdOpt1Verwijderen"_s);
  EXPECT_EQ(List().ListCount(), 1);
  EXPECT_EQ(List().ItemData(0), 2);
  EXPECT_TRUE(editor_->IsDirty());
  EXPECT_EQ(List().ListIndex(), -1);
  EXPECT_FALSE(Button(u"cmdOpt1Verwijderen"_s).isEnabled());
  EXPECT_FALSE(Button(u"cmdOpt1Wijzigen"_s).isEnabled());
}

TEST_F(ItemEvents, ADoubleClickOnAnEntryOpensTheChangeDialog) {
  InsertListItem(1, u"Lijst"_s, {1, 2});
  Open(u"1"_s);
  List().SetListIndex(1);
  ModalDriver driver;
  driver.OnNext(u"frmItemsDetailOpt1"_s, [](QDialog& dialog) {
    EXPECT_EQ(Child<controls::ComboBox>(dialog, u"cboItemSpot"_s).currentText(), u"Bakker"_s);
    dialog.close();
  });
  Q_EMIT List().doubleClicked();
}

TEST_F(ItemEvents, MovingALineIsAChangeAndTheOrderIsSavedAsShown) {
  InsertListItem(1, u"Lijst"_s, {1, 2, 3});
  Open(u"1"_s);
  List().setFocus();
  List().SetListIndex(2);
  QTest::keyClick(&List(), Qt::Key_Up, Qt::AltModifier);
  EXPECT_TRUE(editor_->IsDirty());
  EXPECT_EQ(List().ListIndex(), 1);
  Click(u"cmdOk"_s);
  dao::Recordset rows = station_.ServerRows(u"SELECT ItemSpotID FROM tblItemsItemSpots ORDER BY ItemSpotOrder"_s);
  for (const int spot : {1, 3, 2}) {
    EXPECT_EQ(rows.Field(u"ItemSpotID"_s).toInt(), spot);
    rows.MoveNext();
  }
}

TEST_F(ItemEvents, TheMixPointInputAcceptsNumbersOnly) {
  InsertPatternItem();
  Open(u"2"_s);
  desktop::InputBoxScript input;
  input.Type(u"abc"_s);
  QTest::mouseClick(&Mix(), Qt::LeftButton);
  EXPECT_EQ(Mix().Value(), 1500);
  input.Type(u"2500"_s);
  QTest::mouseClick(&Mix(), Qt::LeftButton);
  EXPECT_EQ(Mix().Value(), 2500);
  input.Cancel();
  QTest::mouseClick(&Mix(), Qt::LeftButton);
  EXPECT_EQ(Mix().Value(), 2500);
  ASSERT_EQ(input.Shown().size(), 3U);
  EXPECT_EQ(input.Shown()[0].prompt, u"Geef een numerische waarde ..."_s);
  EXPECT_EQ(input.Shown()[0].title, u"Items"_s);
}

TEST_F(ItemEvents, TheExampleFollowsEveryPartOfThePattern) {
  const runtime::ClockScope clock(QDateTime(QDate(2025, 1, 5), QTime(9, 0)));  // a Sunday
  OpenNew();
  FillPatternItem();
  const QLineEdit& example = Edit(u"txtOpt2Voorbeeld"_s);
  EXPECT_EQ(example.text(), u"D:\\Spots\\blok05012025.wav"_s);
  Edit(u"txtOpt2Directory"_s).setText(u"E:\\Blok"_s);
  EXPECT_EQ(example.text(), u"E:\\Blok\\blok05012025.wav"_s);
  Edit(u"txtOpt2VastNaamGedeelte"_s).clear();
  EXPECT_EQ(example.text(), u"E:\\Blok\\05012025.wav"_s);
  Combo(u"cboOpt2VariabelNaamGedeelte"_s).SetListIndex(2);
  Combo(u"cboOpt2Eerstedagvanweek"_s).SetListIndex(0);
  EXPECT_EQ(example.text(), u"E:\\Blok\\02.wav"_s);
  Combo(u"cboOpt2Eerstedagvanweek"_s).SetListIndex(1);
  EXPECT_EQ(example.text(), u"E:\\Blok\\01.wav"_s);
  Option(u"optMeerdereSpots"_s).click();
  EXPECT_EQ(example.text(), u"E:\\Blok\\01-x.wav"_s);
  Option(u"opt1Spot"_s).click();
  EXPECT_EQ(example.text(), u"E:\\Blok\\01.wav"_s);
  Edit(u"txtOpt2FileExtensie"_s).clear();
  EXPECT_EQ(example.text(), QString());
}

TEST_F(ItemEvents, JinglesAreReadAgainWhenTheirListOpens) {
  Open(u"NIEUW"_s);
  int spotLists = 0;
  RegisterScreen(Screen::ItemSpots, [&](QWidget* owner) {
    ++spotLists;
    EXPECT_EQ(owner, editor_.get());
  });
  RegisterScreen(Screen::ItemPingles, [&](QWidget* owner) {
    EXPECT_EQ(owner, editor_.get());
    station_.OnServer(u"INSERT INTO tblItemPingles (ID, Naam) VALUES (20, \"Nieuw\")"_s);
    station_.OnServer(u"DELETE FROM tblItemPingles WHERE ID = 11"_s);
  });
  Check(u"chkSluiterPingle"_s).setChecked(true);
  Combo(u"cboSluiterPingle"_s).SelectWhereItemData(13);
  Click(u"cmdShowItemSpots"_s);
  EXPECT_EQ(spotLists, 1);
  Click(u"cmdShowItemPingles"_s);
  EXPECT_EQ(Combo(u"cboOpenerPingle"_s).ListCount(), 3);
  EXPECT_EQ(Combo(u"cboSluiterPingle"_s).currentText(), u"Sluiter"_s);
  RegisterScreen(Screen::ItemSpots, {});
  RegisterScreen(Screen::ItemPingles, {});
}

TEST_F(ItemEvents, LosingAChosenJingleIsAChange) {
  station_.OnServer(u"INSERT INTO tblItems (ID, Naam, ItemSpotsOptID, Opener, Aktief) VALUES (4, \"j\", 1, 11, 1)"_s);
  Open(u"4"_s);
  RegisterScreen(Screen::ItemPingles,
                 [&](QWidget*) { station_.OnServer(u"DELETE FROM tblItemPingles WHERE ID = 11"_s); });
  Click(u"cmdShowItemPingles"_s);
  EXPECT_TRUE(editor_->IsDirty());
  EXPECT_EQ(Combo(u"cboOpenerPingle"_s).ListIndex(), -1);
  RegisterScreen(Screen::ItemPingles, {});
}

TEST_F(ItemEvents, ResettingThePlayCountUsesTheShownListAndChangesNothingElse) {
  InsertListItem(1, u"Lijst"_s, {1});
  Open(u"1"_s);
  List().AddItem(u"Bakker"_s, 2);  // not saved
  desktop::MessageBoxScript boxes;
  Click(u"cmdNormalizeItem"_s);
  EXPECT_EQ(boxes.Last().text,
            u"Het 'Aantal gedraaid' van de item-spots verbonden met dit item werden op nul gezet,\r\n"
            u"zodat elke item-spot voortaan gelijkwaardig behandeld wordt."_s);
  EXPECT_EQ(boxes.Last().style, 64);
  EXPECT_EQ(boxes.Last().title, u"Items"_s);
  EXPECT_FALSE(editor_->IsDirty());
  dao::Recordset rows = station_.ServerRows(u"SELECT AantalGedraaid FROM tblItemSpots ORDER BY ID"_s);
  for (const int count : {0, 0, 9}) {
    EXPECT_EQ(rows.Field(u"AantalGedraaid"_s).toInt(), count);
    rows.MoveNext();
  }
}

TEST_F(ItemEvents, ResettingThePlayCountReportsTheNumberOfFailures) {
  InsertListItem(1, u"Lijst"_s, {1, 2});
  Open(u"1"_s);
  // A server gets two messages for the first spot: the row is read, then changed.
  const testing_support::FailingAccesses afterTheFirst(testing_support::OnServer() ? 3 : 2);
  desktop::MessageBoxScript boxes;
  Click(u"cmdNormalizeItem"_s);
  ASSERT_EQ(boxes.Shown().size(), 1U);
  EXPECT_EQ(boxes.Last().text,
            u"Het 'Aantal gedraaid' van 1 van de 2 item-spots verbonden met dit item werd op nul gezet.\r\n"
            u"Bij 1 item-spot is dat niet gelukt."_s);
  EXPECT_EQ(boxes.Last().style, 64);
  EXPECT_EQ(boxes.Last().title, u"Items"_s);
}

TEST_F(ItemEvents, CancellingAndAnsweringYesWithAnEmptyNameKeepsTheFormOpen) {
  InsertListItem(1, u"Lijst"_s, {1});
  Open(u"1"_s);
  Edit(u"txtNaam"_s).clear();
  desktop::MessageBoxScript boxes({kAnswerYes});
  QTest::keyClick(editor_.get(), Qt::Key_Escape);
  ASSERT_EQ(boxes.Shown().size(), 2U);
  EXPECT_EQ(boxes.Last().text, GetMsgElements(1500, u"Item-naam"_s).text);
  EXPECT_TRUE(IsOpen());
}

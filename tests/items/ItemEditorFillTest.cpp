// SPDX-License-Identifier: MIT
#include "platform/desktop/MessageBox.h"
#include "platform/runtime/Clock.h"
#include "tests/items/ItemEditor.h"

using namespace Qt::StringLiterals;

namespace {

class ItemFill : public ItemEditor {};

}  // namespace

TEST_F(ItemFill, ANewItemIsActiveWithAListAndOneSpot) {
  OpenNew();
  EXPECT_EQ(editor_->windowTitle(), u"Item ... nieuw"_s);
  EXPECT_TRUE(editor_->IsNew());
  EXPECT_EQ(editor_->ID(), 0);
  EXPECT_TRUE(Check(u"chkAktief"_s).isChecked());
  EXPECT_TRUE(Option(u"opt1"_s).isChecked());
  EXPECT_TRUE(Option(u"opt1Spot"_s).isChecked());
  EXPECT_FALSE(editor_->IsDirty());
}

TEST_F(ItemFill, TheFixedListsHaveTheirCodes) {
  OpenNew();
  const QStringList parts = {u"ddmmyyyy"_s, u"ddmmyyyyhh"_s, u"ww"_s, u"mm"_s};
  const QStringList days = {u"Zondag"_s,    u"Maandag"_s, u"Dinsdag"_s, u"Woensdag"_s,
                            u"Donderdag"_s, u"Vrijdag"_s, u"Zaterdag"_s};
  const controls::ComboBox& variable = Combo(u"cboOpt2VariabelNaamGedeelte"_s);
  const controls::ComboBox& day = Combo(u"cboOpt2Eerstedagvanweek"_s);
  ASSERT_EQ(variable.ListCount(), 4);
  ASSERT_EQ(day.ListCount(), 7);
  for (int i = 0; i < 4; ++i) {
    EXPECT_EQ(variable.Text(i), parts[i]);
    EXPECT_EQ(variable.ItemData(i), i + 1);
  }
  for (int i = 0; i < 7; ++i) {
    EXPECT_EQ(day.Text(i), days[i]);
    EXPECT_EQ(day.ItemData(i), i + 1);
  }
}

TEST_F(ItemFill, JinglesAreSortedByNameInAllThreeCombos) {
  OpenNew();
  for (const QString& name : {u"cboOpenerPingle"_s, u"cboMiddenPingle"_s, u"cboSluiterPingle"_s}) {
    ASSERT_EQ(Combo(name).ListCount(), 3);
    EXPECT_EQ(Combo(name).Text(0), u"Opener"_s);
    EXPECT_EQ(Combo(name).Text(1), u"Sluiter"_s);
    EXPECT_EQ(Combo(name).ItemData(1), 13);
    EXPECT_EQ(Combo(name).ListIndex(), -1);
  }
}

TEST_F(ItemFill, AListItemShowsItsSpotsInOrder) {
  InsertListItem(7, u"Blok"_s, {3, 1});
  Open(u"7"_s);
  EXPECT_EQ(editor_->windowTitle(), u"Item ... detail"_s);
  EXPECT_EQ(editor_->ID(), 7);
  EXPECT_EQ(Edit(u"txtNaam"_s).text(), u"Blok"_s);
  ASSERT_EQ(List().ListCount(), 2);
  EXPECT_EQ(List().Text(0), u"Café"_s);
  EXPECT_EQ(List().ItemData(0), 3);
  EXPECT_EQ(List().Details(0).trailing, u"0:32"_s);
  EXPECT_EQ(List().Text(1), u"Aardbeien"_s);
  EXPECT_EQ(testing_support::Child<QLabel>(*editor_, u"lblOpt1Totaal"_s).text(), u"2 item-spots, samen 1:02"_s);
  EXPECT_FALSE(editor_->IsDirty());
}

TEST_F(ItemFill, SpotsAreSortedByTheirOrderField) {
  InsertListItem(7, u"Blok"_s, {});
  for (const int order : {3, 1, 2}) {
    station_.OnServer(
        u"INSERT INTO tblItemsItemSpots (ItemID, ItemSpotOrder, ItemSpotID) VALUES (7, %1, %1)"_s.arg(order));
  }
  Open(u"7"_s);
  ASSERT_EQ(List().ListCount(), 3);
  for (int line = 0; line < 3; ++line)
    EXPECT_EQ(List().ItemData(line), line + 1);
}

TEST_F(ItemFill, AnyNonZeroFlagIsActive) {
  for (const auto& [flag, active] : {std::pair(u"-1"_s, true), std::pair(u"1"_s, true), std::pair(u"7"_s, true),
                                     std::pair(u"0"_s, false), std::pair(u"NULL"_s, false)}) {
    station_.OnServer(u"DELETE FROM tblItems"_s);
    InsertListItem(1, u"Blok"_s, {});
    station_.OnServer(u"UPDATE tblItems SET Aktief = "_s + flag);
    Open(u"1"_s);
    EXPECT_EQ(Check(u"chkAktief"_s).isChecked(), active) << flag.toStdString();
  }
}

TEST_F(ItemFill, AnyNonZeroNumberMeansSeveralSpotsAndARandomOrder) {
  InsertListItem(1, u"Blok"_s, {1});
  for (const auto& [flag, set] : {std::pair(u"-1"_s, true), std::pair(u"1"_s, true), std::pair(u"0"_s, false)}) {
    station_.OnServer(u"UPDATE tblItems SET OptMeerdereSpots = "_s + flag + u", ChkRandomizeMeerdereSpots = " + flag);
    Open(u"1"_s);
    EXPECT_EQ(Option(u"optMeerdereSpots"_s).isChecked(), set) << flag.toStdString();
    EXPECT_EQ(Option(u"opt1Spot"_s).isChecked(), !set) << flag.toStdString();
    EXPECT_EQ(Check(u"chkRandomizeMeerdereSpots"_s).isChecked(), set) << flag.toStdString();
  }
}

// A random order and a number of spots in a record with one spot are neither shown nor kept.
TEST_F(ItemFill, OneSpotShowsNoStoredNumbers) {
  InsertListItem(1, u"Blok"_s, {1});
  station_.OnServer(
      u"UPDATE tblItems SET AantalSpots = 4, MaxAantalSpots = 9, ChkRandomizeMeerdereSpots = 1, Midden = 12"_s);
  Open(u"1"_s);
  EXPECT_TRUE(Edit(u"txtAantalSpots"_s).text().isEmpty());
  EXPECT_TRUE(Edit(u"txtMaxAantalSpots"_s).text().isEmpty());
  EXPECT_FALSE(Check(u"chkRandomizeMeerdereSpots"_s).isChecked());
  EXPECT_FALSE(Check(u"chkMiddenPingle"_s).isChecked());
  EXPECT_EQ(Combo(u"cboMiddenPingle"_s).ListIndex(), -1);
  EXPECT_FALSE(editor_->IsDirty());
}

TEST_F(ItemFill, TheNameIsShownUntrimmed) {
  InsertListItem(1, u"  Blok "_s, {1});
  Open(u"1"_s);
  EXPECT_EQ(Edit(u"txtNaam"_s).text(), u"  Blok "_s);
}

// Saved without a content option it would lose its spots.
TEST_F(ItemFill, AnUnknownContentOptionIsReportedAndNothingIsSaved) {
  InsertListItem(1, u"Blok"_s, {1, 2});
  station_.OnServer(u"UPDATE tblItems SET ItemSpotsOptID = 3"_s);
  {
    const desktop::MessageBoxScript boxes;
    Open(u"1"_s);
    ASSERT_EQ(boxes.Shown().size(), 1U);
    EXPECT_EQ(boxes.Last().title, u"FillForm"_s);
    EXPECT_TRUE(boxes.Last().text.contains(u"ItemSpotsOptID = 3"_s)) << boxes.Last().text.toStdString();
  }
  const desktop::MessageBoxScript boxes;
  Click(u"cmdOk"_s);
  ASSERT_EQ(boxes.Shown().size(), 1U);
  EXPECT_EQ(boxes.Last().title, u"Opslaan"_s);
  EXPECT_TRUE(IsOpen());
  EXPECT_EQ(SavedSpots(), (QList<int>{1, 2}));
  EXPECT_EQ(station_.ServerRows(u"SELECT ItemSpotsOptID FROM tblItems"_s).Field(u"ItemSpotsOptID"_s).toInt(), 3);
}

TEST_F(ItemFill, LinksToDeletedSpotsAreSkippedAndRemovedByTheNextSave) {
  InsertListItem(7, u"Blok"_s, {1, 99, 2});
  Open(u"7"_s);
  EXPECT_EQ(List().ListCount(), 2);
  Click(u"cmdOk"_s);
  EXPECT_EQ(station_.ServerRows(u"SELECT ItemID FROM tblItemsItemSpots"_s).RecordCount(), 2);
}

TEST_F(ItemFill, APatternItemShowsAllItsValuesAndTodaysExample) {
  const runtime::ClockScope clock(QDateTime(QDate(2025, 3, 5), QTime(9, 0)));
  station_.OnServer(
      u"INSERT INTO tblItems (ID, Naam, ItemSpotsOptID, Opt2Directory, Opt2VastNaamGedeelte, Opt2VariabelNaamGedeelte, "
      u"Opt2FormatGedeelte, Opt2Eerstedagvanweek, Opt2FileExtensie, Opt2MixPunt, OptMeerdereSpots, AantalSpots, "
      u"MaxAantalSpots, ChkRandomizeMeerdereSpots, Opener, Midden, Sluiter, Aktief, Locked) VALUES (2, \"Patroon\", 2, "
      u"\"D:\\Spots\", \"blok\", 3, \"ww\", 2, \"wav\", 1500, -1, 2, 5, 1, 11, 12, 13, 0, 0)"_s);
  Open(u"2"_s);
  EXPECT_TRUE(Option(u"opt2"_s).isChecked());
  EXPECT_FALSE(Check(u"chkAktief"_s).isChecked());
  EXPECT_EQ(Edit(u"txtOpt2Directory"_s).text(), u"D:\\Spots"_s);
  EXPECT_EQ(Combo(u"cboOpt2VariabelNaamGedeelte"_s).currentText(), u"ww"_s);
  EXPECT_EQ(Combo(u"cboOpt2Eerstedagvanweek"_s).currentText(), u"Maandag"_s);
  EXPECT_EQ(Mix().Value(), 1500);
  EXPECT_EQ(Edit(u"txtAantalSpots"_s).text(), u"2"_s);
  EXPECT_EQ(Edit(u"txtMaxAantalSpots"_s).text(), u"5"_s);
  EXPECT_TRUE(Check(u"chkRandomizeMeerdereSpots"_s).isChecked());
  EXPECT_EQ(Combo(u"cboOpenerPingle"_s).currentText(), u"Opener"_s);
  EXPECT_EQ(Combo(u"cboMiddenPingle"_s).currentText(), u"Tussen"_s);
  EXPECT_EQ(Combo(u"cboSluiterPingle"_s).currentText(), u"Sluiter"_s);
  EXPECT_TRUE(Check(u"chkMiddenPingle"_s).isChecked());
  EXPECT_EQ(Edit(u"txtOpt2Voorbeeld"_s).text(), u"D:\\Spots\\blok10-x.wav"_s);
  EXPECT_FALSE(editor_->IsDirty());
}

TEST_F(ItemFill, ADeletedJingleLeavesItsBoxUnchecked) {
  station_.OnServer(u"INSERT INTO tblItems (ID, Naam, ItemSpotsOptID, Opener) VALUES (4, \"j\", 1, 99)"_s);
  Open(u"4"_s);
  EXPECT_FALSE(Check(u"chkOpenerPingle"_s).isChecked());
  EXPECT_EQ(Combo(u"cboOpenerPingle"_s).ListIndex(), -1);
}

TEST_F(ItemFill, AJingleWithoutANameLeavesItsBoxUnchecked) {
  station_.OnServer(u"INSERT INTO tblItemPingles (ID, Aktief) VALUES (20, 1)"_s);
  station_.OnServer(u"INSERT INTO tblItems (ID, Naam, ItemSpotsOptID, Sluiter) VALUES (4, \"j\", 1, 20)"_s);
  Open(u"4"_s);
  EXPECT_FALSE(Check(u"chkSluiterPingle"_s).isChecked());
  EXPECT_EQ(Combo(u"cboSluiterPingle"_s).ListIndex(), -1);
}

TEST_F(ItemFill, NullsLeaveEverythingEmpty) {
  station_.OnServer(u"INSERT INTO tblItems (ID) VALUES (4)"_s);
  const desktop::MessageBoxScript boxes;
  Open(u"4"_s);
  EXPECT_TRUE(boxes.Shown().empty());
  EXPECT_TRUE(Edit(u"txtNaam"_s).text().isEmpty());
  EXPECT_FALSE(Option(u"opt1"_s).isChecked());
  EXPECT_FALSE(Option(u"opt2"_s).isChecked());
}

TEST_F(ItemFill, ADeletedItemFillsNothing) {
  Open(u"41"_s);
  EXPECT_TRUE(Edit(u"txtNaam"_s).text().isEmpty());
  EXPECT_FALSE(editor_->IsNew());
}

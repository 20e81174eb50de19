// SPDX-License-Identifier: MIT
// Another workstation changes an item, or its list of spots, while its editor is open here.
#include "data/Messages.h"
#include "tests/items/ItemEditor.h"

using namespace Qt::StringLiterals;

namespace {

class ItemTwoWorkstations : public ItemEditor {
 protected:
  ItemTwoWorkstations() {
    InsertListItem(1, u"Blok"_s, {1, 2});
    Open(u"1"_s);
    Edit(u"txtNaam"_s).setText(u"Blok van hier"_s);
  }
  void TheOtherChangesTheList() const {
    station_.OnServer(u"DELETE FROM tblItemsItemSpots WHERE ItemID = 1"_s);
    station_.OnServer(u"INSERT INTO tblItemsItemSpots (ItemID, ItemSpotOrder, ItemSpotID) VALUES (1, 1, 3)"_s);
  }
  QString SavedName() const {
    return station_.ServerRows(u"SELECT Naam FROM tblItems WHERE ID = 1"_s).Field(u"Naam"_s).toString();
  }
};

}  // namespace

TEST_F(ItemTwoWorkstations, AnUnchangedItemIsSavedWithoutAQuestion) {
  const desktop::MessageBoxScript boxes;
  Click(u"cmdOk"_s);
  EXPECT_TRUE(boxes.Shown().empty());
  EXPECT_FALSE(IsOpen());
  EXPECT_EQ(SavedName(), u"Blok van hier"_s);
}

TEST_F(ItemTwoWorkstations, AChangedListIsAskedAboutByTheNamesOfItsSpots) {
  TheOtherChangesTheList();
  const desktop::MessageBoxScript boxes{kAnswerCancel};
  Click(u"cmdOk"_s);
  ASSERT_EQ(boxes.Shown().size(), 1u);
  EXPECT_TRUE(boxes.Last().text.contains(u"Item-spots: was "_s)) << boxes.Last().text.toStdString();
  EXPECT_FALSE(boxes.Last().text.contains(u"Naam:"_s)) << boxes.Last().text.toStdString();
  EXPECT_TRUE(IsOpen());
  EXPECT_TRUE(editor_->IsDirty());
  EXPECT_EQ(SavedSpots(), QList<int>{3});
  EXPECT_EQ(SavedName(), u"Blok"_s);
}

TEST_F(ItemTwoWorkstations, TheirsShowsTheirListOnce) {
  TheOtherChangesTheList();
  {
    const desktop::MessageBoxScript boxes{kAnswerYes};
    Click(u"cmdOk"_s);
  }
  EXPECT_TRUE(IsOpen());
  EXPECT_FALSE(editor_->IsDirty());
  EXPECT_EQ(Edit(u"txtNaam"_s).text(), u"Blok"_s);
  ASSERT_EQ(List().ListCount(), 1);
  EXPECT_EQ(List().ItemData(0), 3);
  const desktop::MessageBoxScript boxes;
  Click(u"cmdOk"_s);
  EXPECT_TRUE(boxes.Shown().empty());
  EXPECT_EQ(SavedSpots(), QList<int>{3});
}

// From a list with a jingle to a name pattern with several spots.
TEST_F(ItemTwoWorkstations, TheirsShowsEveryFieldAsItIsNow) {
  station_.OnServer(
      u"UPDATE tblItems SET ItemSpotsOptID = 2, Opt2Directory = \"D:\\map\", Opt2VastNaamGedeelte = \"nieuws\", "
      "Opt2VariabelNaamGedeelte = 3, Opt2FormatGedeelte = \"ww\", Opt2Eerstedagvanweek = 2, Opt2FileExtensie = "
      "\"wav\", "
      "Opt2MixPunt = 500, OptMeerdereSpots = -1, AantalSpots = 2, MaxAantalSpots = 4, "
      "ChkRandomizeMeerdereSpots = 1, Opener = 12, Aktief = 0 WHERE ID = 1"_s);
  {
    const desktop::MessageBoxScript boxes{kAnswerYes};
    Click(u"cmdOk"_s);
    ASSERT_EQ(boxes.Shown().size(), 1u);
  }
  EXPECT_FALSE(editor_->IsDirty());
  EXPECT_TRUE(Option(u"opt2"_s).isChecked());
  EXPECT_EQ(Edit(u"txtOpt2Directory"_s).text(), u"D:\\map"_s);
  EXPECT_EQ(Edit(u"txtOpt2VastNaamGedeelte"_s).text(), u"nieuws"_s);
  EXPECT_EQ(Combo(u"cboOpt2VariabelNaamGedeelte"_s).currentText(), u"ww"_s);
  EXPECT_EQ(Combo(u"cboOpt2Eerstedagvanweek"_s).currentText(), u"Maandag"_s);
  EXPECT_EQ(Mix().Value(), 500);
  EXPECT_TRUE(Option(u"optMeerdereSpots"_s).isChecked());
  EXPECT_EQ(Edit(u"txtAantalSpots"_s).text(), u"2"_s);
  EXPECT_EQ(Edit(u"txtMaxAantalSpots"_s).text(), u"4"_s);
  EXPECT_TRUE(Check(u"chkRandomizeMeerdereSpots"_s).isChecked());
  EXPECT_TRUE(Check(u"chkOpenerPingle"_s).isChecked());
  EXPECT_FALSE(Combo(u"cboOpenerPingle"_s).currentText().isEmpty());
  EXPECT_FALSE(Check(u"chkAktief"_s).isChecked());
}

TEST_F(ItemTwoWorkstations, MineIsWrittenWithItsList) {
  TheOtherChangesTheList();
  const desktop::MessageBoxScript boxes{kAnswerNo};
  Click(u"cmdOk"_s);
  EXPECT_FALSE(IsOpen());
  EXPECT_EQ(SavedSpots(), (QList<int>{1, 2}));
  EXPECT_EQ(SavedName(), u"Blok van hier"_s);
}

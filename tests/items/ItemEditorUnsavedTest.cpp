// SPDX-License-Identifier: MIT
// What cancelling would lose without a question, and the list that a change of option empties.
#include "platform/desktop/LookStyle.h"
#include "tests/items/ItemEditor.h"

#include <QApplication>
#include <QScrollArea>
#include <QScrollBar>
#include <QStyleFactory>

using namespace Qt::StringLiterals;
using testing_support::Child;

namespace {

class ItemUnsaved : public ItemEditor {
 protected:
  bool Says(const QString& label) const { return Child<QLabel>(*editor_, label).isVisible(); }
  bool IsUndoOffered() const { return Button(u"cmdOpt1Ongedaan"_s).isVisible(); }
};

}  // namespace

TEST_F(ItemUnsaved, FieldsThatAreNotTrackedSaySoWhileTheyDiffer) {
  InsertListItem(1, u"Blok"_s, {1, 2});
  Open(u"1"_s);
  const QStringList labels{u"lblOpenAantalSpots"_s, u"lblOpenMaxAantalSpots"_s, u"lblOpenRandomize"_s,
                           u"lblOpenMidden"_s};
  for (const QString& label : labels)
    EXPECT_FALSE(Says(label)) << label.toStdString();
  Option(u"optMeerdereSpots"_s).click();
  Edit(u"txtAantalSpots"_s).setText(u"2"_s);
  EXPECT_TRUE(Says(u"lblOpenAantalSpots"_s));
  EXPECT_FALSE(Says(u"lblOpenMaxAantalSpots"_s));  // follows the list
  Check(u"chkRandomizeMeerdereSpots"_s).click();
  EXPECT_TRUE(Says(u"lblOpenRandomize"_s));
  Check(u"chkMiddenPingle"_s).click();
  Combo(u"cboMiddenPingle"_s).SetListIndex(1);
  EXPECT_TRUE(Says(u"lblOpenMidden"_s));
  Check(u"chkRandomizeMeerdereSpots"_s).click();
  EXPECT_FALSE(Says(u"lblOpenRandomize"_s));
}

// Counts of an item of one spot are not shown, whatever is stored.
TEST_F(ItemUnsaved, AnItemThatWasJustOpenedHasNothingUnsaved) {
  station_.OnServer(
      u"INSERT INTO tblItems (ID, Naam, ItemSpotsOptID, Opt2Directory, Opt2VastNaamGedeelte, Opt2VariabelNaamGedeelte, "
      u"Opt2FileExtensie, OptMeerdereSpots, AantalSpots, MaxAantalSpots, ChkRandomizeMeerdereSpots, Aktief) "
      u"VALUES (1, \"Week\", 2, \"D:\\\", \"week\", 3, \"wav\", 0, 1, 1, -1, 1)"_s);
  Open(u"1"_s);
  for (const QString& label :
       {u"lblOpenAantalSpots"_s, u"lblOpenMaxAantalSpots"_s, u"lblOpenRandomize"_s, u"lblOpenMidden"_s})
    EXPECT_FALSE(Says(label)) << label.toStdString();
  Option(u"optMeerdereSpots"_s).click();
  Edit(u"txtMaxAantalSpots"_s).setText(u"4"_s);
  EXPECT_TRUE(Says(u"lblOpenMaxAantalSpots"_s));
}

TEST_F(ItemUnsaved, TheMixPointOfOption2SaysSo) {
  OpenNew();
  Option(u"opt2"_s).click();
  const auto& unit = Child<QLabel>(*editor_, u"lblMs"_s);
  EXPECT_EQ(unit.text(), u"ms"_s);
  Mix().SetValue(1500);
  EXPECT_EQ(unit.text(), u"ms, nog niet bewaard"_s);
}

// On a full-HD screen at 200 %.
TEST_F(ItemUnsaved, TheyFitBesideEachOtherOnASmallScreen) {
  QApplication::setStyle(new desktop::LookStyle);
  InsertListItem(1, u"Blok"_s, {1, 2});
  Open(u"1"_s);
  Option(u"optMeerdereSpots"_s).click();
  Option(u"opt2"_s).click();
  Edit(u"txtAantalSpots"_s).setText(u"2"_s);
  Edit(u"txtMaxAantalSpots"_s).setText(u"4"_s);
  Check(u"chkMiddenPingle"_s).click();
  Combo(u"cboMiddenPingle"_s).SetListIndex(1);
  Mix().SetValue(1500);
  constexpr QSize kScreen(960, 500);
  editor_->resize(kScreen);
  QCoreApplication::processEvents();
  EXPECT_EQ(editor_->size(), kScreen);
  EXPECT_EQ(Child<QScrollArea>(*editor_, u"scrollMain"_s).horizontalScrollBar()->maximum(), 0);
  editor_.reset();
  QApplication::setStyle(QStyleFactory::create(u"fusion"_s));
}

TEST_F(ItemUnsaved, AListEmptiedByTheOtherOptionIsBroughtBack) {
  InsertListItem(1, u"Blok"_s, {2, 1, 2});
  Open(u"1"_s);
  EXPECT_FALSE(IsUndoOffered());
  Option(u"opt2"_s).click();
  EXPECT_EQ(List().ListCount(), 0);
  EXPECT_FALSE(IsUndoOffered());
  Option(u"opt1"_s).click();
  EXPECT_EQ(List().ListCount(), 0);  // required
  ASSERT_TRUE(IsUndoOffered());
  EXPECT_EQ(List().EmptyText(),
            u"3 item-spots zijn uit de lijst gehaald.\n‘Ongedaan maken’ (Ctrl+Z) haalt ze terug."_s);
  EXPECT_EQ(Child<QScrollArea>(*editor_, u"scrollMain"_s).horizontalScrollBar()->maximum(), 0);
  Click(u"cmdOpt1Ongedaan"_s);
  EXPECT_EQ(List().ListCount(), 3);
  EXPECT_EQ(List().ItemData(0), 2);
  EXPECT_EQ(List().ItemData(1), 1);
  EXPECT_FALSE(IsUndoOffered());
  Click(u"cmdOk"_s);
  EXPECT_FALSE(IsOpen());
  EXPECT_EQ(SavedSpots(), (QList<int>{2, 1, 2}));
}

TEST_F(ItemUnsaved, CtrlZBringsTheListBackToo) {
  InsertListItem(1, u"Blok"_s, {1});
  Open(u"1"_s);
  QApplication::setActiveWindow(editor_.get());  // shortcuts work in the active window only
  Option(u"opt2"_s).click();
  QTest::keyClick(editor_.get(), Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(List().ListCount(), 0);  // of option 2
  Option(u"opt1"_s).click();
  QTest::keyClick(editor_.get(), Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(List().ListCount(), 1);
}

TEST_F(ItemUnsaved, ALineAddedMeanwhileEndsTheOffer) {
  InsertListItem(1, u"Blok"_s, {1, 2});
  Open(u"1"_s);
  Option(u"opt2"_s).click();
  Option(u"opt1"_s).click();
  ASSERT_TRUE(IsUndoOffered());
  List().AddItem(u"Andere"_s, 3);
  editor_->findChild<QCheckBox*>(u"chkOpenerPingle"_s)->click();  // shows the states again
  EXPECT_FALSE(IsUndoOffered());
}

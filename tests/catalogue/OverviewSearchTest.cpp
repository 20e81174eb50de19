// SPDX-License-Identifier: MIT
#include "catalogue/frmItemPingles.h"
#include "catalogue/frmItems.h"
#include "platform/controls/ListBox.h"
#include "platform/desktop/MessageBox.h"
#include "tests/catalogue/CatalogueTest.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QScrollBar>

using namespace Qt::StringLiterals;

// The search box and the keys of the base class, tested on the item list.
class OverviewSearch : public CatalogueTest {
 protected:
  OverviewSearch() : form_(nullptr) {
    AddItem(1, u"Ochtendblok"_s);
    AddItem(2, u"Avondblok"_s);
    AddItem(3, u"Kerst"_s, 0);
    AddItem(4, u"Nacht"_s);
    Open(form_);
  }

  QLineEdit& Search() { return Child<QLineEdit>(form_, u"txtZoek"_s); }
  // Without what the background reading adds.
  QString Count() { return Child<QLabel>(form_, u"lblAantal"_s).text().section(u',', 0, 0); }
  void Type(const QString& text) { QTest::keyClicks(&Search(), text); }

  frmItems form_;
};

TEST_F(OverviewSearch, HidesLinesWithoutTheTextIgnoringCase) {
  Type(u"BLOK"_s);
  EXPECT_EQ(Lines(form_), (QStringList{u"Avondblok"_s, u"Ochtendblok"_s}));
  EXPECT_EQ(Count(), u"2 van 3 items"_s);
  Search().clear();
  EXPECT_EQ(Lines(form_).size(), 3);
  EXPECT_EQ(Count(), u"3 items"_s);
}

TEST_F(OverviewSearch, NeverReadsTheTableAgain) {
  AddItem(9, u"Blok van een ander"_s);
  Type(u"blok"_s);
  EXPECT_EQ(Lines(form_).size(), 2);
}

TEST_F(OverviewSearch, BlanksAroundTheTextDoNotCount) {
  Type(u" nacht "_s);
  EXPECT_EQ(Lines(form_), QStringList{u"Nacht"_s});
}

TEST_F(OverviewSearch, TextIsKeptAndAppliedAfterARefill) {
  Type(u"k"_s);
  EXPECT_EQ(Lines(form_), (QStringList{u"Avondblok"_s, u"Ochtendblok"_s}));
  Click(form_, u"chkNietAktieve"_s);
  EXPECT_EQ(Search().text(), u"k"_s);
  EXPECT_EQ(Lines(form_), (QStringList{u"Avondblok"_s, u"Kerst"_s, u"Ochtendblok"_s}));
  EXPECT_EQ(Count(), u"3 van 4 items"_s);
}

TEST_F(OverviewSearch, HiddenLineLosesItsSelectionAndTheButtonsFollow) {
  Select(form_, u"Nacht"_s);
  ASSERT_TRUE(Enabled(form_, u"cmdOpen"_s));
  Type(u"blok"_s);
  EXPECT_EQ(List(form_).ListIndex(), -1);
  EXPECT_FALSE(Enabled(form_, u"cmdOpen"_s));
  EXPECT_FALSE(Enabled(form_, u"cmdVerwijder"_s));
}

TEST_F(OverviewSearch, VisibleLineRemainsSelected) {
  Select(form_, u"Ochtendblok"_s);
  Type(u"blok"_s);
  EXPECT_EQ(List(form_).Text(List(form_).ListIndex()), u"Ochtendblok"_s);
  EXPECT_TRUE(Enabled(form_, u"cmdOpen"_s));
}

TEST_F(OverviewSearch, NothingFoundShowsATextInTheList) {
  Type(u"zomer"_s);
  EXPECT_EQ(Lines(form_), QStringList());
  EXPECT_EQ(Count(), u"0 van 3 items"_s);
  EXPECT_EQ(List(form_).EmptyText(),
            u"Geen items gevonden met ‘zomer’.\nMaak het zoekveld leeg of vink ‘Niet aktieve items’ aan."_s);
}

TEST_F(OverviewSearch, TypingInTheListContinuesInTheSearchBox) {
  List(form_).setFocus();
  QTest::keyClick(&List(form_), Qt::Key_N);
  EXPECT_EQ(Search().text(), u"n"_s);
  EXPECT_TRUE(Search().hasFocus());
  QTest::keyClicks(&Search(), u"a"_s);
  EXPECT_EQ(Lines(form_), QStringList{u"Nacht"_s});
}

TEST_F(OverviewSearch, DownInTheSearchBoxSelectsTheFirstLineFound) {
  Type(u"blok"_s);
  QTest::keyClick(&Search(), Qt::Key_Down);
  EXPECT_TRUE(List(form_).hasFocus());
  EXPECT_EQ(List(form_).Text(List(form_).ListIndex()), u"Avondblok"_s);
  EXPECT_TRUE(Enabled(form_, u"cmdOpen"_s));
}

TEST_F(OverviewSearch, EnterInTheSearchBoxOpensNothing) {
  Type(u"blok"_s);
  QTest::keyClick(&Search(), Qt::Key_Return);
  EXPECT_TRUE(visits_.isEmpty());
  EXPECT_TRUE(form_.isVisible());
}

TEST_F(OverviewSearch, EscClearsTheSearchBoxBeforeItCloses) {
  Type(u"blok"_s);
  QTest::keyClick(&Search(), Qt::Key_Escape);
  EXPECT_EQ(Search().text(), QString());
  EXPECT_TRUE(form_.isVisible());
  QTest::keyClick(&Search(), Qt::Key_Escape);
  EXPECT_FALSE(form_.isVisible());
}

TEST_F(OverviewSearch, CtrlFFocusesTheSearchBox) {
  List(form_).setFocus();
  QTest::keyClick(&form_, Qt::Key_F, Qt::ControlModifier);
  EXPECT_TRUE(Search().hasFocus());
}

TEST_F(OverviewSearch, F5ReadsTheTableAgainAndUpdatesTheButtons) {
  Select(form_, u"Nacht"_s);
  AddItem(9, u"Blok van een ander"_s);
  QTest::keyClick(&form_, Qt::Key_F5);
  EXPECT_EQ(Lines(form_).size(), 4);
  EXPECT_FALSE(Enabled(form_, u"cmdOpen"_s));
}

// After closing an editor the same lines are visible.
TEST_F(OverviewSearch, RefillKeepsThePlaceInALongList) {
  for (int id = 10; id < 110; ++id)
    AddItem(id, u"Blok %1"_s.arg(id));
  QTest::keyClick(&form_, Qt::Key_F5);
  QCoreApplication::processEvents();
  QScrollBar& place = *List(form_).verticalScrollBar();
  place.setValue(place.maximum() / 2);
  const int before = place.value();
  ASSERT_GT(before, 0);
  Click(form_, u"cmdNieuw"_s);
  QCoreApplication::processEvents();
  EXPECT_EQ(place.value(), before);
}

TEST_F(OverviewSearch, InsertAndEnterAreNewAndOpen) {
  QTest::keyClick(&List(form_), Qt::Key_Insert);
  Select(form_, u"Nacht"_s);
  QTest::keyClick(&List(form_), Qt::Key_Return);
  EXPECT_EQ(visits_, (QStringList{u"ItemsDetail NIEUW"_s, u"ItemsDetail 4"_s}));
}

TEST_F(OverviewSearch, KeysOfDisabledButtonsDoNothing) {
  QTest::keyClick(&List(form_), Qt::Key_Return);
  QTest::keyClick(&List(form_), Qt::Key_Delete);
  EXPECT_TRUE(visits_.isEmpty());
  EXPECT_TRUE(boxes_.Shown().empty());
}

TEST_F(OverviewSearch, DeleteIsRemove) {
  AddPingle(1, u"Intro"_s);
  frmItemPingles form(nullptr);
  Open(form);
  Select(form, u"Intro"_s);
  boxes_.Answer(desktop::kAnswerYes);
  QTest::keyClick(&List(form), Qt::Key_Delete);
  EXPECT_EQ(IDs(u"ItemPingles"_s), QList<int>());
}

TEST_F(OverviewSearch, DeleteInTheSearchBoxOnlyEditsTheText) {
  AddPingle(1, u"Intro"_s);
  frmItemPingles form(nullptr);
  Open(form);
  Select(form, u"Intro"_s);
  QTest::keyClick(&Child<QLineEdit>(form, u"txtZoek"_s), Qt::Key_Delete);
  EXPECT_TRUE(boxes_.Shown().empty());
  EXPECT_EQ(IDs(u"ItemPingles"_s), QList<int>{1});
}

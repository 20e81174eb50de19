// SPDX-License-Identifier: MIT
#include "catalogue/frmItemSpots.h"
#include "data/forms/Screens.h"
#include "platform/controls/ListBox.h"
#include "tests/catalogue/CatalogueTest.h"

#include <QCheckBox>
#include <QFile>
#include <QLabel>

using namespace Qt::StringLiterals;

class ItemSpotList : public CatalogueTestInBothModes {
 protected:
  void AddThree() {
    AddSpot({3, u"banaan"_s, {}, 1});
    AddSpot({1, u"Citroen"_s, {}, 1});
    AddSpot({2, u"Appel"_s, {}, 0});
  }
};

INSTANTIATE_TEST_SUITE_P(Modes, ItemSpotList, ::testing::Values(Station::Mode::Online, Station::Mode::Offline),
                         ModeName);

TEST_P(ItemSpotList, OpensWithTheActiveOnesSortedAsTheDatabaseSorts) {
  AddThree();
  frmItemSpots form(nullptr);
  Open(form);
  EXPECT_EQ(Lines(form), (QStringList{u"banaan"_s, u"Citroen"_s}));
  EXPECT_EQ(List(form).ItemData(0), 3);
  EXPECT_EQ(List(form).ItemData(1), 1);
  EXPECT_EQ(List(form).ListIndex(), -1);
  EXPECT_TRUE(boxes_.Shown().empty());
}

TEST_P(ItemSpotList, CheckBoxesChooseActiveAndInactive) {
  AddThree();
  // Another value than 0 and 1: never shown here, not even with both boxes checked.
  AddSpot({9, u"Vreemd"_s, {}, 7});
  frmItemSpots form(nullptr);
  Open(form);
  Click(form, u"chkNietAktieve"_s);
  EXPECT_EQ(Lines(form), (QStringList{u"Appel"_s, u"banaan"_s, u"Citroen"_s}));
  Click(form, u"chkAktieve"_s);
  EXPECT_EQ(Lines(form), QStringList{u"Appel"_s});
  Click(form, u"chkNietAktieve"_s);
  EXPECT_EQ(Lines(form), QStringList());
  EXPECT_TRUE(boxes_.Shown().empty());
}

// Without a checked box the query would find a record with the flag value that no record has.
TEST_P(ItemSpotList, WithNeitherBoxCheckedTheQueryUsesAFlagThatNoRecordHas) {
  AddThree();
  frmItemSpots form(nullptr);
  Open(form);
  AddSpot({9, u"Onmogelijk"_s, {}, -10000});
  Click(form, u"chkAktieve"_s);
  EXPECT_EQ(Lines(form), QStringList{u"Onmogelijk"_s});
}

TEST_P(ItemSpotList, EmptyTableGivesAnEmptyListWithoutError) {
  frmItemSpots form(nullptr);
  Open(form);
  EXPECT_EQ(Lines(form), QStringList());
  EXPECT_EQ(Child<QLabel>(form, u"lblAantal"_s).text(), u"0 item-spots"_s);
  EXPECT_TRUE(boxes_.Shown().empty());
}

TEST_P(ItemSpotList, RecordWithoutNameIsAnEmptyLine) {
  station_.OnCurrent(u"INSERT INTO %1 (ID, Aktief) VALUES (4, 1)"_s.arg(Table(u"ItemSpots"_s)));
  frmItemSpots form(nullptr);
  Open(form);
  EXPECT_EQ(Lines(form), QStringList{QString()});
  EXPECT_EQ(List(form).ItemData(0), 4);
}

TEST_P(ItemSpotList, OpenPassesTheIdToTheEditorAndRefills) {
  AddThree();
  frmItemSpots form(nullptr);
  Open(form);
  Select(form, u"Citroen"_s);
  inTheEditor_ = [&] {
    station_.OnCurrent(u"UPDATE %1 SET Naam = \"Zalm\" WHERE ID = 1"_s.arg(Table(u"ItemSpots"_s)));
  };
  Click(form, u"cmdOpen"_s);
  EXPECT_EQ(visits_, QStringList{u"ItemSpotsDetail 1"_s});
  EXPECT_EQ(Lines(form), (QStringList{u"banaan"_s, u"Zalm"_s}));
  EXPECT_FALSE(Enabled(form, u"cmdOpen"_s));
}

TEST_P(ItemSpotList, DoubleClickIsOpen) {
  AddThree();
  frmItemSpots form(nullptr);
  Open(form);
  controls::ListBox& list = List(form);
  const QPoint line = list.visualRect(list.model()->index(0, 0)).center();
  QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, line);
  QTest::mouseDClick(list.viewport(), Qt::LeftButton, {}, line);
  EXPECT_EQ(visits_, QStringList{u"ItemSpotsDetail 3"_s});
}

TEST_P(ItemSpotList, NewOpensTheEditorWithANewRecord) {
  frmItemSpots form(nullptr);
  Open(form);
  inTheEditor_ = [&] { AddSpot({1, u"Nieuw"_s, {}, 1}); };
  Click(form, u"cmdNieuw"_s);
  EXPECT_EQ(visits_, QStringList{u"ItemSpotsDetail NIEUW"_s});
  EXPECT_EQ(Lines(form), QStringList{u"Nieuw"_s});
}

TEST_P(ItemSpotList, DeactivatedRecordDisappearsWithoutAQuestion) {
  AddThree();
  frmItemSpots form(nullptr);
  Open(form);
  Select(form, u"banaan"_s);
  Click(form, u"cmdDesaktiveer"_s);
  EXPECT_EQ(Lines(form), QStringList{u"Citroen"_s});
  EXPECT_FALSE(Enabled(form, u"cmdDesaktiveer"_s));
  EXPECT_TRUE(boxes_.Shown().empty());
  EXPECT_TRUE(global.lastResult);
  EXPECT_EQ(
      Numbers(station_.CurrentRows(u"SELECT Aktief FROM %1 ORDER BY ID"_s.arg(Table(u"ItemSpots"_s))), u"Aktief"_s),
      (QList<int>{1, 0, 0}));
  const QStringList logged = GetParam() == Station::Mode::Online
                                 ? QStringList()
                                 : QStringList{u"UPDATE tblItemSpots SET Aktief = 0 WHERE ID = 3"_s};
  EXPECT_EQ(station_.Log(), logged);
}

TEST_P(ItemSpotList, RemoveOpensTheCleanupForTheSelectedLine) {
  AddThree();
  frmItemSpots form(nullptr);
  Open(form);
  Select(form, u"Citroen"_s);
  ModalDriver modal;
  modal.OnNext(u"frmItemSpotOpruimen"_s, [&](QDialog& window) {
    EXPECT_EQ(global.gstrOpruimenID, u"1"_s);
    EXPECT_EQ(window.parentWidget(), &form);
    station_.OnCurrent(u"DELETE FROM %1 WHERE ID = 3"_s.arg(Table(u"ItemSpots"_s)));
    Click(window, u"cmdSluiten"_s);
  });
  Click(form, u"cmdVerwijder"_s);
  EXPECT_TRUE(modal.Done());
  EXPECT_EQ(Lines(form), QStringList{u"Citroen"_s});
  EXPECT_FALSE(Enabled(form, u"cmdVerwijder"_s));
}

// The check box refills without updating the buttons: they remain enabled without a selection.
TEST_P(ItemSpotList, ButtonsPressedWithoutASelectionReportUnderTheirOwnNames) {
  AddThree();
  frmItemSpots form(nullptr);
  Open(form);
  for (const QString& button : {u"cmdOpen"_s, u"cmdVerwijder"_s, u"cmdDesaktiveer"_s}) {
    Select(form, u"banaan"_s);
    Click(form, u"chkNietAktieve"_s);
    EXPECT_EQ(List(form).ListIndex(), -1);
    ASSERT_TRUE(Enabled(form, button));
    Click(form, button);
    EXPECT_EQ(boxes_.Last().title, button + u"_Click"_s);
    EXPECT_EQ(boxes_.Last().style, 16);
  }
  EXPECT_EQ(boxes_.Shown().size(), 3u);
  EXPECT_TRUE(visits_.isEmpty());
  EXPECT_EQ(station_.Log(), QStringList());
  EXPECT_EQ(IDs(u"ItemSpots"_s), (QList<int>{1, 2, 3}));
}

TEST_P(ItemSpotList, TwoRecordsWithTheSameNameAreDistinguishedByID) {
  AddSpot({1, u"Dubbel"_s, {}, 1});
  AddSpot({2, u"Dubbel"_s, {}, 1});
  frmItemSpots form(nullptr);
  Open(form);
  List(form).SetListIndex(1);
  const qint64 second = List(form).ItemData(1);
  Click(form, u"cmdOpen"_s);
  EXPECT_EQ(visits_, QStringList{u"ItemSpotsDetail "_s + QString::number(second)});
}

TEST_P(ItemSpotList, ShowsLongAndForeignNamesInFull) {
  const QString longName(255, u'é');
  const QString hebrew = u"שלום רדיו"_s;
  const QString emoji = u"Spot 🎄 kerst"_s;
  AddSpot({1, longName, {}, 1});
  AddSpot({2, hebrew, {}, 1});
  AddSpot({3, emoji, {}, 1});
  frmItemSpots form(nullptr);
  Open(form);
  form.grab();
  QStringList lines = Lines(form);
  EXPECT_TRUE(lines.contains(longName));
  EXPECT_TRUE(lines.contains(hebrew));
  EXPECT_TRUE(lines.contains(emoji));
}

TEST_P(ItemSpotList, ListEmptiedByAnotherUserStillWorks) {
  AddThree();
  frmItemSpots form(nullptr);
  Open(form);
  Select(form, u"banaan"_s);
  station_.OnCurrent(u"DELETE FROM "_s + Table(u"ItemSpots"_s));
  Click(form, u"cmdDesaktiveer"_s);
  EXPECT_EQ(Lines(form), QStringList());
  EXPECT_TRUE(boxes_.Shown().empty());
}

TEST_P(ItemSpotList, AfterAButtonIsDisabledTheListGetsTheKeys) {
  AddThree();
  frmItemSpots form(nullptr);
  Open(form);
  List(form).SetListIndex(0);
  auto& button = Child<QPushButton>(form, u"cmdDesaktiveer"_s);
  button.setFocus();
  QTest::keyClick(&button, Qt::Key_Space);
  EXPECT_FALSE(button.isEnabled());
  EXPECT_EQ(form.focusWidget(), &List(form));
}

TEST_P(ItemSpotList, UnreadableDatabaseIsReportedAndTheListKeepsItsLines) {
  AddThree();
  frmItemSpots form(nullptr);
  Open(form);
  LoseDatabase();
  Click(form, u"chkNietAktieve"_s);
  EXPECT_FALSE(OnlyError(u"FillLstOverzicht"_s).isEmpty());
  EXPECT_EQ(Lines(form).size(), 2);
  FindDatabase();
  QApplication::setActiveWindow(&form);  // after the box
  QTest::keyClick(&form, Qt::Key_F5);
  EXPECT_EQ(Lines(form).size(), 3);
}

TEST_P(ItemSpotList, OpensEmptyWithItsErrorWhenTheDatabaseIsMissing) {
  LoseDatabase();
  frmItemSpots form(nullptr);
  Open(form);
  EXPECT_TRUE(OnlyError(u"FillLstOverzicht"_s).contains(u"Ovalisto"_s));
  EXPECT_EQ(Lines(form), QStringList());
  EXPECT_TRUE(List(form).EmptyText().startsWith(u"De lijst kon niet gelezen worden."_s));
  EXPECT_FALSE(Enabled(form, u"cmdOpen"_s));
}

TEST_P(ItemSpotList, MissingEditorIsAnErrorOfTheButton) {
  RegisterScreen(Screen::ItemSpotsDetail, {});
  frmItemSpots form(nullptr);
  Open(form);
  Click(form, u"cmdNieuw"_s);
  OnlyError(u"cmdNieuw_Click"_s);
}

// SPDX-License-Identifier: MIT
#include "catalogue/frmItems.h"
#include "platform/controls/ListBox.h"
#include "tests/catalogue/CatalogueTest.h"

using namespace Qt::StringLiterals;

class ItemList : public CatalogueTestInBothModes {};

INSTANTIATE_TEST_SUITE_P(Modes, ItemList, ::testing::Values(Station::Mode::Online, Station::Mode::Offline), ModeName);

TEST_P(ItemList, BothBoxesCheckedShowEveryRecord) {
  AddItem(1, u"Ochtend"_s, 1);
  AddItem(2, u"Middag"_s, 0);
  AddItem(3, u"Avond"_s, 7);
  frmItems form(nullptr);
  Open(form);
  EXPECT_EQ(Lines(form), QStringList{u"Ochtend"_s});
  Click(form, u"chkNietAktieve"_s);
  EXPECT_EQ(Lines(form), (QStringList{u"Avond"_s, u"Middag"_s, u"Ochtend"_s}));
  Click(form, u"chkAktieve"_s);
  EXPECT_EQ(Lines(form), QStringList{u"Middag"_s});
  Click(form, u"chkNietAktieve"_s);
  EXPECT_EQ(Lines(form), QStringList());
  EXPECT_TRUE(boxes_.Shown().empty());
}

TEST_P(ItemList, WithNeitherBoxCheckedTheQueryUsesAFlagThatNoRecordHas) {
  AddItem(1, u"Ochtend"_s, 1);
  AddItem(2, u"Onmogelijk"_s, -10000);
  frmItems form(nullptr);
  Open(form);
  Click(form, u"chkAktieve"_s);
  EXPECT_EQ(Lines(form), QStringList{u"Onmogelijk"_s});
}

TEST_P(ItemList, OpenAndNewOpenTheItemEditor) {
  AddItem(12, u"Ochtend"_s);
  frmItems form(nullptr);
  Open(form);
  Select(form, u"Ochtend"_s);
  Click(form, u"cmdOpen"_s);
  Click(form, u"cmdNieuw"_s);
  EXPECT_EQ(visits_, (QStringList{u"ItemsDetail 12"_s, u"ItemsDetail NIEUW"_s}));
}

TEST_P(ItemList, DeactivateIsEnabledFromTheStartAndThenReportsTheMissingSelection) {
  AddItem(1, u"Ochtend"_s);
  frmItems form(nullptr);
  Open(form);
  ASSERT_TRUE(Enabled(form, u"cmdDesaktiveer"_s));
  Click(form, u"cmdDesaktiveer"_s);
  EXPECT_EQ(OnlyError(u"cmdDesaktiveer_Click"_s), u"Er is geen regel gekozen."_s);
  EXPECT_EQ(Lines(form), QStringList{u"Ochtend"_s});
}

TEST_P(ItemList, DeactivateWritesTheFlagAndRefills) {
  AddItem(1, u"Ochtend"_s);
  AddItem(2, u"Middag"_s);
  frmItems form(nullptr);
  Open(form);
  Select(form, u"Ochtend"_s);
  Click(form, u"cmdDesaktiveer"_s);
  EXPECT_EQ(Lines(form), QStringList{u"Middag"_s});
  EXPECT_TRUE(Enabled(form, u"cmdDesaktiveer"_s));
  EXPECT_EQ(Numbers(station_.CurrentRows(u"SELECT Aktief FROM %1 ORDER BY ID"_s.arg(Table(u"Items"_s))), u"Aktief"_s),
            (QList<int>{0, 1}));
  const QStringList logged = GetParam() == Station::Mode::Online
                                 ? QStringList()
                                 : QStringList{u"UPDATE tblItems SET Aktief = 0 WHERE ID = 1"_s};
  EXPECT_EQ(station_.Log(), logged);
}

TEST_P(ItemList, RemoveOpensTheItemCleanup) {
  AddItem(4, u"Ochtend"_s);
  frmItems form(nullptr);
  Open(form);
  Select(form, u"Ochtend"_s);
  ModalDriver modal;
  modal.OnNext(u"frmItemOpruimen"_s, [&](QDialog& window) {
    EXPECT_EQ(global.gstrOpruimenID, u"4"_s);
    EXPECT_EQ(window.parentWidget(), &form);
    Click(window, u"cmdSluiten"_s);
  });
  Click(form, u"cmdVerwijder"_s);
  EXPECT_TRUE(modal.Done());
  EXPECT_EQ(Lines(form), QStringList{u"Ochtend"_s});
}

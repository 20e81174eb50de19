// SPDX-License-Identifier: MIT
#include "platform/desktop/Lock.h"
#include "platform/desktop/MessageBox.h"
#include "tests/items/ItemEditor.h"

using namespace Qt::StringLiterals;

namespace {

class ItemStates : public ItemEditor {
 protected:
  void ExpectOpen(const QWidget& field, bool open) const {
    const QPalette& palette = editor_->palette();
    EXPECT_EQ(field.isEnabled(), open) << field.objectName().toStdString();
    EXPECT_EQ(desktop::FieldBackground(&field), palette.color(open ? QPalette::Base : QPalette::Button))
        << field.objectName().toStdString();
  }
  void ExpectLocked(const QLineEdit& field, bool locked) const {
    EXPECT_EQ(field.isReadOnly(), locked) << field.objectName().toStdString();
    EXPECT_EQ(desktop::FieldBackground(&field), editor_->palette().color(locked ? QPalette::Button : QPalette::Base));
  }
};

}  // namespace

TEST_F(ItemStates, HasEveryControlUnderItsName) {
  OpenNew();
  for (const QString& name :
       {u"txtNaam"_s, u"txtOpt2Directory"_s, u"txtOpt2VastNaamGedeelte"_s, u"txtOpt2FileExtensie"_s,
        u"txtOpt2Voorbeeld"_s, u"txtAantalSpots"_s, u"txtMaxAantalSpots"_s}) {
    Edit(name);
  }
  for (const QString& name : {u"chkAktief"_s, u"chkRandomizeMeerdereSpots"_s, u"chkOpenerPingle"_s,
                              u"chkMiddenPingle"_s, u"chkSluiterPingle"_s}) {
    Check(name);
  }
  for (const QString& name : {u"opt1"_s, u"opt2"_s, u"opt1Spot"_s, u"optMeerdereSpots"_s})
    Option(name);
  for (const QString& name :
       {u"cmdOpt1Toevoegen"_s, u"cmdOpt1Wijzigen"_s, u"cmdOpt1Verwijderen"_s, u"cmdDirectory"_s, u"cmdShowItemSpots"_s,
        u"cmdShowItemPingles"_s, u"cmdNormalizeItem"_s, u"cmdOk"_s, u"cmdAnnuleren"_s}) {
    Button(name);
  }
  for (const QString& name : {u"cboOpt2VariabelNaamGedeelte"_s, u"cboOpt2Eerstedagvanweek"_s, u"cboOpenerPingle"_s,
                              u"cboMiddenPingle"_s, u"cboSluiterPingle"_s}) {
    Combo(name);
  }
  EXPECT_EQ(Mix().objectName(), u"ledMix"_s);
  EXPECT_EQ(List().objectName(), u"lstOpt1ItemSpots"_s);
}

TEST_F(ItemStates, OptionOneEnablesTheListAndDisablesThePattern) {
  OpenNew();
  EXPECT_TRUE(Option(u"opt1"_s).isChecked());
  ExpectOpen(List(), true);
  ExpectOpen(Edit(u"txtOpt2VastNaamGedeelte"_s), false);
  ExpectOpen(Edit(u"txtOpt2FileExtensie"_s), false);
  ExpectOpen(Edit(u"txtOpt2Directory"_s), false);
  ExpectOpen(Edit(u"txtOpt2Voorbeeld"_s), false);
  ExpectOpen(Combo(u"cboOpt2VariabelNaamGedeelte"_s), false);
  ExpectOpen(Combo(u"cboOpt2Eerstedagvanweek"_s), false);
}

TEST_F(ItemStates, OptionTwoEnablesThePatternAndClearsTheList) {
  OpenNew();
  FillListItem();
  Option(u"opt2"_s).click();
  EXPECT_EQ(List().ListCount(), 0);
  ExpectOpen(List(), false);
  ExpectOpen(Edit(u"txtOpt2VastNaamGedeelte"_s), true);
  ExpectOpen(Edit(u"txtOpt2FileExtensie"_s), true);
  ExpectOpen(Combo(u"cboOpt2VariabelNaamGedeelte"_s), true);
  for (const QString& name : {u"txtOpt2Directory"_s, u"txtOpt2Voorbeeld"_s})
    ExpectLocked(Edit(name), true);
}

TEST_F(ItemStates, ReturningToOptionOneClearsThePattern) {
  OpenNew();
  FillPatternItem();
  Combo(u"cboOpt2VariabelNaamGedeelte"_s).SetListIndex(2);
  Combo(u"cboOpt2Eerstedagvanweek"_s).SetListIndex(1);
  EXPECT_FALSE(Edit(u"txtOpt2Voorbeeld"_s).text().isEmpty());
  Option(u"opt1"_s).click();
  for (const QString& name :
       {u"txtOpt2Directory"_s, u"txtOpt2VastNaamGedeelte"_s, u"txtOpt2FileExtensie"_s, u"txtOpt2Voorbeeld"_s}) {
    EXPECT_TRUE(Edit(name).text().isEmpty()) << name.toStdString();
  }
  EXPECT_EQ(Combo(u"cboOpt2VariabelNaamGedeelte"_s).ListIndex(), -1);
  EXPECT_EQ(Combo(u"cboOpt2Eerstedagvanweek"_s).ListIndex(), -1);
}

TEST_F(ItemStates, TheFirstDayIsEnabledForTheWeekOnly) {
  OpenNew();
  FillPatternItem();
  controls::ComboBox& day = Combo(u"cboOpt2Eerstedagvanweek"_s);
  ExpectOpen(day, false);
  Combo(u"cboOpt2VariabelNaamGedeelte"_s).SetListIndex(2);
  ExpectOpen(day, true);
  day.SetListIndex(1);
  Combo(u"cboOpt2VariabelNaamGedeelte"_s).SetListIndex(3);
  ExpectOpen(day, false);
  EXPECT_EQ(day.ListIndex(), -1);
}

TEST_F(ItemStates, OneSpotClearsAndLocksTheNumbers) {
  OpenNew();
  FillPatternItem();
  Option(u"optMeerdereSpots"_s).click();
  Edit(u"txtAantalSpots"_s).setText(u"2"_s);
  Edit(u"txtMaxAantalSpots"_s).setText(u"4"_s);
  Check(u"chkRandomizeMeerdereSpots"_s).setChecked(true);
  Check(u"chkMiddenPingle"_s).setChecked(true);
  ExpectLocked(Edit(u"txtAantalSpots"_s), false);
  ExpectLocked(Edit(u"txtMaxAantalSpots"_s), false);
  Option(u"opt1Spot"_s).click();
  EXPECT_TRUE(Edit(u"txtAantalSpots"_s).text().isEmpty());
  EXPECT_TRUE(Edit(u"txtMaxAantalSpots"_s).text().isEmpty());
  ExpectLocked(Edit(u"txtAantalSpots"_s), true);
  ExpectLocked(Edit(u"txtMaxAantalSpots"_s), true);
  for (const QString& name : {u"chkRandomizeMeerdereSpots"_s, u"chkMiddenPingle"_s}) {
    EXPECT_FALSE(Check(name).isChecked());
    EXPECT_FALSE(Check(name).isEnabled());
  }
}

TEST_F(ItemStates, WithAListTheMaximumAlwaysEqualsTheNumberOfSpots) {
  InsertListItem(1, u"Lijst"_s, {1, 2, 3});
  Open(u"1"_s);
  Option(u"optMeerdereSpots"_s).click();
  EXPECT_EQ(Edit(u"txtMaxAantalSpots"_s).text(), u"3"_s);
  ExpectLocked(Edit(u"txtMaxAantalSpots"_s), true);
  ExpectLocked(Edit(u"txtAantalSpots"_s), false);
  List().SetListIndex(0);
  Click(u"cmdOpt1Verwijderen"_s);
  EXPECT_EQ(Edit(u"txtMaxAantalSpots"_s).text(), u"2"_s);
}

TEST_F(ItemStates, AnUncheckedJingleBoxClearsAndLocksItsCombo) {
  OpenNew();
  Option(u"optMeerdereSpots"_s).click();  // else the middle one cannot be checked
  for (const QString& name : {u"Opener"_s, u"Midden"_s, u"Sluiter"_s}) {
    controls::ComboBox& combo = Combo(u"cbo"_s + name + u"Pingle");
    EXPECT_TRUE(desktop::IsLocked(&combo));
    Check(u"chk"_s + name + u"Pingle").click();
    EXPECT_FALSE(desktop::IsLocked(&combo));
    combo.SetListIndex(1);
    Check(u"chk"_s + name + u"Pingle").click();
    EXPECT_EQ(combo.ListIndex(), -1);
    EXPECT_TRUE(desktop::IsLocked(&combo));
  }
}

TEST_F(ItemStates, TheButtonsFollowTheOptionAndTheSelection) {
  InsertListItem(1, u"Lijst"_s, {1, 2});
  Open(u"1"_s);
  EXPECT_TRUE(Button(u"cmdOpt1Toevoegen"_s).isEnabled());
  EXPECT_FALSE(Button(u"cmdOpt1Wijzigen"_s).isEnabled());
  EXPECT_FALSE(Button(u"cmdDirectory"_s).isEnabled());
  List().SetListIndex(1);
  EXPECT_TRUE(Button(u"cmdOpt1Wijzigen"_s).isEnabled());
  EXPECT_TRUE(Button(u"cmdOpt1Verwijderen"_s).isEnabled());
  Option(u"opt2"_s).click();
  for (const QString& name : {u"cmdOpt1Toevoegen"_s, u"cmdOpt1Wijzigen"_s, u"cmdOpt1Verwijderen"_s}) {
    EXPECT_FALSE(Button(name).isEnabled()) << name.toStdString();
  }
  EXPECT_TRUE(Button(u"cmdDirectory"_s).isEnabled());
  EXPECT_TRUE(Button(u"cmdOk"_s).isEnabled());
  EXPECT_FALSE(testing_support::Child<QLabel>(*editor_, u"lblVergrendeld"_s).isVisible());
}

TEST_F(ItemStates, ALockedItemIsReadOnly) {
  InsertListItem(1, u"Lijst"_s, {1, 2});
  station_.OnServer(u"UPDATE tblItems SET Locked = -1"_s);
  Open(u"1"_s);
  EXPECT_TRUE(editor_->IsLocked());
  EXPECT_TRUE(testing_support::Child<QLabel>(*editor_, u"lblVergrendeld"_s).isVisible());
  List().SetListIndex(0);
  for (const QString& name :
       {u"cmdOpt1Toevoegen"_s, u"cmdOpt1Wijzigen"_s, u"cmdOpt1Verwijderen"_s, u"cmdDirectory"_s, u"cmdOk"_s}) {
    EXPECT_FALSE(Button(name).isEnabled()) << name.toStdString();
  }
  const desktop::MessageBoxScript boxes;
  Q_EMIT List().doubleClicked();
  Edit(u"txtNaam"_s).setText(u"anders"_s);
  Click(u"cmdAnnuleren"_s);
  EXPECT_TRUE(boxes.Shown().empty());
  EXPECT_FALSE(IsOpen());
  EXPECT_EQ(station_.ServerRows(u"SELECT Naam FROM tblItems"_s).Field(u"Naam"_s).toString(), u"Lijst"_s);
}

TEST_F(ItemStates, ALockedPatternItemHasItsFolderButtonDisabled) {
  InsertListItem(1, u"Patroon"_s, {});
  station_.OnServer(u"UPDATE tblItems SET ItemSpotsOptID = 2, Locked = -1"_s);
  Open(u"1"_s);
  EXPECT_TRUE(Option(u"opt2"_s).isChecked());
  EXPECT_FALSE(Button(u"cmdDirectory"_s).isEnabled());
  EXPECT_FALSE(Button(u"cmdOk"_s).isEnabled());
}

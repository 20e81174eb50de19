// SPDX-License-Identifier: MIT
#include "data/Messages.h"
#include "platform/desktop/MessageBox.h"
#include "tests/items/ItemEditor.h"

#include <vector>

using namespace Qt::StringLiterals;

namespace {

class ItemValidation : public ItemEditor {
 protected:
  // Presses OK; expects exactly this message, the focus in that control, and the form to stay open and dirty.
  void ExpectRefused(int message, const QString& value1, const QString& value2, const QString& focus) {
    const desktop::MessageBoxScript boxes;
    Click(u"cmdOk"_s);
    ASSERT_EQ(boxes.Shown().size(), 1U);
    EXPECT_EQ(boxes.Last().text, GetMsgElements(message, value1, value2).text) << boxes.Last().text.toStdString();
    EXPECT_EQ(boxes.Last().title, u"Items"_s);
    EXPECT_TRUE(IsOpen());
    EXPECT_TRUE(editor_->IsDirty());
    if (!focus.isEmpty()) {
      EXPECT_EQ(editor_->focusWidget()->objectName(), focus);
    }
  }

  void ExpectSaved() {
    const desktop::MessageBoxScript boxes;
    Click(u"cmdOk"_s);
    EXPECT_TRUE(boxes.Shown().empty()) << boxes.Last().text.toStdString();
    EXPECT_FALSE(IsOpen());
  }
};

}  // namespace

TEST_F(ItemValidation, AnEmptyOrBlankNameIsRefused) {
  OpenNew();
  FillListItem();
  Edit(u"txtNaam"_s).clear();
  ExpectRefused(1500, u"Item-naam"_s, {}, u"txtNaam"_s);
  Edit(u"txtNaam"_s).setText(u"   "_s);
  ExpectRefused(1500, u"Item-naam"_s, {}, u"txtNaam"_s);
}

TEST_F(ItemValidation, ANameOf50CharactersIsAccepted51Refused) {
  OpenNew();
  FillListItem();
  Edit(u"txtNaam"_s).setText(QString(51, u'n'));
  ExpectRefused(1506, u"Item-naam"_s, u"50"_s, u"txtNaam"_s);
  Edit(u"txtNaam"_s).setText(QString(50, u'n'));
  ExpectSaved();
}

TEST_F(ItemValidation, LengthsAreCountedAsTypedBlanksIncluded) {
  OpenNew();
  FillPatternItem();
  Edit(u"txtNaam"_s).setText(QString(50, u'n') + u' ');
  ExpectRefused(1506, u"Item-naam"_s, u"50"_s, u"txtNaam"_s);
  Edit(u"txtNaam"_s).setText(u"Blok"_s);
  Edit(u"txtOpt2FileExtensie"_s).setText(u" mp3"_s);
  ExpectRefused(1506, u"File-extensie"_s, u"3"_s, u"txtOpt2FileExtensie"_s);
}

TEST_F(ItemValidation, ANameThatExistsInAnotherLetterCaseIsRefused) {
  InsertListItem(1, u"BLOK A"_s, {1});
  OpenNew();
  FillListItem();
  Edit(u"txtNaam"_s).setText(u" Blok A "_s);
  ExpectRefused(1600, u"Blok A"_s, u"Item-naam"_s, u"txtNaam"_s);
}

TEST_F(ItemValidation, AnItemKeepsItsOwnName) {
  InsertListItem(1, u"Blok A"_s, {1});
  Open(u"1"_s);
  ExpectSaved();
}

TEST_F(ItemValidation, OptionOneNeedsASpot) {
  OpenNew();
  Edit(u"txtNaam"_s).setText(u"Blok"_s);
  ExpectRefused(5005, {}, {}, {});
}

TEST_F(ItemValidation, OptionTwoNeedsAFolderOfAtMost240Characters) {
  OpenNew();
  FillPatternItem();
  Edit(u"txtOpt2Directory"_s).clear();
  ExpectRefused(1500, u"Directory"_s, {}, u"txtOpt2Directory"_s);
  Edit(u"txtOpt2Directory"_s).setText(QString(241, u'd'));
  ExpectRefused(1506, u"Directory"_s, u"240"_s, u"txtOpt2Directory"_s);
  Edit(u"txtOpt2Directory"_s).setText(QString(240, u'd'));
  ExpectSaved();
}

TEST_F(ItemValidation, OptionTwoNeedsAFixedPartOfAtMost50Characters) {
  OpenNew();
  FillPatternItem();
  Edit(u"txtOpt2VastNaamGedeelte"_s).clear();
  ExpectRefused(1500, u"Vast Naam-gedeelte"_s, {}, u"txtOpt2VastNaamGedeelte"_s);
  Edit(u"txtOpt2VastNaamGedeelte"_s).setText(QString(51, u'v'));
  ExpectRefused(1506, u"Vast Naam-gedeelte"_s, u"50"_s, u"txtOpt2VastNaamGedeelte"_s);
  Edit(u"txtOpt2VastNaamGedeelte"_s).setText(QString(50, u'v'));
  ExpectSaved();
}

TEST_F(ItemValidation, OptionTwoNeedsAVariablePart) {
  OpenNew();
  FillPatternItem();
  Combo(u"cboOpt2VariabelNaamGedeelte"_s).SetListIndex(-1);
  ExpectRefused(1501, u"Variabel Naam-gedeelte"_s, u"format"_s, u"cboOpt2VariabelNaamGedeelte"_s);
}

TEST_F(ItemValidation, OptionTwoNeedsAnExtensionOfAtMost3Characters) {
  OpenNew();
  FillPatternItem();
  Edit(u"txtOpt2FileExtensie"_s).clear();
  ExpectRefused(1500, u"File-extensie"_s, {}, u"txtOpt2FileExtensie"_s);
  Edit(u"txtOpt2FileExtensie"_s).setText(u"wave"_s);
  ExpectRefused(1506, u"File-extensie"_s, u"3"_s, u"txtOpt2FileExtensie"_s);
  Edit(u"txtOpt2FileExtensie"_s).setText(u"mp3"_s);
  ExpectSaved();
}

TEST_F(ItemValidation, TheFirstDayIsNotRequiredForTheWeek) {
  OpenNew();
  FillPatternItem();
  Combo(u"cboOpt2VariabelNaamGedeelte"_s).SetListIndex(2);
  ExpectSaved();
}

TEST_F(ItemValidation, TheNumbersOfSpotsMustBeNumeric) {
  OpenNew();
  FillPatternItem();
  Option(u"optMeerdereSpots"_s).setChecked(true);
  Edit(u"txtMaxAantalSpots"_s).setText(u"3"_s);
  for (const QString& text : {u""_s, u"abc"_s, u"1e3"_s}) {
    Edit(u"txtAantalSpots"_s).setText(text);
    ExpectRefused(3028, u"Aantal spots"_s, {}, u"txtAantalSpots"_s);
  }
  Edit(u"txtAantalSpots"_s).setText(u"2"_s);
  Edit(u"txtMaxAantalSpots"_s).setText(u"veel"_s);
  ExpectRefused(3028, u"Maximum aantal spots"_s, {}, u"txtMaxAantalSpots"_s);
}

TEST_F(ItemValidation, ZeroSpotsOrFewerAreRefused) {
  OpenNew();
  FillPatternItem();
  Option(u"optMeerdereSpots"_s).setChecked(true);
  Edit(u"txtMaxAantalSpots"_s).setText(u"3"_s);
  for (const QString& text : {u"0"_s, u"-1"_s}) {
    Edit(u"txtAantalSpots"_s).setText(text);
    ExpectRefused(5107, u"0"_s, {}, u"txtAantalSpots"_s);
  }
  Edit(u"txtAantalSpots"_s).setText(u"1"_s);
  ExpectSaved();
}

TEST_F(ItemValidation, AsManyAsTheMaximumIsAcceptedOneMoreRefused) {
  OpenNew();
  FillPatternItem();
  Option(u"optMeerdereSpots"_s).setChecked(true);
  Edit(u"txtMaxAantalSpots"_s).setText(u"3"_s);
  Edit(u"txtAantalSpots"_s).setText(u"4"_s);
  ExpectRefused(5106, {}, {}, u"txtAantalSpots"_s);
  Edit(u"txtAantalSpots"_s).setText(u"3"_s);
  ExpectSaved();
}

TEST_F(ItemValidation, WithOneSpotTheNumbersAreNotChecked) {
  OpenNew();
  FillListItem();
  Edit(u"txtAantalSpots"_s).setText(u"abc"_s);
  ExpectSaved();
}

TEST_F(ItemValidation, ANumberWithAFractionIsRoundedHalfToEven) {
  const std::vector<std::pair<QString, int>> cases = {{u"2,5"_s, 2}, {u"3.5"_s, 4}, {u" +7 "_s, 7}, {u"0,6"_s, 1}};
  for (const auto& [text, stored] : cases) {
    OpenNew();
    FillPatternItem();
    Edit(u"txtNaam"_s).setText(text);
    Option(u"optMeerdereSpots"_s).setChecked(true);
    Edit(u"txtMaxAantalSpots"_s).setText(u"99999"_s);
    Edit(u"txtAantalSpots"_s).setText(text);
    ExpectSaved();
    const dao::Recordset row = station_.ServerRows(u"SELECT * FROM tblItems WHERE ID = %1"_s.arg(editor_->ID()));
    EXPECT_EQ(row.Field(u"AantalSpots"_s).toInt(), stored) << text.toStdString();
    EXPECT_EQ(row.Field(u"MaxAantalSpots"_s).toInt(), 99999);
  }
}

TEST_F(ItemValidation, NonPlainNumbersAreRefusedInBothBoxes) {
  OpenNew();
  FillPatternItem();
  Option(u"optMeerdereSpots"_s).setChecked(true);
  for (const QString& text : {u"1e3"_s, u"1.000"_s, u"&H10"_s, u"--1"_s, u"  "_s}) {
    Edit(u"txtAantalSpots"_s).setText(text);
    ExpectRefused(3028, u"Aantal spots"_s, {}, u"txtAantalSpots"_s);
    Edit(u"txtAantalSpots"_s).setText(u"1"_s);
    Edit(u"txtMaxAantalSpots"_s).setText(text);
    ExpectRefused(3028, u"Maximum aantal spots"_s, {}, u"txtMaxAantalSpots"_s);
  }
}

TEST_F(ItemValidation, TheChecksRunInTheirOrder) {
  OpenNew();
  Option(u"opt2"_s).setChecked(true);
  Option(u"optMeerdereSpots"_s).setChecked(true);
  ExpectRefused(1500, u"Item-naam"_s, {}, u"txtNaam"_s);
  Edit(u"txtNaam"_s).setText(u"Blok"_s);
  ExpectRefused(1500, u"Directory"_s, {}, u"txtOpt2Directory"_s);
  Edit(u"txtOpt2Directory"_s).setText(u"D:"_s);
  ExpectRefused(1500, u"Vast Naam-gedeelte"_s, {}, u"txtOpt2VastNaamGedeelte"_s);
  Edit(u"txtOpt2VastNaamGedeelte"_s).setText(u"v"_s);
  ExpectRefused(1501, u"Variabel Naam-gedeelte"_s, u"format"_s, u"cboOpt2VariabelNaamGedeelte"_s);
  Combo(u"cboOpt2VariabelNaamGedeelte"_s).SetListIndex(0);
  ExpectRefused(1500, u"File-extensie"_s, {}, u"txtOpt2FileExtensie"_s);
  Edit(u"txtOpt2FileExtensie"_s).setText(u"wav"_s);
  ExpectRefused(3028, u"Aantal spots"_s, {}, u"txtAantalSpots"_s);
  Edit(u"txtAantalSpots"_s).setText(u"0"_s);
  ExpectRefused(3028, u"Maximum aantal spots"_s, {}, u"txtMaxAantalSpots"_s);
  Edit(u"txtMaxAantalSpots"_s).setText(u"-1"_s);
  ExpectRefused(5107, u"0"_s, {}, u"txtAantalSpots"_s);
}

TEST_F(ItemValidation, ANumberThatIsTooLargeIsAnErrorAndNothingIsSaved) {
  OpenNew();
  FillPatternItem();
  Option(u"optMeerdereSpots"_s).setChecked(true);
  Edit(u"txtMaxAantalSpots"_s).setText(u"99999999999"_s);
  Edit(u"txtAantalSpots"_s).setText(u"1"_s);
  const desktop::MessageBoxScript boxes;
  Click(u"cmdOk"_s);
  ASSERT_EQ(boxes.Shown().size(), 1U);
  EXPECT_EQ(boxes.Last().title, u"OpslaanProceed"_s);
  EXPECT_TRUE(IsOpen());
  EXPECT_EQ(station_.ServerRows(u"SELECT ID FROM tblItems"_s).RecordCount(), 0);
}

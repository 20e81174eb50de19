// SPDX-License-Identifier: MIT
#include "platform/desktop/InputBox.h"
#include "tests/items/ItemEditor.h"

#include <QMap>

using namespace Qt::StringLiterals;

namespace {

// Using the editor with the keyboard.
class ItemKeyboard : public ItemEditor {
 protected:
  void OpenActive(const QString& selected) {
    Open(selected);
    editor_->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(editor_.get()));
  }
  // The names of the controls that Tab reaches, starting at the name.
  QStringList TabOrder() const {
    QStringList names;
    Edit(u"txtNaam"_s).setFocus();
    for (int step = 0; step < 60; ++step) {
      const QWidget* now = editor_->focusWidget();
      if (now == nullptr || names.contains(now->objectName())) break;
      names += now->objectName();
      QTest::keyClick(editor_->focusWidget(), Qt::Key_Tab);
    }
    return names;
  }
  // Captions with a mnemonic: visible and enabled controls.
  void ExpectUniqueMnemonics() const {
    QMap<QString, QString> owners;
    const auto take = [&](const QString& caption, const QWidget* widget) {
      const QString letter = QKeySequence::mnemonic(caption).toString();
      if (letter.isEmpty()) return;
      EXPECT_FALSE(owners.contains(letter))
          << letter.toStdString() << ": " << owners[letter].toStdString() << ", " << widget->objectName().toStdString();
      owners[letter] = widget->objectName();
    };
    for (const QAbstractButton* button : editor_->findChildren<QAbstractButton*>())
      take(button->text(), button);
    for (const QLabel* label : editor_->findChildren<QLabel*>()) {
      if (label->buddy() != nullptr) take(label->text(), label);
    }
    EXPECT_GE(owners.size(), 15);
  }
};

}  // namespace

TEST_F(ItemKeyboard, MnemonicsAreUnique) {
  OpenNew();
  ExpectUniqueMnemonics();
}

TEST_F(ItemKeyboard, TabReachesEveryControlOfOptionOne) {
  InsertListItem(1, u"Blok"_s, {1, 2});
  OpenActive(u"1"_s);
  List().SetListIndex(0);
  const QStringList reached = TabOrder();
  for (const QString& name : {u"txtNaam"_s, u"chkAktief"_s, u"opt1"_s, u"lstOpt1ItemSpots"_s, u"cmdOpt1Toevoegen"_s,
                              u"cmdOpt1Wijzigen"_s, u"cmdOpt1Verwijderen"_s, u"cmdNormalizeItem"_s, u"opt1Spot"_s,
                              u"chkOpenerPingle"_s, u"cboOpenerPingle"_s, u"chkSluiterPingle"_s, u"cboSluiterPingle"_s,
                              u"cmdShowItemSpots"_s, u"cmdShowItemPingles"_s, u"cmdOk"_s, u"cmdAnnuleren"_s}) {
    EXPECT_TRUE(reached.contains(name)) << name.toStdString() << " in " << reached.join(u' ').toStdString();
  }
  EXPECT_LT(reached.indexOf(u"lstOpt1ItemSpots"_s), reached.indexOf(u"cmdOpt1Toevoegen"_s));
}

TEST_F(ItemKeyboard, TabReachesEveryControlOfOptionTwo) {
  OpenActive(u"NIEUW"_s);
  FillPatternItem();
  Option(u"optMeerdereSpots"_s).setChecked(true);
  Combo(u"cboOpt2VariabelNaamGedeelte"_s).SetListIndex(2);
  const QStringList reached = TabOrder();
  for (const QString& name : {u"opt2"_s, u"txtOpt2Directory"_s, u"cmdDirectory"_s, u"txtOpt2VastNaamGedeelte"_s,
                              u"cboOpt2VariabelNaamGedeelte"_s, u"cboOpt2Eerstedagvanweek"_s, u"txtOpt2FileExtensie"_s,
                              u"ledMix"_s, u"optMeerdereSpots"_s, u"txtAantalSpots"_s, u"txtMaxAantalSpots"_s,
                              u"chkRandomizeMeerdereSpots"_s, u"chkMiddenPingle"_s, u"cboMiddenPingle"_s, u"cmdOk"_s}) {
    EXPECT_TRUE(reached.contains(name)) << name.toStdString() << " in " << reached.join(u' ').toStdString();
  }
  EXPECT_FALSE(reached.contains(u"opt1"_s));  // Tab stops at the chosen one
}

// The next button in tab order resets all play counts without a question, so it must not get the focus.
TEST_F(ItemKeyboard, AfterTheRemoveButtonTheListHasTheFocus) {
  InsertListItem(1, u"Blok"_s, {1, 2, 3});
  OpenActive(u"1"_s);
  List().SetListIndex(1);
  auto& remove = testing_support::Child<QPushButton>(*editor_, u"cmdOpt1Verwijderen"_s);
  remove.setFocus();
  QTest::keyClick(&remove, Qt::Key_Space);
  ASSERT_EQ(List().ListCount(), 2);
  EXPECT_EQ(editor_->focusWidget(), &List());
}

TEST_F(ItemKeyboard, EnterOnTheMixPointOpensTheInputBox) {
  OpenActive(u"NIEUW"_s);
  FillPatternItem();
  desktop::InputBoxScript input;
  input.Type(u"1200"_s);
  Mix().setFocus();
  QTest::keyClick(&Mix(), Qt::Key_Return);
  EXPECT_EQ(Mix().Value(), 1200);
  EXPECT_TRUE(IsOpen());
}

TEST_F(ItemKeyboard, TheListCanBeUsedWithKeysOnly) {
  InsertListItem(1, u"Blok"_s, {1, 2, 3});
  OpenActive(u"1"_s);
  List().setFocus();
  QTest::keyClick(&List(), Qt::Key_Down);
  EXPECT_EQ(List().ListIndex(), 0);
  QTest::keyClick(&List(), Qt::Key_Down, Qt::AltModifier);
  EXPECT_EQ(List().ItemData(1), 1);
  EXPECT_EQ(List().ListIndex(), 1);
  QTest::keyClick(&List(), Qt::Key_Delete);
  ASSERT_EQ(List().ListCount(), 2);
  EXPECT_EQ(testing_support::Child<QLabel>(*editor_, u"lblOpt1Totaal"_s).text(), u"2 item-spots, samen 1:03"_s);
  QTest::keyClick(editor_.get(), Qt::Key_Return);
  EXPECT_FALSE(IsOpen());
  dao::Recordset rows = station_.ServerRows(u"SELECT ItemSpotID FROM tblItemsItemSpots ORDER BY ItemSpotOrder"_s);
  ASSERT_EQ(rows.RecordCount(), 2);
  EXPECT_EQ(rows.Field(u"ItemSpotID"_s).toInt(), 2);
}

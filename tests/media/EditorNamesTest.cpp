// SPDX-License-Identifier: MIT
// Names and types of the editors' controls.
#include "platform/controls/DateCombo.h"
#include "platform/controls/LedPanel.h"
#include "platform/controls/LedSpin.h"
#include "platform/controls/LevelMeter.h"
#include "platform/controls/LevelScale.h"
#include "platform/controls/PositionSlider.h"
#include "tests/media/support/EditorDesk.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSet>
#include <QTimer>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace media_testing;
using testing_support::Child;
using testing_support::Plain;

namespace {

QString Caption(const QWidget& editor, const QString& button) {
  return Plain(Child<QAbstractButton>(editor, button).text());
}

// The caption of a field: the label whose buddy it is.
QString LabelOf(const QWidget& editor, const QString& field) {
  for (const QLabel* label : editor.findChildren<QLabel*>()) {
    if (label->buddy() != nullptr && label->buddy()->objectName() == field) return Plain(label->text());
  }
  return {};
}

void ExpectSharedControls(const QWidget& editor) {
  for (const QString& name : {u"txtPath"_s, u"txtNaam"_s, u"txtLengteSec"_s}) {
    EXPECT_NO_THROW(Child<QLineEdit>(editor, name)) << name.toStdString();
  }
  for (const QString& name :
       {u"cmdPath"_s, u"cmdFillName"_s, u"cmdPlay"_s, u"cmdSTOP"_s, u"cmdRREW"_s, u"cmdREW"_s, u"cmdFFW"_s,
        u"cmdFFFW"_s, u"cmdMix"_s, u"cmdResetMix"_s, u"cmdTestMix"_s, u"cmdOk"_s, u"cmdAnnuleren"_s}) {
    EXPECT_NO_THROW(Child<QPushButton>(editor, name)) << name.toStdString();
  }
  EXPECT_NO_THROW(Child<QCheckBox>(editor, u"chkAktief"_s));
  EXPECT_NO_THROW(Child<controls::LevelMeter>(editor, u"levelLeft"_s));
  EXPECT_NO_THROW(Child<controls::LevelMeter>(editor, u"levelRight"_s));
  EXPECT_NO_THROW(Child<controls::LevelScale>(editor, u"levelScale"_s));
  EXPECT_NO_THROW(Child<controls::PositionSlider>(editor, u"sliPlay"_s));
  EXPECT_NO_THROW(Child<audio::AudioPlayer>(editor, u"Player"_s));
  EXPECT_EQ(Child<QTimer>(editor, u"tmrPlayer"_s).interval(), 10);
}

void ExpectPanel(const QWidget& editor, const QString& name, int digits, int maximum) {
  const auto& panel = Child<controls::LedPanel>(editor, name);
  EXPECT_EQ(panel.Digits(), digits) << name.toStdString();
  EXPECT_EQ(panel.Minimum(), 0) << name.toStdString();
  EXPECT_EQ(panel.Maximum(), maximum) << name.toStdString();
  EXPECT_EQ(panel.Value(), 0) << name.toStdString();
}

void ExpectPanels(const QWidget& editor) {
  ExpectPanel(editor, u"ledMin"_s, 2, 100);
  ExpectPanel(editor, u"ledSec"_s, 2, 100);
  ExpectPanel(editor, u"ledMilli"_s, 3, 999);
  ExpectPanel(editor, u"ledMix"_s, 6, 999999);
  EXPECT_EQ(Child<controls::LedSpin>(editor, u"ledMix"_s).SingleStep(), 10);
}

void ExpectSharedCaptions(const QWidget& editor) {
  EXPECT_EQ(LabelOf(editor, u"txtPath"_s), u"Path:"_s);
  EXPECT_EQ(LabelOf(editor, u"txtNaam"_s), u"Naam:"_s);
  EXPECT_EQ(LabelOf(editor, u"txtLengteSec"_s), u"Lengte:"_s);
  EXPECT_EQ(LabelOf(editor, u"ledMix"_s), u"Outtromix"_s);
  EXPECT_EQ(Child<QLabel>(editor, u"lblSeconden"_s).text(), u"seconden"_s);
  EXPECT_EQ(Caption(editor, u"cmdPath"_s), u"Path ..."_s);
  EXPECT_EQ(Child<QPushButton>(editor, u"cmdPath"_s).toolTip(), u"Path bepalen"_s);
  EXPECT_EQ(Caption(editor, u"cmdFillName"_s), u"Naam invullen"_s);
  EXPECT_EQ(Caption(editor, u"cmdMix"_s), u"BEPAAL MIX"_s);
  EXPECT_EQ(Caption(editor, u"cmdResetMix"_s), u"RESET"_s);
  EXPECT_EQ(Caption(editor, u"cmdTestMix"_s), u"TEST"_s);
}

// The mnemonics of all labels with a buddy and all buttons.
void ExpectUniqueMnemonics(const QWidget& editor) {
  QSet<QString> seen;
  const auto note = [&seen](const QString& caption) {
    const QString letter = QKeySequence::mnemonic(caption).toString();
    if (letter.isEmpty()) return;
    EXPECT_FALSE(seen.contains(letter)) << letter.toStdString() << " again in " << caption.toStdString();
    seen.insert(letter);
  };
  for (const QLabel* label : editor.findChildren<QLabel*>())
    note(label->text());
  for (const QAbstractButton* button : editor.findChildren<QAbstractButton*>())
    note(button->text());
  EXPECT_GE(seen.size(), 9);
}

// Buttons with an icon only have an accessible name and a tool tip.
void ExpectNamedIconButtons(const QWidget& editor) {
  for (const QString& name : {u"cmdPlay"_s, u"cmdSTOP"_s, u"cmdRREW"_s, u"cmdREW"_s, u"cmdFFW"_s, u"cmdFFFW"_s}) {
    const auto& button = Child<QPushButton>(editor, name);
    EXPECT_FALSE(button.accessibleName().isEmpty()) << name.toStdString();
    EXPECT_FALSE(button.toolTip().isEmpty()) << name.toStdString();
    EXPECT_FALSE(button.icon().isNull()) << name.toStdString();
  }
}

// Tab moves from the first field through all controls and back.
QStringList TabOrder(const QWidget& editor) {
  QStringList names;
  const QWidget* first = &Child<QLineEdit>(editor, u"txtPath"_s);
  const QWidget* at = first;
  do {
    if ((at->focusPolicy() & Qt::TabFocus) != 0 && !at->objectName().startsWith(u"qt_"_s)) names += at->objectName();
    at = at->nextInFocusChain();
  } while (at != first && names.size() < 100);
  return names;
}

}  // namespace

TEST(ItemSpotEditor, HasEveryControlByNameAndType) {
  const EditorDesk desk;
  const auto editor = desk.OpenSpot(u"NIEUW"_s);
  ExpectSharedControls(*editor);
  ExpectPanels(*editor);
  for (const QString& name : {u"txtStartUur"_s, u"txtEindUur"_s, u"txtAantalGedraaid"_s, u"txtLaatstGedraaid"_s}) {
    EXPECT_NO_THROW(Child<QLineEdit>(*editor, name)) << name.toStdString();
  }
  EXPECT_NO_THROW(Child<controls::DateCombo>(*editor, u"cobStart"_s));
  EXPECT_NO_THROW(Child<controls::DateCombo>(*editor, u"cobStop"_s));
  EXPECT_EQ(editor->objectName(), u"frmItemSpotsDetail"_s);
}

TEST(ItemPingleEditor, HasEveryControlByNameAndTypeAndNoValidity) {
  const EditorDesk desk;
  const auto editor = desk.OpenPingle(u"NIEUW"_s);
  ExpectSharedControls(*editor);
  ExpectPanels(*editor);
  for (const QString& name : {u"cobStart"_s, u"cobStop"_s, u"txtStartUur"_s, u"txtEindUur"_s, u"txtAantalGedraaid"_s}) {
    EXPECT_EQ(editor->findChild<QWidget*>(name), nullptr) << name.toStdString();
  }
  EXPECT_EQ(editor->objectName(), u"frmItemPinglesDetail"_s);
}

TEST(ItemSpotEditor, HasItsCaptions) {
  const EditorDesk desk;
  const auto editor = desk.OpenSpot(u"NIEUW"_s);
  ExpectSharedCaptions(*editor);
  EXPECT_EQ(LabelOf(*editor, u"cobStart"_s), u"Startdatum:"_s);
  EXPECT_EQ(LabelOf(*editor, u"txtStartUur"_s), u"vanaf uur:"_s);
  EXPECT_EQ(LabelOf(*editor, u"cobStop"_s), u"Einddatum:"_s);
  EXPECT_EQ(LabelOf(*editor, u"txtEindUur"_s), u"Tot en met uur:"_s);
  EXPECT_EQ(LabelOf(*editor, u"txtAantalGedraaid"_s), u"Aantal gedraaid:"_s);
  EXPECT_EQ(LabelOf(*editor, u"txtLaatstGedraaid"_s), u"Laatst gedraaid:"_s);
  EXPECT_EQ(Caption(*editor, u"chkAktief"_s), u"Aktieve item-spot"_s);
}

TEST(ItemPingleEditor, HasItsCaptions) {
  const EditorDesk desk;
  ExpectSharedCaptions(*desk.OpenPingle(u"NIEUW"_s));
}

TEST(ItemSpotEditor, MnemonicsAreUniqueAndIconsHaveNames) {
  const EditorDesk desk;
  const auto editor = desk.OpenSpot(u"NIEUW"_s);
  ExpectUniqueMnemonics(*editor);
  ExpectNamedIconButtons(*editor);
}

TEST(ItemPingleEditor, MnemonicsAreUniqueAndIconsHaveNames) {
  const EditorDesk desk;
  const auto editor = desk.OpenPingle(u"NIEUW"_s);
  ExpectUniqueMnemonics(*editor);
  ExpectNamedIconButtons(*editor);
}

TEST(ItemSpotEditor, TabOrderIsFromTopToBottom) {
  const EditorDesk desk;
  const QStringList order = TabOrder(*desk.OpenSpot(u"NIEUW"_s));
  const QStringList expected = {u"txtPath"_s,
                                u"cmdPath"_s,
                                u"txtNaam"_s,
                                u"cmdFillName"_s,
                                u"txtLengteSec"_s,
                                u"chkAktief"_s,
                                u"cobStart"_s,
                                u"txtStartUur"_s,
                                u"cobStop"_s,
                                u"txtEindUur"_s,
                                u"txtAantalGedraaid"_s,
                                u"txtLaatstGedraaid"_s,
                                u"waveform"_s,
                                u"sliPlay"_s,
                                u"cmdRREW"_s,
                                u"cmdREW"_s,
                                u"cmdPlay"_s,
                                u"cmdSTOP"_s,
                                u"cmdFFW"_s,
                                u"cmdFFFW"_s,
                                u"ledMix"_s,
                                u"cmdZoom"_s,
                                u"cmdMix"_s,
                                u"cmdResetMix"_s,
                                u"cmdTestMix"_s,
                                u"chkAanloop"_s,
                                u"cmdVorige"_s,
                                u"cmdRest"_s,
                                u"cmdOk"_s,
                                u"cmdAnnuleren"_s};
  EXPECT_EQ(order.join(u' ').toStdString(), expected.join(u' ').toStdString());
}

// SPDX-License-Identifier: MIT
// Playing, stopping and seeking with the keyboard.
#include "platform/controls/PositionSlider.h"
#include "platform/controls/WaveformStrip.h"
#include "platform/desktop/InputBox.h"
#include "tests/media/support/EditorDesk.h"

#include <QLineEdit>

#include <gtest/gtest.h>

#include <memory>

using namespace Qt::StringLiterals;
using namespace media_testing;
using testing_support::Child;

TEST(PreviewKeys, SpacePlaysAndStopsOnWaveformAndSlider) {
  const EditorDesk desk;
  const auto editor = desk.OpenNewSpot(20'000);
  for (const QString& name : {u"waveform"_s, u"sliPlay"_s}) {
    auto* widget = editor->findChild<QWidget*>(name);
    QTest::keyClick(widget, Qt::Key_Space);
    EXPECT_EQ(Player(*editor).State(), 6) << name.toStdString();
    QTest::keyClick(widget, Qt::Key_Space);
    EXPECT_NE(Player(*editor).State(), 6) << name.toStdString();
  }
}

TEST(PreviewKeys, SpaceInATextFieldIsABlank) {
  const EditorDesk desk;
  const auto editor = desk.OpenNewSpot(20'000);
  auto& naam = Child<QLineEdit>(*editor, u"txtNaam"_s);
  naam.setFocus();
  QTest::keyClick(&naam, Qt::Key_Space);
  EXPECT_TRUE(naam.text().contains(u' '));
  EXPECT_NE(Player(*editor).State(), 6);
}

TEST(PreviewKeys, ControlSpacePlaysAndStopsAnywhere) {
  const EditorDesk desk;
  const auto editor = desk.OpenNewSpot(20'000);
  for (const QString& name : {u"txtNaam"_s, u"cobStart"_s, u"ledMix"_s, u"cmdOk"_s, u"chkAktief"_s}) {
    auto* widget = editor->findChild<QWidget*>(name);
    widget->setFocus();
    QTest::keyClick(widget, Qt::Key_Space, Qt::ControlModifier);
    EXPECT_EQ(Player(*editor).State(), 6) << name.toStdString();
    QTest::keyClick(widget, Qt::Key_Space, Qt::ControlModifier);
    EXPECT_NE(Player(*editor).State(), 6) << name.toStdString();
  }
  EXPECT_TRUE(editor->isVisible());
  EXPECT_FALSE(editor->IsDirty());
}

TEST(PreviewKeys, AltArrowsAreTheJumpButtons) {
  const EditorDesk desk;
  const auto editor = desk.OpenNewSpot(20'000);
  Click(*editor, u"cmdPlay"_s);
  auto* naam = editor->findChild<QWidget*>(u"txtNaam"_s);
  naam->setFocus();
  QTest::keyClick(naam, Qt::Key_Right, Qt::AltModifier);
  EXPECT_EQ(Player(*editor).Position(), 10'000);
  QTest::keyClick(naam, Qt::Key_Left, Qt::AltModifier);
  EXPECT_EQ(Player(*editor).Position(), 0);
}

TEST(PreviewKeys, EnterOnTheMixPanelAsksForANumberInsteadOfClosing) {
  const EditorDesk desk;
  const auto editor = desk.OpenNewSpot(20'000);
  desktop::InputBoxScript script;
  script.Type(u"2500"_s);
  auto* mix = editor->findChild<QWidget*>(u"ledMix"_s);
  mix->setFocus();
  QTest::keyClick(mix, Qt::Key_Return);
  EXPECT_EQ(Led(*editor, u"ledMix"_s), 2500);
  EXPECT_TRUE(editor->isVisible());
}

TEST(PreviewKeys, EnterInAFieldSaves) {
  const EditorDesk desk;
  const auto editor = desk.OpenNewSpot(20'000);
  auto& naam = Child<QLineEdit>(*editor, u"txtNaam"_s);
  naam.setText(u"Met Enter"_s);
  QTest::keyClick(&naam, Qt::Key_Return);
  EXPECT_FALSE(editor->isVisible());
  EXPECT_EQ(desk.Spot(1).Field(u"Naam"_s).toString(), u"Met Enter"_s);
}

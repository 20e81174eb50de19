// SPDX-License-Identifier: MIT
#include "platform/desktop/Lock.h"

#include "platform/desktop/Palettes.h"

#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QStyleFactory>
#include <QTest>

#include <gtest/gtest.h>

namespace {

using namespace Qt::StringLiterals;
using desktop::FieldBackground;
using desktop::IsLocked;
using desktop::SetLocked;

class Lock : public testing::Test {
 protected:
  void SetUp() override { QApplication::setPalette(desktop::LightPalette()); }
  void TearDown() override { QApplication::setPalette(QPalette()); }
};

// Widgets are notified of a new palette through the event queue.
void SwitchTo(const QPalette& palette) {
  QApplication::setPalette(palette);
  QCoreApplication::processEvents();
}

QColor Face() {
  return QApplication::palette().color(QPalette::Button);
}
QColor Paper() {
  return QApplication::palette().color(QPalette::Base);
}

TEST_F(Lock, LockedTextBoxHasTheButtonColourAndIgnoresTyping) {
  QLineEdit edit(u"pad"_s);
  SetLocked(&edit, true);
  EXPECT_TRUE(IsLocked(&edit));
  EXPECT_EQ(FieldBackground(&edit), Face());
  QTest::keyClicks(&edit, u"x"_s);
  EXPECT_EQ(edit.text(), u"pad"_s);
  edit.setText(u"door het programma"_s);
  EXPECT_EQ(edit.text(), u"door het programma"_s);
}

TEST_F(Lock, UnlockedTextBoxHasTheBaseColourAndAcceptsTyping) {
  QLineEdit edit;
  SetLocked(&edit, true);
  SetLocked(&edit, false);
  EXPECT_FALSE(IsLocked(&edit));
  EXPECT_EQ(FieldBackground(&edit), Paper());
  QTest::keyClicks(&edit, u"x"_s);
  EXPECT_EQ(edit.text(), u"x"_s);
}

TEST_F(Lock, LockedTextBoxCanBeFocusedAndCopied) {
  QLineEdit edit(u"pad"_s);
  SetLocked(&edit, true);
  EXPECT_TRUE(edit.isEnabled());
  EXPECT_TRUE((edit.focusPolicy() & Qt::TabFocus) != 0);
  edit.selectAll();
  EXPECT_EQ(edit.selectedText(), u"pad"_s);
}

TEST_F(Lock, ColoursFollowThePalette) {
  QLineEdit locked;
  QLineEdit unlocked;
  QComboBox combo;
  SetLocked(&locked, true);
  SetLocked(&unlocked, false);
  SetLocked(&combo, true);
  const QColor lightFace = FieldBackground(&locked);
  SwitchTo(desktop::DarkPalette());
  EXPECT_NE(FieldBackground(&locked), lightFace);
  EXPECT_EQ(FieldBackground(&locked), Face());
  EXPECT_EQ(FieldBackground(&unlocked), Paper());
  EXPECT_EQ(FieldBackground(&combo), Face());
  EXPECT_EQ(locked.palette().color(QPalette::Text), QApplication::palette().color(QPalette::Text));
}

TEST_F(Lock, ColoursFollowThePaletteInAVisibleWindow) {
  QWidget window;
  auto* edit = new QLineEdit(&window);
  SetLocked(edit, true);
  window.show();
  SwitchTo(desktop::DarkPalette());
  EXPECT_EQ(FieldBackground(edit), Face());
}

TEST_F(Lock, LockedComboKeepsItsSelection) {
  QComboBox combo;
  combo.addItems({u"een"_s, u"twee"_s, u"drie"_s});
  combo.setCurrentIndex(1);
  SetLocked(&combo, true);
  combo.show();
  QTest::keyClick(&combo, Qt::Key_Down);
  QTest::keyClick(&combo, Qt::Key_D);
  QTest::keyClick(&combo, Qt::Key_Home);
  QTest::mouseClick(&combo, Qt::LeftButton);
  EXPECT_EQ(combo.currentIndex(), 1);
  EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
  SetLocked(&combo, false);
  QTest::keyClick(&combo, Qt::Key_Down);
  EXPECT_EQ(combo.currentIndex(), 2);
}

TEST_F(Lock, WorksUnderAnyStyle) {
  for (const QString& name : QStyleFactory::keys()) {
    QLineEdit edit;
    edit.setStyle(QStyleFactory::create(name));
    SetLocked(&edit, true);
    EXPECT_EQ(FieldBackground(&edit), Face()) << name.toStdString();
    edit.style()->setParent(&edit);
  }
}

}  // namespace

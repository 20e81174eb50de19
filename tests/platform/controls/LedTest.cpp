// SPDX-License-Identifier: MIT
#include "platform/controls/LedClockGround.h"
#include "platform/controls/LedPanel.h"
#include "platform/controls/LedSpin.h"
#include "platform/desktop/ThemeColours.h"

#include <QAccessible>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>
#include <QWheelEvent>

#include <gtest/gtest.h>

#include <array>

namespace {

using namespace Qt::StringLiterals;
using controls::LedClockGround;
using controls::LedPanel;
using controls::LedSpin;

int Pixels(QWidget& widget, QRgb colour) {
  QImage image(widget.size(), QImage::Format_ARGB32);
  image.fill(Qt::transparent);
  widget.render(&image);
  int count = 0;
  for (int y = 0; y < image.height(); ++y)
    for (int x = 0; x < image.width(); ++x)
      count += image.pixel(x, y) == colour ? 1 : 0;
  return count;
}

TEST(LedPanel, ShowsItsValueWithLeadingZeros) {
  LedPanel panel;
  panel.SetDigits(3);
  panel.SetMaximum(999);
  panel.SetValue(7);
  EXPECT_EQ(panel.Shown(), u"007"_s);
  panel.SetLeadingZeros(false);
  EXPECT_EQ(panel.Shown(), u"  7"_s);
}

TEST(LedPanel, ValuesAreClampedToTheRange) {
  LedPanel panel;
  EXPECT_EQ(panel.Minimum(), 0);
  EXPECT_EQ(panel.Maximum(), 100);
  panel.SetValue(101);
  EXPECT_EQ(panel.Value(), 100);
  panel.SetValue(-5);
  EXPECT_EQ(panel.Value(), 0);
  panel.SetMaximum(59);
  panel.SetValue(80);
  EXPECT_EQ(panel.Value(), 59);
}

TEST(LedPanel, SignalsOnlyWhenTheShownValueChanges) {
  LedPanel panel;
  const QSignalSpy changed(&panel, &LedPanel::valueChanged);
  panel.SetValue(5);
  panel.SetValue(5);
  EXPECT_EQ(changed.count(), 1);
  panel.SetValue(100);
  panel.SetValue(4000);
  EXPECT_EQ(changed.count(), 2);
}

TEST(LedPanel, ValueIsAvailableToAssistiveTools) {
  LedPanel panel;
  panel.SetValue(42);
  EXPECT_EQ(QAccessible::queryAccessibleInterface(&panel)->text(QAccessible::Value), u"42"_s);
}

TEST(LedPanel, EightHasMoreLitPixelsThanOneAndUnlitSegmentsAreVisible) {
  LedPanel panel;
  panel.SetDigits(1);
  panel.SetDigitHeight(44);
  panel.resize(panel.sizeHint());
  panel.SetValue(1);
  const int one = Pixels(panel, desktop::instrument::kLit);
  EXPECT_GT(Pixels(panel, desktop::instrument::kUnlit), one);
  panel.SetValue(8);
  EXPECT_GT(Pixels(panel, desktop::instrument::kLit), 3 * one);
  EXPECT_EQ(Pixels(panel, desktop::instrument::kUnlit), 0);
}

TEST(LedPanel, AllSizesFollowTheDigitHeight) {
  LedPanel small;
  LedPanel large;
  small.SetDigitHeight(20);
  large.SetDigitHeight(80);
  EXPECT_GT(large.sizeHint().width(), 2 * small.sizeHint().width());
  EXPECT_EQ(large.sizeHint().height(), 100);
}

TEST(LedSpin, HasSixDigitsAStepOfTenAndItsRange) {
  const LedSpin spin;
  EXPECT_EQ(spin.Digits(), 6);
  EXPECT_EQ(spin.Minimum(), 0);
  EXPECT_EQ(spin.Maximum(), 999999);
  EXPECT_EQ(spin.SingleStep(), 10);
  EXPECT_EQ(spin.Value(), 0);
}

TEST(LedSpin, KeysStepAndStayInRange) {
  LedSpin spin;
  QTest::keyClick(&spin, Qt::Key_Down);
  EXPECT_EQ(spin.Value(), 0);
  QTest::keyClick(&spin, Qt::Key_Up);
  QTest::keyClick(&spin, Qt::Key_Up);
  EXPECT_EQ(spin.Value(), 20);
  QTest::keyClick(&spin, Qt::Key_Down);
  EXPECT_EQ(spin.Value(), 10);
  spin.SetValue(999995);
  QTest::keyClick(&spin, Qt::Key_Up);
  EXPECT_EQ(spin.Value(), 999999);
}

void Turn(QWidget& widget, int angle) {
  QWheelEvent turn(QPointF(5, 5), widget.mapToGlobal(QPointF(5, 5)), {}, QPoint(0, angle), Qt::NoButton, Qt::NoModifier,
                   Qt::NoScrollPhase, false);
  QCoreApplication::sendEvent(&widget, &turn);
}

TEST(LedSpin, WheelNotchIsAStepAlsoInSmallParts) {
  LedSpin spin;
  Turn(spin, 120);
  EXPECT_EQ(spin.Value(), 10);
  Turn(spin, 60);
  EXPECT_EQ(spin.Value(), 10);
  Turn(spin, 60);
  EXPECT_EQ(spin.Value(), 20);
  Turn(spin, -240);
  EXPECT_EQ(spin.Value(), 0);
}

TEST(LedSpin, ArrowsStepAndDigitsEmitClicked) {
  LedSpin spin;
  spin.resize(spin.sizeHint());
  const QSignalSpy clicked(&spin, &LedPanel::clicked);
  QTest::mouseClick(&spin, Qt::LeftButton, Qt::NoModifier, QPoint(spin.width() - 10, 5));
  EXPECT_EQ(spin.Value(), 10);
  QTest::mouseClick(&spin, Qt::LeftButton, Qt::NoModifier, QPoint(spin.width() - 10, spin.height() - 5));
  EXPECT_EQ(spin.Value(), 0);
  EXPECT_EQ(clicked.count(), 0);
  QTest::mouseClick(&spin, Qt::LeftButton, Qt::NoModifier, QPoint(30, 15));
  EXPECT_EQ(clicked.count(), 1);
  QTest::keyClick(&spin, Qt::Key_Return);
  EXPECT_EQ(clicked.count(), 2);
  EXPECT_EQ(spin.Value(), 0);
}

// If a box opens meanwhile, the mouse release does not arrive, and the value would continue to change.
TEST(LedSpin, HeldArrowIsReleasedWhenTheFocusIsLost) {
  LedSpin spin;
  spin.resize(spin.sizeHint());
  QTest::mousePress(&spin, Qt::LeftButton, Qt::NoModifier, QPoint(spin.width() - 10, 5));
  const auto* repeat = spin.findChild<QTimer*>();
  EXPECT_TRUE(repeat->isActive());
  QFocusEvent lost(QEvent::FocusOut, Qt::ActiveWindowFocusReason);
  QCoreApplication::sendEvent(&spin, &lost);
  EXPECT_FALSE(repeat->isActive());
}

TEST(LedClockGround, PanelsShareItsBackgroundWithSignsBetweenThem) {
  LedClockGround ground;
  const std::array<LedPanel*, 3> panels{new LedPanel(&ground), new LedPanel(&ground), new LedPanel(&ground)};
  ground.show();
  QCoreApplication::processEvents();
  ground.resize(ground.sizeHint());
  for (const LedPanel* panel : panels) {
    EXPECT_FALSE(panel->HasGround());
    EXPECT_TRUE(ground.rect().contains(panel->geometry()));
  }
  EXPECT_GT(panels[1]->x(), panels[0]->geometry().right());
  const int withSigns = Pixels(ground, desktop::instrument::kLit);
  ground.SetSeparators({});
  EXPECT_LT(Pixels(ground, desktop::instrument::kLit), withSigns);
}

}  // namespace

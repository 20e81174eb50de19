// SPDX-License-Identifier: MIT
#include "platform/controls/PositionSlider.h"

#include "platform/controls/WaveformStrip.h"

#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

namespace {

using controls::PositionSlider;

class Slider : public testing::Test {
 protected:
  Slider() : pressed(&slider, &QAbstractSlider::sliderPressed), released(&slider, &QAbstractSlider::sliderReleased) {
    slider.setMaximum(60000);
    slider.resize(616, 31);
    slider.setValue(30000);
  }

  PositionSlider slider;
  QSignalSpy pressed;
  QSignalSpy released;
};

TEST_F(Slider, PressDragAndReleaseAreSignalled) {
  QTest::mousePress(&slider, Qt::LeftButton, Qt::NoModifier, QPoint(8 + 100, 10));
  EXPECT_EQ(pressed.count(), 1);
  EXPECT_EQ(released.count(), 0);
  EXPECT_EQ(slider.value(), 10000);
  QTest::mouseMove(&slider, QPoint(8 + 200, 10));
  EXPECT_TRUE(slider.isSliderDown());
  QTest::mouseRelease(&slider, Qt::LeftButton, Qt::NoModifier, QPoint(8 + 300, 10));
  EXPECT_EQ(released.count(), 1);
  EXPECT_EQ(slider.value(), 30000);
}

TEST_F(Slider, EndsOfTheGrooveAreTheEndsOfTheRange) {
  QTest::mouseClick(&slider, Qt::LeftButton, Qt::NoModifier, QPoint(0, 10));
  EXPECT_EQ(slider.value(), 0);
  QTest::mouseClick(&slider, Qt::LeftButton, Qt::NoModifier, QPoint(615, 10));
  EXPECT_EQ(slider.value(), 60000);
}

TEST_F(Slider, ArrowKeysSeekLikeADrag) {
  QTest::keyClick(&slider, Qt::Key_Right);
  EXPECT_EQ(slider.value(), 31000);
  QTest::keyClick(&slider, Qt::Key_Left);
  QTest::keyClick(&slider, Qt::Key_PageDown);
  EXPECT_EQ(slider.value(), 20000);
  QTest::keyClick(&slider, Qt::Key_Home);
  QTest::keyClick(&slider, Qt::Key_Left);
  EXPECT_EQ(slider.value(), 0);
  EXPECT_EQ(pressed.count(), 5);
  EXPECT_EQ(released.count(), 5);
}

TEST_F(Slider, SpaceRequestsPlayOrStop) {
  const QSignalSpy asked(&slider, &PositionSlider::playStopRequested);
  QTest::keyClick(&slider, Qt::Key_Space);
  EXPECT_EQ(asked.count(), 1);
  EXPECT_EQ(slider.value(), 30000);
}

TEST_F(Slider, ProgramMovesItWithoutAPressSignal) {
  slider.setValue(45000);
  EXPECT_EQ(pressed.count(), 0);
  EXPECT_EQ(released.count(), 0);
}

TEST_F(Slider, WorksWithoutAFile) {
  slider.setMaximum(0);
  QTest::mouseClick(&slider, Qt::LeftButton, Qt::NoModifier, QPoint(300, 10));
  EXPECT_EQ(slider.value(), 0);
  EXPECT_FALSE(slider.grab().isNull());
}

TEST_F(Slider, IsAlignedWithTheWaveform) {
  controls::WaveformStrip strip;
  strip.resize(slider.width(), 120);
  strip.Begin(60000, 100);
  for (const int ms : {0, 15000, 60000}) {
    QTest::mouseClick(&slider, Qt::LeftButton, Qt::NoModifier, QPoint(static_cast<int>(strip.XOf(ms)), 10));
    EXPECT_EQ(slider.value(), ms);
  }
}

}  // namespace

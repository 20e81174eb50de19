// SPDX-License-Identifier: MIT
#include "platform/controls/LevelBallistics.h"
#include "platform/controls/LevelMeter.h"
#include "platform/controls/LevelScale.h"
#include "platform/desktop/ThemeColours.h"

#include <QCoreApplication>
#include <QPaintEvent>

#include <gtest/gtest.h>

namespace {

using controls::LevelBallistics;
using controls::LevelMeter;

constexpr double kSilence = -100;

TEST(LevelBallistics, LevelRisesAtOnceAndFalls30DbPerSecond) {
  LevelBallistics meter;
  meter.Advance(0.03, -10);
  EXPECT_DOUBLE_EQ(meter.Level(), -10);
  meter.Advance(0.5, kSilence);
  EXPECT_DOUBLE_EQ(meter.Level(), -25);
  meter.Advance(10, kSilence);
  EXPECT_DOUBLE_EQ(meter.Level(), -60);
}

TEST(LevelBallistics, PeakIsHeld1500MsThenFalls20DbPerSecond) {
  LevelBallistics meter;
  meter.Advance(0.03, -6);
  meter.Advance(1.5, kSilence);
  EXPECT_DOUBLE_EQ(meter.Peak(), -6);
  meter.Advance(0.5, kSilence);
  EXPECT_DOUBLE_EQ(meter.Peak(), -16);
  meter.Advance(1, kSilence);
  EXPECT_DOUBLE_EQ(meter.Peak(), -36);
}

TEST(LevelBallistics, StepAcrossTheEndOfTheHoldFallsForItsRemainder) {
  LevelBallistics meter;
  meter.Advance(0.03, -6);
  meter.Advance(2.0, kSilence);
  EXPECT_DOUBLE_EQ(meter.Peak(), -16);
}

TEST(LevelBallistics, LouderLevelSetsTheNewPeak) {
  LevelBallistics meter;
  meter.Advance(0.03, -20);
  meter.Advance(1.4, -30);
  meter.Advance(0.03, -10);
  meter.Advance(1.4, kSilence);
  EXPECT_DOUBLE_EQ(meter.Peak(), -10);
}

TEST(LevelBallistics, ComesToRest) {
  LevelBallistics meter;
  EXPECT_TRUE(meter.AtRest());
  meter.Advance(0.03, 6);
  EXPECT_DOUBLE_EQ(meter.Level(), 0);
  EXPECT_FALSE(meter.AtRest());
  meter.Advance(1.5, kSilence);
  meter.Advance(3, kSilence);
  EXPECT_TRUE(meter.AtRest());
}

TEST(LevelMeter, OneBlockIs2Db) {
  LevelMeter meter;
  meter.SetLevel(0);
  meter.Advance(0.03);
  EXPECT_EQ(meter.LitBlocks(), 30);
  EXPECT_EQ(meter.PeakBlock(), 29);
  meter.Reset();
  meter.SetLevel(-18);
  meter.Advance(0.03);
  EXPECT_EQ(meter.LitBlocks(), 21);
  meter.Reset();
  EXPECT_EQ(meter.LitBlocks(), 0);
  EXPECT_EQ(meter.PeakBlock(), -1);
}

TEST(LevelMeter, UsesTheLoudestLevelSinceTheLastStep) {
  LevelMeter meter;
  for (int i = 0; i < 100; ++i)
    meter.SetLevel(i == 50 ? -12 : -40);
  EXPECT_DOUBLE_EQ(meter.Level(), -60);
  meter.Advance(0.03);
  EXPECT_DOUBLE_EQ(meter.Level(), -12);
}

class Watched : public LevelMeter {
 public:
  QRegion painted;

 protected:
  void paintEvent(QPaintEvent* event) override {
    painted += event->region();
    LevelMeter::paintEvent(event);
  }
};

TEST(LevelMeter, RepaintsOnlyTheBlocksThatChanged) {
  Watched meter;
  meter.resize(300, 19);
  meter.show();
  meter.SetLevel(-30);
  meter.Advance(0.01);
  QCoreApplication::processEvents();
  meter.painted = QRegion();
  meter.SetLevel(-26);
  meter.Advance(0.01);
  QCoreApplication::processEvents();
  EXPECT_FALSE(meter.painted.isEmpty());
  EXPECT_GE(meter.painted.boundingRect().left(), 130);
  EXPECT_LE(meter.painted.boundingRect().right(), 180);
}

TEST(LevelMeter, GreenYellowAndRedBeginAtTheirLevels) {
  LevelMeter meter;
  meter.resize(300, 19);
  meter.SetLevel(0);
  meter.Advance(0.01);
  QImage image(meter.size(), QImage::Format_ARGB32);
  meter.render(&image);
  EXPECT_EQ(image.pixel(20 * 10 + 4, 9), desktop::instrument::kGreen);
  EXPECT_EQ(image.pixel(21 * 10 + 4, 9), desktop::instrument::kLit);
  EXPECT_EQ(image.pixel(26 * 10 + 4, 9), desktop::instrument::kLit);
  EXPECT_EQ(image.pixel(27 * 10 + 4, 9), desktop::instrument::kRed);
}

TEST(LevelScale, HasElevenTicksEachFifthLonger) {
  controls::LevelScale scale;
  scale.SetInset(10);
  scale.resize(121, scale.sizeHint().height());
  QImage image(scale.size(), QImage::Format_ARGB32);
  image.fill(Qt::transparent);
  scale.render(&image, {}, {}, QWidget::DrawChildren);
  const auto inked = [&image](int x, int y) {
    return qAlpha(image.pixel(x, y)) > 60 || qAlpha(image.pixel(x - 1, y)) > 60;
  };
  int shortTicks = 0;
  int longTicks = 0;
  for (int step = 0; step <= 10; ++step) {
    const int x = 10 + static_cast<int>(step * 10.1);
    shortTicks += inked(x, 3) ? 1 : 0;
    longTicks += inked(x, 7) ? 1 : 0;
  }
  EXPECT_EQ(shortTicks, 11);
  EXPECT_EQ(longTicks, 3);
}

// The colour of quiet texts, which can be read on every ground.
TEST(LevelScale, TicksCanBeSeen) {
  controls::LevelScale scale;
  scale.resize(300, scale.sizeHint().height());
  const QImage image = scale.grab().toImage();
  const QColor wanted = desktop::ThemeColoursFor(scale.palette()).hint;
  int ticks = 0;
  for (int x = 0; x < image.width(); ++x)
    ticks += image.pixelColor(x, 4) == wanted ? 1 : 0;
  EXPECT_EQ(ticks, 11);
}

}  // namespace

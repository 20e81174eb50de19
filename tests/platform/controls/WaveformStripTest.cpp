// SPDX-License-Identifier: MIT
#include "platform/controls/WaveformStrip.h"

#include "platform/controls/WaveformPainter.h"
#include "platform/desktop/ThemeColours.h"

#include <QApplication>
#include <QPaintEvent>
#include <QSignalSpy>
#include <QTest>
#include <QWheelEvent>

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <vector>

namespace {

using namespace Qt::StringLiterals;
using controls::Peak;
using controls::WaveformPeaks;
using controls::WaveformStrip;
namespace colour = desktop::instrument;

class Strip : public testing::Test {
 protected:
  Strip() : seeks(&strip, &WaveformStrip::seekRequested), moves(&strip, &WaveformStrip::mixMoved) {
    strip.resize(616, 120);
    strip.Begin(60000, 600);
    strip.show();
    QCoreApplication::processEvents();
  }

  QImage Painted() { return strip.grab().toImage().convertToFormat(QImage::Format_ARGB32); }
  bool Shows(QRgb wanted, int fromX, int toX) {
    const QImage image = Painted();
    for (int y = 0; y < image.height(); ++y)
      for (int x = fromX; x < toX; ++x)
        if (image.pixel(x, y) == wanted) return true;
    return false;
  }
  QPoint At(qint64 ms, int y = 60) { return {static_cast<int>(std::lround(strip.XOf(ms))), y}; }

  WaveformStrip strip;
  QSignalSpy seeks;
  QSignalSpy moves;
};

TEST(WaveformPeaks, SummariseAnyPartOfTheFile) {
  WaveformPeaks peaks;
  peaks.Begin(4);
  peaks.Append({{-0.1F, 0.2F, 0.1F}, {-0.5F, 0.3F, 0.3F}});
  EXPECT_FLOAT_EQ(peaks.Between(0, 0.25).peak.max, 0.2F);
  EXPECT_FLOAT_EQ(peaks.Between(0, 0.5).peak.min, -0.5F);
  EXPECT_FLOAT_EQ(peaks.Between(0, 0.5).peak.max, 0.3F);
  EXPECT_TRUE(peaks.Between(0.3, 0.6).known);
  EXPECT_FALSE(peaks.Between(0.5, 0.75).known);
  EXPECT_FALSE(WaveformPeaks().Between(0, 1).known);
}

TEST(WaveformPeaks, MorePeaksThanExpectedFit) {
  WaveformPeaks peaks;
  peaks.Begin(1);
  peaks.Append({{0, 0.1F, 0}, {0, 0.9F, 0}});
  EXPECT_FLOAT_EQ(peaks.Between(0, 0.5).peak.max, 0.1F);
  EXPECT_FLOAT_EQ(peaks.Between(0.5, 1).peak.max, 0.9F);
}

TEST(TimeText, IsShortAndExact) {
  EXPECT_EQ(controls::TimeText(12700, true), u"0:12,700"_s);
  EXPECT_EQ(controls::TimeText(65000, false), u"1:05"_s);
  EXPECT_EQ(controls::TimeText(3723004, true), u"1:02:03,004"_s);
}

TEST_F(Strip, ClickRequestsASeek) {
  QTest::mouseClick(&strip, Qt::LeftButton, Qt::NoModifier, At(30000));
  ASSERT_EQ(seeks.count(), 1);
  EXPECT_EQ(seeks[0][0].toLongLong(), 30000);
  EXPECT_EQ(moves.count(), 0);
}

TEST_F(Strip, DraggingTheFlagMovesTheMixPointInStepsOfTen) {
  strip.SetMixMs(6000);
  const QPoint flag = strip.FlagRect().center();
  QTest::mousePress(&strip, Qt::LeftButton, Qt::NoModifier, flag);
  QTest::mouseMove(&strip, flag - QPoint(37, 0));
  QTest::mouseRelease(&strip, Qt::LeftButton, Qt::NoModifier, flag - QPoint(37, 0));
  EXPECT_EQ(seeks.count(), 0);
  ASSERT_GE(moves.count(), 1);
  EXPECT_EQ(strip.MixMs() % 10, 0);
  EXPECT_NEAR(static_cast<double>(strip.MixMs()), 6000 + 3700, 100);
  EXPECT_EQ(moves.last()[0].toLongLong(), strip.MixMs());
}

TEST_F(Strip, DragEndsWhenTheReleaseWasNotReceived) {
  strip.SetMixMs(6000);
  const QPoint flag = strip.FlagRect().center();
  QTest::mousePress(&strip, Qt::LeftButton, Qt::NoModifier, flag);
  const QPointF there = flag - QPoint(37, 0);
  QMouseEvent move(QEvent::MouseMove, there, strip.mapToGlobal(there), Qt::NoButton, Qt::NoButton, Qt::NoModifier);
  QCoreApplication::sendEvent(&strip, &move);
  EXPECT_EQ(strip.MixMs(), 6000);
  EXPECT_EQ(moves.count(), 0);
}

TEST_F(Strip, MixPointIsClampedToTheFile) {
  strip.SetMixMs(6000);
  const QPoint flag = strip.FlagRect().center();
  QTest::mousePress(&strip, Qt::LeftButton, Qt::NoModifier, flag);
  QTest::mouseMove(&strip, QPoint(700, 20));
  EXPECT_EQ(strip.MixMs(), 0);
  QTest::mouseMove(&strip, QPoint(-100, 20));
  EXPECT_EQ(strip.MixMs(), 60000);
  QTest::mouseRelease(&strip, Qt::LeftButton, Qt::NoModifier, QPoint(-100, 20));
}

TEST_F(Strip, LeftAndRightMoveTheMixLineByTen) {
  strip.SetMixMs(5000);
  QTest::keyClick(&strip, Qt::Key_Left);
  EXPECT_EQ(strip.MixMs(), 5010);
  QTest::keyClick(&strip, Qt::Key_Right);
  QTest::keyClick(&strip, Qt::Key_Right);
  EXPECT_EQ(strip.MixMs(), 4990);
  EXPECT_EQ(moves.count(), 3);
}

TEST_F(Strip, MixPointSetByTheProgramIsNotSignalled) {
  strip.SetMixMs(5000);
  EXPECT_EQ(moves.count(), 0);
}

TEST_F(Strip, SpaceRequestsPlayOrStop) {
  const QSignalSpy asked(&strip, &WaveformStrip::playStopRequested);
  QTest::keyClick(&strip, Qt::Key_Space);
  EXPECT_EQ(asked.count(), 1);
}

TEST_F(Strip, PeaksAppearFromLeftToRight) {
  EXPECT_FALSE(Shows(colour::kPeak, 8, 608));
  strip.AppendPeaks(std::vector<Peak>(300, {-0.8F, 0.8F, 0.3F}));
  EXPECT_TRUE(Shows(colour::kPeak, 8, 300));
  EXPECT_TRUE(Shows(colour::kRms, 8, 300));
  EXPECT_FALSE(Shows(colour::kPeak, 312, 608));
  strip.AppendPeaks(std::vector<Peak>(300, {-0.8F, 0.8F, 0.3F}));
  EXPECT_TRUE(Shows(colour::kPeak, 312, 608));
}

TEST_F(Strip, PlayedPartIsDarkerAndTheOuttroYellow) {
  strip.AppendPeaks(std::vector<Peak>(600, {-0.8F, 0.8F, 0.3F}));
  strip.SetPositionMs(30000);
  strip.SetMixMs(12000);
  EXPECT_FALSE(Shows(colour::kPeak, 8, 290));
  EXPECT_TRUE(Shows(colour::kPeak, 330, 470));
  EXPECT_TRUE(Shows(colour::kOuttroPeak, 500, 600));
  EXPECT_FALSE(Shows(colour::kOuttroPeak, 8, 480));
}

TEST_F(Strip, ZoomShowsTheLast30Seconds) {
  const QSignalSpy zooms(&strip, &WaveformStrip::zoomedChanged);
  EXPECT_EQ(strip.MsAt(8), 0);
  strip.SetZoomed(true);
  EXPECT_TRUE(strip.IsZoomed());
  EXPECT_EQ(strip.MsAt(8), 30000);
  QTest::mouseClick(&strip, Qt::LeftButton, Qt::NoModifier, QPoint(308, 60));
  EXPECT_EQ(seeks[0][0].toLongLong(), 45000);
  QTest::keyClick(&strip, Qt::Key_Minus);
  EXPECT_EQ(strip.MsAt(8), 0);
  EXPECT_EQ(zooms.count(), 2);
}

TEST_F(Strip, KeysZoomAroundThePositionDownToTwoSeconds) {
  strip.SetPositionMs(20000);
  const double x = strip.XOf(20000);
  for (int key = 0; key < 10; ++key) {
    QTest::keyClick(&strip, Qt::Key_Plus);
    EXPECT_NEAR(strip.XOf(20000), x, 1);
  }
  EXPECT_EQ(strip.LastMs() - strip.FirstMs(), 2000);
  QTest::keyClick(&strip, Qt::Key_PageUp);
  EXPECT_GT(strip.FirstMs(), 20000);
  for (int key = 0; key < 10; ++key)
    QTest::keyClick(&strip, Qt::Key_Minus);
  EXPECT_EQ(strip.FirstMs(), 0);
  EXPECT_EQ(strip.LastMs(), 60000);
}

TEST_F(Strip, TheWheelZoomsAtTheMouseAndShiftMovesTheView) {
  const auto turn = [this](int by, Qt::KeyboardModifiers keys = {}) {
    QWheelEvent wheel(QPointF(At(45000)), strip.mapToGlobal(QPointF(At(45000))), {}, {0, by}, Qt::NoButton, keys,
                      Qt::NoScrollPhase, false);
    QApplication::sendEvent(&strip, &wheel);
    return wheel.isAccepted();
  };
  EXPECT_FALSE(turn(-120));  // the window scrolls
  for (int notch = 0; notch < 20; ++notch)
    EXPECT_TRUE(turn(120));
  EXPECT_EQ(strip.LastMs() - strip.FirstMs(), 2000);
  EXPECT_LE(strip.FirstMs(), 45000);
  EXPECT_GE(strip.LastMs(), 45000);
  const qint64 first = strip.FirstMs();
  EXPECT_TRUE(turn(-120, Qt::ShiftModifier));
  EXPECT_GT(strip.FirstMs(), first);
  EXPECT_EQ(strip.LastMs() - strip.FirstMs(), 2000);
}

TEST_F(Strip, AZoomedViewFollowsThePosition) {
  for (int key = 0; key < 10; ++key)
    QTest::keyClick(&strip, Qt::Key_Plus);
  strip.SetPositionMs(33000);
  EXPECT_LE(strip.FirstMs(), 33000);
  EXPECT_GE(strip.LastMs(), 33000);
  EXPECT_EQ(strip.LastMs() - strip.FirstMs(), 2000);
}

TEST_F(Strip, AZoomByKeyEndsTheViewOfTheLast30Seconds) {
  const QSignalSpy zooms(&strip, &WaveformStrip::zoomedChanged);
  strip.SetZoomed(true);
  QTest::keyClick(&strip, Qt::Key_Plus);
  EXPECT_FALSE(strip.IsZoomed());
  EXPECT_EQ(strip.LastMs() - strip.FirstMs(), 15000);
  EXPECT_EQ(zooms.count(), 2);
}

TEST_F(Strip, ANewFileIsShownCompletely) {
  QTest::keyClick(&strip, Qt::Key_Plus);
  strip.Begin(10000, 100);
  EXPECT_EQ(strip.FirstMs(), 0);
  EXPECT_EQ(strip.LastMs(), 10000);
}

TEST_F(Strip, ShortFileFillsTheWidthWhenZoomed) {
  strip.Begin(10000, 100);
  strip.SetZoomed(true);
  EXPECT_EQ(strip.MsAt(8), 0);
  EXPECT_EQ(strip.MsAt(608), 10000);
}

TEST_F(Strip, WithoutAFileNothingIsRequested) {
  strip.Clear();
  QTest::mouseClick(&strip, Qt::LeftButton, Qt::NoModifier, QPoint(300, 60));
  QTest::keyClick(&strip, Qt::Key_Left);
  EXPECT_EQ(seeks.count(), 0);
  EXPECT_EQ(moves.count(), 0);
  EXPECT_EQ(strip.accessibleDescription(), strip.EmptyText());
}

TEST_F(Strip, UnreadableFileShowsTheReason) {
  const QImage empty = Painted();
  strip.ShowTrouble(u"Het bestand is geen geluid."_s);
  EXPECT_EQ(strip.TroubleText(), u"Het bestand is geen geluid."_s);
  EXPECT_EQ(strip.accessibleDescription(), u"Het bestand is geen geluid."_s);
  EXPECT_NE(Painted(), empty);
  strip.Begin(1000, 10);
  EXPECT_EQ(strip.TroubleText(), QString());
}

TEST_F(Strip, PositionIsClampedToTheFile) {
  strip.SetPositionMs(70000);
  EXPECT_EQ(strip.PositionMs(), 60000);
  strip.SetPositionMs(-5);
  EXPECT_EQ(strip.PositionMs(), 0);
}

class WatchedStrip : public WaveformStrip {
 public:
  QRegion painted;

 protected:
  void paintEvent(QPaintEvent* event) override {
    painted += event->region();
    WaveformStrip::paintEvent(event);
  }
};

class Repainting : public testing::Test {
 protected:
  Repainting() {
    strip.resize(616, 120);
    strip.Begin(60000, 600);
    strip.show();
    QCoreApplication::processEvents();
  }

  // The region repainted because of that.
  QRect PaintedFor(const std::function<void()>& change) {
    strip.painted = QRegion();
    change();
    QCoreApplication::processEvents();
    return strip.painted.boundingRect();
  }

  WatchedStrip strip;
};

TEST_F(Repainting, PlayHeadRepaintsOnlyItsSurroundings) {
  PaintedFor([&] { strip.SetPositionMs(30000); });
  EXPECT_TRUE(PaintedFor([&] { strip.SetPositionMs(30010); }).isEmpty());
  const QRect moved = PaintedFor([&] { strip.SetPositionMs(30500); });
  EXPECT_FALSE(moved.isEmpty());
  EXPECT_LT(moved.width(), 40);
}

TEST_F(Repainting, NewPeaksRepaintOnlyTheirColumns) {
  for (int second = 0; second < 60; second += 10) {
    const QRect painted = PaintedFor([&] { strip.AppendPeaks(std::vector<Peak>(100)); });
    EXPECT_LE(painted.left(), strip.XOf(second * 1000));
    EXPECT_GE(painted.right(), strip.XOf((second + 10) * 1000) - 1);
    EXPECT_LT(painted.width(), 110) << second;
  }
  EXPECT_EQ(PaintedFor([&] { strip.AppendPeaks({Peak{}}); }), strip.rect()) << "a longer file moves them all";
}

}  // namespace

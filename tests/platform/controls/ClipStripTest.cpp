// SPDX-License-Identifier: MIT
#include "platform/controls/ClipStrip.h"

#include "platform/desktop/ThemeColours.h"
#include "tests/platform/desktop/Look.h"

#include <QCoreApplication>
#include <QMouseEvent>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

namespace {

using namespace Qt::StringLiterals;
using controls::ClipStrip;
using controls::Peak;
using look_test::CountOf;
using look_test::PaintedAsIs;

// An opener of 10 s whose last 2 s overlap a spot of 20 s, and a closer of 5 s after that: 33 s together.
class Clips : public testing::Test {
 protected:
  Clips() : seek(&strip, &ClipStrip::seekRequested), playStop(&strip, &ClipStrip::playStopRequested) {
    strip.resize(680, 180);
    strip.SetEmptyText(u"Er is niets te horen"_s);
    strip.SetClips({{u"Opener"_s, 0, 10000, 2000}, {u"Bakker"_s, 8000, 20000, 0}, {u"Sluiter"_s, 28000, 5000, 0}});
  }
  qint64 Sought() const { return seek.last().first().toLongLong(); }
  void ClickAt(double x) {
    QTest::mouseClick(&strip, Qt::LeftButton, Qt::NoModifier, QPoint(qRound(x), strip.height() / 2));
  }

  ClipStrip strip;
  QSignalSpy seek, playStop;
};

TEST_F(Clips, LengthIsTheEndOfTheLastSound) {
  EXPECT_EQ(strip.LengthMs(), 33000);
  strip.SetClips({{u"Lang"_s, 0, 60000, 0}, {u"Kort"_s, 1000, 2000, 0}});
  EXPECT_EQ(strip.LengthMs(), 60000);
  strip.SetClips({});
  EXPECT_EQ(strip.LengthMs(), 0);
}

TEST_F(Clips, OverlappingSoundsAreInDifferentRowsAtTheirTimes) {
  const QRect opener = strip.ClipRect(0);
  const QRect baker = strip.ClipRect(1);
  const QRect closer = strip.ClipRect(2);
  EXPECT_LT(opener.bottom(), baker.top());
  EXPECT_EQ(closer.top(), opener.top());
  EXPECT_FALSE(opener.intersects(baker));
  EXPECT_NEAR(baker.left(), strip.XOf(8000), 1);
  EXPECT_NEAR(opener.left() + opener.width(), strip.XOf(10000), 1);
  EXPECT_GT(opener.left() + opener.width(), baker.left());
}

TEST_F(Clips, AVeryShortSoundIsStillVisible) {
  strip.SetClips({{u"Lang"_s, 0, 3600000, 0}, {u"Piep"_s, 3600000, 1, 0}});
  EXPECT_GE(strip.ClipRect(1).width(), 1);
}

TEST_F(Clips, TimesAndPlacesAreConvertedBothWays) {
  for (const qint64 ms : {0, 8000, 16500, 33000})
    EXPECT_NEAR(double(strip.MsAt(strip.XOf(ms))), double(ms), 1);
  EXPECT_EQ(strip.MsAt(-100), 0);
  EXPECT_EQ(strip.MsAt(10000), 33000);
}

TEST_F(Clips, ClickRequestsASeekThere) {
  ClickAt(strip.XOf(16500));
  ASSERT_EQ(seek.count(), 1);
  EXPECT_NEAR(double(Sought()), 16500, 60);
  EXPECT_EQ(strip.PositionMs(), 0);  // the player decides
  QTest::mouseClick(&strip, Qt::RightButton, Qt::NoModifier, QPoint(300, 90));
  EXPECT_EQ(seek.count(), 1);
}

TEST_F(Clips, KeysSeekBySecondsAndToTheEnds) {
  strip.SetPositionMs(15000);
  const std::pair<Qt::Key, qint64> keys[] = {{Qt::Key_Left, 14000},     {Qt::Key_Right, 16000}, {Qt::Key_PageUp, 5000},
                                             {Qt::Key_PageDown, 25000}, {Qt::Key_Home, 0},      {Qt::Key_End, 33000}};
  for (const auto& [key, target] : keys) {
    QTest::keyClick(&strip, key);
    EXPECT_EQ(Sought(), target) << key;
  }
  strip.SetPositionMs(300);
  QTest::keyClick(&strip, Qt::Key_Left);
  EXPECT_EQ(Sought(), 0);
  strip.SetPositionMs(32500);
  QTest::keyClick(&strip, Qt::Key_PageDown);
  EXPECT_EQ(Sought(), 33000);
}

TEST_F(Clips, SpaceRequestsPlayOrStopAndOtherKeysNothing) {
  QTest::keyClick(&strip, Qt::Key_Space);
  EXPECT_EQ(playStop.count(), 1);
  QTest::keyClick(&strip, Qt::Key_A);
  EXPECT_EQ(playStop.count(), 1);
  EXPECT_EQ(seek.count(), 0);
}

TEST_F(Clips, PositionIsWithinTheSounds) {
  strip.SetPositionMs(50000);
  EXPECT_EQ(strip.PositionMs(), 33000);
  strip.SetPositionMs(-1);
  EXPECT_EQ(strip.PositionMs(), 0);
}

TEST_F(Clips, NewSoundsStartAtTheBeginningWithoutWaveforms) {
  strip.SetPositionMs(9000);
  strip.BeginPeaks(0, 100);
  strip.AppendPeaks(0, std::vector<Peak>(40));
  strip.AppendPeaks(0, std::vector<Peak>(10));
  EXPECT_EQ(strip.PeakCount(0), 50);
  EXPECT_EQ(strip.PeakCount(1), 0);
  strip.SetClips({{u"Opener"_s, 0, 10000, 0}});
  EXPECT_EQ(strip.ClipCount(), 1U);
  EXPECT_EQ(strip.PeakCount(0), 0);
  EXPECT_EQ(strip.PositionMs(), 0);
}

TEST_F(Clips, WaveformIsInsideItsOwnSound) {
  const QColor peak(desktop::instrument::kPeak);
  EXPECT_EQ(CountOf(PaintedAsIs(strip), peak), 0);
  strip.BeginPeaks(1, 100);
  strip.AppendPeaks(1, std::vector<Peak>(100, Peak{-0.8F, 0.8F, 0.2F}));
  const QRect wave = look_test::PlaceOf(PaintedAsIs(strip), peak);
  EXPECT_TRUE(strip.ClipRect(1).contains(wave));
  EXPECT_GT(wave.width(), strip.ClipRect(1).width() * 9 / 10);
}

TEST_F(Clips, OverlapHasALineAtTheMixPoint) {
  const QColor yellow(desktop::instrument::kLit);
  EXPECT_GT(CountOf(PaintedAsIs(strip), yellow), 50);
  strip.SetClips({{u"Opener"_s, 0, 10000, 0}, {u"Bakker"_s, 10000, 20000, 0}});
  EXPECT_EQ(CountOf(PaintedAsIs(strip), yellow), 0);
}

TEST_F(Clips, EmptyStripShowsItsTextAndRequestsNothing) {
  strip.SetClips({});
  EXPECT_GT(CountOf(PaintedAsIs(strip), QColor(desktop::instrument::kRuler)), 10);
  ClickAt(200);
  for (const Qt::Key key : {Qt::Key_Left, Qt::Key_End, Qt::Key_PageDown})
    QTest::keyClick(&strip, key);
  EXPECT_EQ(seek.count(), 0);
}

TEST_F(Clips, DescribesItsSoundsToAssistiveTools) {
  EXPECT_EQ(strip.accessibleDescription(), u"Duur 0:33. Opener op 0:00, Bakker op 0:08, Sluiter op 0:28"_s);
  strip.SetClips({});
  EXPECT_EQ(strip.accessibleDescription(), u"Er is niets te horen"_s);
}

TEST_F(Clips, ToolTipIsTheNameOfTheSoundUnderThePointer) {
  const auto hover = [this](const QPointF& place) {
    QMouseEvent move(QEvent::MouseMove, place, strip.mapToGlobal(place), Qt::NoButton, Qt::NoButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&strip, &move);
    return strip.toolTip();
  };
  const QPoint baker = strip.ClipRect(1).center();
  EXPECT_EQ(hover(baker), u"Bakker"_s);
  EXPECT_EQ(hover(strip.ClipRect(2).center()), u"Sluiter"_s);
  EXPECT_EQ(hover(QPoint(baker.x(), strip.ClipRect(0).center().y())), QString());  // above it, after the opener
}

}  // namespace

// SPDX-License-Identifier: MIT
// The listening window, with real files and an output from which the test pulls the audio.
#include "export/playout/BlockToHear.h"
#include "media/frmBeluisteren.h"
#include "platform/audio/MixDecoder.h"
#include "platform/controls/ClipStrip.h"
#include "platform/controls/ComboBox.h"
#include "platform/controls/DateCombo.h"
#include "platform/controls/LedPanel.h"
#include "platform/controls/ListBox.h"
#include "platform/controls/QuietLine.h"
#include "platform/runtime/Clock.h"
#include "platform/runtime/HostPath.h"
#include "tests/media/support/EditorDesk.h"
#include "tests/support/Waiting.h"

#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>

#include <gtest/gtest.h>

#include <random>

using namespace Qt::StringLiterals;
using namespace media_testing;
using testing_support::Child;

namespace {

const QDateTime kNoon(QDate(2025, 3, 11), QTime(12, 0));

class ListeningWindow : public testing::Test {
 protected:
  ListeningWindow() {
    block_.id = 4;
    block_.naam = u"Middagblok"_s;
    block_.several = true;
    block_.count = block_.most = 3;
    for (qint32 id = 1; id <= 3; ++id)
      block_.spots.push_back(Spot(id, 4000 + 1000 * id, 800));
  }

  BlockSpot Spot(qint32 id, qint64 ms, qint32 mixMs) const {
    BlockSpot spot;
    spot.id = id;
    spot.naam = u"Spot %1"_s.arg(id);
    spot.facts.path = runtime::PathText(MakeWav(desk_.AudioFile(u"%1.wav"_s.arg(id)), ms, 8000));
    spot.facts.aktief = true;
    spot.mixMs = mixMs;
    return spot;
  }

  void Open() {
    SetBlockToHear(block_);
    window_ = std::make_unique<frmBeluisteren>(nullptr);
    window_->Form_Load();
    window_->show();
    window_->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window_.get()));
    AwaitPlan();
  }
  void AwaitPlan() const {
    ASSERT_TRUE(WaitUntil([&] { return window_->IsPlanned(); }));
  }

  controls::ClipStrip& Strip() const { return Child<controls::ClipStrip>(*window_, u"strip"_s); }
  controls::ListBox& LeftOutList() const { return Child<controls::ListBox>(*window_, u"lstNietGespeeld"_s); }
  audio::AudioPlayer& Sound() const { return Player(*window_); }
  QString Total() const { return Child<controls::QuietLine>(*window_, u"lblTotaal"_s).text(); }
  void Pick(const QString& name) const { Child<QRadioButton>(*window_, name).click(); }

  runtime::ClockScope clock_{kNoon};
  EditorDesk desk_;
  Block block_;
  std::unique_ptr<frmBeluisteren> window_;
};

}  // namespace

TEST_F(ListeningWindow, ShowsTheBlockOnOneTimeLine) {
  Open();
  EXPECT_EQ(window_->windowTitle(), u"Beluisteren: Middagblok"_s);
  EXPECT_EQ(Strip().ClipCount(), 3U);
  EXPECT_EQ(Strip().LengthMs(), 5000 + 6000 + 7000 - 1600);
  EXPECT_EQ(Sound().Length(), 16'400);
  EXPECT_EQ(Total(), u"Duur 0:16, 3 spots"_s);
  EXPECT_TRUE(Strip().accessibleDescription().contains(u"Spot 2 op 0:04"_s))
      << Strip().accessibleDescription().toStdString();
  EXPECT_EQ(LeftOutList().ListCount(), 0);
  EXPECT_TRUE(WaitUntil([&] { return Strip().PeakCount(2) == 700; })) << "the picture of the last one";
}

TEST_F(ListeningWindow, PlaysTheMixToTheFrame) {
  Open();
  Click(*window_, u"cmdPlay"_s);
  const auto heard = desk_.output.PullToEnd();
  audio::MixDecoder mix({{desk_.AudioFile(u"1.wav"_s).toStdString(), 800},
                         {desk_.AudioFile(u"2.wav"_s).toStdString(), 800},
                         {desk_.AudioFile(u"3.wav"_s).toStdString(), 0}});
  EXPECT_EQ(mix.Places()[1].start, (5000 - 800) * 8);
  std::vector<std::int16_t> expected(static_cast<std::size_t>(mix.TotalFrames()) * 2);
  ASSERT_EQ(mix.Read(expected.data(), expected.size() / 2), expected.size() / 2);
  EXPECT_TRUE(heard == expected) << heard.size() << " and " << expected.size();
}

TEST_F(ListeningWindow, TheNextMixIsThreeSecondsBeforeTheNextSound) {
  Open();
  QTest::keyClick(window_.get(), Qt::Key_M, Qt::ControlModifier);
  EXPECT_EQ(Sound().Position(), 1200);
  QTest::keyClick(window_.get(), Qt::Key_M, Qt::ControlModifier);
  EXPECT_EQ(Sound().Position(), 4200 + 5200 - 3000);
  EXPECT_EQ(Led(*window_, u"ledSec"_s), 6);
  EXPECT_EQ(Led(*window_, u"ledMilli"_s), 400);
  QTest::keyClick(window_.get(), Qt::Key_M, Qt::ControlModifier);
  EXPECT_EQ(Sound().Position(), 1200) << "from the last one back to the first";
}

TEST_F(ListeningWindow, AClickAndTheKeysOfTheTimeLineSeek) {
  Open();
  QTest::mouseClick(&Strip(), Qt::LeftButton, {}, QPoint(static_cast<int>(Strip().XOf(8000)), 30));
  EXPECT_NEAR(Sound().Position(), 8000, 40);
  QTest::keyClick(&Strip(), Qt::Key_Home);
  EXPECT_EQ(Sound().Position(), 0);
  QTest::keyClick(&Strip(), Qt::Key_Right);
  EXPECT_EQ(Sound().Position(), 1000);
  QTest::keyClick(&Strip(), Qt::Key_PageDown);
  EXPECT_EQ(Sound().Position(), 11'000);
  QTest::keyClick(&Strip(), Qt::Key_Left);
  EXPECT_EQ(Sound().Position(), 10'000);
  QTest::keyClick(&Strip(), Qt::Key_Space);
  EXPECT_EQ(Sound().State(), audio::kPlaying);
  QTest::keyClick(window_.get(), Qt::Key_Space, Qt::ControlModifier);
  EXPECT_NE(Sound().State(), audio::kPlaying);
}

TEST_F(ListeningWindow, LeftOutSoundsAreShownWithTheirReason) {
  block_.spots[0].facts.aktief = false;
  block_.spots[1].facts.eindDatum = QDate(2025, 3, 10);
  Open();
  ASSERT_EQ(LeftOutList().ListCount(), 2);
  EXPECT_EQ(LeftOutList().Text(0), u"Spot 1"_s);
  EXPECT_EQ(LeftOutList().Details(0).word, u"niet aktief"_s);
  EXPECT_EQ(LeftOutList().Details(1).word, u"verlopen"_s);
  EXPECT_EQ(Total(), u"Duur 0:07, 1 spot van de 3"_s);
}

TEST_F(ListeningWindow, AnotherMomentIsPlannedAgain) {
  block_.spots[1].facts.eindDatum = QDate(2025, 3, 11);
  block_.spots[2].facts.startUur = 12;
  Open();
  EXPECT_EQ(Strip().ClipCount(), 3U);
  Pick(u"optMoment"_s);
  Child<controls::DateCombo>(*window_, u"datDag"_s).SetText(u"12-03-2025"_s);
  Child<controls::ComboBox>(*window_, u"cboUur"_s).SetListIndex(8);
  AwaitPlan();
  EXPECT_EQ(Strip().ClipCount(), 1U);
  EXPECT_EQ(window_->Plan().sounds.at(0).id, 1);
  Pick(u"optNu"_s);
  AwaitPlan();
  EXPECT_EQ(Strip().ClipCount(), 3U);
}

TEST_F(ListeningWindow, ASeedDeterminesTheRandomOrder) {
  block_.random = true;
  block_.count = 2;
  Open();
  auto& number = Child<QLineEdit>(*window_, u"txtVolgorde"_s);
  EXPECT_TRUE(number.isVisible());
  EXPECT_EQ(number.text(), QString::number(SeedOf(4, kNoon)));
  const auto order = [&] { return std::pair(window_->Plan().sounds.at(0).id, window_->Plan().sounds.at(1).id); };
  const auto first = order();
  bool differs = false;
  for (int i = 0; i < 8; ++i) {
    Click(*window_, u"cmdAndereVolgorde"_s);
    AwaitPlan();
    differs = differs || order() != first;
  }
  EXPECT_TRUE(differs);
  number.clear();
  QTest::keyClicks(&number, QString::number(SeedOf(4, kNoon)));
  AwaitPlan();
  EXPECT_EQ(order(), first);
}

TEST_F(ListeningWindow, WithoutARandomOrderThereIsNoSeedField) {
  Open();
  EXPECT_FALSE(Child<QLineEdit>(*window_, u"txtVolgorde"_s).isVisible());
}

TEST_F(ListeningWindow, ASilentBlockShowsTheReasonAndPlaysNothing) {
  block_.aktief = false;
  Open();
  EXPECT_EQ(Strip().ClipCount(), 0U);
  EXPECT_EQ(Strip().EmptyText(), u"Dit blok is op dit moment stil: het item is niet aktief."_s);
  EXPECT_FALSE(Child<QPushButton>(*window_, u"cmdPlay"_s).isEnabled());
  QTest::keyClick(window_.get(), Qt::Key_Space, Qt::ControlModifier);
  QTest::keyClick(window_.get(), Qt::Key_M, Qt::ControlModifier);
  EXPECT_EQ(Sound().State(), audio::kNoFile);
}

TEST_F(ListeningWindow, AReducedMixPointIsReported) {
  block_.spots[0].mixMs = 60'000;
  Open();
  EXPECT_TRUE(Total().endsWith(u"mixpunt van ‘Spot 1’ ingekort tot 5000 ms"_s)) << Total().toStdString();
}

TEST_F(ListeningWindow, ClosingStopsPlayback) {
  Open();
  Click(*window_, u"cmdPlay"_s);
  Click(*window_, u"cmdSluiten"_s);
  EXPECT_NE(Sound().State(), audio::kPlaying);
  EXPECT_FALSE(window_->isVisible());
}

class RandomListening : public ListeningWindow {
 protected:
  void Operate() {
    static const QStringList kButtons{u"cmdPlay"_s, u"cmdSTOP"_s, u"cmdVolgendeMix"_s, u"cmdAndereVolgorde"_s};
    const auto what = random_() % 13;
    if (what < 4) Click(*window_, kButtons[static_cast<qsizetype>(what)]);
    if (what == 4) Pick(random_() % 2 == 0 ? u"optNu"_s : u"optMoment"_s);
    if (what == 5) Child<controls::ComboBox>(*window_, u"cboUur"_s).SetListIndex(static_cast<int>(random_() % 24));
    if (what == 6) QTest::keyClick(&Strip(), random_() % 2 == 0 ? Qt::Key_Left : Qt::Key_PageDown);
    if (what == 7) QTest::mouseClick(&Strip(), Qt::LeftButton, {}, QPoint(static_cast<int>(random_() % 600), 30));
    if (what == 8) QTest::keyClick(window_.get(), Qt::Key_Space, Qt::ControlModifier);
    if (what == 9 && desk_.output.IsRunning()) desk_.output.PullNow(random_() % 4000);
    if (what == 10) AwaitPlan();
    if (what == 11)
      Child<controls::DateCombo>(*window_, u"datDag"_s).SetText(random_() % 2 == 0 ? u"12-03-2025"_s : u"12-0"_s);
    if (what == 12 && random_() % 20 == 0) Open();  // closes the previous window, playing or not
  }

 private:
  std::mt19937 random_{7};
};

// In any order: the window neither hangs nor shows an error.
TEST_F(RandomListening, SurvivesAThousandOperations) {
  block_.random = true;
  block_.spots[2].facts.startUur = 8;
  Open();
  for (int i = 0; i < 1000; ++i) {
    Operate();
    QCoreApplication::processEvents();
    ASSERT_GE(Sound().Position(), 0);
    ASSERT_LE(Sound().Position(), Sound().Length());
    ASSERT_LE(Strip().PositionMs(), Strip().LengthMs());
  }
}

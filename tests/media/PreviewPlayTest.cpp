// SPDX-License-Identifier: MIT
// Play, stop, jumps, slider and time in the real dialog with the real player. The test
// pulls the audio itself, so nothing depends on a clock.
#include "data/Messages.h"
#include "platform/controls/LedPanel.h"
#include "platform/controls/PositionSlider.h"
#include "platform/desktop/MessageBox.h"
#include "tests/media/support/EditorDesk.h"
#include "tests/platform/audio/support/SoundFiles.h"

#include <QSignalSpy>
#include <QTimer>

#include <gtest/gtest.h>

#include <memory>

using namespace Qt::StringLiterals;
using namespace media_testing;
using testing_support::Child;

namespace {

// An editor with a file of three minutes.
class Listening {
 public:
  explicit Listening(qint64 ms = 180'000) {
    desk.AddSpot(1, u"Spot"_s, desk.Wav(u"spot.wav"_s, ms));
    editor = desk.OpenSpot(u"1"_s);
  }

  audio::AudioPlayer& OwnPlayer() const { return Player(*editor); }
  controls::PositionSlider& Slider() const { return Child<controls::PositionSlider>(*editor, u"sliPlay"_s); }
  QTimer& Timer() const { return Child<QTimer>(*editor, u"tmrPlayer"_s); }
  void PlayFrom(qint32 position) const {
    OwnPlayer().SetPosition(position);
    Click(*editor, u"cmdPlay"_s);
  }
  // The position after a jump.
  qint32 AfterJump(const QString& button, qint32 from) const {
    PlayFrom(from);
    Click(*editor, button);
    return OwnPlayer().Position();
  }

  EditorDesk desk;
  std::unique_ptr<frmItemSpotsDetail> editor;
};

}  // namespace

TEST(PreviewPlay, LengthIsMinutesAndSecondsWithoutHoursAndFractions) {
  EXPECT_EQ(Text(*Listening(75'900).editor, u"txtLengteSec"_s), u"75"_s);
  EXPECT_EQ(Text(*Listening(3'725'000).editor, u"txtLengteSec"_s), u"125"_s);
  EXPECT_EQ(Text(*Listening(999).editor, u"txtLengteSec"_s), u"0"_s);
}

TEST(PreviewPlay, OpeningShowsTheTimeLeftAndTheSliderAtTheStart) {
  const Listening at(75'934);
  EXPECT_EQ(Led(*at.editor, u"ledMin"_s), 1);
  EXPECT_EQ(Led(*at.editor, u"ledSec"_s), 15);
  EXPECT_EQ(Led(*at.editor, u"ledMilli"_s), 934);
  EXPECT_EQ(at.Slider().maximum(), 75'934);
  EXPECT_EQ(at.Slider().value(), 0);
  EXPECT_FALSE(at.Timer().isActive());
}

TEST(PreviewPlay, AnotherFileShowsItsOwnLengthFromTheStart) {
  const Listening at(40'000);
  at.OwnPlayer().SetPosition(30'000);
  at.Slider().setValue(30'000);
  Choose(*at.editor, MakeWav(at.desk.AudioFile(u"ander.wav"_s), 65'250));
  EXPECT_EQ(at.Slider().maximum(), 65'250);
  EXPECT_EQ(at.Slider().value(), 0);
  EXPECT_EQ(Led(*at.editor, u"ledMin"_s), 1);
  EXPECT_EQ(Led(*at.editor, u"ledSec"_s), 5);
  EXPECT_EQ(Led(*at.editor, u"ledMilli"_s), 250);
}

TEST(PreviewPlay, PlayStartsTheTimerAndStopEndsIt) {
  const Listening at;
  QSignalSpy stopped(&at.OwnPlayer(), &audio::AudioPlayer::stopped);
  Click(*at.editor, u"cmdPlay"_s);
  EXPECT_EQ(at.OwnPlayer().State(), 6);
  EXPECT_TRUE(at.Timer().isActive());
  Click(*at.editor, u"cmdSTOP"_s);
  EXPECT_NE(at.OwnPlayer().State(), 6);
  ASSERT_TRUE(stopped.count() > 0 || stopped.wait());
  EXPECT_FALSE(at.Timer().isActive());
}

TEST(PreviewPlay, PlayWhilePlayingContinues) {
  const Listening at;
  at.PlayFrom(50'000);
  const QSignalSpy stopped(&at.OwnPlayer(), &audio::AudioPlayer::stopped);
  Click(*at.editor, u"cmdPlay"_s);
  EXPECT_EQ(at.OwnPlayer().State(), 6);
  EXPECT_EQ(at.OwnPlayer().Position(), 50'000);
  QCoreApplication::processEvents();
  EXPECT_EQ(stopped.count(), 1);  // stopped, then started
  EXPECT_TRUE(at.Timer().isActive());
}

TEST(PreviewPlay, TickCountsDownWhileTheSliderFollows) {
  Listening at(10'000);
  Click(*at.editor, u"cmdPlay"_s);
  ASSERT_EQ(at.desk.output.Pull(2'500).size(), 5'000U);
  QMetaObject::invokeMethod(&at.Timer(), "timeout");
  EXPECT_EQ(at.Slider().value(), 2'500);
  EXPECT_EQ(Led(*at.editor, u"ledSec"_s), 7);
  EXPECT_EQ(Led(*at.editor, u"ledMilli"_s), 500);
}

// Called a hundred times a second: panels with an unchanged value are not written.
TEST(PreviewPlay, TickWritesOnlyThePanelsThatChange) {
  Listening at(10'000);
  Click(*at.editor, u"cmdPlay"_s);
  at.desk.output.Pull(300);
  QMetaObject::invokeMethod(&at.Timer(), "timeout");
  auto& seconds = Child<controls::LedPanel>(*at.editor, u"ledSec"_s);
  ASSERT_EQ(seconds.Value(), 9);
  seconds.SetValue(77);
  at.desk.output.Pull(300);
  QMetaObject::invokeMethod(&at.Timer(), "timeout");
  EXPECT_EQ(seconds.Value(), 77);
  EXPECT_EQ(Led(*at.editor, u"ledMilli"_s), 400);
  at.desk.output.Pull(500);
  QMetaObject::invokeMethod(&at.Timer(), "timeout");
  EXPECT_EQ(seconds.Value(), 8);
}

TEST(PreviewPlay, EndOfTheFileStopsTheTimerWithNothingLeft) {
  Listening at(3'000);
  QSignalSpy stopped(&at.OwnPlayer(), &audio::AudioPlayer::stopped);
  Click(*at.editor, u"cmdPlay"_s);
  at.desk.output.PullToEnd();
  ASSERT_TRUE(stopped.count() > 0 || stopped.wait());
  EXPECT_FALSE(at.Timer().isActive());
  EXPECT_EQ(at.OwnPlayer().Position(), 3'000);
  EXPECT_EQ(Led(*at.editor, u"ledSec"_s), 0);
  EXPECT_EQ(Led(*at.editor, u"ledMilli"_s), 0);
  EXPECT_EQ(at.Slider().value(), 3'000);
}

TEST(PreviewPlay, JumpsBackStopAtTheBeginning) {
  const Listening at;
  EXPECT_EQ(at.AfterJump(u"cmdREW"_s, 9'000), 0);
  EXPECT_EQ(at.AfterJump(u"cmdREW"_s, 10'000), 0);
  EXPECT_EQ(at.AfterJump(u"cmdREW"_s, 10'001), 1);
  EXPECT_EQ(at.AfterJump(u"cmdREW"_s, 60'000), 50'000);
  EXPECT_EQ(at.AfterJump(u"cmdRREW"_s, 30'000), 0);
  EXPECT_EQ(at.AfterJump(u"cmdRREW"_s, 30'001), 1);
  EXPECT_EQ(at.AfterJump(u"cmdRREW"_s, 60'000), 30'000);
  EXPECT_EQ(at.OwnPlayer().SeekSetting(), 50);
}

TEST(PreviewPlay, JumpsForwardMayGoPastTheEnd) {
  const Listening at;
  EXPECT_EQ(at.AfterJump(u"cmdFFW"_s, 60'000), 70'000);
  EXPECT_EQ(at.AfterJump(u"cmdFFFW"_s, 60'000), 90'000);
  EXPECT_EQ(at.OwnPlayer().SeekSetting(), 5);
  QSignalSpy stopped(&at.OwnPlayer(), &audio::AudioPlayer::stopped);
  at.PlayFrom(175'000);
  QCoreApplication::processEvents();
  stopped.clear();
  Click(*at.editor, u"cmdFFFW"_s);
  ASSERT_TRUE(stopped.count() > 0 || stopped.wait());
  EXPECT_EQ(at.OwnPlayer().Position(), 180'000);
  EXPECT_NE(at.OwnPlayer().State(), 6);
}

TEST(PreviewPlay, JumpsDoNothingUnlessItPlays) {
  const Listening at;
  at.OwnPlayer().SetPosition(60'000);
  for (const QString& button : {u"cmdRREW"_s, u"cmdREW"_s, u"cmdFFW"_s, u"cmdFFFW"_s}) {
    Click(*at.editor, button);
    EXPECT_EQ(at.OwnPlayer().Position(), 60'000) << button.toStdString();
  }
}

TEST(PreviewPlay, AJumpPlaysTheFileAtThatPosition) {
  Listening at(40'000);
  const auto sound = audiotest::StraightDecode(at.OwnPlayer().FileName().toStdString());
  at.PlayFrom(5'000);
  ASSERT_EQ(at.desk.output.Pull(700), audiotest::Part(sound, 5'000, 700));
  Click(*at.editor, u"cmdFFW"_s);
  EXPECT_EQ(at.desk.output.Pull(700), audiotest::Part(sound, 15'700, 700));
  Click(*at.editor, u"cmdREW"_s);
  EXPECT_EQ(at.desk.output.Pull(700), audiotest::Part(sound, 6'400, 700));
}

TEST(PreviewPlay, HeldSliderFreezesTheTimeAndReleaseSeeks) {
  Listening at(10'000);
  Click(*at.editor, u"cmdPlay"_s);
  controls::PositionSlider& slider = at.Slider();
  const QPoint middle(slider.width() / 2, slider.height() / 2);
  QTest::mousePress(&slider, Qt::LeftButton, Qt::NoModifier, middle);
  const int held = slider.value();
  EXPECT_NEAR(held, 5'000, 100);
  QMetaObject::invokeMethod(&at.Timer(), "timeout");
  EXPECT_EQ(slider.value(), held);
  EXPECT_EQ(Led(*at.editor, u"ledSec"_s), 10);
  QTest::mouseRelease(&slider, Qt::LeftButton, Qt::NoModifier, middle);
  EXPECT_EQ(at.OwnPlayer().Position(), held);
  EXPECT_EQ(at.OwnPlayer().State(), 6);
  EXPECT_EQ(Led(*at.editor, u"ledSec"_s), (10'000 - held) / 1000);
}

// After a jump panels and slider follow the position again.
TEST(PreviewPlay, AJumpWhileTheSliderIsHeldEndsTheHold) {
  const Listening at;
  at.PlayFrom(60'000);
  at.Slider().setSliderDown(true);
  Click(*at.editor, u"cmdFFW"_s);
  QMetaObject::invokeMethod(&at.Timer(), "timeout");
  EXPECT_EQ(at.Slider().value(), 70'000);
  at.Slider().setSliderDown(false);
  at.Slider().setSliderDown(true);
  Click(*at.editor, u"cmdRREW"_s);
  QMetaObject::invokeMethod(&at.Timer(), "timeout");
  EXPECT_EQ(at.Slider().value(), 40'000);
}

// The release of the mouse does not reach a window below a box.
TEST(PreviewPlay, AQuestionWhileTheSliderIsHeldEndsTheHold) {
  Listening at(10'000);
  Click(*at.editor, u"cmdPlay"_s);
  SetText(*at.editor, u"txtNaam"_s, QString());
  controls::PositionSlider& slider = at.Slider();
  QTest::mousePress(&slider, Qt::LeftButton, Qt::NoModifier, slider.rect().center());
  const int held = slider.value();
  const desktop::MessageBoxScript boxes{kAnswerYes, kAnswerOk};
  QTest::keyClick(at.editor.get(), Qt::Key_Escape);
  ASSERT_EQ(boxes.Shown().size(), 2U);
  EXPECT_TRUE(at.editor->isVisible());
  EXPECT_EQ(at.OwnPlayer().Position(), held);
  at.desk.output.Pull(2'000);
  QMetaObject::invokeMethod(&at.Timer(), "timeout");
  EXPECT_EQ(slider.value(), held + 2'000);
}

TEST(PreviewPlay, SliderMovedWhileStoppedSetsTheNextStart) {
  const Listening at;
  QTest::keyClick(&at.Slider(), Qt::Key_End);
  EXPECT_EQ(at.OwnPlayer().Position(), 180'000);
  QTest::keyClick(&at.Slider(), Qt::Key_Home);
  QTest::keyClick(&at.Slider(), Qt::Key_Right);
  const int there = at.Slider().value();
  EXPECT_GT(there, 0);
  EXPECT_EQ(at.OwnPlayer().Position(), there);
  EXPECT_NE(at.OwnPlayer().State(), 6);
  Click(*at.editor, u"cmdPlay"_s);
  EXPECT_EQ(at.OwnPlayer().Position(), there);
}

TEST(PreviewPlay, PlayOpensThePathWhenNothingIsLoaded) {
  const EditorDesk desk;
  const auto editor = desk.OpenSpot(u"NIEUW"_s);
  SetText(*editor, u"txtPath"_s, u"  "_s + desk.Wav(u"a.wav"_s, 2000) + u" ");
  EXPECT_TRUE(Player(*editor).FileName().isEmpty());
  Click(*editor, u"cmdPlay"_s);
  EXPECT_EQ(Player(*editor).State(), 6);
  EXPECT_EQ(Player(*editor).Length(), 2000);
}

TEST(PreviewPlay, PlayWithoutAFileShowsAText) {
  const EditorDesk desk;
  const auto editor = desk.OpenSpot(u"NIEUW"_s);
  const desktop::MessageBoxScript boxes;
  Click(*editor, u"cmdPlay"_s);
  ASSERT_EQ(boxes.Shown().size(), 1U);
  EXPECT_EQ(boxes.Last().title, u"cmdPlay_Click"_s);
  EXPECT_FALSE(Child<QTimer>(*editor, u"tmrPlayer"_s).isActive());
}

TEST(PreviewPlay, ClosingWhilePlayingShowsNoError) {
  Listening at;
  Click(*at.editor, u"cmdPlay"_s);
  at.desk.output.Pull(100);
  const desktop::MessageBoxScript boxes;
  Click(*at.editor, u"cmdAnnuleren"_s);
  EXPECT_NE(at.OwnPlayer().State(), 6);
  at.editor.reset();
  EXPECT_FALSE(at.desk.output.IsRunning());
  EXPECT_TRUE(boxes.Shown().empty());
}

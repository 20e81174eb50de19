// SPDX-License-Identifier: MIT
// Setting the mix point: while playing, by hand, by number and on the waveform.
#include "data/Globals.h"
#include "platform/audio/MixDecoder.h"
#include "platform/audio/Peaks.h"
#include "platform/controls/LedSpin.h"
#include "platform/controls/PositionSlider.h"
#include "platform/controls/WaveformStrip.h"
#include "platform/desktop/InputBox.h"
#include "platform/desktop/MessageBox.h"
#include "tests/media/support/EditorDesk.h"
#include "tests/platform/audio/support/SoundFiles.h"

#include <QCheckBox>
#include <QLabel>
#include <QPushButton>
#include <QSignalSpy>
#include <QTimer>

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <vector>

using namespace Qt::StringLiterals;
using namespace media_testing;
using testing_support::Child;

namespace {

class Marking {
 public:
  explicit Marking(qint64 ms = 180'000) {
    desk.AddSpot(1, u"Spot"_s, desk.Wav(u"spot.wav"_s, ms));
    editor = desk.OpenSpot(u"1"_s);
  }

  audio::AudioPlayer& OwnPlayer() const { return Player(*editor); }
  controls::LedSpin& Mix() const { return Child<controls::LedSpin>(*editor, u"ledMix"_s); }
  controls::WaveformStrip& Strip() const { return Child<controls::WaveformStrip>(*editor, u"waveform"_s); }
  // A click on the digits, with the answer typed in the input box.
  void Ask(const std::optional<QString>& answer) const {
    desktop::InputBoxScript script;
    if (answer) {
      script.Type(*answer);
    } else {
      script.Cancel();
    }
    QTest::mouseClick(&Mix(), Qt::LeftButton, Qt::NoModifier, QPoint(10, Mix().height() / 2));
    ASSERT_EQ(script.Shown().size(), 1U);
    EXPECT_EQ(script.Shown()[0].prompt, u"Geef een numerische waarde ..."_s);
    EXPECT_EQ(script.Shown()[0].title, u"Items"_s);
    asked = script.Shown()[0].defaultText;
  }

  EditorDesk desk;
  std::unique_ptr<frmItemSpotsDetail> editor;
  mutable QString asked;
};

// A sample as a fraction of full scale.
float Part(int sample) {
  return static_cast<float>(sample) / 32768.0F;
}

// Without the border, whose rounded corners are transparent.
QImage Picture(QWidget& strip) {
  return strip.grab(strip.rect().adjusted(8, 8, -8, -8)).toImage().convertToFormat(QImage::Format_RGB32);
}

}  // namespace

TEST(PreviewMix, MarkSetsTheTimeLeft) {
  const Marking at;
  at.OwnPlayer().SetPosition(170'000);
  Click(*at.editor, u"cmdMix"_s);
  EXPECT_EQ(at.Mix().Value(), 10'000);
}

TEST(PreviewMix, MarkWhilePlayingUsesTheAudiblePosition) {
  Marking at(20'000);
  Click(*at.editor, u"cmdPlay"_s);
  at.desk.output.SetPending(300);
  ASSERT_EQ(at.desk.output.Pull(12'300).size(), 24'600U);
  Click(*at.editor, u"cmdMix"_s);
  EXPECT_EQ(at.Mix().Value(), 8'000);
}

TEST(PreviewMix, TestPlaysTheLastMilliseconds) {
  Marking at(20'000);
  at.Mix().SetValue(4'500);
  Click(*at.editor, u"cmdTestMix"_s);
  EXPECT_EQ(at.OwnPlayer().State(), 6);
  EXPECT_EQ(at.OwnPlayer().Position(), 15'500);
  EXPECT_EQ(Child<controls::PositionSlider>(*at.editor, u"sliPlay"_s).value(), 15'500);
  QCoreApplication::processEvents();  // the player reports that it started
  EXPECT_TRUE(Child<QTimer>(*at.editor, u"tmrPlayer"_s).isActive());
  const auto sound = audiotest::StraightDecode(at.OwnPlayer().FileName().toStdString());
  EXPECT_EQ(at.desk.output.Pull(900), audiotest::Part(sound, 15'500, 900));
}

TEST(PreviewMix, TestAgainWhilePlayingRestarts) {
  Marking at(20'000);
  at.Mix().SetValue(4'500);
  Click(*at.editor, u"cmdTestMix"_s);
  at.desk.output.Pull(900);
  Click(*at.editor, u"cmdTestMix"_s);
  EXPECT_EQ(at.OwnPlayer().Position(), 15'500);
  EXPECT_EQ(at.OwnPlayer().State(), 6);
}

TEST(PreviewMix, TestWhileTheSliderIsHeldEndsTheHold) {
  const Marking at(20'000);
  at.Mix().SetValue(4'500);
  auto& slider = Child<controls::PositionSlider>(*at.editor, u"sliPlay"_s);
  slider.setSliderDown(true);
  Click(*at.editor, u"cmdTestMix"_s);
  QMetaObject::invokeMethod(&Child<QTimer>(*at.editor, u"tmrPlayer"_s), "timeout");
  EXPECT_EQ(Led(*at.editor, u"ledSec"_s), 4);
}

TEST(PreviewMix, TestOfAMixPointLongerThanTheFileStartsAtTheBeginning) {
  const Marking at(2'000);
  at.Mix().SetValue(60'000);
  Click(*at.editor, u"cmdTestMix"_s);
  EXPECT_EQ(at.OwnPlayer().Position(), 0);
}

TEST(PreviewMix, ResetClearsIt) {
  const Marking at;
  at.Mix().SetValue(4'500);
  Click(*at.editor, u"cmdResetMix"_s);
  EXPECT_EQ(at.Mix().Value(), 0);
}

TEST(PreviewMix, InputBoxAcceptsNumbersOnly) {
  const Marking at;
  at.Mix().SetValue(120);
  at.Ask(u"abc"_s);
  EXPECT_EQ(at.asked, u"120"_s);
  EXPECT_EQ(at.Mix().Value(), 120);
  EXPECT_EQ(global.lastAnswer.toString(), u"abc"_s);
  at.Ask(u"2500"_s);
  EXPECT_EQ(at.Mix().Value(), 2500);
  EXPECT_EQ(global.lastAnswer.toString(), u"2500"_s);
  at.Ask(u"1.500"_s);
  EXPECT_EQ(at.Mix().Value(), 2500);
  at.Ask(u" 12,5 "_s);
  EXPECT_EQ(at.Mix().Value(), 12);
  at.Ask(std::nullopt);
  EXPECT_EQ(at.Mix().Value(), 12);
  EXPECT_EQ(global.lastAnswer.toString(), QString());
  at.Ask(u"-4"_s);
  EXPECT_EQ(at.Mix().Value(), 0);
  at.Ask(u"2000000"_s);
  EXPECT_EQ(at.Mix().Value(), 999'999);
}

TEST(PreviewMix, NumberBeyondItsRangeIsAnErrorAndChangesNothing) {
  const Marking at;
  at.Mix().SetValue(120);
  const desktop::MessageBoxScript boxes;
  at.Ask(u"99999999999"_s);
  ASSERT_EQ(boxes.Shown().size(), 1U);
  EXPECT_EQ(boxes.Last().title, u"ledMix_Click"_s);
  EXPECT_EQ(at.Mix().Value(), 120);
}

TEST(PreviewMix, UpAndDownStepByTen) {
  const Marking at;
  QTest::keyClick(&at.Mix(), Qt::Key_Up);
  QTest::keyClick(&at.Mix(), Qt::Key_Up);
  EXPECT_EQ(at.Mix().Value(), 20);
  QTest::keyClick(&at.Mix(), Qt::Key_Down);
  EXPECT_EQ(at.Mix().Value(), 10);
}

TEST(PreviewMix, MarkKeyWorksFromAnyField) {
  const Marking at;
  at.OwnPlayer().SetPosition(170'000);
  auto* naam = at.editor->findChild<QWidget*>(u"txtNaam"_s);
  naam->setFocus();
  QTest::keyClick(naam, Qt::Key_M, Qt::ControlModifier);
  EXPECT_EQ(at.Mix().Value(), 10'000);
  EXPECT_EQ(Text(*at.editor, u"txtNaam"_s), u"Spot"_s);
}

// A record with a missing file keeps its mix point; the reason is in the player's line, without a box.
TEST(PreviewMix, WithoutAFileMarkAndTestChangeNothingAndShowTheReason) {
  const EditorDesk desk;
  desk.AddSpot(1, u"Spot"_s, u"Z:\\weg.wav"_s, u"7, 0, 1500, 45658, 6, 45700, 22, 0, 1"_s);
  std::unique_ptr<frmItemSpotsDetail> editor;
  {
    const desktop::MessageBoxScript opening;
    editor = desk.OpenSpot(u"1"_s);
    ASSERT_EQ(opening.Shown().size(), 1U);
  }
  auto& mix = Child<controls::LedSpin>(*editor, u"ledMix"_s);
  const auto& line = Child<QLabel>(*editor, u"lblGeluid"_s);
  ASSERT_EQ(mix.Value(), 1500);
  for (const QString& button : {u"cmdMix"_s, u"cmdTestMix"_s}) {
    Child<QLabel>(*editor, u"lblGeluid"_s).clear();
    EXPECT_TRUE(Child<QPushButton>(*editor, button).isEnabled());
    Click(*editor, button);
    EXPECT_EQ(mix.Value(), 1500) << button.toStdString();
    EXPECT_TRUE(line.text().startsWith(u"Er is geen geluidsbestand geopend"_s)) << line.text().toStdString();
    EXPECT_TRUE(line.isVisible());
    EXPECT_NE(Player(*editor).State(), audio::kPlaying);
  }
  Click(*editor, u"cmdOk"_s);
  EXPECT_FALSE(editor->isVisible());
  EXPECT_EQ(desk.Spot(1).Field(u"Mixpunt"_s).toInt(), 1500);
}

TEST(PreviewMix, TheReasonDisappearsWhenAFileIsOpened) {
  const EditorDesk desk;
  const auto editor = desk.OpenSpot(u"NIEUW"_s);
  const auto& line = Child<QLabel>(*editor, u"lblGeluid"_s);
  const QString before = line.text();
  Click(*editor, u"cmdMix"_s);
  ASSERT_NE(line.text(), before);
  Choose(*editor, MakeWav(desk.AudioFile(u"a.wav"_s), 2'000));
  EXPECT_EQ(line.text(), before);
}

TEST(PreviewMix, ResetWorksWithoutAFile) {
  const EditorDesk desk;
  const auto editor = desk.OpenSpot(u"NIEUW"_s);
  auto& mix = Child<controls::LedSpin>(*editor, u"ledMix"_s);
  mix.SetValue(4'500);
  Click(*editor, u"cmdResetMix"_s);
  EXPECT_EQ(mix.Value(), 0);
}

TEST(PreviewStrip, ShowsThePositionAndTheMixPoint) {
  const Marking at(20'000);
  EXPECT_EQ(at.Strip().LengthMs(), 20'000);
  at.Mix().SetValue(4'500);
  EXPECT_EQ(at.Strip().MixMs(), 4'500);
  QTest::keyClick(&Child<controls::PositionSlider>(*at.editor, u"sliPlay"_s), Qt::Key_End);
  EXPECT_EQ(at.Strip().PositionMs(), 20'000);
}

TEST(PreviewStrip, ClickSeeksPlayingOrNot) {
  const Marking at(20'000);
  const QPoint place(static_cast<int>(at.Strip().XOf(5'000)), at.Strip().height() / 2);
  const auto expected = static_cast<double>(at.Strip().MsAt(place.x()));
  QTest::mouseClick(&at.Strip(), Qt::LeftButton, Qt::NoModifier, place);
  EXPECT_NEAR(at.OwnPlayer().Position(), expected, 1);
  EXPECT_EQ(Child<controls::PositionSlider>(*at.editor, u"sliPlay"_s).value(), at.OwnPlayer().Position());
  EXPECT_NE(at.OwnPlayer().State(), 6);
  Click(*at.editor, u"cmdPlay"_s);
  const QPoint other(static_cast<int>(at.Strip().XOf(12'000)), at.Strip().height() / 2);
  QTest::mouseClick(&at.Strip(), Qt::LeftButton, Qt::NoModifier, other);
  EXPECT_NEAR(at.OwnPlayer().Position(), static_cast<double>(at.Strip().MsAt(other.x())), 1);
  EXPECT_EQ(at.OwnPlayer().State(), 6);
}

TEST(PreviewStrip, DraggingTheFlagSetsTheMixPoint) {
  const Marking at(20'000);
  at.Mix().SetValue(5'000);
  const QPoint flag = at.Strip().FlagRect().center();
  const QPoint there(static_cast<int>(at.Strip().XOf(10'000)), flag.y());
  QTest::mousePress(&at.Strip(), Qt::LeftButton, Qt::NoModifier, flag);
  QTest::mouseMove(&at.Strip(), there);
  QTest::mouseRelease(&at.Strip(), Qt::LeftButton, Qt::NoModifier, there);
  EXPECT_NEAR(at.Mix().Value(), 10'000, 1'000);
  EXPECT_EQ(at.Mix().Value() % 10, 0);
  EXPECT_EQ(at.Mix().Value(), at.Strip().MixMs());
  EXPECT_EQ(at.OwnPlayer().Position(), 0);
}

TEST(PreviewStrip, ArrowKeysNudgeTheMixPoint) {
  const Marking at(20'000);
  at.Mix().SetValue(500);
  QTest::keyClick(&at.Strip(), Qt::Key_Left);
  EXPECT_EQ(at.Mix().Value(), 510);
  QTest::keyClick(&at.Strip(), Qt::Key_Right);
  QTest::keyClick(&at.Strip(), Qt::Key_Right);
  EXPECT_EQ(at.Mix().Value(), 490);
}

TEST(PreviewStrip, ZoomButtonAndZoomKeyDoTheSame) {
  const Marking at(120'000);
  auto& zoom = Child<QPushButton>(*at.editor, u"cmdZoom"_s);
  Click(*at.editor, u"cmdZoom"_s);
  EXPECT_TRUE(at.Strip().IsZoomed());
  QTest::keyClick(&at.Strip(), Qt::Key_Minus);
  EXPECT_FALSE(at.Strip().IsZoomed());
  EXPECT_FALSE(zoom.isChecked());
}

TEST(PreviewStrip, TheKnobIsUnderThePlayHeadAtEveryZoom) {
  const Marking at(120'000);
  auto& slider = Child<controls::PositionSlider>(*at.editor, u"sliPlay"_s);
  slider.setValue(41'000);
  for (int key = 0; key < 8; ++key) {
    EXPECT_NEAR(slider.KnobX(), at.Strip().XOf(41'000), 1) << key;
    QTest::keyClick(&at.Strip(), Qt::Key_Plus);
  }
  EXPECT_EQ(at.Strip().LastMs() - at.Strip().FirstMs(), 2000);
  const int middle = slider.width() / 2;
  QTest::mouseClick(&slider, Qt::LeftButton, {}, QPoint(middle, 10));
  EXPECT_NEAR(slider.value(), static_cast<double>(at.Strip().MsAt(middle)), 10);
}

TEST(PreviewStrip, AChangedMixPointSaysThatItIsNotSaved) {
  const Marking at(20'000);
  const auto& unit = Child<QLabel>(*at.editor, u"lblMixUnit"_s);
  EXPECT_FALSE(unit.text().contains(u"nog niet bewaard"_s));
  at.Mix().SetValue(500);
  EXPECT_TRUE(unit.text().endsWith(u"nog niet bewaard"_s));
  EXPECT_FALSE(at.editor->IsDirty());
  at.Mix().SetValue(0);
  EXPECT_FALSE(unit.text().contains(u"nog niet bewaard"_s));
}

// The picture equals that of a strip that got all peaks at once.
TEST(PreviewStrip, PeaksOfTheCompleteFileArrive) {
  const Marking at(20'000);
  const audio::Peaks peaks =
      audio::ReadPeaks(at.OwnPlayer().FileName().toStdString(), [](const audio::Peaks&, std::size_t) { return true; });
  ASSERT_EQ(peaks.bins.size(), 2000U);
  controls::WaveformStrip whole;
  whole.resize(at.Strip().size());
  whole.Begin(20'000, 2000);
  const QImage empty = Picture(whole);
  std::vector<controls::Peak> all;
  for (const audio::PeakBin& bin : peaks.bins) {
    all.push_back({Part(bin.low), Part(bin.high), Part(bin.rms)});
  }
  whole.AppendPeaks(all);
  const QImage full = Picture(whole);
  ASSERT_NE(full, empty);
  EXPECT_TRUE(QTest::qWaitFor([&] { return Picture(at.Strip()) == full; }, 20'000));
}

TEST(TestWithLeadIn, StartsThreeSecondsBeforeTheMixPoint) {
  const Marking marking;
  marking.Mix().SetValue(10'000);
  Click(*marking.editor, u"cmdTestMix"_s);
  EXPECT_EQ(marking.OwnPlayer().Position(), 170'000) << "without the option as always";
  Child<QCheckBox>(*marking.editor, u"chkAanloop"_s).setChecked(true);
  Click(*marking.editor, u"cmdTestMix"_s);
  EXPECT_EQ(marking.OwnPlayer().State(), audio::kPlaying);
  EXPECT_EQ(marking.OwnPlayer().Position(), 167'000);
  marking.Mix().SetValue(179'500);
  Click(*marking.editor, u"cmdTestMix"_s);
  EXPECT_EQ(marking.OwnPlayer().Position(), 0);
}

TEST(TestWithLeadIn, PlaysTheNextSoundOfABlockToTheFrame) {
  Marking marking(8000);
  marking.desk.AddSpot(2, u"Volgende"_s, marking.desk.Wav(u"volgende.wav"_s, 5000),
                       u"5, 0, 0, 1, 0, 99999, 23, 0, 1"_s);
  marking.desk.station.OnCurrent(
      u"UPDATE tblItemSpots SET StartDatum = NULL, EindDatum = NULL, StartUur = 0, EindUur = 23"_s);
  marking.desk.station.OnCurrent(
      u"INSERT INTO tblItems (ID, Naam, ItemSpotsOptID, OptMeerdereSpots, AantalSpots, MaxAantalSpots, Aktief) VALUES "
      u"(1, \"Blok\", 1, -1, 2, 2, 1)"_s);
  for (const int spot : {1, 2}) {
    marking.desk.station.OnCurrent(
        u"INSERT INTO tblItemsItemSpots (ItemID, ItemSpotOrder, ItemSpotID) VALUES (1, %1, %1)"_s.arg(spot));
  }
  marking.Mix().SetValue(2000);
  Child<QCheckBox>(*marking.editor, u"chkAanloop"_s).setChecked(true);
  Click(*marking.editor, u"cmdTestMix"_s);
  const auto heard = marking.desk.output.PullToEnd();
  audio::MixDecoder mix({{marking.desk.AudioFile(u"spot.wav"_s).toStdString(), 2000},
                         {marking.desk.AudioFile(u"volgende.wav"_s).toStdString(), 0}});
  mix.Seek(3000);  // 1000 frames per second
  std::vector<std::int16_t> expected(static_cast<std::size_t>(mix.TotalFrames() - 3000) * 2);
  mix.Read(expected.data(), expected.size() / 2);
  EXPECT_TRUE(heard == expected) << heard.size() << " and " << expected.size();
  EXPECT_NE(marking.OwnPlayer().State(), audio::kPlaying);
}

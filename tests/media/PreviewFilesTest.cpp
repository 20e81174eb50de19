// SPDX-License-Identifier: MIT
// Valid, invalid and missing audio files: the editor remains usable.
#include "data/Globals.h"
#include "media/AudioPreview.h"
#include "platform/controls/LevelMeter.h"
#include "platform/controls/WaveformStrip.h"
#include "platform/desktop/MessageBox.h"
#include "platform/runtime/HostPath.h"
#include "tests/media/support/EditorDesk.h"
#include "tests/platform/audio/support/SoundFiles.h"

#include <QDir>
#include <QFile>
#include <QLabel>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTimer>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace media_testing;
using testing_support::Child;

namespace {

// A file chosen in a new editor: one error that names it, no length, and the editor still accepts a valid file.
void ExpectRefusedFile(const EditorDesk& desk, const QString& hostPath, const QString& name) {
  const auto editor = desk.OpenSpot(u"NIEUW"_s);
  {
    const desktop::MessageBoxScript boxes;
    Choose(*editor, hostPath);
    ASSERT_EQ(boxes.Shown().size(), 1U) << name.toStdString();
    EXPECT_TRUE(boxes.Last().text.contains(name)) << boxes.Last().text.toStdString();
    EXPECT_EQ(boxes.Last().style, 16);
  }
  EXPECT_EQ(Text(*editor, u"txtLengteSec"_s), QString()) << name.toStdString();
  EXPECT_FALSE(Child<controls::WaveformStrip>(*editor, u"waveform"_s).TroubleText().isEmpty());
  EXPECT_EQ(Led(*editor, u"ledSec"_s), 0);
  Choose(*editor, MakeWav(desk.AudioFile(u"goed.wav"_s), 2000));
  EXPECT_EQ(Text(*editor, u"txtLengteSec"_s), u"2"_s);
  EXPECT_TRUE(Child<controls::WaveformStrip>(*editor, u"waveform"_s).TroubleText().isEmpty());
}

// The same with a stored path: one error, on opening.
void ExpectRefusedPath(const EditorDesk& desk, const QString& path) {
  static int id = 100;
  desk.AddSpot(++id, u"Pad"_s, path);
  const desktop::MessageBoxScript boxes;
  const auto editor = desk.OpenSpot(QString::number(id));
  ASSERT_EQ(boxes.Shown().size(), 1U) << path.toStdString();
  EXPECT_TRUE(boxes.Last().text.contains(path)) << boxes.Last().text.toStdString();
  EXPECT_EQ(Text(*editor, u"txtLengteSec"_s), u"7"_s);
  EXPECT_EQ(Text(*editor, u"txtNaam"_s), u"Pad"_s);
}

// Writes a little-endian number in the header of a WAV.
void Overwrite(const QString& hostPath, int offset, int bytes, quint32 value) {
  QByteArray content = ReadBytes(hostPath);
  for (int i = 0; i < bytes; ++i)
    content[offset + i] = static_cast<char>(value >> (8 * i) & 0xff);
  WriteBytes(hostPath, content);
}

QString LengthOf(const EditorDesk& desk, const QString& hostPath) {
  const auto editor = desk.OpenSpot(u"NIEUW"_s);
  Choose(*editor, hostPath);
  return Text(*editor, u"txtLengteSec"_s);
}

}  // namespace

TEST(PreviewFiles, NonAudioFilesAreRefusedByName) {
  const EditorDesk desk;
  const QString empty = desk.AudioFile(u"leeg.wav"_s);
  WriteBytes(empty, {});
  ExpectRefusedFile(desk, empty, u"leeg.wav"_s);
  const QString text = desk.AudioFile(u"tekst.mp3"_s);
  WriteBytes(text, QByteArray("Beste, hierbij de tekst van de spot.\r\n").repeated(40));
  ExpectRefusedFile(desk, text, u"tekst.mp3"_s);
  QDir(desk.station.AudioFolder()).mkdir(u"map.wav"_s);
  ExpectRefusedFile(desk, desk.AudioFile(u"map.wav"_s), u"map.wav"_s);
  ExpectRefusedFile(desk, desk.AudioFile(u"weg.wav"_s), u"weg.wav"_s);
}

// A header, a tag or a cut frame only: no audio.
TEST(PreviewFiles, AFileWithoutAudioIsRefusedByName) {
  const EditorDesk desk;
  ExpectRefusedFile(desk, MakeWav(desk.AudioFile(u"stil.wav"_s), 0, 8000), u"stil.wav"_s);
  const QString tag = desk.AudioFile(u"etiket.mp3"_s);
  WriteBytes(tag, QByteArray("ID3\x03\x00\x00\x00\x00\x00\x0a", 10) + QByteArray(10, '\0'));
  ExpectRefusedFile(desk, tag, u"etiket.mp3"_s);
  const QString cut = MakeMp3(desk.AudioFile(u"kop.mp3"_s), 0.02);
  WriteBytes(cut, ReadBytes(cut).first(4));
  ExpectRefusedFile(desk, cut, u"kop.mp3"_s);
}

TEST(PreviewFiles, ARefusedFileIsNamedByItsPathText) {
  const EditorDesk desk;
  runtime::SetDrives({{u"D"_s, desk.station.AudioFolder()}, {u"Z"_s, u"/"_s}});
  const QString path = desk.AudioFile(u"tekst.mp3"_s);
  WriteBytes(path, "geen geluid");
  const auto editor = desk.OpenSpot(u"NIEUW"_s);
  const desktop::MessageBoxScript boxes;
  Choose(*editor, path);
  ASSERT_EQ(boxes.Shown().size(), 1U);
  EXPECT_TRUE(boxes.Last().text.contains(u"'D:\\tekst.mp3'"_s)) << boxes.Last().text.toStdString();
  runtime::SetDrives({});
}

TEST(PreviewFiles, MonoAt8KilohertzIsMeasuredPlayedAndMarkedToTheMillisecond) {
  EditorDesk desk;
  const auto editor = desk.OpenSpot(u"NIEUW"_s);
  Choose(*editor, MakeWav(desk.AudioFile(u"mono.wav"_s), 5'437, 8000));
  EXPECT_EQ(Text(*editor, u"txtLengteSec"_s), u"5"_s);
  Click(*editor, u"cmdPlay"_s);
  desk.output.Pull(4'000);
  Click(*editor, u"cmdMix"_s);
  EXPECT_EQ(Led(*editor, u"ledMix"_s), 4'937);
}

TEST(PreviewFiles, ImpossibleHeadersAreRefusedByName) {
  const EditorDesk desk;
  const QString still = MakeWav(desk.AudioFile(u"nulhertz.wav"_s), 1000);
  Overwrite(still, 24, 4, 0);  // sample rate
  ExpectRefusedFile(desk, still, u"nulhertz.wav"_s);
  const QString many = MakeWav(desk.AudioFile(u"kanalen.wav"_s), 1000);
  Overwrite(many, 22, 2, 200);  // channels
  ExpectRefusedFile(desk, many, u"kanalen.wav"_s);
}

TEST(PreviewFiles, WrongHeadersAndCutFilesGiveTheActualLength) {
  const EditorDesk desk;
  const QString lying = MakeWav(desk.AudioFile(u"liegt.wav"_s), 4'200);
  Overwrite(lying, 40, 4, 2'000'000);  // bytes of audio
  EXPECT_EQ(LengthOf(desk, lying), u"4"_s);
  const QString cut = MakeWav(desk.AudioFile(u"half.wav"_s), 9'000);
  WriteBytes(cut, ReadBytes(cut).first(44 + 2 * 3'500));
  EXPECT_EQ(LengthOf(desk, cut), u"3"_s);
}

TEST(PreviewFiles, GarbageInsideAnMp3IsSkipped) {
  const EditorDesk desk;
  const QString path = MakeMp3(desk.AudioFile(u"kras.mp3"_s), 6.5);
  EXPECT_EQ(LengthOf(desk, path), u"6"_s);
  QByteArray bytes = ReadBytes(path);
  bytes.insert(bytes.size() / 2, QByteArray(3000, '\x55'));
  WriteBytes(path, bytes);
  EXPECT_EQ(LengthOf(desk, path), u"6"_s);
}

TEST(PreviewFiles, InvalidStoredPathsGiveOneError) {
  const EditorDesk desk;
  ExpectRefusedPath(desk, u"Q:\\spots\\a.wav"_s);
  ExpectRefusedPath(desk, u"\\\\elders\\spots\\a.wav"_s);
  ExpectRefusedPath(desk, u"Z:\\nergens\\a.mp3"_s);
}

TEST(PreviewFiles, FileDeletedWhilePlayingContinues) {
  EditorDesk desk;
  const QString hostPath = MakeWav(desk.AudioFile(u"a.wav"_s), 30'000);
  desk.AddSpot(1, u"A"_s, runtime::PathText(hostPath));
  const auto editor = desk.OpenSpot(u"1"_s);
  const auto sound = audiotest::StraightDecode(hostPath.toStdString());
  const desktop::MessageBoxScript boxes;
  Click(*editor, u"cmdPlay"_s);
  ASSERT_EQ(desk.output.Pull(500), audiotest::Part(sound, 0, 500));
  ASSERT_TRUE(QFile::remove(hostPath));
  Click(*editor, u"cmdFFW"_s);
  EXPECT_EQ(desk.output.Pull(500), audiotest::Part(sound, 10'500, 500));
  Click(*editor, u"cmdSTOP"_s);
  EXPECT_TRUE(boxes.Shown().empty());
}

TEST(PreviewFiles, ThreeHoursOpenAndSeek) {
  const EditorDesk desk;
  const QString hostPath = MakeWav(desk.AudioFile(u"lang.wav"_s), 3 * 3'600'000LL + 61'500);
  const auto editor = desk.OpenSpot(u"NIEUW"_s);
  Choose(*editor, hostPath);
  EXPECT_EQ(Text(*editor, u"txtLengteSec"_s), u"61"_s);
  EXPECT_EQ(Player(*editor).Length(), 10'861'500);
  Player(*editor).SetPosition(10'000'000);
  Click(*editor, u"cmdMix"_s);
  EXPECT_EQ(Led(*editor, u"ledMix"_s), 861'500);
}

TEST(PreviewFiles, NamesMatchInAnyLetterCase) {
  const EditorDesk desk;
  const QString path = desk.Wav(u"Spot.WAV"_s, 3'000);
  desk.AddSpot(1, u"A"_s, path.toLower());
  const desktop::MessageBoxScript boxes;
  EXPECT_EQ(Text(*desk.OpenSpot(u"1"_s), u"txtLengteSec"_s), u"3"_s);
  EXPECT_TRUE(boxes.Shown().empty());
}

TEST(PreviewFiles, FileOutsideTheMappedDrivesWarns) {
  const EditorDesk desk;
  const auto editor = desk.OpenSpot(u"NIEUW"_s);
  runtime::SetDrives({{u"D"_s, desk.station.ServerFolder()}});
  const desktop::MessageBoxScript boxes;
  Choose(*editor, MakeWav(desk.AudioFile(u"a.wav"_s), 3'000));
  ASSERT_EQ(boxes.Shown().size(), 1U);
  EXPECT_EQ(boxes.Last().style, 48);
  EXPECT_TRUE(boxes.Last().text.contains(u"[Drives]"_s));
  EXPECT_EQ(Text(*editor, u"txtLengteSec"_s), u"3"_s);
}

TEST(PreviewDevice, UntilTheSettingsAreReadThePlayerHasDefaults) {
  const EditorDesk desk;
  AudioPreview preview;
  EXPECT_EQ(preview.Player().DeviceID(), 0);
  EXPECT_EQ(preview.Player().NumBuffers(), 20);
  EXPECT_EQ(preview.Player().BufferSize(), 2048);
}

TEST(PreviewDevice, SettingsArePassedToThePlayerWhenTheEditorOpens) {
  const EditorDesk desk;
  global.card = 2;
  global.callback = 1;
  global.buffers = 12;
  global.bufferSize = 4096;
  const auto editor = desk.OpenSpot(u"NIEUW"_s);
  EXPECT_EQ(Player(*editor).DeviceID(), 2);
  EXPECT_EQ(Player(*editor).CallBackMode(), 1);
  EXPECT_EQ(Player(*editor).NumBuffers(), 12);
  EXPECT_EQ(Player(*editor).BufferSize(), 4096);
}

TEST(PreviewDevice, LostDeviceIsReportedOnceAndPlaybackStops) {
  EditorDesk desk;
  desk.AddSpot(1, u"A"_s, desk.Wav(u"a.wav"_s, 30'000));
  const auto editor = desk.OpenSpot(u"1"_s);
  QSignalSpy stopped(&Player(*editor), &audio::AudioPlayer::stopped);
  const desktop::MessageBoxScript boxes;
  Click(*editor, u"cmdPlay"_s);
  desk.output.Pull(200);
  desk.output.Unplug();
  ASSERT_TRUE(stopped.count() > 0 || stopped.wait());
  EXPECT_NE(Player(*editor).State(), 6);
  EXPECT_EQ(boxes.Shown().size(), 1U);
  EXPECT_FALSE(Child<QTimer>(*editor, u"tmrPlayer"_s).isActive());
}

TEST(PreviewDevice, SilentPlaybackIsReportedInTheStatusLine) {
  EditorDesk desk;
  desk.output.SetStatus("Geen geluidskaart: het afspelen is stil.");
  desk.AddSpot(1, u"A"_s, desk.Wav(u"a.wav"_s, 30'000));
  const auto editor = desk.OpenSpot(u"1"_s);
  const auto& line = Child<QLabel>(*editor, u"lblGeluid"_s);
  EXPECT_FALSE(line.isVisible());
  QSignalSpy status(&Player(*editor), &audio::AudioPlayer::statusChanged);
  const desktop::MessageBoxScript boxes;
  Click(*editor, u"cmdPlay"_s);
  ASSERT_TRUE(status.count() > 0 || status.wait());
  EXPECT_EQ(line.text(), u"Geen geluidskaart: het afspelen is stil."_s);
  EXPECT_TRUE(line.isVisible());
  EXPECT_TRUE(boxes.Shown().empty());
}

TEST(PreviewDevice, AStatusTextDoesNotMoveControls) {
  EditorDesk desk;
  desk.output.SetStatus("Geen geluidskaart: het afspelen is stil.");
  desk.AddSpot(1, u"A"_s, desk.Wav(u"a.wav"_s, 30'000));
  const auto editor = desk.OpenSpot(u"1"_s);
  const auto& area = Child<QScrollArea>(*editor, u"scrInhoud"_s);
  const auto placeOf = [&](const QString& name) {
    return Child<QPushButton>(*editor, name).mapTo(editor.get(), QPoint(0, 0));
  };
  const QPoint play = placeOf(u"cmdPlay"_s);
  const QPoint mix = placeOf(u"cmdMix"_s);
  const int range = area.verticalScrollBar()->maximum();
  QSignalSpy status(&Player(*editor), &audio::AudioPlayer::statusChanged);
  Click(*editor, u"cmdPlay"_s);
  ASSERT_TRUE(status.count() > 0 || status.wait());
  QCoreApplication::processEvents();
  EXPECT_EQ(placeOf(u"cmdPlay"_s), play);
  EXPECT_EQ(placeOf(u"cmdMix"_s), mix);
  EXPECT_EQ(area.verticalScrollBar()->maximum(), range);
}

TEST(PreviewDevice, MetersShowTheLevels) {
  EditorDesk desk;
  desk.AddSpot(1, u"A"_s, desk.Wav(u"a.wav"_s, 30'000));
  const auto editor = desk.OpenSpot(u"1"_s);
  Click(*editor, u"cmdPlay"_s);
  ASSERT_EQ(desk.output.Pull(1000).size(), 2000U);
  QMetaObject::invokeMethod(&Child<QTimer>(*editor, u"tmrPlayer"_s), "timeout");
  for (const QString& name : {u"levelLeft"_s, u"levelRight"_s}) {
    auto& meter = Child<controls::LevelMeter>(*editor, name);
    meter.Advance(0.04);
    EXPECT_GT(meter.Level(), -20.0) << name.toStdString();
  }
}

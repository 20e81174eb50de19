// SPDX-License-Identifier: MIT
// Differences between the item-pingle editor and the item-spot editor.
#include "data/Messages.h"
#include "platform/controls/LedPanel.h"
#include "platform/desktop/FileChooser.h"
#include "platform/desktop/Lock.h"
#include "platform/desktop/MessageBox.h"
#include "tests/media/support/EditorDesk.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTimer>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace media_testing;
using testing_support::Child;
using testing_support::Station;

TEST(ItemPingleEditor, NewPingleIsActiveAndHasACaption) {
  const EditorDesk desk;
  const auto editor = desk.OpenPingle(u"NIEUW"_s);
  EXPECT_EQ(editor->windowTitle(), u"Item-pingle ... nieuw"_s);
  EXPECT_TRUE(Child<QCheckBox>(*editor, u"chkAktief"_s).isChecked());
  EXPECT_FALSE(editor->IsDirty());
}

TEST(ItemPingleEditor, ExistingPingleIsFilled) {
  const EditorDesk desk;
  desk.AddPingle(3, u"Opener"_s, desk.Wav(u"o.wav"_s, 5'250));
  const auto editor = desk.OpenPingle(u"3"_s);
  EXPECT_EQ(editor->windowTitle(), u"Item-pingle ... detail"_s);
  EXPECT_EQ(Text(*editor, u"txtNaam"_s), u"Opener"_s);
  EXPECT_EQ(Text(*editor, u"txtLengteSec"_s), u"5"_s);
  EXPECT_EQ(Led(*editor, u"ledMix"_s), 250);
  EXPECT_FALSE(editor->IsDirty());
}

TEST(ItemPingleEditor, OpensOnItsNameWithoutASelection) {
  const EditorDesk desk;
  desk.AddPingle(3, u"Opener"_s, desk.Wav(u"o.wav"_s, 5'250));
  const auto editor = desk.OpenPingle(u"3"_s);
  editor->show();
  QCoreApplication::processEvents();
  const auto& name = Child<QLineEdit>(*editor, u"txtNaam"_s);
  EXPECT_EQ(Focused(*editor), u"txtNaam"_s);
  EXPECT_FALSE(name.hasSelectedText());
  EXPECT_EQ(name.cursorPosition(), name.text().size());
}

TEST(ItemPingleEditor, MissingFileGivesOneErrorAndTheStoredLength) {
  const EditorDesk desk;
  desk.AddPingle(3, u"Opener"_s, u"Z:\\nergens\\o.wav"_s);
  const desktop::MessageBoxScript boxes;
  const auto editor = desk.OpenPingle(u"3"_s);
  EXPECT_EQ(boxes.Shown().size(), 1U);
  EXPECT_EQ(Text(*editor, u"txtLengteSec"_s), u"7"_s);
  EXPECT_EQ(Led(*editor, u"ledMix"_s), 250);
}

TEST(ItemPingleEditor, NewPingleIsInsertedWithItsMeasuredLengthAndListed) {
  const EditorDesk desk;
  const auto editor = desk.OpenPingle(u"NIEUW"_s);
  desktop::FileChooserScript script;
  script.Choose(MakeWav(desk.AudioFile(u"slot.wav"_s), 3'900));
  Click(*editor, u"cmdPath"_s);
  EXPECT_EQ(script.Shown().at(0).title, u"Reclame-pingle kiezen"_s);
  EXPECT_EQ(script.Shown().at(0).filter, u"Mpeg-3 (*.MP3)|*.MP3|Wave bestanden (*.WAV) |*.WAV"_s);
  Click(*editor, u"cmdFillName"_s);
  EXPECT_EQ(Text(*editor, u"txtNaam"_s), u"slot"_s);
  Child<controls::LedPanel>(*editor, u"ledMix"_s).SetValue(440);
  const QString path = Text(*editor, u"txtPath"_s);
  Click(*editor, u"cmdOk"_s);
  EXPECT_FALSE(editor->isVisible());
  const dao::Recordset row = desk.Pingle(1);
  ASSERT_FALSE(row.Eof());
  EXPECT_EQ(row.Field(u"Naam"_s).toString(), u"slot"_s);
  EXPECT_EQ(row.Field(u"Path"_s).toString(), path);
  EXPECT_EQ(row.Field(u"LengteSec"_s).toInt(), 3);
  EXPECT_EQ(row.Field(u"StartPunt"_s).toInt(), 0);
  EXPECT_EQ(row.Field(u"MixPunt"_s).toInt(), 440);
  EXPECT_EQ(row.Field(u"Aktief"_s).toInt(), 1);
  EXPECT_EQ(desk.AudioList(), QStringList(path));
}

TEST(ItemPingleEditor, OfflineTheStatementIsLoggedForTheServer) {
  const EditorDesk desk(Station::Mode::Offline);
  desk.AddPingle(3, u"Opener"_s, desk.Wav(u"o.wav"_s, 5'250));
  const auto editor = desk.OpenPingle(u"3"_s);
  Click(*editor, u"chkAktief"_s);
  Click(*editor, u"cmdOk"_s);
  const QString expected = u"UPDATE tblItemPingles SET Path = '"_s + Text(*editor, u"txtPath"_s) +
                           u"', Naam = 'Opener', LengteSec = 5, StartPunt = 0, MixPunt = 250, Aktief = 0 WHERE ID = 3";
  EXPECT_EQ(desk.station.Log().join(u'\n').toStdString(), expected.toStdString());
  EXPECT_TRUE(desk.AudioList().isEmpty());
}

TEST(ItemPingleEditor, NameIsUniqueAmongPinglesOnly) {
  const EditorDesk desk;
  const QString path = desk.Wav(u"o.wav"_s, 1000);
  desk.AddSpot(1, u"Kerst"_s, path);
  desk.AddPingle(1, u"Pasen"_s, path);
  desk.AddPingle(2, u"Twee"_s, path);
  const auto editor = desk.OpenPingle(u"2"_s);
  SetText(*editor, u"txtNaam"_s, u"PASEN"_s);
  {
    const desktop::MessageBoxScript boxes;
    Click(*editor, u"cmdOk"_s);
    ASSERT_EQ(boxes.Shown().size(), 1U);
    EXPECT_EQ(boxes.Last().text, GetMsgElements(1600, u"PASEN"_s, u"Naam"_s).text);
    EXPECT_EQ(Focused(*editor), u"txtNaam"_s);
  }
  SetText(*editor, u"txtNaam"_s, u"kerst"_s);
  Click(*editor, u"cmdOk"_s);
  EXPECT_FALSE(editor->isVisible());
  EXPECT_EQ(desk.Pingle(2).Field(u"Naam"_s).toString(), u"kerst"_s);
}

TEST(ItemPingleEditor, EmptyPathIsRefusedFirst) {
  const EditorDesk desk;
  const auto editor = desk.OpenPingle(u"NIEUW"_s);
  const desktop::MessageBoxScript boxes;
  Click(*editor, u"cmdOk"_s);
  ASSERT_EQ(boxes.Shown().size(), 1U);
  EXPECT_EQ(boxes.Last().text, GetMsgElements(1500, u"Path"_s).text);
  EXPECT_EQ(Focused(*editor), u"txtPath"_s);
  EXPECT_TRUE(editor->IsDirty());
}

TEST(ItemPingleEditor, PathAndLengthAreLockedTheNameIsNot) {
  const EditorDesk desk;
  const auto editor = desk.OpenPingle(u"NIEUW"_s);
  EXPECT_TRUE(desktop::IsLocked(&Child<QLineEdit>(*editor, u"txtPath"_s)));
  EXPECT_TRUE(desktop::IsLocked(&Child<QLineEdit>(*editor, u"txtLengteSec"_s)));
  EXPECT_FALSE(desktop::IsLocked(&Child<QLineEdit>(*editor, u"txtNaam"_s)));
}

TEST(ItemPingleEditor, EveryFieldMarksAChangeTheMixPointDoesNot) {
  const EditorDesk desk;
  desk.AddPingle(3, u"Opener"_s, desk.Wav(u"o.wav"_s, 5'250));
  for (const QString& field : {u"txtNaam"_s, u"txtPath"_s, u"txtLengteSec"_s}) {
    const auto editor = desk.OpenPingle(u"3"_s);
    SetText(*editor, field, u"1"_s);
    EXPECT_TRUE(editor->IsDirty()) << field.toStdString();
  }
  const auto editor = desk.OpenPingle(u"3"_s);
  Child<controls::LedPanel>(*editor, u"ledMix"_s).SetValue(500);
  EXPECT_FALSE(editor->IsDirty());
  Click(*editor, u"chkAktief"_s);
  EXPECT_TRUE(editor->IsDirty());
}

TEST(ItemPingleEditor, LongPathsAndNamesAndAnEmptyNameAreRefusedInTheirOrder) {
  const EditorDesk desk;
  const auto editor = desk.OpenPingle(u"NIEUW"_s);
  const auto expectRefused = [&](const QString& text, const QString& focus) {
    const desktop::MessageBoxScript boxes;
    Click(*editor, u"cmdOk"_s);
    ASSERT_EQ(boxes.Shown().size(), 1U);
    EXPECT_EQ(boxes.Last().text.toStdString(), text.toStdString());
    EXPECT_EQ(Focused(*editor), focus);
  };
  SetText(*editor, u"txtPath"_s, QString(241, u'x'));
  expectRefused(GetMsgElements(1506, u"Path"_s, u"240"_s).text, u"txtPath"_s);
  SetText(*editor, u"txtPath"_s, QString(240, u'x'));
  expectRefused(GetMsgElements(1500, u"Naam"_s).text, u"txtNaam"_s);
  SetText(*editor, u"txtNaam"_s, QString(71, u'n'));
  expectRefused(GetMsgElements(1506, u"Naam"_s, u"70"_s).text, u"txtNaam"_s);
  SetText(*editor, u"txtNaam"_s, QString(70, u'n'));
  Click(*editor, u"cmdOk"_s);
  EXPECT_FALSE(editor->isVisible());
}

// Required: no handler for the end of playback; the timer runs until the dialog closes.
TEST(ItemPingleEditor, TimerKeepsRunningAfterAStop) {
  EditorDesk desk;
  desk.AddPingle(3, u"Opener"_s, desk.Wav(u"o.wav"_s, 2'000));
  const auto editor = desk.OpenPingle(u"3"_s);
  auto& timer = Child<QTimer>(*editor, u"tmrPlayer"_s);
  QSignalSpy stopped(&Player(*editor), &audio::AudioPlayer::stopped);
  Click(*editor, u"cmdPlay"_s);
  EXPECT_TRUE(timer.isActive());
  desk.output.PullToEnd();
  ASSERT_TRUE(stopped.count() > 0 || stopped.wait());
  EXPECT_TRUE(timer.isActive());
  QMetaObject::invokeMethod(&timer, "timeout");
  EXPECT_EQ(Led(*editor, u"ledSec"_s), 0);
  Click(*editor, u"cmdAnnuleren"_s);
  EXPECT_FALSE(timer.isActive());
}

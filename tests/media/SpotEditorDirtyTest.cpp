// SPDX-License-Identifier: MIT
// Unsaved changes, closing, and the two buttons that fill fields.
#include "data/Globals.h"
#include "data/Messages.h"
#include "platform/controls/LedPanel.h"
#include "platform/desktop/FileChooser.h"
#include "platform/desktop/MessageBox.h"
#include "tests/media/support/EditorDesk.h"

#include <QCheckBox>

#include <gtest/gtest.h>

#include <memory>

using namespace Qt::StringLiterals;
using namespace media_testing;
using testing_support::Child;

TEST(ItemSpotEditorDirty, EveryFieldMarksAChange) {
  const EditorDesk desk;
  desk.AddSpot(1, u"Spot"_s, desk.Wav(u"spot.wav"_s, 4000));
  for (const QString& field : {u"txtNaam"_s, u"txtPath"_s, u"txtLengteSec"_s, u"txtStartUur"_s, u"txtEindUur"_s,
                               u"cobStart"_s, u"cobStop"_s}) {
    const auto editor = desk.OpenSpot(u"1"_s);
    SetText(*editor, field, Text(*editor, field));
    EXPECT_FALSE(editor->IsDirty()) << field.toStdString();
    SetText(*editor, field, u"1"_s);
    EXPECT_TRUE(editor->IsDirty()) << field.toStdString();
  }
  const auto editor = desk.OpenSpot(u"1"_s);
  Click(*editor, u"chkAktief"_s);
  EXPECT_TRUE(editor->IsDirty());
}

// Playing and setting the mix point are not changes; OK saves the mix point anyway.
TEST(ItemSpotEditorDirty, MixPointAloneIsNotAChange) {
  const EditorDesk desk;
  const auto editor = desk.OpenNewSpot(4000);
  Child<controls::LedPanel>(*editor, u"ledMix"_s).SetValue(500);
  EXPECT_FALSE(editor->IsDirty());
  Click(*editor, u"cmdOk"_s);
  EXPECT_EQ(desk.Spot(1).Field(u"Mixpunt"_s).toInt(), 500);
}

TEST(ItemSpotEditorDirty, CancelWithoutChangesAsksNothing) {
  const EditorDesk desk;
  const auto editor = desk.OpenNewSpot(4000);
  const desktop::MessageBoxScript boxes;
  Click(*editor, u"cmdAnnuleren"_s);
  EXPECT_TRUE(boxes.Shown().empty());
  EXPECT_FALSE(editor->isVisible());
}

TEST(ItemSpotEditorDirty, CancelAnsweredNoClosesWithoutSaving) {
  const EditorDesk desk;
  const auto editor = desk.OpenNewSpot(4000);
  SetText(*editor, u"txtNaam"_s, u"Anders"_s);
  const desktop::MessageBoxScript boxes{kAnswerNo};
  Click(*editor, u"cmdAnnuleren"_s);
  ASSERT_EQ(boxes.Shown().size(), 1U);
  EXPECT_EQ(boxes.Last().text, GetMsgElements(2000).text);
  EXPECT_FALSE(editor->isVisible());
  EXPECT_EQ(desk.Spot(1).Field(u"Naam"_s).toString(), u"Spot"_s);
  EXPECT_EQ(global.lastAnswer.toInt(), kAnswerNo);
}

TEST(ItemSpotEditorDirty, CancelAnsweredYesSaves) {
  const EditorDesk desk;
  const auto editor = desk.OpenNewSpot(4000);
  SetText(*editor, u"txtNaam"_s, u"Anders"_s);
  const desktop::MessageBoxScript boxes{kAnswerYes};
  Click(*editor, u"cmdAnnuleren"_s);
  EXPECT_EQ(boxes.Left(), 0U);
  EXPECT_FALSE(editor->isVisible());
  EXPECT_EQ(desk.Spot(1).Field(u"Naam"_s).toString(), u"Anders"_s);
}

TEST(ItemSpotEditorDirty, CancelAnsweredYesWithAnEmptyNameStaysOpen) {
  const EditorDesk desk;
  const auto editor = desk.OpenNewSpot(4000);
  SetText(*editor, u"txtNaam"_s, u"   "_s);
  const desktop::MessageBoxScript boxes{kAnswerYes, kAnswerOk};
  Click(*editor, u"cmdAnnuleren"_s);
  ASSERT_EQ(boxes.Shown().size(), 2U);
  EXPECT_EQ(boxes.Last().text, GetMsgElements(1500, u"Naam"_s).text);
  EXPECT_TRUE(editor->isVisible());
  EXPECT_TRUE(editor->IsDirty());
}

TEST(ItemSpotEditorDirty, CloseButtonAndEscAskLikeTheCancelButton) {
  const EditorDesk desk;
  const auto editor = desk.OpenNewSpot(4000);
  SetText(*editor, u"txtNaam"_s, QString());
  {
    const desktop::MessageBoxScript boxes{kAnswerYes, kAnswerOk};
    editor->close();
    EXPECT_EQ(boxes.Shown().size(), 2U);
    EXPECT_TRUE(editor->isVisible());
  }
  const desktop::MessageBoxScript boxes{kAnswerNo};
  QTest::keyClick(editor.get(), Qt::Key_Escape);
  EXPECT_EQ(boxes.Shown().size(), 1U);
  EXPECT_FALSE(editor->isVisible());
}

TEST(ItemSpotEditorPath, DialogHasItsTitleAndFilter) {
  const EditorDesk desk;
  const auto editor = desk.OpenSpot(u"NIEUW"_s);
  desktop::FileChooserScript script;
  script.Choose(MakeWav(desk.AudioFile(u"a.wav"_s), 2500));
  Click(*editor, u"cmdPath"_s);
  ASSERT_EQ(script.Shown().size(), 1U);
  EXPECT_EQ(script.Shown()[0].title, u"Info-spot kiezen"_s);
  EXPECT_EQ(script.Shown()[0].filter, u"Mpeg-3 (*.MP3)|*.MP3|Wave bestanden (*.WAV) |*.WAV"_s);
  EXPECT_TRUE(Text(*editor, u"txtPath"_s).endsWith(u"\\a.wav"_s));
  EXPECT_TRUE(Text(*editor, u"txtPath"_s).startsWith(u"Z:\\"_s));
  EXPECT_EQ(Text(*editor, u"txtLengteSec"_s), u"2"_s);
  EXPECT_TRUE(editor->IsDirty());
}

TEST(ItemSpotEditorPath, CancelledDialogUsesThePreviousChoice) {
  const EditorDesk desk;
  const auto editor = desk.OpenNewSpot(4000);
  desktop::FileChooserScript script;
  script.Cancel();
  Click(*editor, u"cmdPath"_s);
  EXPECT_EQ(Text(*editor, u"txtPath"_s), QString());
  EXPECT_EQ(Text(*editor, u"txtLengteSec"_s), u"4"_s);
  EXPECT_TRUE(editor->IsDirty());
  script.Choose(MakeWav(desk.AudioFile(u"b.wav"_s), 6000));
  script.Cancel();
  Click(*editor, u"cmdPath"_s);
  SetText(*editor, u"txtPath"_s, u"Z:\\anders.wav"_s);
  Click(*editor, u"cmdPath"_s);
  EXPECT_TRUE(Text(*editor, u"txtPath"_s).endsWith(u"\\b.wav"_s));
}

TEST(ItemSpotEditorPath, TheSameFileChosenAgainIsAChangeAndIsListed) {
  const EditorDesk desk;
  const auto editor = desk.OpenNewSpot(4000);
  const QString path = Text(*editor, u"txtPath"_s);
  Choose(*editor, desk.AudioFile(u"spot.wav"_s));
  EXPECT_EQ(Text(*editor, u"txtPath"_s), path);
  EXPECT_TRUE(editor->IsDirty());
  Click(*editor, u"cmdOk"_s);
  EXPECT_EQ(desk.AudioList(), QStringList(path));
}

TEST(ItemSpotEditorPath, UnreadableFileIsRefusedAndTheOldOneKept) {
  const EditorDesk desk;
  const auto editor = desk.OpenNewSpot(4000);
  const QString before = Text(*editor, u"txtPath"_s);
  const QString bad = desk.AudioFile(u"tekst.mp3"_s);
  WriteBytes(bad, "dit is geen muziek");
  const desktop::MessageBoxScript boxes;
  Choose(*editor, bad);
  ASSERT_EQ(boxes.Shown().size(), 1U);
  EXPECT_EQ(boxes.Last().title, u"cmdPath_Click"_s);
  EXPECT_TRUE(boxes.Last().text.contains(u"tekst.mp3"_s));
  EXPECT_EQ(Text(*editor, u"txtPath"_s), before);
  EXPECT_FALSE(editor->IsDirty());
}

TEST(ItemSpotEditorFillName, UsesTheFileNameWithoutItsExtension) {
  const EditorDesk desk;
  const auto editor = desk.OpenSpot(u"NIEUW"_s);
  Click(*editor, u"cmdFillName"_s);
  EXPECT_EQ(Text(*editor, u"txtNaam"_s), QString());
  EXPECT_FALSE(editor->IsDirty());
  SetText(*editor, u"txtPath"_s, u"D:\\Audio\\Bakker Janssens.MP3"_s);
  Click(*editor, u"cmdFillName"_s);
  EXPECT_EQ(Text(*editor, u"txtNaam"_s), u"Bakker Janssens"_s);
  EXPECT_TRUE(editor->IsDirty());
  SetText(*editor, u"txtPath"_s, u"D:\\Audio\\.MP3"_s);
  Click(*editor, u"cmdFillName"_s);
  EXPECT_EQ(Text(*editor, u"txtNaam"_s), QString());
}

TEST(ItemSpotEditorFillName, NameTooShortIsAnError) {
  const EditorDesk desk;
  const auto editor = desk.OpenSpot(u"NIEUW"_s);
  SetText(*editor, u"txtPath"_s, u"D:\\abc"_s);
  const desktop::MessageBoxScript boxes;
  Click(*editor, u"cmdFillName"_s);
  ASSERT_EQ(boxes.Shown().size(), 1U);
  EXPECT_EQ(boxes.Last().title, u"cmdFillName_Click"_s);
  EXPECT_EQ(Text(*editor, u"txtNaam"_s), u"abc"_s);
}

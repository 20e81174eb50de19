// SPDX-License-Identifier: MIT
// Audio files dropped on an editor, with the events that a desktop sends.
#include "tests/support/Drop.h"

#include "data/Globals.h"
#include "data/forms/DroppedAudio.h"
#include "data/forms/Screens.h"
#include "media/Screens.h"
#include "platform/desktop/MessageBox.h"
#include "platform/runtime/Clock.h"
#include "platform/runtime/HostPath.h"
#include "tests/media/support/EditorDesk.h"
#include "tests/support/ModalDriver.h"

#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMimeData>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace media_testing;
using testing_support::Child;
using testing_support::DropFilesOn;

namespace {

QString Waiting(const QWidget& editor) {
  return Child<QLabel>(editor, u"lblToelichting"_s).text();
}

QString Today() {
  return runtime::Now().date().toString(u"dd-MM-yyyy"_s);
}

// Makes a.wav of 1 second, b.wav of 2 seconds, ...
QStringList MakeFiles(const EditorDesk& desk, int count) {
  QStringList files;
  for (int at = 0; at < count; ++at)
    files += MakeWav(desk.AudioFile(QChar(u'a' + at) + u".wav"_s), (at + 1) * 1000);
  return files;
}

}  // namespace

TEST(EditorDrop, OneFileOnANewSpotFillsPathNameLengthAndTheFirstDay) {
  const EditorDesk desk;
  const auto editor = desk.OpenSpot(u"NIEUW"_s);
  const QString file = MakeWav(desk.AudioFile(u"Kerst actie.wav"_s), 4'200);
  EXPECT_TRUE(DropFilesOn(*editor, {file}));
  EXPECT_EQ(Text(*editor, u"txtPath"_s), runtime::PathText(file));
  EXPECT_EQ(Text(*editor, u"txtNaam"_s), u"Kerst actie"_s);
  EXPECT_EQ(Text(*editor, u"txtLengteSec"_s), u"4"_s);
  EXPECT_EQ(Text(*editor, u"cobStart"_s), Today());
  EXPECT_EQ(Text(*editor, u"cobStop"_s), QString());
  EXPECT_TRUE(editor->IsDirty());
  EXPECT_EQ(Waiting(*editor), QString());
  SetText(*editor, u"cobStop"_s, u"31-12-2030"_s);
  Click(*editor, u"cmdOk"_s);
  EXPECT_EQ(desk.AudioList(), QStringList(runtime::PathText(file)));
}

TEST(EditorDrop, ADropOnATextFieldIsTreatedAsAFile) {
  const EditorDesk desk;
  const auto editor = desk.OpenPingle(u"NIEUW"_s);
  const QString file = MakeWav(desk.AudioFile(u"slot.wav"_s), 3'000);
  EXPECT_TRUE(DropFilesOn(Child<QLineEdit>(*editor, u"txtNaam"_s), {file}));
  EXPECT_EQ(Text(*editor, u"txtNaam"_s), u"slot"_s);
  EXPECT_EQ(Text(*editor, u"txtLengteSec"_s), u"3"_s);
}

TEST(EditorDrop, TextDroppedOnAFieldIsInserted) {
  const EditorDesk desk;
  const auto editor = desk.OpenPingle(u"NIEUW"_s);
  QMimeData data;
  data.setText(u"jingle"_s);
  testing_support::DropOn(Child<QLineEdit>(*editor, u"txtNaam"_s), data);
  EXPECT_EQ(Text(*editor, u"txtNaam"_s), u"jingle"_s);
  EXPECT_EQ(Text(*editor, u"txtPath"_s), QString());
}

TEST(EditorDrop, AnExistingSpotGetsTheFileAndKeepsItsNameAndDays) {
  const EditorDesk desk;
  desk.AddSpot(3, u"Kerst"_s, desk.Wav(u"oud.wav"_s, 7'000));
  const auto editor = desk.OpenSpot(u"3"_s);
  const QString file = MakeWav(desk.AudioFile(u"nieuw.wav"_s), 9'000);
  EXPECT_TRUE(DropFilesOn(*editor, {file}));
  EXPECT_EQ(Text(*editor, u"txtPath"_s), runtime::PathText(file));
  EXPECT_EQ(Text(*editor, u"txtNaam"_s), u"Kerst"_s);
  EXPECT_EQ(Text(*editor, u"cobStart"_s), u"01-01-2025"_s);
  Click(*editor, u"cmdOk"_s);
  EXPECT_EQ(desk.Spot(3).Field(u"LengteSec"_s).toInt(), 9);
}

TEST(EditorDrop, SeveralFilesOnAnExistingSpotAreRefused) {
  const EditorDesk desk;
  const QString path = desk.Wav(u"oud.wav"_s, 7'000);
  desk.AddSpot(3, u"Kerst"_s, path);
  const auto editor = desk.OpenSpot(u"3"_s);
  const desktop::MessageBoxScript boxes;
  DropFilesOn(*editor, MakeFiles(desk, 2));
  ASSERT_EQ(boxes.Shown().size(), 1U);
  EXPECT_TRUE(boxes.Last().text.startsWith(u"Zet hier één geluidsbestand neer"_s));
  EXPECT_EQ(Text(*editor, u"txtPath"_s), path);
  EXPECT_FALSE(editor->IsDirty());
  EXPECT_EQ(DroppedAudioLeft(), 0);
}

TEST(EditorDrop, ARefusalNamesTheFileAndTheAcceptedTypes) {
  const EditorDesk desk;
  const auto editor = desk.OpenSpot(u"NIEUW"_s);
  const QString text = desk.AudioFile(u"lijst.txt"_s);
  WriteBytes(text, "x");
  const desktop::MessageBoxScript boxes;
  DropFilesOn(*editor, {text});
  ASSERT_EQ(boxes.Shown().size(), 1U);
  EXPECT_EQ(boxes.Last().title, u"Items"_s);
  EXPECT_TRUE(boxes.Last().text.contains(u"(*.MP3)"_s) && boxes.Last().text.contains(u"(*.WAV)"_s));
  EXPECT_TRUE(boxes.Last().text.contains(u'\'' + text + u'\''));
  EXPECT_EQ(Text(*editor, u"txtPath"_s), QString());
  EXPECT_FALSE(editor->IsDirty());
}

TEST(EditorDrop, ANonAudioFileGivesItsErrorAndFillsNothing) {
  const EditorDesk desk;
  const auto editor = desk.OpenSpot(u"NIEUW"_s);
  const QString file = desk.AudioFile(u"stuk.wav"_s);
  WriteBytes(file, "geen geluid");
  const desktop::MessageBoxScript boxes;
  DropFilesOn(*editor, {file});
  ASSERT_EQ(boxes.Shown().size(), 1U);
  EXPECT_TRUE(boxes.Last().text.contains(u"stuk.wav"_s));
  EXPECT_EQ(Text(*editor, u"txtNaam"_s), QString());
  EXPECT_FALSE(editor->IsDirty());
}

// Files dropped on a list: the first editor opens with the first file, then one for each next file.
class DroppedFiles : public ::testing::Test {
 protected:
  DroppedFiles() { RegisterMediaScreens(); }
  ~DroppedFiles() override { ForgetDroppedAudio(); }

  void SaveNext() {
    driver_.OnNext(u"frmItemPinglesDetail"_s, [this](QDialog& window) {
      seen_ += Text(window, u"txtNaam"_s) + u" | " + Waiting(window);
      Click(window, u"cmdOk"_s);
    });
  }
  void CancelNext() {
    driver_.OnNext(u"frmItemPinglesDetail"_s, [this](QDialog& window) {
      seen_ += Text(window, u"txtNaam"_s) + u" | " + Waiting(window);
      Click(window, u"cmdAnnuleren"_s);
    });
  }
  void Show() {
    global.gstrSelectedID = u"NIEUW"_s;
    ShowScreen(Screen::ItemPinglesDetail, nullptr);
  }

  EditorDesk desk_;
  testing_support::ModalDriver driver_;
  QStringList seen_;
};

TEST_F(DroppedFiles, OpenTheEditorOneAfterTheOther) {
  QueueDroppedAudio(MakeFiles(desk_, 3));
  SaveNext();
  SaveNext();
  SaveNext();
  Show();
  EXPECT_EQ(seen_, (QStringList{u"a | Nog 2 bestanden wachten"_s, u"b | Nog 1 bestand wacht"_s, u"c | "_s}));
  EXPECT_EQ(desk_.Pingle(3).Field(u"Naam"_s).toString(), u"c"_s);
  EXPECT_EQ(desk_.Pingle(3).Field(u"LengteSec"_s).toInt(), 3);
}

TEST_F(DroppedFiles, ACancelledOneAsksWhetherToContinue) {
  QueueDroppedAudio(MakeFiles(desk_, 3));
  desktop::MessageBoxScript boxes({desktop::kAnswerNo, desktop::kAnswerYes, desktop::kAnswerNo, desktop::kAnswerNo});
  CancelNext();
  CancelNext();
  Show();
  EXPECT_EQ(seen_, (QStringList{u"a | Nog 2 bestanden wachten"_s, u"b | Nog 1 bestand wacht"_s}));
  ASSERT_EQ(boxes.Shown().size(), 4U);
  EXPECT_EQ(boxes.Shown()[1].text, u"Er wachten nog 2 geluidsbestanden.\r\nVerdergaan met het volgende?"_s);
  EXPECT_EQ(boxes.Shown()[3].text, u"Er wacht nog één geluidsbestand.\r\nVerdergaan met het volgende?"_s);
  EXPECT_TRUE(desk_.Pingle(1).Eof());
}

TEST_F(DroppedFiles, OnANewEditorTheFirstFillsItAndTheOthersAreQueued) {
  driver_.OnNext(u"frmItemPinglesDetail"_s, [this](QDialog& window) {
    DropFilesOn(window, MakeFiles(desk_, 2));
    seen_ += Text(window, u"txtNaam"_s) + u" | " + Waiting(window);
    Click(window, u"cmdOk"_s);
  });
  SaveNext();
  Show();
  EXPECT_EQ(seen_, (QStringList{u"a | Nog 1 bestand wacht"_s, u"b | "_s}));
}

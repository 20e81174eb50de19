// SPDX-License-Identifier: MIT
// Validation and saving in the item-spot editor.
#include "data/Globals.h"
#include "data/Messages.h"
#include "platform/controls/LedPanel.h"
#include "platform/desktop/MessageBox.h"
#include "tests/media/support/EditorDesk.h"
#include "tests/support/FailingAccesses.h"
#include "tests/support/PointerWatch.h"

#include <QCheckBox>
#include <QFile>

#include <gtest/gtest.h>

#include <memory>

using namespace Qt::StringLiterals;
using namespace media_testing;
using testing_support::Child;
using testing_support::Station;

namespace {

// A new spot with valid fields; each test makes one of them invalid.
std::unique_ptr<frmItemSpotsDetail> NewSpot(const EditorDesk& desk, const QString& naam = u"Nieuw"_s) {
  auto editor = desk.OpenSpot(u"NIEUW"_s);
  Choose(*editor, MakeWav(desk.AudioFile(u"nieuw.wav"_s), 5'500));
  FillValidSpot(*editor, naam);
  return editor;
}

int Number(const dao::Recordset& row, const QString& field) {
  return row.Field(field).toInt();
}

// OK shows that message and moves the focus there; nothing is written.
void ExpectRefused(frmItemSpotsDetail& editor, const QString& text, const QString& focus) {
  const desktop::MessageBoxScript boxes;
  Click(editor, u"cmdOk"_s);
  ASSERT_EQ(boxes.Shown().size(), 1U) << text.toStdString();
  EXPECT_EQ(boxes.Last().text.toStdString(), text.toStdString());
  EXPECT_EQ(boxes.Last().title, u"Items"_s);
  EXPECT_EQ(Focused(editor), focus);
  EXPECT_TRUE(editor.isVisible());
  EXPECT_TRUE(editor.IsDirty());
}

QString Message(int number, const QString& value1, const QString& value2 = {}) {
  return GetMsgElements(number, value1, value2).text;
}

}  // namespace

TEST(ItemSpotEditorSave, NewSpotIsInsertedAndItsPathListed) {
  const EditorDesk desk;
  desk.AddSpot(41, u"Ander"_s, u"Z:\\x.wav"_s);
  const auto editor = NewSpot(desk);
  const QString path = Text(*editor, u"txtPath"_s);
  Child<controls::LedPanel>(*editor, u"ledMix"_s).SetValue(1230);
  const desktop::MessageBoxScript boxes;
  Click(*editor, u"cmdOk"_s);
  EXPECT_TRUE(boxes.Shown().empty());
  EXPECT_FALSE(editor->isVisible());
  EXPECT_FALSE(editor->IsNew());
  EXPECT_EQ(editor->ID(), 42);
  const dao::Recordset row = desk.Spot(42);
  ASSERT_FALSE(row.Eof());
  EXPECT_EQ(row.Field(u"Path"_s).toString(), path);
  EXPECT_EQ(row.Field(u"Naam"_s).toString(), u"Nieuw"_s);
  EXPECT_EQ(Number(row, u"LengteSec"_s), 5);
  EXPECT_EQ(Number(row, u"StartPunt"_s), 0);
  EXPECT_EQ(Number(row, u"Mixpunt"_s), 1230);
  EXPECT_EQ(row.Field(u"StartDatum"_s).toDate(), QDate(2025, 1, 1));
  EXPECT_EQ(Number(row, u"StartUur"_s), 0);
  EXPECT_EQ(row.Field(u"EindDatum"_s).toDate(), QDate(2025, 1, 31));
  EXPECT_EQ(Number(row, u"EindUur"_s), 23);
  EXPECT_EQ(Number(row, u"AantalGedraaid"_s), 0);
  EXPECT_EQ(Number(row, u"Aktief"_s), 1);
  EXPECT_EQ(desk.AudioList(), QStringList(path));
  EXPECT_TRUE(desk.station.Log().isEmpty());
}

TEST(ItemSpotEditorSave, OfflineTheStatementIsLoggedForTheServer) {
  const EditorDesk desk(Station::Mode::Offline);
  desk.AddSpot(7, u"Oud"_s, desk.Wav(u"a.wav"_s, 2000));
  const auto editor = desk.OpenSpot(u"7"_s);
  SetText(*editor, u"txtNaam"_s, u"  Jan's spot "_s);
  SetText(*editor, u"cobStop"_s, u"31-12-2025"_s);
  Click(*editor, u"cmdOk"_s);
  EXPECT_EQ(desk.Spot(7).Field(u"Naam"_s).toString(), u"Jan's spot"_s);
  const QString path = Text(*editor, u"txtPath"_s);
  const QString expected = u"UPDATE tblItemSpots SET Path = '"_s + path +
                           u"', Naam = 'Jan*s spot', LengteSec = 2, StartPunt = 0, MixPunt = 0, StartDatum = 45658, "
                           u"StartUur = 6, EindDatum = 46022, EindUur = 22, Aktief = 1 WHERE ID = 7";
  EXPECT_EQ(desk.station.Log().join(u'\n').toStdString(), expected.toStdString());
}

TEST(ItemSpotEditorSave, ExistingSpotIsListedOnlyWhenAFileWasChosen) {
  const EditorDesk desk;
  const QString path = desk.Wav(u"a.wav"_s, 2000);
  desk.AddSpot(7, u"Oud"_s, path);
  auto editor = desk.OpenSpot(u"7"_s);
  SetText(*editor, u"txtNaam"_s, u"Anders"_s);
  Click(*editor, u"cmdOk"_s);
  EXPECT_EQ(desk.Spot(7).Field(u"Naam"_s).toString(), u"Anders"_s);
  EXPECT_TRUE(desk.AudioList().isEmpty());

  editor = desk.OpenSpot(u"7"_s);
  Choose(*editor, MakeWav(desk.AudioFile(u"b.wav"_s), 3000));
  const QString other = Text(*editor, u"txtPath"_s);
  Click(*editor, u"cmdOk"_s);
  EXPECT_EQ(desk.AudioList(), QStringList(other));
  EXPECT_EQ(Number(desk.Spot(7), u"LengteSec"_s), 3);
}

TEST(ItemSpotEditorSave, NewSpotIsListedHoweverItsPathCameIn) {
  const EditorDesk desk;
  const auto editor = desk.OpenSpot(u"NIEUW"_s);
  const QString path = desk.Wav(u"a.wav"_s, 2000);
  SetText(*editor, u"txtPath"_s, path);
  FillValidSpot(*editor, u"Nieuw"_s);
  Click(*editor, u"cmdOk"_s);
  EXPECT_EQ(desk.AudioList(), QStringList(path));
}

TEST(ItemSpotEditorSave, ANonNumericLengthAndTheStartPointAreStoredAsZero) {
  const EditorDesk desk;
  desk.AddSpot(1, u"A"_s, desk.Wav(u"a.wav"_s, 4'000), u"7, 1500, 0, 45658, 6, 45700, 22, 0, 1"_s);
  const auto editor = desk.OpenSpot(u"1"_s);
  SetText(*editor, u"txtLengteSec"_s, u"kort"_s);
  Click(*editor, u"cmdOk"_s);
  EXPECT_EQ(Number(desk.Spot(1), u"LengteSec"_s), 0);
  EXPECT_EQ(Number(desk.Spot(1), u"StartPunt"_s), 0);
}

TEST(ItemSpotEditorSave, LengthsAreCountedAsTypedBlanksIncluded) {
  const EditorDesk desk;
  const auto editor = NewSpot(desk, QString(70, u'n') + u' ');
  ExpectRefused(*editor, Message(1506, u"Naam"_s, u"70"_s), u"txtNaam"_s);
  SetText(*editor, u"txtPath"_s, u"Z:\\"_s + QString(237, u'x') + u' ');
  ExpectRefused(*editor, Message(1506, u"Path"_s, u"240"_s), u"txtPath"_s);
}

TEST(ItemSpotEditorSave, SavingShowsTheHourglass) {
  const EditorDesk desk;
  const auto editor = NewSpot(desk, u"Spot \"extra\""_s);
  const testing_support::PointerWatch watch;
  Click(*editor, u"cmdOk"_s);
  EXPECT_EQ(watch.UnderHourglass(), QStringList{u"Insert_tblItemSpots"_s});
}

TEST(ItemSpotEditorSave, ChecksRunInTheirOrder) {
  const EditorDesk desk;
  desk.AddSpot(1, u"Bezet"_s, u"Z:\\x.wav"_s);
  const auto editor = desk.OpenSpot(u"NIEUW"_s);
  SetText(*editor, u"txtStartUur"_s, u"abc"_s);
  SetText(*editor, u"txtEindUur"_s, u""_s);
  ExpectRefused(*editor, Message(1500, u"Path"_s), u"txtPath"_s);
  SetText(*editor, u"txtPath"_s, u"Z:\\"_s + QString(238, u'x'));
  ExpectRefused(*editor, Message(1506, u"Path"_s, u"240"_s), u"txtPath"_s);
  SetText(*editor, u"txtPath"_s, u"Z:\\"_s + QString(237, u'x'));
  ExpectRefused(*editor, Message(1500, u"Naam"_s), u"txtNaam"_s);
  SetText(*editor, u"txtNaam"_s, QString(71, u'n'));
  ExpectRefused(*editor, Message(1506, u"Naam"_s, u"70"_s), u"txtNaam"_s);
  SetText(*editor, u"txtNaam"_s, u" bezet "_s);
  ExpectRefused(*editor, Message(1600, u"bezet"_s, u"Naam"_s), u"txtNaam"_s);
  SetText(*editor, u"txtNaam"_s, QString(70, u'n'));
  ExpectRefused(*editor, Message(3038, u"Startdatum"_s), u"cobStart"_s);
  SetText(*editor, u"cobStart"_s, u"01-01-2025"_s);
  ExpectRefused(*editor, Message(3028, u"Startuur"_s), u"txtStartUur"_s);
  SetText(*editor, u"txtStartUur"_s, u"0"_s);
  ExpectRefused(*editor, Message(3038, u"Einddatum"_s), u"cobStop"_s);
  SetText(*editor, u"cobStop"_s, u"01-01-2024"_s);
  ExpectRefused(*editor, Message(3028, u"Einduur"_s), u"txtEindUur"_s);
  SetText(*editor, u"txtEindUur"_s, u"5"_s);
  EXPECT_TRUE(desk.Spot(2).Eof());
  Click(*editor, u"cmdOk"_s);
  EXPECT_FALSE(editor->isVisible());
  EXPECT_EQ(desk.Spot(2).Field(u"Naam"_s).toString(), QString(70, u'n'));
}

TEST(ItemSpotEditorSave, HoursOutOfRangeAreCorrectedInPlaceWithoutAMessage) {
  const EditorDesk desk;
  const desktop::MessageBoxScript boxes;
  int id = 0;
  for (const auto& [typed, saved] :
       {std::pair(u"-3"_s, 0), std::pair(u"30"_s, 23), std::pair(u"99999"_s, 23), std::pair(u"-99999999999"_s, 0),
        std::pair(u" 7 "_s, 7), std::pair(u"23"_s, 23), std::pair(u"23,5"_s, 23)}) {
    const auto editor = NewSpot(desk, u"Uur "_s + typed);
    SetText(*editor, u"txtStartUur"_s, typed);
    SetText(*editor, u"txtEindUur"_s, typed);
    Click(*editor, u"cmdOk"_s);
    const dao::Recordset row = desk.Spot(++id);
    ASSERT_FALSE(row.Eof()) << typed.toStdString();
    EXPECT_EQ(Number(row, u"StartUur"_s), saved) << typed.toStdString();
    EXPECT_EQ(Number(row, u"EindUur"_s), saved) << typed.toStdString();
  }
  EXPECT_TRUE(boxes.Shown().empty());
}

TEST(ItemSpotEditorSave, ASecondRecordWithTheSameApostropheIsADuplicate) {
  const EditorDesk desk;
  desk.AddSpot(1, u"Jan's spot"_s, desk.Wav(u"a.wav"_s, 1000));
  const auto editor = NewSpot(desk, u"jan's spot "_s);
  ExpectRefused(*editor, Message(1600, u"jan's spot"_s, u"Naam"_s), u"txtNaam"_s);
  EXPECT_TRUE(desk.Spot(2).Eof());
  const auto own = desk.OpenSpot(u"1"_s);
  SetText(*own, u"txtLengteSec"_s, u"3"_s);
  const desktop::MessageBoxScript boxes;
  Click(*own, u"cmdOk"_s);
  EXPECT_TRUE(boxes.Shown().empty());
  EXPECT_FALSE(own->isVisible());
}

TEST(ItemSpotEditorSave, OwnNameInAnotherCaseIsNoDuplicate) {
  const EditorDesk desk;
  const QString path = desk.Wav(u"a.wav"_s, 1000);
  desk.AddSpot(1, u"Kerst"_s, path);
  desk.AddSpot(2, u"Pasen"_s, path);
  const auto editor = desk.OpenSpot(u"2"_s);
  SetText(*editor, u"txtNaam"_s, u"KERST"_s);
  ExpectRefused(*editor, Message(1600, u"KERST"_s, u"Naam"_s), u"txtNaam"_s);
  SetText(*editor, u"txtNaam"_s, u"pasen"_s);
  Click(*editor, u"cmdOk"_s);
  EXPECT_FALSE(editor->isVisible());
  EXPECT_EQ(desk.Spot(2).Field(u"Naam"_s).toString(), u"pasen"_s);
}

TEST(ItemSpotEditorSave, MixPointOutsideThePanelIsSavedAsReadUnlessChanged) {
  const EditorDesk desk;
  desk.AddSpot(1, u"A"_s, desk.Wav(u"a.wav"_s, 1000), u"7, 0, 1500000, 45658, 6, 45700, 22, 0, 1"_s);
  auto editor = desk.OpenSpot(u"1"_s);
  Click(*editor, u"cmdOk"_s);
  EXPECT_EQ(Number(desk.Spot(1), u"Mixpunt"_s), 1'500'000);
  editor = desk.OpenSpot(u"1"_s);
  Click(*editor, u"cmdResetMix"_s);
  Click(*editor, u"cmdOk"_s);
  EXPECT_EQ(Number(desk.Spot(1), u"Mixpunt"_s), 0);
}

// The panel already showed that limit; entering it again is a change.
TEST(ItemSpotEditorSave, MixPointSetToTheShownLimitIsAChange) {
  const EditorDesk desk;
  desk.AddSpot(1, u"A"_s, desk.Wav(u"a.wav"_s, 1000), u"7, 0, -5, 45658, 6, 45700, 22, 0, 1"_s);
  const auto editor = desk.OpenSpot(u"1"_s);
  Click(*editor, u"cmdResetMix"_s);
  Click(*editor, u"cmdOk"_s);
  EXPECT_EQ(Number(desk.Spot(1), u"Mixpunt"_s), 0);
}

TEST(ItemSpotEditorSave, DoubleQuoteInTheNameIsAnErrorAndNothingIsLost) {
  const EditorDesk desk;
  const auto editor = NewSpot(desk, u"Spot \"extra\""_s);
  const desktop::MessageBoxScript boxes;
  Click(*editor, u"cmdOk"_s);
  ASSERT_EQ(boxes.Shown().size(), 1U);
  EXPECT_EQ(boxes.Last().title, u"Insert_tblItemSpots"_s);
  EXPECT_TRUE(editor->isVisible());
  EXPECT_TRUE(editor->IsDirty());
  EXPECT_TRUE(editor->IsNew());
  EXPECT_TRUE(desk.Spot(1).Eof());
  EXPECT_TRUE(desk.AudioList().isEmpty());
}

TEST(ItemSpotEditorSave, ACharacterOutsideTheAudioListsCodePageIsReportedAndTheSpotIsSaved) {
  const EditorDesk desk;
  const auto editor = desk.OpenSpot(u"NIEUW"_s);
  Choose(*editor, MakeWav(desk.AudioFile(u"Łódź.wav"_s), 1'000));
  FillValidSpot(*editor, u"Nieuw"_s);
  const QString path = Text(*editor, u"txtPath"_s);
  const desktop::MessageBoxScript boxes;
  Click(*editor, u"cmdOk"_s);
  ASSERT_EQ(boxes.Shown().size(), 1U);
  EXPECT_EQ(boxes.Last().style, 48);
  EXPECT_TRUE(boxes.Last().text.contains(path)) << boxes.Last().text.toStdString();
  EXPECT_FALSE(editor->isVisible());
  EXPECT_EQ(desk.Spot(1).Field(u"Path"_s).toString(), path);
  EXPECT_EQ(desk.AudioList().size(), 1);
}

// The first and last possible day, the end of a year, and the days around day number 0.
TEST(ItemSpotEditorSave, DatesAreReadBackAsTyped) {
  const EditorDesk desk;
  int id = 0;
  for (const auto& [start, stop] :
       {std::pair(u"01-01-0100"_s, u"31-12-9999"_s), std::pair(u"31-12-2024"_s, u"01-01-2025"_s),
        std::pair(u"29-02-2024"_s, u"28-02-2025"_s), std::pair(u"29-12-1899"_s, u"31-12-1899"_s)}) {
    const auto editor = NewSpot(desk, start);
    SetText(*editor, u"cobStart"_s, start);
    SetText(*editor, u"cobStop"_s, stop);
    Click(*editor, u"cmdOk"_s);
    const auto again = desk.OpenSpot(QString::number(++id));
    EXPECT_EQ(Text(*again, u"cobStart"_s), start);
    EXPECT_EQ(Text(*again, u"cobStop"_s), stop);
    EXPECT_FALSE(again->IsDirty());
  }
}

// The form has the user's input, not the stored values.
TEST(ItemSpotEditorSave, AnUnreadableRecordIsNotOverwritten) {
  const EditorDesk desk;
  const QString path = desk.Wav(u"a.wav"_s, 1000);
  desk.AddSpot(1, u"Oud"_s, path);
  std::unique_ptr<frmItemSpotsDetail> editor;
  {
    const testing_support::FailingAccesses away(1);
    const desktop::MessageBoxScript boxes;
    editor = desk.OpenSpot(u"1"_s);
    ASSERT_EQ(boxes.Shown().size(), 1U);
  }
  SetText(*editor, u"txtPath"_s, path);
  SetText(*editor, u"txtStartUur"_s, u"0"_s);
  SetText(*editor, u"txtEindUur"_s, u"23"_s);
  FillValidSpot(*editor, u"Nieuw"_s);
  const desktop::MessageBoxScript boxes;
  Click(*editor, u"cmdOk"_s);
  ASSERT_EQ(boxes.Shown().size(), 1U);
  EXPECT_EQ(boxes.Last().title, u"Opslaan"_s);
  EXPECT_TRUE(boxes.Last().text.contains(u"Er is niets bewaard"_s)) << boxes.Last().text.toStdString();
  EXPECT_TRUE(editor->isVisible());
  EXPECT_EQ(desk.Spot(1).Field(u"Naam"_s).toString(), u"Oud"_s);
}

TEST(ItemSpotEditorSave, RecordRemovedInTheMeantimeIsAnError) {
  const EditorDesk desk;
  desk.AddSpot(1, u"A"_s, desk.Wav(u"a.wav"_s, 1000));
  const auto editor = desk.OpenSpot(u"1"_s);
  desk.station.OnServer(u"DELETE FROM tblItemSpots WHERE ID = 1"_s);
  const desktop::MessageBoxScript boxes;
  Click(*editor, u"cmdOk"_s);
  ASSERT_EQ(boxes.Shown().size(), 1U);
  EXPECT_EQ(boxes.Last().title, u"Opslaan"_s);
  EXPECT_TRUE(editor->isVisible());
  EXPECT_TRUE(editor->IsDirty());
}

TEST(ItemSpotEditorSave, FailedAudioListLeavesTheRecordAndTheNextOkTriesAgain) {
  const EditorDesk desk;
  const QString folder = global.exportPath;
  const auto editor = NewSpot(desk);
  const QString path = Text(*editor, u"txtPath"_s);
  global.exportPath = u"Z:\\nergens\\diep"_s;
  {
    const desktop::MessageBoxScript boxes;
    Click(*editor, u"cmdOk"_s);
    ASSERT_EQ(boxes.Shown().size(), 1U);
    EXPECT_EQ(boxes.Last().title, u"Opslaan"_s);
  }
  EXPECT_TRUE(editor->isVisible());
  EXPECT_TRUE(editor->IsDirty());
  EXPECT_FALSE(editor->IsNew());
  EXPECT_EQ(editor->ID(), 1);
  global.exportPath = folder;
  SetText(*editor, u"txtNaam"_s, u"Later"_s);
  Click(*editor, u"cmdOk"_s);
  EXPECT_FALSE(editor->isVisible());
  EXPECT_EQ(desk.Spot(1).Field(u"Naam"_s).toString(), u"Later"_s);
  EXPECT_TRUE(desk.Spot(2).Eof());
  EXPECT_EQ(desk.AudioList(), QStringList(path));
}

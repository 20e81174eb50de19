// SPDX-License-Identifier: MIT
// Opening the item-spot editor.
#include "data/Globals.h"
#include "media/ValidityLine.h"
#include "platform/controls/DateCombo.h"
#include "platform/desktop/Lock.h"
#include "platform/desktop/MessageBox.h"
#include "platform/runtime/Clock.h"
#include "tests/media/support/EditorDesk.h"
#include "tests/support/PointerWatch.h"

#include <QCheckBox>
#include <QLineEdit>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace media_testing;
using testing_support::Child;
using testing_support::Station;

namespace {

bool Aktief(const QWidget& editor) {
  return Child<QCheckBox>(editor, u"chkAktief"_s).isChecked();
}

}  // namespace

TEST(ItemSpotEditorFill, NonNumericIdIsANewRecord) {
  const EditorDesk desk;
  const auto editor = desk.OpenSpot(u"NIEUW"_s);
  EXPECT_EQ(editor->windowTitle(), u"Item-spot ... nieuw"_s);
  EXPECT_TRUE(editor->IsNew());
  EXPECT_EQ(editor->ID(), 0);
  EXPECT_TRUE(Aktief(*editor));
  EXPECT_EQ(Text(*editor, u"txtStartUur"_s), u"0"_s);
  EXPECT_EQ(Text(*editor, u"txtEindUur"_s), u"23"_s);
  EXPECT_EQ(Text(*editor, u"cobStart"_s), QString());
  EXPECT_EQ(Text(*editor, u"cobStop"_s), QString());
  EXPECT_EQ(Text(*editor, u"txtPath"_s), QString());
  EXPECT_FALSE(editor->IsDirty());
}

TEST(ItemSpotEditorFill, ExistingRecordFillsEveryField) {
  const EditorDesk desk;
  desk.AddSpot(41, u"  Bakker  "_s, desk.Wav(u"a.wav"_s, 12'345), u"7, 0, 2480, 45658, 6, 45700, 22, 147, 0"_s);
  desk.station.OnServer(u"UPDATE tblItemSpots SET LaatstGedraaid = 45727.5709490741 WHERE ID = 41"_s);
  const auto editor = desk.OpenSpot(u"41"_s);
  EXPECT_EQ(editor->windowTitle(), u"Item-spot ... detail"_s);
  EXPECT_FALSE(editor->IsNew());
  EXPECT_EQ(editor->ID(), 41);
  EXPECT_TRUE(Text(*editor, u"txtPath"_s).endsWith(u"\\a.wav"_s));
  EXPECT_EQ(Text(*editor, u"txtNaam"_s), u"Bakker"_s);
  EXPECT_EQ(Text(*editor, u"cobStart"_s), u"01-01-2025"_s);
  EXPECT_EQ(Text(*editor, u"txtStartUur"_s), u"6"_s);
  EXPECT_EQ(Text(*editor, u"cobStop"_s), u"12-02-2025"_s);
  EXPECT_EQ(Text(*editor, u"txtEindUur"_s), u"22"_s);
  EXPECT_EQ(Text(*editor, u"txtAantalGedraaid"_s), u"147"_s);
  EXPECT_EQ(Text(*editor, u"txtLaatstGedraaid"_s), u"11-03-2025 13:42:10"_s);
  EXPECT_FALSE(Aktief(*editor));
  EXPECT_EQ(Led(*editor, u"ledMix"_s), 2480);
  EXPECT_FALSE(editor->IsDirty());
}

TEST(ItemSpotEditorFill, MeasuredLengthReplacesTheStoredOne) {
  const EditorDesk desk;
  desk.AddSpot(1, u"A"_s, desk.Wav(u"a.wav"_s, 12'345));
  EXPECT_EQ(Text(*desk.OpenSpot(u"1"_s), u"txtLengteSec"_s), u"12"_s);
}

TEST(ItemSpotEditorFill, StoredPathIsTrimmedBeforeItIsLoaded) {
  const EditorDesk desk;
  const QString path = desk.Wav(u"a.wav"_s, 3'000);
  desk.AddSpot(1, u"A"_s, u"  "_s + path + u" "_s);
  const auto editor = desk.OpenSpot(u"1"_s);
  EXPECT_EQ(Text(*editor, u"txtPath"_s), path);
  EXPECT_EQ(Text(*editor, u"txtLengteSec"_s), u"3"_s);
}

TEST(ItemSpotEditorFill, WithoutAPathTheStoredLengthIsShown) {
  const EditorDesk desk;
  desk.station.OnServer(u"INSERT INTO tblItemSpots (ID, Naam, LengteSec) VALUES (3, \"A\", 9)"_s);
  EXPECT_EQ(Text(*desk.OpenSpot(u"3"_s), u"txtLengteSec"_s), u"9"_s);
}

TEST(ItemSpotEditorFill, AnyNonZeroFlagIsChecked) {
  const EditorDesk desk;
  desk.station.OnServer(u"INSERT INTO tblItemSpots (ID, Naam) VALUES (3, \"A\")"_s);
  for (const auto& [flag, ticked] : {std::pair(u"-1"_s, true), std::pair(u"1"_s, true), std::pair(u"7"_s, true),
                                     std::pair(u"0"_s, false), std::pair(u"NULL"_s, false)}) {
    desk.station.OnServer(u"UPDATE tblItemSpots SET Aktief = "_s + flag);
    EXPECT_EQ(Aktief(*desk.OpenSpot(u"3"_s)), ticked) << flag.toStdString();
  }
}

TEST(ItemSpotEditorFill, LastPlayedAtMidnightHasNoTime) {
  const EditorDesk desk;
  desk.AddSpot(1, u"A"_s, desk.Wav(u"a.wav"_s, 1000));
  desk.station.OnServer(u"UPDATE tblItemSpots SET LaatstGedraaid = 45727 WHERE ID = 1"_s);
  EXPECT_EQ(Text(*desk.OpenSpot(u"1"_s), u"txtLaatstGedraaid"_s), u"11-03-2025"_s);
}

TEST(ItemSpotEditorFill, MissingFileGivesOneErrorAndTheStoredLength) {
  const EditorDesk desk;
  desk.AddSpot(1, u"Weg"_s, u"Z:\\nergens\\weg.mp3"_s);
  const desktop::MessageBoxScript boxes;
  const auto editor = desk.OpenSpot(u"1"_s);
  ASSERT_EQ(boxes.Shown().size(), 1U);
  EXPECT_EQ(boxes.Last().title, u"FillForm"_s);
  EXPECT_EQ(boxes.Last().style, 16);
  EXPECT_TRUE(boxes.Last().text.contains(u"Z:\\nergens\\weg.mp3"_s)) << boxes.Last().text.toStdString();
  EXPECT_EQ(Text(*editor, u"txtPath"_s), u"Z:\\nergens\\weg.mp3"_s);
  EXPECT_EQ(Text(*editor, u"txtLengteSec"_s), u"7"_s);
  EXPECT_EQ(Text(*editor, u"txtNaam"_s), u"Weg"_s);
  EXPECT_EQ(Text(*editor, u"txtEindUur"_s), u"22"_s);
  EXPECT_FALSE(editor->IsDirty());
}

TEST(ItemSpotEditorFill, OfflineReadsTheLocalCopy) {
  const EditorDesk desk(Station::Mode::Offline);
  desk.AddSpot(5, u"Lokaal"_s, desk.Wav(u"a.wav"_s, 1000));
  EXPECT_EQ(Text(*desk.OpenSpot(u"5"_s), u"txtNaam"_s), u"Lokaal"_s);
}

TEST(ItemSpotEditorFill, NullFieldsAreEmpty) {
  const EditorDesk desk;
  desk.station.OnServer(u"INSERT INTO tblItemSpots (ID, Aktief) VALUES (3, 1)"_s);
  const desktop::MessageBoxScript boxes;
  const auto editor = desk.OpenSpot(u"3"_s);
  EXPECT_TRUE(boxes.Shown().empty());
  for (const QString& field : {u"txtPath"_s, u"txtNaam"_s, u"txtLengteSec"_s, u"cobStart"_s, u"cobStop"_s,
                               u"txtStartUur"_s, u"txtEindUur"_s, u"txtAantalGedraaid"_s, u"txtLaatstGedraaid"_s}) {
    EXPECT_EQ(Text(*editor, field), QString()) << field.toStdString();
  }
}

TEST(ItemSpotEditorFill, OnlyReadOnlyFieldsAreLocked) {
  const EditorDesk desk;
  const auto editor = desk.OpenSpot(u"NIEUW"_s);
  for (const QString& field : {u"txtPath"_s, u"txtLengteSec"_s, u"txtAantalGedraaid"_s, u"txtLaatstGedraaid"_s}) {
    const auto& box = Child<QLineEdit>(*editor, field);
    EXPECT_TRUE(desktop::IsLocked(&box)) << field.toStdString();
    EXPECT_EQ(desktop::FieldBackground(&box), box.palette().color(QPalette::Button)) << field.toStdString();
  }
  for (const QString& field : {u"txtNaam"_s, u"txtStartUur"_s, u"txtEindUur"_s, u"cobStart"_s, u"cobStop"_s}) {
    EXPECT_FALSE(desktop::IsLocked(&Child<QLineEdit>(*editor, field))) << field.toStdString();
  }
}

TEST(ItemSpotEditorFill, UnreachableDatabaseIsOneErrorUnderItsProcedure) {
  const EditorDesk desk;
  global.serverDatabasePath = u"Z:\\nergens\\OvalistoServer.mdb"_s;
  const desktop::MessageBoxScript boxes;
  const auto editor = desk.OpenSpot(u"NIEUW"_s);
  ASSERT_EQ(boxes.Shown().size(), 1U);
  EXPECT_EQ(boxes.Last().title, u"FillForm"_s);
  EXPECT_TRUE(desktop::IsLocked(&Child<QLineEdit>(*editor, u"txtPath"_s)));
}

TEST(ItemSpotEditorFill, OpeningShowsTheHourglass) {
  const EditorDesk desk;
  global.serverDatabasePath = u"Z:\\nergens\\OvalistoServer.mdb"_s;
  const testing_support::PointerWatch watch;
  desk.OpenSpot(u"NIEUW"_s);
  desk.OpenPingle(u"NIEUW"_s);
  EXPECT_EQ(watch.UnderHourglass(), (QStringList{u"FillForm"_s, u"FillForm"_s}));
  EXPECT_FALSE(testing_support::PointerWatch::IsHourglass());
}

TEST(ItemSpotEditorFill, IdOutsideItsRangeIsAnErrorOfLoading) {
  const EditorDesk desk;
  const desktop::MessageBoxScript boxes;
  desk.OpenSpot(u"99999999999"_s);
  ASSERT_EQ(boxes.Shown().size(), 1U);
  EXPECT_EQ(boxes.Last().title, u"Form_Load"_s);
}

TEST(ItemSpotEditorFill, MixPointOutsideThePanelIsShownAsTheNearestLimit) {
  const EditorDesk desk;
  const QString path = desk.Wav(u"a.wav"_s, 1000);
  desk.AddSpot(1, u"Hoog"_s, path, u"7, 0, 1500000, 45658, 6, 45700, 22, 0, 1"_s);
  desk.AddSpot(2, u"Laag"_s, path, u"7, 0, -5, 45658, 6, 45700, 22, 0, 1"_s);
  EXPECT_EQ(Led(*desk.OpenSpot(u"1"_s), u"ledMix"_s), 999'999);
  EXPECT_EQ(Led(*desk.OpenSpot(u"2"_s), u"ledMix"_s), 0);
}

TEST(ItemSpotEditorFill, StateIsShownNextToTheDates) {
  const EditorDesk desk;
  const runtime::ClockScope clock(QDateTime(QDate(2025, 3, 11), QTime(12, 0)));
  desk.AddSpot(1, u"A"_s, desk.Wav(u"a.wav"_s, 1000), u"7, 0, 0, 45658, 6, 45767, 22, 0, 1"_s);
  const auto editor = desk.OpenSpot(u"1"_s);
  const auto& line = Child<ValidityLine>(*editor, u"lblGeldigheid"_s);
  EXPECT_EQ(line.Text(), u"loopt, nog 40 dagen"_s);
  SetText(*editor, u"cobStop"_s, u"14-03-2025"_s);
  EXPECT_EQ(line.Text(), u"verloopt over 3 dagen"_s);
  SetText(*editor, u"cobStop"_s, u"geen datum"_s);
  EXPECT_EQ(line.Text(), QString());
  Click(*editor, u"chkAktief"_s);
  EXPECT_EQ(line.Text(), u"niet aktief"_s);
}

// SPDX-License-Identifier: MIT
// Many dropped files with the same days, hours and state.
#include "data/Globals.h"
#include "data/forms/DroppedAudio.h"
#include "data/forms/SavedRecords.h"
#include "data/forms/Screens.h"
#include "media/Screens.h"
#include "media/SpotSeries.h"
#include "platform/controls/DateCombo.h"
#include "tests/media/support/EditorDesk.h"
#include "tests/support/Keyboard.h"
#include "tests/support/ModalDriver.h"

#include <QApplication>
#include <QDialog>
#include <QPushButton>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace media_testing;
using testing_support::Child;

namespace {

class DroppedSeries : public ::testing::Test {
 protected:
  DroppedSeries() { RegisterMediaScreens(); }
  ~DroppedSeries() override { ForgetDroppedAudio(); }

  void Queue(int count) {
    QStringList files;
    for (int at = 1; at <= count; ++at)
      files += MakeWav(desk_.AudioFile(u"spot %1.wav"_s.arg(at, 2, 10, QChar(u'0'))), 1000 + at * 10);
    QueueDroppedAudio(files);
  }
  void Show() {
    global.gstrSelectedID = QString::fromUtf16(kNewRecord);
    ShowScreen(Screen::ItemSpotsDetail, nullptr);
  }
  dao::Recordset Spots() const { return desk_.station.CurrentRows(u"SELECT * FROM tblItemSpots ORDER BY ID"_s); }

  EditorDesk desk_;
  testing_support::ModalDriver driver_;
};

bool IsOfferedIn(const QWidget& editor, const QString& button) {
  return Child<QPushButton>(editor, button).isVisible();
}

}  // namespace

// Alt+E to the last day, ten keys for it, Ctrl+Enter.
TEST_F(DroppedSeries, ThirtySpotsTakeTwelveKeys) {
  Queue(30);
  testing_support::Keyboard keys;
  driver_.OnNext(u"frmItemSpotsDetail"_s, [&](QDialog& window) {
    EXPECT_EQ(Child<QPushButton>(window, u"cmdRest"_s).text(), u"Ook &voor de volgende 29"_s);
    QApplication::setActiveWindow(&window);  // shortcuts work in the active window only
    keys.Press(window, Qt::Key_E, Qt::AltModifier);
    EXPECT_EQ(window.focusWidget()->objectName(), u"cobStop"_s);
    keys.Type(*window.focusWidget(), u"31-12-2027"_s);
    keys.Press(window, Qt::Key_Return, Qt::ControlModifier);
    if (window.isVisible()) Click(window, u"cmdAnnuleren"_s);  // a failure must not wait for a user
  });
  Show();
  EXPECT_LE(keys.Count(), 40);
  EXPECT_EQ(keys.Count(), 12);
  int spots = 0;
  for (dao::Recordset rows = Spots(); !rows.Eof(); rows.MoveNext(), ++spots) {
    EXPECT_EQ(rows.Field(u"EindDatum"_s).toDate(), QDate(2027, 12, 31));
    EXPECT_EQ(rows.Field(u"LengteSec"_s).toInt(), 1);
  }
  EXPECT_EQ(spots, 30);
  EXPECT_EQ(TakeSavedRecords().size(), 30);  // for the list that opened the editor
  EXPECT_EQ(desk_.AudioList().size(), 30);
}

// A spot with the name of the third file exists: the two before are saved, and the rest after it got another name.
TEST_F(DroppedSeries, TheFirstRefusalStopsAndTheSeriesCanContinue) {
  desk_.AddSpot(1, u"spot 03"_s, desk_.Wav(u"oud.wav"_s, 1'000));
  Queue(5);
  desktop::MessageBoxScript boxes({desktop::kAnswerOk});
  driver_.OnNext(u"frmItemSpotsDetail"_s, [](QDialog& window) {
    SetText(window, u"cobStop"_s, u"31-12-2027"_s);
    SetText(window, u"txtStartUur"_s, u"6"_s);
    Click(window, u"cmdRest"_s);
  });
  driver_.OnNext(u"frmItemSpotsDetail"_s, [&](QDialog& window) {
    EXPECT_EQ(boxes.Shown().size(), 1U);
    EXPECT_EQ(Text(window, u"txtNaam"_s), u"spot 03"_s);
    EXPECT_EQ(Text(window, u"cobStop"_s), u"31-12-2027"_s);
    EXPECT_EQ(Text(window, u"txtStartUur"_s), u"6"_s);
    SetText(window, u"txtNaam"_s, u"spot drie"_s);
    Click(window, u"cmdRest"_s);
  });
  Show();
  QStringList names;
  for (dao::Recordset rows = Spots(); !rows.Eof(); rows.MoveNext())
    names += rows.Field(u"Naam"_s).toString();
  EXPECT_EQ(names, (QStringList{u"spot 03"_s, u"spot 01"_s, u"spot 02"_s, u"spot drie"_s, u"spot 04"_s, u"spot 05"_s}));
}

TEST_F(DroppedSeries, ARefusalOfTheFirstSavesNothing) {
  Queue(3);
  desktop::MessageBoxScript boxes({desktop::kAnswerOk, desktop::kAnswerNo, desktop::kAnswerNo});
  driver_.OnNext(u"frmItemSpotsDetail"_s, [](QDialog& window) {
    Click(window, u"cmdRest"_s);  // without a last day
    Click(window, u"cmdAnnuleren"_s);
  });
  Show();
  EXPECT_TRUE(Spots().Eof());
}

TEST_F(DroppedSeries, AButtonAndAKeyTakeTheTimesOfTheLastSpot) {
  NoteSavedTimes({u"01-02-2026"_s, u"8"_s, u"03-04-2026"_s, u"17"_s, false});
  const auto editor = desk_.OpenSpot(u"NIEUW"_s);
  EXPECT_EQ(Text(*editor, u"cobStart"_s), QString());
  EXPECT_EQ(Text(*editor, u"txtEindUur"_s), u"23"_s);
  EXPECT_TRUE(IsOfferedIn(*editor, u"cmdVorige"_s));
  EXPECT_FALSE(IsOfferedIn(*editor, u"cmdRest"_s));
  QTest::keyClick(editor.get(), Qt::Key_L, Qt::ControlModifier);
  EXPECT_EQ(Text(*editor, u"cobStart"_s), u"01-02-2026"_s);
  EXPECT_EQ(Text(*editor, u"txtStartUur"_s), u"8"_s);
  EXPECT_EQ(Text(*editor, u"cobStop"_s), u"03-04-2026"_s);
  EXPECT_EQ(Text(*editor, u"txtEindUur"_s), u"17"_s);
  EXPECT_FALSE(Child<QAbstractButton>(*editor, u"chkAktief"_s).isChecked());
  EXPECT_TRUE(editor->IsDirty());
}

TEST_F(DroppedSeries, AnExistingSpotHasNeitherButton) {
  NoteSavedTimes({u"01-02-2026"_s, u"8"_s, u"03-04-2026"_s, u"17"_s, false});
  desk_.AddSpot(1, u"Kerst"_s, desk_.Wav(u"k.wav"_s, 1'000));
  const auto editor = desk_.OpenSpot(u"1"_s);
  EXPECT_FALSE(IsOfferedIn(*editor, u"cmdVorige"_s));
  EXPECT_FALSE(IsOfferedIn(*editor, u"cmdRest"_s));
}

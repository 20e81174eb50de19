// SPDX-License-Identifier: MIT
#include "export/frmRadioDetail.h"

#include "data/Globals.h"
#include "data/Messages.h"
#include "data/Schema.h"
#include "export/StationMemory.h"
#include "platform/controls/ComboBox.h"
#include "platform/desktop/MessageBox.h"
#include "platform/runtime/HostPath.h"
#include "platform/runtime/TextFile.h"
#include "tests/support/Station.h"
#include "tests/support/Ui.h"

#include <QFile>
#include <QLabel>
#include <QPushButton>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using controls::ComboBox;
using desktop::MessageBoxScript;
using testing_support::Child;
using testing_support::Plain;
using testing_support::Station;

namespace {

struct RadioWindow {
  RadioWindow() {
    form.Form_Load();
    form.show();
  }
  ComboBox& Radio() { return Child<ComboBox>(form, u"cboRadio"_s); }
  void PressOk() { Child<QPushButton>(form, u"cmdOk"_s).click(); }

  frmRadioDetail form{nullptr};
};

}  // namespace

TEST(frmRadioDetail, HasItsGivenControlsAndCaptions) {
  const Station station;
  const frmRadioDetail form(nullptr);
  EXPECT_EQ(form.windowTitle(), u"Spotrooster"_s);
  const auto& tab = Child<QTabWidget>(form, u"tabDetail"_s);
  ASSERT_EQ(tab.count(), 1);
  EXPECT_EQ(Plain(tab.tabText(0)), u"Detail"_s);
  EXPECT_EQ(Plain(Child<QLabel>(form, u"lblTxtCode"_s).text()), u"Radio:"_s);
  Child<ComboBox>(form, u"cboRadio"_s);
  Child<QPushButton>(form, u"cmdOk"_s);
}

TEST(frmRadioDetail, ListsTheStationsByNameWithTheirNumbersAndNoneChosen) {
  const Station station;
  schema::AddStation(global.localDatabasePath, 7, u"Radio Zee"_s);
  schema::AddStation(global.localDatabasePath, 3, u"alfa"_s);
  RadioWindow window;
  ASSERT_EQ(window.Radio().ListCount(), 3);
  EXPECT_FALSE(Child<QLabel>(window.form, u"lblGeenZender"_s).isVisible());
  EXPECT_EQ(window.Radio().Text(0), u"alfa"_s);
  EXPECT_EQ(window.Radio().ItemData(0), 3);
  EXPECT_EQ(window.Radio().Text(2), u"Radio Zee"_s);
  EXPECT_EQ(window.Radio().ItemData(2), 7);
  EXPECT_EQ(window.Radio().ListIndex(), -1);
}

TEST(frmRadioDetail, OkSetsTheNumberOfTheChosenStationAndCloses) {
  const Station station;
  schema::AddStation(global.localDatabasePath, 7, u"Radio Zee"_s);
  RadioWindow window;
  window.Radio().SetListIndex(1);
  window.PressOk();
  EXPECT_EQ(global.stationNumber, 7);
  EXPECT_FALSE(window.form.isVisible());
}

TEST(frmRadioDetail, ANumberBeyondSixteenBitsIsReportedAndTheDialogStays) {
  const Station station;
  station.OnLocal(u"INSERT INTO cdeLicenties (LicentieNummer, RadioNaam) VALUES (40000, \"Radio Ver\")"_s);
  RadioWindow window;
  window.Radio().SetListIndex(1);
  const MessageBoxScript boxes{kAnswerOk};
  window.PressOk();
  ASSERT_EQ(boxes.Shown().size(), 1u);
  EXPECT_EQ(boxes.Last().title, u"cmdOk_Click"_s);
  EXPECT_EQ(boxes.Last().style, 16);
  EXPECT_EQ(global.stationNumber, 0);
  EXPECT_TRUE(window.form.isVisible());
}

TEST(frmRadioDetail, ReadsTheLocalDatabaseInBothModesAndShowsAnEmptyNameAsAnEmptyLine) {
  for (const auto mode : {Station::Mode::Online, Station::Mode::Offline}) {
    const Station station(mode);
    station.OnLocal(u"INSERT INTO cdeLicenties (LicentieNummer) VALUES (4)"_s);
    RadioWindow window;
    ASSERT_EQ(window.Radio().ListCount(), 2);
    EXPECT_EQ(window.Radio().Text(0), u""_s);
    EXPECT_EQ(window.Radio().ItemData(0), 4);
    EXPECT_EQ(window.Radio().Text(1), u"Radio Proef"_s);
  }
}

TEST(frmRadioDetail, OkWithNothingChosenSaysSoWithoutABox) {
  const Station station;
  global.stationNumber = 5;
  RadioWindow window;
  const auto& line = Child<QLabel>(window.form, u"lblKiesEerst"_s);
  EXPECT_FALSE(line.isVisible());
  const MessageBoxScript boxes;
  window.PressOk();
  EXPECT_TRUE(window.form.isVisible());
  EXPECT_TRUE(line.isVisible());
  EXPECT_EQ(line.text(), u"Kies eerst een zender."_s);
  EXPECT_TRUE(boxes.Shown().empty());
  EXPECT_EQ(global.stationNumber, 5);
  EXPECT_FALSE(window.form.HasChosen());
  window.Radio().SetListIndex(0);
  EXPECT_FALSE(line.isVisible());
}

TEST(frmRadioDetail, AButtonTakesTheStationOfTheLastTimeInThisFolder) {
  const Station station;
  const QTemporaryDir folder;
  const StationMemory memory(folder.filePath(u"zenders.ini"_s));
  schema::AddStation(global.localDatabasePath, 7, u"Radio Jan & Piet"_s);
  {
    RadioWindow window;
    EXPECT_FALSE(Child<QPushButton>(window.form, u"cmdLaatste"_s).isVisible());
    window.Radio().SetListIndex(0);
    window.PressOk();
  }
  global.stationNumber = 0;
  {
    const StationMemory nextRun(folder.filePath(u"zenders.ini"_s));
    RadioWindow window;
    auto& last = Child<QPushButton>(window.form, u"cmdLaatste"_s);
    EXPECT_TRUE(last.isVisible());
    EXPECT_EQ(last.text(), u"&Verder met Radio Jan && Piet"_s);
    EXPECT_EQ(window.Radio().ListIndex(), -1);
    EXPECT_EQ(window.form.focusWidget(), &window.Radio());
    last.click();
    EXPECT_FALSE(window.form.isVisible());
    EXPECT_TRUE(window.form.HasChosen());
    EXPECT_EQ(global.stationNumber, 7);
  }
  station.OnLocal(u"DELETE FROM cdeLicenties WHERE LicentieNummer = 7"_s);
  RadioWindow window;
  EXPECT_FALSE(Child<QPushButton>(window.form, u"cmdLaatste"_s).isVisible());
}

TEST(frmRadioDetail, EachProgramFolderHasItsOwnLastStation) {
  const QTemporaryDir folder;
  const StationMemory memory(folder.filePath(u"zenders.ini"_s));
  {
    const Station station;
    StationMemory::Chosen(0);
    EXPECT_EQ(StationMemory::Last(), 0);
  }
  const Station other;
  EXPECT_EQ(StationMemory::Last(), std::nullopt);
}

TEST(frmRadioDetail, AnEmptyStationTableLeavesTheListEmptyAndOkDoesNothing) {
  const Station station;
  station.OnLocal(u"DELETE FROM cdeLicenties"_s);
  RadioWindow window;
  EXPECT_EQ(window.Radio().ListCount(), 0);
  EXPECT_TRUE(Child<QLabel>(window.form, u"lblGeenZender"_s).isVisible());
  window.PressOk();
  EXPECT_TRUE(window.form.isVisible());
  EXPECT_FALSE(Child<QLabel>(window.form, u"lblKiesEerst"_s).isVisible());
}

TEST(frmRadioDetail, EscClosesItAndLeavesTheNumber) {
  const Station station;
  RadioWindow window;
  window.Radio().SetListIndex(0);
  QTest::keyClick(&window.form, Qt::Key_Escape);
  EXPECT_FALSE(window.form.isVisible());
  EXPECT_EQ(global.stationNumber, 0);
}

TEST(frmRadioDetail, TheKeyboardAloneChoosesAStation) {
  const Station station;
  schema::AddStation(global.localDatabasePath, 7, u"Radio Zee"_s);
  RadioWindow window;
  QTest::keyClick(&window.Radio(), Qt::Key_Down);
  QTest::keyClick(&window.Radio(), Qt::Key_Down);
  QTest::keyClick(&window.form, Qt::Key_Return);
  EXPECT_EQ(global.stationNumber, 7);
  EXPECT_FALSE(window.form.isVisible());
}

TEST(frmRadioDetail, AMissingOrDamagedLocalDatabaseIsNamed) {
  const Station station;
  for (const bool garbage : {false, true}) {
    QFile::remove(runtime::HostPath(global.localDatabasePath));
    if (garbage) runtime::WriteFile(global.localDatabasePath, QByteArray(5000, 'x'));
    const MessageBoxScript boxes{kAnswerOk};
    RadioWindow window;
    ASSERT_EQ(boxes.Shown().size(), 1u);
    EXPECT_EQ(boxes.Last().title, u"FillCboRadio"_s);
    EXPECT_EQ(boxes.Last().style, 16);
    EXPECT_TRUE(boxes.Last().text.contains(u"OvalistoLocal.mdb"_s)) << boxes.Last().text.toStdString();
    EXPECT_EQ(window.Radio().ListCount(), 0);
  }
}

// SPDX-License-Identifier: MIT
#include "data/Globals.h"
#include "data/Messages.h"
#include "data/Schema.h"
#include "platform/controls/ComboBox.h"
#include "platform/dao/Database.h"
#include "platform/desktop/MessageBox.h"
#include "platform/runtime/HostPath.h"
#include "tests/app/MainTest.h"
#include "tests/support/ModalDriver.h"
#include "tests/support/Ui.h"

#include <QAction>
#include <QDialog>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

using namespace Qt::StringLiterals;
using controls::ComboBox;
using desktop::MessageBoxScript;
using testing_support::Child;
using testing_support::ModalDriver;

namespace {

const QString kStationWindow = u"frmRadioDetail"_s;

// A second station, number 3, whose online setting is read.
class ChangeStation : public MainTest {
 protected:
  ChangeStation() {
    QFile settings(runtime::HostPath(global.programFolder + u"\\ovalis.ini"_s));
    EXPECT_TRUE(settings.open(QIODevice::Append));
    settings.write("[Spotrooster]\r\nStationsOwnMode=1\r\n");
    schema::AddStation(Local({}), 3, u"Radio Zee"_s);
    schema::CreateLocalDatabase(Local(u"3"_s));
    schema::AddStation(Local(u"3"_s), 3, u"Radio Zee"_s);
    dao::OpenDatabase(Local(u"3"_s)).Execute(u"UPDATE cdeInstellingen SET InitValue = 0"_s);
  }

  static QString Local(const QString& number) {
    return global.programFolder + u"\\data\\OvalistoLocal"_s + number + u".mdb"_s;
  }

  void Choose(const QString& name) {
    windows_.OnNext(kStationWindow, [name](QDialog& window) {
      auto& stations = Child<ComboBox>(window, u"cboRadio"_s);
      EXPECT_EQ(stations.ListIndex(), -1);
      stations.SetListIndex(stations.findText(name));
      Child<QPushButton>(window, u"cmdOk"_s).click();
    });
  }

  ModalDriver windows_;
};

}  // namespace

TEST_F(ChangeStation, AnotherStationIsOpenedFromTheMenu) {
  frmMain main;
  Load(main, u"Radio Proef"_s);
  EXPECT_TRUE(global.online);
  for (int round = 0; round < 2; ++round) {
    Choose(u"Radio Zee"_s);
    Action(main, u"actAndereZender"_s).trigger();
    EXPECT_EQ(main.windowTitle(), u"Spotrooster Radio Zee"_s);
    EXPECT_EQ(Child<QLabel>(main, u"lblRadio"_s).text(), u"Radio Zee"_s);
    EXPECT_EQ(Panel(main, u"pnlRadio"_s), u"Radio Zee (zender 3)"_s);
    EXPECT_EQ(Panel(main, u"pnlModus"_s), u"Offline"_s);
    EXPECT_EQ(global.localDatabasePath, Local(u"3"_s));
    EXPECT_EQ(global.serverDatabasePath, global.databasePath + u"\\OvalistoServer3.mdb"_s);
    Choose(u"Radio Proef"_s);
    Action(main, u"actAndereZender"_s).trigger();
    EXPECT_EQ(main.windowTitle(), u"Spotrooster Radio Proef"_s);
    EXPECT_EQ(Panel(main, u"pnlModus"_s), u"Online"_s);
    EXPECT_EQ(global.localDatabasePath, Local({}));
  }
}

TEST_F(ChangeStation, ClosingWithoutAChoiceKeepsTheStation) {
  frmMain main;
  Load(main, u"Radio Zee"_s);
  windows_.OnNext(kStationWindow, [](QDialog& window) {
    Child<ComboBox>(window, u"cboRadio"_s).SetListIndex(0);
    window.close();
  });
  const MessageBoxScript boxes;
  Action(main, u"actAndereZender"_s).trigger();
  EXPECT_TRUE(boxes.Shown().empty());
  EXPECT_EQ(global.stationNumber, 3);
  EXPECT_EQ(global.localDatabasePath, Local(u"3"_s));
  EXPECT_EQ(global.serverDatabasePath, global.databasePath + u"\\OvalistoServer3.mdb"_s);
  EXPECT_EQ(main.windowTitle(), u"Spotrooster Radio Zee"_s);
}

TEST_F(ChangeStation, AnUnreadableStationHasNoNameAndIsNotOnline) {
  QFile::remove(runtime::HostPath(Local(u"3"_s)));
  frmMain main;
  Load(main, u"Radio Proef"_s);
  Choose(u"Radio Zee"_s);
  const MessageBoxScript boxes;
  Action(main, u"actAndereZender"_s).trigger();
  ASSERT_EQ(boxes.Shown().size(), 2u);
  EXPECT_EQ(boxes.Shown()[0].title, u"SetRadioNaam"_s);
  EXPECT_EQ(boxes.Shown()[1].title, u"SetOnlineYn"_s);
  EXPECT_EQ(main.windowTitle(), u"Spotrooster "_s);
  EXPECT_FALSE(global.online);
}

TEST_F(ChangeStation, ANewStationGetsTheFirstFreeNumberAndCanBeChosen) {
  frmMain main;
  Load(main, u"Radio Proef"_s);
  windows_.OnNext(u"frmNieuweZender"_s, [](QDialog& window) {
    EXPECT_EQ(Child<QLineEdit>(window, u"txtNummer"_s).text(), u"1"_s);
    EXPECT_FALSE(Child<QPushButton>(window, u"cmdOk"_s).isEnabled());
    Child<QLineEdit>(window, u"txtNaam"_s).setText(u" Radio Nieuw "_s);
    Child<QPushButton>(window, u"cmdOk"_s).click();
  });
  Choose(u"Radio Nieuw"_s);
  const MessageBoxScript boxes;
  Action(main, u"actNieuweZender"_s).trigger();
  EXPECT_TRUE(boxes.Shown().empty());
  EXPECT_EQ(main.windowTitle(), u"Spotrooster Radio Nieuw"_s);
  EXPECT_TRUE(global.online);
  const dao::Recordset rows =
      dao::OpenDatabase(global.serverDatabasePath).OpenRecordset(u"SELECT COUNT(*) AS Aantal FROM tblItems"_s);
  EXPECT_EQ(rows.Field(u"Aantal"_s), 0);
}

TEST_F(ChangeStation, ANumberInUseIsRefusedAndTheWindowStays) {
  frmMain main;
  Load(main, u"Radio Proef"_s);
  const MessageBoxScript boxes;
  windows_.OnNext(u"frmNieuweZender"_s, [](QDialog& window) {
    auto& ok = Child<QPushButton>(window, u"cmdOk"_s);
    Child<QLineEdit>(window, u"txtNaam"_s).setText(u"Radio Dubbel"_s);
    for (const QString& wrong : {u""_s, u"0"_s, u"-1"_s, u"40000"_s, u"drie"_s}) {
      Child<QLineEdit>(window, u"txtNummer"_s).setText(wrong);
      EXPECT_FALSE(ok.isEnabled()) << wrong.toStdString();
    }
    Child<QLineEdit>(window, u"txtNummer"_s).setText(u"3"_s);
    ok.click();
    EXPECT_TRUE(window.isVisible());
    Child<QPushButton>(window, u"cmdAnnuleren"_s).click();
  });
  Action(main, u"actNieuweZender"_s).trigger();
  ASSERT_EQ(boxes.Shown().size(), 1u);
  EXPECT_EQ(boxes.Last().title, u"cmdOk_Click"_s);
  EXPECT_TRUE(boxes.Last().text.contains(u"Nummer 3 is al van een zender"_s)) << boxes.Last().text.toStdString();
  EXPECT_EQ(main.windowTitle(), u"Spotrooster Radio Proef"_s);
}

TEST_F(ChangeStation, AStationThatCannotBeMadeIsNotListed) {
  frmMain main;
  Load(main, u"Radio Proef"_s);
  global.databasePath = u"Q:\\weg"_s;
  const MessageBoxScript boxes;
  windows_.OnNext(u"frmNieuweZender"_s, [](QDialog& window) {
    Child<QLineEdit>(window, u"txtNaam"_s).setText(u"Radio Nergens"_s);
    Child<QPushButton>(window, u"cmdOk"_s).click();
    EXPECT_TRUE(window.isVisible());
    window.close();
  });
  Action(main, u"actNieuweZender"_s).trigger();
  ASSERT_EQ(boxes.Shown().size(), 1u);
  EXPECT_FALSE(QFile::exists(runtime::HostPath(Local(u"1"_s))));
  const dao::Recordset rows = dao::OpenDatabase(Local({})).OpenRecordset(
      u"SELECT COUNT(*) AS Aantal FROM cdeLicenties WHERE LicentieNummer = 1"_s);
  EXPECT_EQ(rows.Field(u"Aantal"_s), 0);
}

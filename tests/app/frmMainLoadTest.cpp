// SPDX-License-Identifier: MIT
#include "app/Start.h"
#include "data/Globals.h"
#include "data/Messages.h"
#include "data/Schema.h"
#include "export/OfflineLogExport.h"
#include "platform/dao/Database.h"
#include "platform/desktop/MessageBox.h"
#include "platform/runtime/HostPath.h"
#include "platform/runtime/TextFile.h"
#include "tests/app/MainTest.h"
#include "tests/support/ModalDriver.h"

#include <QApplication>
#include <QDialog>

#include <memory>

using namespace Qt::StringLiterals;
using desktop::MessageBoxScript;
using testing_support::ModalDriver;
using testing_support::Station;

TEST_F(MainTest, WithoutAStationNumberTheFileNamesHaveNone) {
  frmMain main;
  Load(main, u"Radio Proef"_s);
  EXPECT_EQ(global.localDatabasePath, global.programFolder + u"\\data\\OvalistoLocal.mdb"_s);
  EXPECT_EQ(global.serverDatabasePath, global.databasePath + u"\\OvalistoServer.mdb"_s);
  EXPECT_EQ(global.workDatabasePath, global.programFolder + u"\\data\\work.mdb"_s);
  EXPECT_EQ(main.windowTitle(), u"Spotrooster Radio Proef"_s);
  EXPECT_TRUE(global.online);
}

TEST_F(MainTest, Station3HasItsNumberInTheFileNamesAndStartsOfflineWithAnError) {
  schema::AddStation(global.programFolder + u"\\data\\OvalistoLocal.mdb"_s, 3, u"Radio Zee"_s);
  schema::CreateLocalDatabase(global.programFolder + u"\\data\\OvalistoLocal3.mdb"_s);
  schema::AddStation(global.programFolder + u"\\data\\OvalistoLocal3.mdb"_s, 3, u"Radio Zee"_s);
  frmMain main;
  const MessageBoxScript boxes;
  Load(main, u"Radio Zee"_s);
  EXPECT_EQ(global.stationNumber, 3);
  EXPECT_EQ(global.localDatabasePath, global.programFolder + u"\\data\\OvalistoLocal3.mdb"_s);
  EXPECT_EQ(global.serverDatabasePath, global.databasePath + u"\\OvalistoServer3.mdb"_s);
  EXPECT_EQ(global.workDatabasePath, global.programFolder + u"\\data\\work.mdb"_s);
  EXPECT_EQ(main.windowTitle(), u"Spotrooster Radio Zee"_s);
  ASSERT_EQ(boxes.Shown().size(), 1u);
  EXPECT_EQ(boxes.Last().title, u"SetOnlineYn"_s);
  EXPECT_FALSE(global.online);
  EXPECT_EQ(Panel(main, u"pnlRadio"_s), u"Radio Zee (zender 3)"_s);
}

TEST_F(MainTest, TheCaptionIsSetBeforeTheModeIsRead) {
  dao::OpenDatabase(global.programFolder + u"\\data\\OvalistoLocal.mdb"_s).Execute(u"DELETE FROM cdeInstellingen"_s);
  dao::OpenDatabase(global.programFolder + u"\\data\\OvalistoLocal.mdb"_s)
      .Execute(u"INSERT INTO cdeInstellingen (InitCode, InitValue) VALUES (\"OnlineYn\", \"99999999999\")"_s);
  frmMain main;
  QString caption;
  ModalDriver driver;
  driver.OnNext(u"messageBox"_s, [&](QDialog& box) {
    caption = main.windowTitle();
    EXPECT_EQ(box.windowTitle(), u"SetOnlineYn"_s);
    box.close();
  });
  Load(main, u"Radio Proef"_s);
  EXPECT_EQ(caption, u"Spotrooster Radio Proef"_s);
}

TEST_F(MainTest, TheStationSelectionIsOwnedAndFindsSettingsAndPathsWithoutANumber) {
  frmMain main;
  QWidget* owner = nullptr;
  QStringList paths;
  QString exportPath;
  ModalDriver driver;
  driver.OnNext(u"frmRadioDetail"_s, [&](QDialog& window) {
    owner = window.parentWidget();
    paths = {global.localDatabasePath, global.serverDatabasePath, global.workDatabasePath};
    exportPath = global.exportPath;
    EXPECT_TRUE(window.isModal());
    window.close();
  });
  main.Form_Load();
  EXPECT_EQ(owner, &main);
  EXPECT_FALSE(exportPath.isEmpty());
  EXPECT_EQ(paths, (QStringList{global.programFolder + u"\\data\\OvalistoLocal.mdb"_s,
                                global.databasePath + u"\\OvalistoServer.mdb"_s,
                                global.programFolder + u"\\data\\work.mdb"_s}));
}

TEST_F(MainTest, ClosingTheStationSelectionLeavesNumberZero) {
  frmMain main;
  Load(main, {});
  EXPECT_EQ(global.stationNumber, 0);
  EXPECT_EQ(global.localDatabasePath, global.programFolder + u"\\data\\OvalistoLocal.mdb"_s);
}

TEST_F(MainTest, AnEmptyStationNameLeavesTheTrailingBlankInTheCaption) {
  dao::OpenDatabase(global.programFolder + u"\\data\\OvalistoLocal.mdb"_s).Execute(u"DELETE FROM cdeLicenties"_s);
  frmMain main;
  Load(main, {});
  EXPECT_EQ(main.windowTitle(), u"Spotrooster "_s);
}

TEST_F(MainTest, AnInterruptedExportIsSettledBeforeTheUserWorks) {
  station_.Use(Station::Mode::Offline);
  const QString local = global.programFolder + u"\\data\\OvalistoLocal.mdb"_s;
  dao::OpenDatabase(local).Execute(u"INSERT INTO tblOfflineLog (ID, SqlSyntax) VALUES (1, \"UPDATE a\")"_s);
  const QString path = OfflineLogExport(local).WriteFile(runtime::PathText(station_.ExportFolder()));
  frmMain main;
  const MessageBoxScript boxes;
  Load(main, u"Radio Proef"_s);
  ASSERT_EQ(boxes.Shown().size(), 1u);
  EXPECT_TRUE(boxes.Last().text.contains(path));
  EXPECT_EQ(station_.Log(), QStringList());
}

TEST_F(MainTest, AnInvalidSettingsFileOrDatabaseIsReportedAndTheWindowOpens) {
  runtime::WriteFile(global.programFolder + u"\\ovalis.ini"_s, "garbage");
  runtime::WriteFile(global.programFolder + u"\\data\\OvalistoLocal.mdb"_s, QByteArray(3000, 'x'));
  frmMain main;
  const MessageBoxScript boxes;
  Load(main, {});
  QStringList titles;
  for (const auto& box : boxes.Shown()) {
    titles += box.title;
    EXPECT_EQ(box.style, 16);
    EXPECT_TRUE(box.text.contains(u"ovalis.ini"_s) || box.text.contains(u"OvalistoLocal.mdb"_s))
        << box.text.toStdString();
  }
  const QStringList expected{u"GetSettings"_s, u"FillCboRadio"_s, u"SetRadioNaam"_s, u"SetOnlineYn"_s};
  EXPECT_EQ(titles, expected);
  EXPECT_TRUE(main.isVisible());
  EXPECT_EQ(main.windowTitle(), u"Spotrooster "_s);
}

namespace {

bool IsVisible(const QString& name) {
  for (const QWidget* window : QApplication::topLevelWidgets()) {
    if (window->objectName() == name && window->isVisible()) return true;
  }
  return false;
}

// Records whether the splash screen was visible when the main window was shown.
class MainWindowWatch : public QObject {
 public:
  MainWindowWatch() { qApp->installEventFilter(this); }
  bool SawMain() const { return sawMain_; }
  bool SawSplashBesideIt() const { return sawSplash_; }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::Show && watched->objectName() == u"frmMain"_s) {
      sawMain_ = true;
      sawSplash_ = IsVisible(u"frmSplash"_s);
    }
    return false;
  }

 private:
  bool sawMain_ = false;
  bool sawSplash_ = false;
};

}  // namespace

TEST_F(MainTest, TheSplashIsClosedBeforeTheWindowIsShown) {
  ModalDriver driver;
  driver.OnNext(u"frmRadioDetail"_s, [](QDialog& window) { window.close(); });
  const MainWindowWatch watch;
  const std::unique_ptr<frmMain> main = Start();
  EXPECT_TRUE(watch.SawMain());
  EXPECT_FALSE(watch.SawSplashBesideIt());
}

TEST_F(MainTest, TheStartProcedureShowsTheSplashUntilTheWindowIsLoaded) {
  ModalDriver driver;
  bool splashSeen = false;
  bool mainSeen = false;
  driver.OnNext(u"frmRadioDetail"_s, [&](QDialog& window) {
    splashSeen = IsVisible(u"frmSplash"_s);
    mainSeen = IsVisible(u"frmMain"_s);
    window.close();
  });
  const std::unique_ptr<frmMain> main = Start();
  EXPECT_TRUE(splashSeen);
  EXPECT_FALSE(mainSeen);
  EXPECT_TRUE(main->isVisible());
  for (const QWidget* other : QApplication::topLevelWidgets())
    EXPECT_NE(other->objectName(), u"frmSplash"_s);
}

#include "app/frmMain.h"

#include "app/Start.h"
#include "app/StatusPanel.h"
#include "app/Version.h"
#include "data/Globals.h"
#include "data/Messages.h"
#include "data/Schema.h"
#include "data/Screens.h"
#include "export/OfflineLogExport.h"
#include "platform/controls/ComboBox.h"
#include "platform/controls/LedPanel.h"
#include "platform/dao/Database.h"
#include "platform/runtime/Clock.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/HostPath.h"
#include "platform/runtime/TextFile.h"
#include "tests/support/Child.h"
#include "tests/support/ModalDriver.h"
#include "tests/support/Station.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QFile>
#include <QLabel>
#include <QMenuBar>
#include <QPushButton>
#include <QSet>
#include <QStatusBar>
#include <QTest>
#include <QTextBrowser>
#include <QToolBar>
#include <QToolButton>

using namespace Qt::StringLiterals;
using controls::ComboBox;
using controls::LedPanel;
using desktop::MessageBoxScript;
using testing_support::Child;
using testing_support::ModalDriver;
using testing_support::Plain;
using testing_support::Station;

namespace {

const QList<Screen> kScreens{Screen::Items, Screen::ItemSpots, Screen::ItemPingles, Screen::PlanningExporteren,
                             Screen::Defaults};

// A station as start-up finds it: a settings file, and nothing in `global` but the program's folder. Every screen has a
// stand-in that notes that it was opened.
class MainTest : public testing::Test {
 protected:
  MainTest() {
    const QString folder = global.programFolder;
    runtime::WriteFile(folder + u"\\ovalis.ini"_s,
                       "[Files]\r\nDatabasePath=" + global.databasePath.toLatin1() +
                           "\r\nExportPath=" + global.exportPath.toLatin1() +
                           "\r\n[Audio Players]\r\nCard=-1\r\nBuffers=20\r\nBuffer_Size=2048\r\nCallback=0\r\n");
    global = Globals();
    global.programFolder = folder;
    for (const Screen screen : kScreens) {
      RegisterScreen(screen, [this, screen](QWidget* owner) {
        opened_ += screen;
        owner_ = owner;
        if (whenOpened_) whenOpened_();
      });
    }
  }
  ~MainTest() override {
    for (const Screen screen : kScreens)
      RegisterScreen(screen, {});
  }

  // Loads the window; in the station selection the line of that name is chosen, or the selection closed when empty.
  void Load(frmMain& main, const QString& station) {
    ModalDriver driver;
    driver.OnNext(u"frmRadioDetail"_s, [&](QDialog& window) {
      if (station.isEmpty()) {
        window.close();
        return;
      }
      auto& radio = Child<ComboBox>(window, u"cboRadio"_s);
      radio.SetListIndex(radio.findText(station));
      Child<QPushButton>(window, u"cmdOk"_s).click();
    });
    main.Form_Load();
    main.show();
  }

  static QAction& Action(const frmMain& main, const QString& name) {
    auto* action = main.findChild<QAction*>(name);
    if (action == nullptr) throw runtime::Error(u"no action "_s + name);
    return *action;
  }
  static void PressTool(const frmMain& main, const QString& name) {
    auto& bar = Child<QToolBar>(main, u"tlbMain"_s);
    qobject_cast<QToolButton*>(bar.widgetForAction(&Action(main, name)))->click();
  }
  static QString Panel(const frmMain& main, const QString& name) { return Child<StatusPanel>(main, name).Text(); }

  Station station_{Station::Mode::Online};
  QList<Screen> opened_;
  QWidget* owner_ = nullptr;
  std::function<void()> whenOpened_;
};

}  // namespace

TEST_F(MainTest, HasItsToolbarStatusBarAndTheFiveToldButtons) {
  const frmMain main;
  Child<QStatusBar>(main, u"staBalk"_s);
  QStringList keys;
  QStringList texts;
  for (const QAction* action : Child<QToolBar>(main, u"tlbMain"_s).actions()) {
    if (action->property("key").toString().isEmpty()) continue;
    keys += action->property("key").toString();
    texts += action->iconText();
    EXPECT_FALSE(action->icon().isNull()) << keys.last().toStdString();
  }
  const QStringList told{u"Item-spots"_s, u"Items"_s, u"Exporteren"_s, u"Instellingen"_s, u"Afsluiten"_s};
  EXPECT_EQ(keys, told);
  EXPECT_EQ(texts, told);
}

TEST_F(MainTest, WithoutAStationNumberTheFilesCarryNone) {
  frmMain main;
  Load(main, u"Radio Proef"_s);
  EXPECT_EQ(global.localDatabasePath, global.programFolder + u"\\data\\OvalistoLocal.mdb"_s);
  EXPECT_EQ(global.serverDatabasePath, global.databasePath + u"\\OvalistoServer.mdb"_s);
  EXPECT_EQ(global.workDatabasePath, global.programFolder + u"\\data\\work.mdb"_s);
  EXPECT_EQ(main.windowTitle(), u"Spotrooster Radio Proef"_s);
  EXPECT_TRUE(global.online);
}

TEST_F(MainTest, Station3HasItsNumberInTheFileNamesAndKeepsTheFlagWithItsError) {
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

TEST_F(MainTest, EachButtonOpensItsScreenOwnedByTheWindow) {
  frmMain main;
  Load(main, u"Radio Proef"_s);
  for (const QString& action : {u"actItemSpots"_s, u"actItems"_s, u"actExporteren"_s, u"actInstellingen"_s}) {
    PressTool(main, action);
    EXPECT_EQ(owner_, &main);
  }
  const QList<Screen> expected{Screen::ItemSpots, Screen::Items, Screen::PlanningExporteren, Screen::Defaults};
  EXPECT_EQ(opened_, expected);
}

TEST_F(MainTest, AButtonWithAnyOtherKeyDoesNothing) {
  frmMain main;
  Load(main, u"Radio Proef"_s);
  const MessageBoxScript boxes;
  for (const QString& key : {u"items"_s, u"Items "_s, u""_s, u"Item-pingles"_s}) {
    Action(main, u"actItems"_s).setProperty("key", key);
    PressTool(main, u"actItems"_s);
  }
  EXPECT_TRUE(opened_.isEmpty());
  EXPECT_TRUE(boxes.Shown().empty());
  EXPECT_TRUE(main.isVisible());
}

TEST_F(MainTest, AfsluitenClosesWithoutAQuestion) {
  frmMain main;
  Load(main, u"Radio Proef"_s);
  const MessageBoxScript boxes;
  PressTool(main, u"actAfsluiten"_s);
  EXPECT_FALSE(main.isVisible());
  EXPECT_TRUE(boxes.Shown().empty());
}

TEST_F(MainTest, TheMenuBarReachesEveryScreenAndTheJingleListToo) {
  frmMain main;
  Load(main, u"Radio Proef"_s);
  QSet<QString> reached;
  for (const QAction* menu : Child<QMenuBar>(main, u"mnuBalk"_s).actions()) {
    for (const QAction* action : menu->menu()->actions())
      reached += action->objectName();
  }
  const QStringList actions{u"actItems"_s,        u"actItemSpots"_s, u"actItemPingles"_s, u"actExporteren"_s,
                            u"actInstellingen"_s, u"actAfsluiten"_s, u"actHandleiding"_s, u"actVersie"_s};
  for (const QString& name : actions)
    EXPECT_TRUE(reached.contains(name)) << name.toStdString();
  Action(main, u"actItemPingles"_s).trigger();
  EXPECT_EQ(opened_, QList<Screen>{Screen::ItemPingles});
  EXPECT_EQ(Action(main, u"actItemPingles"_s).shortcut(), QKeySequence(u"Ctrl+3"_s));
}

TEST_F(MainTest, MnemonicsAreUniqueInEachMenu) {
  const frmMain main;
  for (const QMenu* menu : main.findChildren<QMenu*>()) {
    QSet<QString> letters;
    for (const QAction* action : menu->actions()) {
      if (action->isSeparator()) continue;
      const qsizetype mark = action->text().indexOf(u'&');
      ASSERT_GE(mark, 0) << action->text().toStdString();
      const QString letter = action->text().mid(mark + 1, 1).toUpper();
      EXPECT_FALSE(letters.contains(letter)) << action->text().toStdString();
      letters += letter;
    }
  }
}

TEST_F(MainTest, AScreenThatIsNotThereIsDisabled) {
  RegisterScreen(Screen::Items, {});
  frmMain main;
  Load(main, u"Radio Proef"_s);
  EXPECT_FALSE(Action(main, u"actItems"_s).isEnabled());
  EXPECT_TRUE(Action(main, u"actItemSpots"_s).isEnabled());
}

TEST_F(MainTest, TheStatusBarTellsStationModeAndWhatIsNotExported) {
  frmMain main;
  Load(main, u"Radio Proef"_s);
  EXPECT_EQ(Panel(main, u"pnlRadio"_s), u"Radio Proef"_s);
  EXPECT_EQ(Panel(main, u"pnlModus"_s), u"Online"_s);
  EXPECT_EQ(Panel(main, u"pnlLog"_s), u"0 opdrachten nog niet geëxporteerd"_s);
  EXPECT_EQ(Child<QLabel>(main, u"lblVersie"_s).text(), VersionText());
  EXPECT_TRUE(Child<StatusPanel>(main, u"pnlKopie"_s).isVisible());
}

TEST_F(MainTest, TheStatusBarIsReadAnewWhenAScreenCloses) {
  frmMain main;
  Load(main, u"Radio Proef"_s);
  whenOpened_ = [&] {
    global.online = false;
    station_.OnLocal(u"INSERT INTO tblOfflineLog (ID, SqlSyntax) VALUES (1, \"x\")"_s);
    station_.OnLocal(u"INSERT INTO tblCopie_ItemSpots (ID, Naam) VALUES (1, \"x\")"_s);
    station_.OnLocal(u"INSERT INTO tblCopie_Items (ID, Naam) VALUES (1, \"x\")"_s);
  };
  PressTool(main, u"actInstellingen"_s);
  EXPECT_EQ(Panel(main, u"pnlModus"_s), u"Offline"_s);
  EXPECT_EQ(Panel(main, u"pnlLog"_s), u"1 opdracht nog niet geëxporteerd"_s);
  EXPECT_EQ(Child<QLabel>(main, u"lblAantalExport"_s).text(), u"1"_s);
  EXPECT_FALSE(Child<StatusPanel>(main, u"pnlKopie"_s).isVisible());
}

TEST_F(MainTest, CountsThatCannotBeReadAreDashesWithoutABox) {
  frmMain main;
  Load(main, u"Radio Proef"_s);
  const MessageBoxScript boxes;
  QFile::remove(runtime::HostPath(global.localDatabasePath));
  QFile::remove(runtime::HostPath(global.serverDatabasePath));
  PressTool(main, u"actInstellingen"_s);
  QApplication::processEvents();
  EXPECT_EQ(Panel(main, u"pnlLog"_s), u"opdrachten nog niet geëxporteerd: –"_s);
  EXPECT_EQ(Child<QLabel>(main, u"lblAantalLopen"_s).text(), u"–"_s);
  EXPECT_TRUE(boxes.Shown().empty());
}

TEST_F(MainTest, ShowsTheDateInWordsAndTheTimeInLights) {
  const runtime::ClockScope clock(QDateTime(QDate(2025, 3, 11), QTime(14, 32, 7)));
  frmMain main;
  Load(main, u"Radio Proef"_s);
  EXPECT_EQ(Child<QLabel>(main, u"lblDatum"_s).text(), u"dinsdag 11 maart 2025, week 11"_s);
  EXPECT_EQ(Child<QLabel>(main, u"lblRadio"_s).text(), u"Radio Proef"_s);
  EXPECT_EQ(Child<LedPanel>(main, u"ledUur"_s).Value(), 14);
  EXPECT_EQ(Child<LedPanel>(main, u"ledMinuut"_s).Value(), 32);
  EXPECT_EQ(Child<LedPanel>(main, u"ledSeconde"_s).Value(), 7);
}

TEST_F(MainTest, AWrongSettingsFileOrDatabaseIsToldAndTheWindowStillOpens) {
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

TEST_F(MainTest, TheStartProcedureShowsTheSplashUntilTheWindowIsLoaded) {
  ModalDriver driver;
  bool splashSeen = false;
  driver.OnNext(u"frmRadioDetail"_s, [&](QDialog& window) {
    for (const QWidget* other : QApplication::topLevelWidgets()) {
      splashSeen = splashSeen || (other->objectName() == u"frmSplash"_s && other->isVisible());
    }
    window.close();
  });
  const std::unique_ptr<frmMain> main = Start();
  EXPECT_TRUE(splashSeen);
  EXPECT_TRUE(main->isVisible());
  for (const QWidget* other : QApplication::topLevelWidgets())
    EXPECT_NE(other->objectName(), u"frmSplash"_s);
}

TEST_F(MainTest, HelpTellsTheVersion) {
  frmMain main;
  Load(main, u"Radio Proef"_s);
  const MessageBoxScript boxes;
  Action(main, u"actVersie"_s).trigger();
  ASSERT_EQ(boxes.Shown().size(), 1u);
  EXPECT_TRUE(boxes.Last().text.contains(VersionText()));
}

TEST_F(MainTest, HelpShowsTheManual) {
  frmMain main;
  Load(main, u"Radio Proef"_s);
  ModalDriver driver;
  QString text;
  driver.OnNext(u"frmHandleiding"_s, [&](QDialog& window) {
    text = Child<QTextBrowser>(window, u"txtHandleiding"_s).toPlainText();
    Child<QPushButton>(window, u"cmdSluiten"_s).click();
  });
  Action(main, u"actHandleiding"_s).trigger();
  EXPECT_TRUE(text.startsWith(u"Handleiding van Spotrooster"_s)) << text.left(60).toStdString();
  EXPECT_FALSE(text.contains(QChar::ObjectReplacementCharacter)) << "a picture that is not there";
  EXPECT_TRUE(text.contains(u"ovalis.ini"_s));
}

TEST_F(MainTest, TonenOpensTheSpotListNarrowedToItsRow) {
  frmMain main;
  Load(main, u"Radio Proef"_s);
  ModalDriver driver;
  QString narrowed;
  driver.OnNext(u"frmItemSpots"_s, [&](QDialog& window) {
    narrowed = Child<ComboBox>(window, u"cboToestand"_s).currentText();
    window.close();
  });
  Child<QPushButton>(main, u"cmdVerlopen"_s).click();
  EXPECT_EQ(narrowed, TextOf(SpotView::VerlopenBinnenkort));
}
